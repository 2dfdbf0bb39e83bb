#include "host_moving/ImportProgram.h"

#include "database/Maintenance.h"
#include "host/moving/BringIn.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"
#include "support/DesktopFile.h"
#include "support/SmallDisk.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace {

constexpr int banks = 3000;

host::MovingPlace Place(const QString& connectionString, const QString& copies) {
  return {connectionString, copies, 1, u"ana"_s, true, false};
}

moving::ImportWishes Knowing(const database::Stop& stop = {}) {
  moving::ImportWishes wishes;
  wishes.stop = stop;
  host::AddKnowledge(wishes);
  return wishes;
}

/// The error of an import, 0 where there is none, and its text.
std::pair<int, QString> ErrorOf(const QString& file, const host::MovingPlace& place,
                                const moving::ImportWishes& wishes = Knowing()) {
  try {
    host::BringIn(file, place, wishes);
  } catch (const automation::Error& error) {
    return {error.Number(), error.Description()};
  }
  return {0, {}};
}

/// People and long letters.
QByteArray Office(int people) {
  using D = support::DesktopFile;
  D file;
  file.AddTable(u"CartasModelo"_s, {{u"IDCartaModelo"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Contenido"_s, D::Memo}});
  for (int i = 1; i <= 3; ++i) {
    file.AddRow({i, u"Larga"_s, u"{\\rtf1 "_s + u"palabras [Nombre] \\par "_s.repeated(10'000) + u"}"_s});
  }
  file.AddTable(u"Colaboradores"_s, {{u"IDColaborador"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"NIF"_s, D::Text}});
  for (int i = 1; i <= people; ++i) {
    file.AddRow({i, u"Ana %1"_s.arg(i), u"%1A"_s.arg(i)});
  }
  return file.Bytes();
}

}  // namespace

/// Imports that something ends: all came in, or nothing.
class tst_import_faults : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ReadersThatFail_data();
  void ReadersThatFail();
  void NoPlaceForTheCopy();
  void NoRoom();
  void SomebodyElseWrites();
  void StoppedAnywhere();
  void KilledAnywhere();
};

void tst_import_faults::ReadersThatFail_data() {
  QTest::addColumn<QByteArray>("script");
  QTest::addColumn<QString>("said");
  QTest::newRow("dies") << QByteArray("cat head; kill -9 $$") << u"se ha interrumpido en la tabla «Bancos»"_s;
  QTest::newRow("nonsense") << QByteArray("echo nonsense") << u"no se entiende"_s;
  QTest::newRow("flood") << QByteArray("cat head; while cat rows; do :; done") << u"no se entiende"_s;
  QTest::newRow("hangs") << QByteArray("cat head; exec sleep 300") << u"no avanza en la tabla «Bancos»"_s;
}

// The program with another reader beside it.
void tst_import_faults::ReadersThatFail() {
  QFETCH(QByteArray, script);
  QFETCH(QString, said);
  const support::TestDatabase database;
  if (database.Server() != nullptr) {
    return;
  }
  const QString host = database.Path(u"kel-host"_s);
  const QString reader = database.Path(u"kel-lector"_s);
  QVERIFY(QFile::copy(QStringLiteral(KEL_HOST), host));
  const QByteArray folder = QFile::encodeName(database.Path(u"."_s));
  WriteFile(reader, "#!/bin/sh\ncd '" + folder + "'\n" + script + '\n');
  QVERIFY(QFile::setPermissions(reader, QFile::ReadOwner | QFile::ExeOwner));
  WriteFile(database.Path(u"head"_s), QByteArray("V\7\0\0\0\3\0\0\0mdb"
                                                 "T\36\0\0\0\6\0\0\0Bancos\xFF\xFF\xFF\xFF\2\0\2\0\0\0idt\2\0\0\0xxt",
                                                 47));
  WriteFile(database.Path(u"rows"_s), QByteArray("R\2\0\0\0--", 7).repeated(100'000));
  WriteFile(database.Path(u"a.mdb"_s), Office(1));
  const QStringList before = database.Query(u"SELECT * FROM Bancos");
  const Ended ended = Run(database, u"importar|a.mdb"_s, host);
  QVERIFY2(ended.code == 1 && ended.said.contains(said), qPrintable(ended.said));
  QCOMPARE(database.Query(u"SELECT * FROM Bancos"), before);
}

void tst_import_faults::NoPlaceForTheCopy() {
  const support::TestDatabase database;
  WriteFile(database.Path(u"Bancos.csv"_s), ManyBanks(2));
  WriteFile(database.Path(u"copias"_s), "a file");
  const auto [number, said] =
      ErrorOf(database.Path(u"Bancos.csv"_s), Place(database.ConnectionString(), database.Path(u"copias"_s)));
  QVERIFY2(number == 5 && said.contains(u"No se puede usar la carpeta"_s), qPrintable(said));
  QCOMPARE(database.Query(u"SELECT * FROM Bancos"), QStringList());
}

void tst_import_faults::NoRoom() {
  const support::TestDatabase database;
  const support::SmallDisk disk;
  if (!disk.IsThere() || database.Server() != nullptr) {
    return;
  }
  const QString list = database.Path(u"Encabezados.csv"_s);
  QByteArray lines = "Nombre;Descripcion\n";
  for (int i = 0; i < 30'000; ++i) {
    lines += "Nombre " + QByteArray::number(i) + ';' + QByteArray(300, 'x') + '\n';
  }
  WriteFile(list, lines);
  const QStringList before = database.Query(u"SELECT COUNT(*) FROM Encabezados");
  // For the data:
  const QString file = disk.Path(u"kel.db"_s);
  QVERIFY(QFile::copy(database.Path(), file));
  const QString copies = database.Path(u"copias"_s);
  const auto [number, said] = ErrorOf(list, Place(database::ConnectionStringForFile(file), copies));
  QVERIFY2(number != 0, qPrintable(said));
  QVERIFY(QDir(copies).isEmpty(QDir::Files));
  const support::TestDatabase full(database::ConnectionStringForFile(file));
  QCOMPARE(full.Query(u"SELECT COUNT(*) FROM Encabezados"), before);
  QVERIFY(database::CheckDatabase(full.ConnectionString()).IsSound());
  // For the copy:
  disk.Fill();
  QVERIFY(ErrorOf(list, Place(database.ConnectionString(), disk.Path(u"copias"_s))).first != 0);
  QVERIFY(QDir(disk.Path(u"copias"_s)).isEmpty(QDir::Files));
  QCOMPARE(database.Query(u"SELECT COUNT(*) FROM Encabezados"), before);
}

void tst_import_faults::SomebodyElseWrites() {
  const support::TestDatabase database;
  WriteFile(database.Path(u"Bancos.csv"_s), ManyBanks(2));
  const auto other = database.Connect();
  {
    const adodb::Transaction transaction(*other);
    other->Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES ('9999', 'Otro')"_s);
    const QString copies = database.Path(u"copias"_s);
    const auto [number, said] = ErrorOf(database.Path(u"Bancos.csv"_s), Place(database.ConnectionString(), copies));
    QVERIFY2(number == adodb::DatabaseLocked, qPrintable(said));
    QVERIFY(QDir(copies).isEmpty(QDir::Files));
  }
  QCOMPARE(database.Query(u"SELECT * FROM Bancos"), QStringList());
}

// A wish to stop at moments all over the run, while it copies, reads, looks at letters, compares and writes.
void tst_import_faults::StoppedAnywhere() {
  const support::TestDatabase database;
  const int people =
      qEnvironmentVariableIsSet("KEL_IMPORT_PEOPLE") ? qEnvironmentVariableIntValue("KEL_IMPORT_PEOPLE") : 2000;
  const QString file = database.Path(u"a.mdb"_s);
  const host::MovingPlace place = Place(database.ConnectionString(), database.Path(u"copias"_s));
  // There are as many here, who are read, too.
  WriteFile(file, Office(people));
  QElapsedTimer time;
  time.start();
  QCOMPARE(ErrorOf(file, place).first, 0);
  const qint64 whole = time.elapsed();
  database.Execute(u"UPDATE Colaboradores SET Nombre='Eva', NIF=''");
  const QStringList before = database.Query(u"SELECT COUNT(*), MAX(IDColaborador) FROM Colaboradores");
  constexpr int moments = 12;
  qint64 longest = 0;
  int written = 1;
  for (int i = 0; i < moments; ++i) {
    const qint64 wanted = whole * i / moments;
    moving::ImportStep step = moving::ImportStep::Reading;
    moving::ImportWishes wishes = Knowing([&] { return time.elapsed() >= wanted; });
    wishes.progress = [&step](moving::ImportStep now, qint64, qint64) { step = now; };
    time.restart();
    const int number = ErrorOf(file, place, wishes).first;
    const qint64 late = time.elapsed() - wanted;
    if (number == 0) {
      // It was quicker than the first time.
      database.Execute(u"DELETE FROM Colaboradores WHERE Nombre LIKE 'Ana%'");
      ++written;
      continue;
    }
    QCOMPARE(number, adodb::Stopped);
    QCOMPARE(database.Query(u"SELECT COUNT(*), MAX(IDColaborador) FROM Colaboradores"), before);
    if (qEnvironmentVariableIsSet("KEL_IMPORT_PEOPLE")) {
      qInfo("stopped after %lld of %lld ms, step %d: %lld ms", wanted, whole, int(step), late);
    }
    longest = qMax(longest, late);
  }
  // A tenth of a second on a quiet machine.
  QVERIFY2(longest < 1500, qPrintable(QString::number(longest)));
  QCOMPARE(QDir(place.copies).entryList({u"*.db"_s}, QDir::Files).size(), written);
}

void tst_import_faults::KilledAnywhere() {
  const support::TestDatabase database;
  WriteFile(database.Path(u"Bancos.csv"_s), ManyBanks(banks));
  const QString arguments = u"importar|Bancos.csv"_s;
  QElapsedTimer time;
  time.start();
  QCOMPARE(Run(database, arguments).code, 0);
  const int whole = int(time.elapsed());
  const int kills =
      qEnvironmentVariableIsSet("KEL_IMPORT_KILLS") ? qEnvironmentVariableIntValue("KEL_IMPORT_KILLS") : 6;
  int undone = 0;
  for (int i = 0; i < kills; ++i) {
    database.Execute(u"DELETE FROM Bancos");
    QProcess program;
    Start(program, database, arguments);
    QVERIFY(program.waitForStarted());
    // A moment is what is meant here.
    program.waitForFinished(QRandomGenerator::global()->bounded(whole / 3, whole));
    program.kill();
    program.waitForFinished();
    const int count = database.Id(u"SELECT COUNT(*) FROM Bancos");
    QVERIFY2(count == 0 || count == banks, qPrintable(QString::number(count)));
    undone += count == 0 ? 1 : 0;
    QVERIFY(database::CheckDatabase(database.ConnectionString()).IsSound());
  }
  QVERIFY(undone > 0);
  // Nothing is left that keeps the next one out.
  database.Execute(u"DELETE FROM Bancos");
  QCOMPARE(Run(database, arguments).code, 0);
}

KEL_TEST(tst_import_faults);

#include "tst_import_faults.moc"
