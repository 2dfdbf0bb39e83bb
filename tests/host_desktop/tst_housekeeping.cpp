#include "database/Maintenance.h"
#include "host/cli/Housekeeping.h"
#include "host/cli/PermissionNotice.h"
#include "host/records/DailyCopies.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>

using support::TestDatabase;
using namespace Qt::StringLiterals;

namespace {

void Write(const QString& path, const QByteArray& contents) {
  QFile file(path);
  if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
      file.write(contents) != contents.size()) {
    qFatal("cannot write a test file");
  }
}

}  // namespace

/// What a start owes the file: the copy of the day, a check after an unclean end, a word about open permissions.
class tst_housekeeping : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void ACopyADayForTwoWeeks();
  void NothingIsDeletedWithoutANewCopy();
  void TheSettingSwitchesItOff();
  void Duties_data();
  void Duties();
  void TheOfficeSaysForHowLong();
  void OpenPermissionsAreToldOnce();

 private:
  QString Text() const { return m_database->ConnectionString(); }
  QStringList Copies() const { return QDir(m_database->Path(u"copias"_s)).entryList(QDir::Files, QDir::Name); }

  std::unique_ptr<TestDatabase> m_database;
};

void tst_housekeeping::init() {
  m_database = std::make_unique<TestDatabase>();
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_database->Path(u"."_s));
}

void tst_housekeeping::ACopyADayForTwoWeeks() {
  const QDate today(2026, 1, 20);
  for (const QString& name : {u"kel-2026-01-06.db"_s, u"kel-2026-01-07.db"_s, u"otra-2026-01-01.db"_s,
                              u"kel-2026-13-40.db"_s, u"kel-2025-01-01.db.bak"_s}) {
    Write(m_database->Path(u"copias/"_s + name), "x");
  }
  host::MakeDailyCopy(Text(), today, 14, {});
  const QStringList left = {u"kel-2025-01-01.db.bak"_s, u"kel-2026-01-07.db"_s, u"kel-2026-01-20.db"_s,
                            u"kel-2026-13-40.db"_s, u"otra-2026-01-01.db"_s};
  QCOMPARE(Copies(), left);
  const QString copy = m_database->Path(u"copias/kel-2026-01-20.db"_s);
  QVERIFY(database::CheckDatabase(database::ConnectionStringForFile(copy)).IsSound());
  m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('nuevo')");
  host::MakeDailyCopy(Text(), today, 14, {});
  QCOMPARE(TestDatabase(database::ConnectionStringForFile(copy)).Id(u"SELECT COUNT(*) FROM Bancos"), 0);
  host::MakeDailyCopy(Text(), today.addDays(1), 14, {});
  QVERIFY(Copies().contains(u"kel-2026-01-21.db"_s) && !Copies().contains(u"kel-2026-01-07.db"_s));
}

void tst_housekeeping::NothingIsDeletedWithoutANewCopy() {
  Write(m_database->Path(u"copias/kel-2020-01-01.db"_s), "x");
  const auto make = [this](const database::Stop& stop) {
    return support::ErrorOf([&] { host::MakeDailyCopy(Text(), QDate(2026, 1, 20), 14, stop); });
  };
  QVERIFY(make([] { return true; }) != 0);
  QCOMPARE(Copies(), QStringList(u"kel-2020-01-01.db"_s));
  // Another program's, made meanwhile, is one.
  const auto anothersCopy = [this] {
    Write(m_database->Path(u"copias/kel-2026-01-20.db"_s), "x");
    return false;
  };
  QCOMPARE(make(anothersCopy), 0);
  QCOMPARE(Copies(), QStringList(u"kel-2026-01-20.db"_s));
}

void tst_housekeeping::TheSettingSwitchesItOff() {
  QVERIFY(host::WantsDailyCopies());
  QSettings().setValue(u"Copias/Diaria"_s, false);
  QVERIFY(!host::WantsDailyCopies());
}

void tst_housekeeping::Duties_data() {
  QTest::addColumn<bool>("damaged");
  QTest::addColumn<bool>("check");
  QTest::addColumn<bool>("copy");
  QTest::addColumn<QString>("noticed");
  QTest::addColumn<qsizetype>("copies");
  QTest::newRow("nothing to do") << false << false << false << QString() << qsizetype(0);
  QTest::newRow("a copy") << false << true << true << QString() << qsizetype(1);
  QTest::newRow("a damaged file is not copied")
      << true << true << true << u"no llegó a cerrar la base de datos"_s << qsizetype(0);
  QTest::newRow("a copy that fails") << true << false << true << u"No se ha podido hacer la copia diaria"_s
                                     << qsizetype(0);
}

void tst_housekeeping::Duties() {
  QFETCH(const bool, damaged);
  QFETCH(const bool, check);
  QFETCH(const bool, copy);
  QFETCH(const QString, noticed);
  QFETCH(const qsizetype, copies);
  m_database->Connection().Close();
  if (damaged) {
    QFile file(m_database->Path());
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(8 * 4096) && file.write(QByteArray(40 * 4096, 'U')) > 0);
  }
  QStringList notices;
  {
    host::Housekeeping housekeeping(Text(), {.check = check, .copy = copy});
    connect(&housekeeping, &host::Housekeeping::Noticed, this, [&](const QString& text) { notices.append(text); });
    housekeeping.Start();
    QTRY_VERIFY_WITH_TIMEOUT(
        Copies().filter(QRegularExpression(u"\\.db$"_s)).size() == copies && notices.isEmpty() == noticed.isEmpty(),
        20000);
  }
  QCoreApplication::processEvents();
  QCOMPARE(notices.size(), noticed.isEmpty() ? 0 : 1);
  QVERIFY2(notices.join(u'/').contains(noticed), qPrintable(notices.join(u'/')));
  QCOMPARE(Copies().size(), copies);
}

// What an administrator decided for the database.
void tst_housekeeping::TheOfficeSaysForHowLong() {
  const QDate today = QDate::currentDate();
  const auto copyOf = [&](int daysAgo) { return u"kel-%1.db"_s.arg(today.addDays(-daysAgo).toString(Qt::ISODate)); };
  Write(m_database->Path(u"copias/"_s + copyOf(2)), "x");
  Write(m_database->Path(u"copias/"_s + copyOf(3)), "x");
  for (const int days : {20, 40}) {
    m_database->Execute(u"INSERT INTO Cambios(Fecha, Tabla) VALUES('{}', '{}')",
                        QDateTime::currentDateTimeUtc().addDays(-days).toString(Qt::ISODate), QString::number(days));
  }
  host::StoreOfficePolicy(m_database->Connection(), {}, {.monthsOfLog = 1, .daysOfCopies = 3});
  host::Housekeeping housekeeping(Text(), {.copy = true, .forget = true});
  housekeeping.Start();
  QTRY_COMPARE_WITH_TIMEOUT(m_database->Query(u"SELECT Tabla FROM Cambios"), QStringList(u"20"_s), 20000);
  QCOMPARE(Copies(), (QStringList{copyOf(2), copyOf(0)}));
}

void tst_housekeeping::OpenPermissionsAreToldOnce() {
  const QString file = m_database->Path(u"l'arxiu.db"_s);
  Write(file, "x");
  QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
  QCOMPARE(host::PermissionNotice({file}), QString());
  QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther));
  const QString command = u"chmod go-rwx '%1'*"_s.arg(QString(file).replace(u'\'', u"'\\''"_s));
  QVERIFY(host::PermissionNotice({file}).contains(command));
  QCOMPARE(host::PermissionNotice({file}), QString());
}

KEL_TEST(tst_housekeeping);
#include "tst_housekeeping.moc"
