#include "database/Announcement.h"
#include "database/Notices.h"
#include "database/Password.h"
#include "database/Presence.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

using database::HasEnded;
using database::OwnPresence;
using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

namespace {

const QString countBanks = u"SELECT COUNT(*) FROM Bancos"_s;
const QString addBank = u"INSERT INTO Bancos(Nombre) VALUES('a')"_s;

}  // namespace

/// Who is there, who comes back after a cut, and what is told.
class tst_presence : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void APresenceEndsWithItsSession();
  void NobodyCountsAsEndedOnAYoungServer();
  void ASessionComesBack_data();
  void ASessionComesBack();
  void WhatBelongedToThePresenceIsTakenOver();
  void NobodyIsMigratedAway();
  void WhatIsPreparedForOlderTablesIsPreparedAnew();
  void WritesAreTold();
  void AnIdleSessionComesBack();
  void APasswordIsAskedForOnce();

 private:
  const support::ServerDatabase& Server() const { return *m_database->Server(); }
  adodb::Connection& Connection() const { return m_database->Connection(); }
  void CutLines() const {
    Server().Run(
        u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE application_name LIKE 'kel %' AND "
        "datname=current_database()"_s);
  }

  std::unique_ptr<TestDatabase> m_database;
};

void tst_presence::APresenceEndsWithItsSession() {
  auto other = m_database->Connect();
  const int presence = OwnPresence(*other);
  QVERIFY(presence > 0);
  QVERIFY(OwnPresence(Connection()) != presence);
  other->Close();
  QVERIFY(!HasEnded(Connection(), presence));
  other->Open();
  QCOMPARE(OwnPresence(*other), presence);
  other.reset();
  QTRY_VERIFY(HasEnded(Connection(), presence));
  QVERIFY(!HasEnded(Connection(), OwnPresence(Connection())));
}

void tst_presence::NobodyCountsAsEndedOnAYoungServer() {
  QVERIFY(HasEnded(Connection(), 1'000'000));
  Server().Run(
      u"DO $$BEGIN EXECUTE format('ALTER DATABASE %I SET kel.gracia = ''10 years''', current_database()); END$$"_s);
  QVERIFY(!HasEnded(*m_database->Connect(), 1'000'000));
}

void tst_presence::ASessionComesBack_data() {
  QTest::addColumn<bool>("inTransaction");
  QTest::addColumn<QString>("statement");
  QTest::newRow("reading") << false << countBanks;
  QTest::newRow("writing") << false << addBank;
  QTest::newRow("reading in a transaction that begins") << true << countBanks;
  QTest::newRow("writing in a transaction that begins") << true << addBank;
}

// The cut was before the statement, so that nothing can have been done twice.
void tst_presence::ASessionComesBack() {
  QFETCH(const bool, inTransaction);
  QFETCH(const QString, statement);
  const int before = OwnPresence(Connection());
  // Rows that are still on their way do not stand in the way.
  const auto rows = Connection().Execute(u"SELECT A.Nombre FROM Provincias AS A, Provincias AS B"_s);
  if (inTransaction) {
    Connection().BeginTrans();
  }
  CutLines();
  Connection().Execute(statement);
  if (inTransaction) {
    QCOMPARE(m_database->Query(u"SELECT COUNT(*) FROM Bancos"), QStringList(u"0"_s));
    Connection().CommitTrans();
  }
  QCOMPARE(m_database->Query(u"SELECT COUNT(*) FROM Bancos"), QStringList(statement == addBank ? u"1"_s : u"0"_s));
  QVERIFY(OwnPresence(Connection()) > before);
}

void tst_presence::WhatBelongedToThePresenceIsTakenOver() {
  const int before = OwnPresence(Connection());
  QStringList calls;
  bool fails = true;
  database::OnNewPresence(Connection(), [&](int from, int to) {
    calls += u"%1 %2"_s.arg(from == before).arg(to > before);
    if (std::exchange(fails, false)) {
      throw automation::Error(adodb::DatabaseLocked, u"busy"_s);
    }
    // The same connection serves it.
    return Outcome(Connection(), countBanks) == u"0" ? u"lost"_s : QString();
  });
  CutLines();
  QCOMPARE(ErrorOf([&] { Connection().Execute(addBank); }), int(adodb::DatabaseLocked));
  QCOMPARE(ErrorOf([&] { Connection().Execute(addBank); }), int(adodb::TransactionLost));
  QCOMPARE(Outcome(Connection(), countBanks), u"0"_s);
  QCOMPARE(calls, (QStringList{u"1 1"_s, u"1 1"_s}));
  Connection().Execute(addBank);
  // Also where the cut shows when the connection is opened.
  Connection().Close();
  CutLines();
  Connection().Open();
  QCOMPARE(Outcome(Connection(), countBanks), u"1"_s);
  QCOMPARE(calls.size(), 3);
}

void tst_presence::NobodyIsMigratedAway() {
  OwnPresence(Connection());
  Server().Run(u"UPDATE kel.kelmotor SET valor='4' WHERE nombre='version'"_s);
  try {
    database::PrepareDatabase(m_database->ConnectionString(), database::Content::Reference);
    QFAIL("it was migrated");
  } catch (const automation::Error& error) {
    QCOMPARE(error.Number(), int(adodb::DatabaseLocked));
    QVERIFY2(error.Description().contains(u'@'), qUtf8Printable(error.Description()));
  }
}

void tst_presence::WhatIsPreparedForOlderTablesIsPreparedAnew() {
  const QString all = u"SELECT * FROM Encabezados WHERE IDEncabezado<0"_s;
  Outcome(Connection(), all);
  Server().Run(u"ALTER TABLE kel.encabezados ALTER COLUMN nombre TYPE text"_s);
  QCOMPARE(Outcome(Connection(), all), QString());
  Connection().BeginTrans();
  Connection().Execute(addBank);
  Server().Run(u"ALTER TABLE kel.encabezados ALTER COLUMN nombre TYPE bpchar"_s);
  QCOMPARE(Outcome(Connection(), all), QString());
  Connection().CommitTrans();
  QCOMPARE(Outcome(Connection(), countBanks), u"1"_s);
}

void tst_presence::WritesAreTold() {
  QStringList told;
  const database::Notices notices(Connection(), [&](const QStringList& tables) { told += tables; });
  QVERIFY(notices.AreTold());
  const auto other = m_database->Connect();
  other->Execute(addBank);
  QTRY_COMPARE(told, QStringList(u"Bancos"_s));
  other->BeginTrans();
  const QString country = u"UPDATE Paises SET Nombre='x' WHERE IDPais=1"_s;
  const database::Announcement both(*other, {addBank, country});
  other->Execute(addBank);
  other->Execute(country);
  other->Execute(u"UPDATE Provincias SET Nombre='x' WHERE IDProvincia=-1"_s);
  // Nothing is told before it is there.
  QTest::qWait(50);
  QCOMPARE(told.size(), 1);
  other->CommitTrans();
  QTRY_COMPARE(told.size(), 3);
  QVERIFY(told.contains(u"Paises"_s) && !told.contains(u"Provincias"_s));
  // One's own, too.
  Connection().Execute(u"UPDATE Diocesis SET Nombre='x'"_s);
  QTRY_VERIFY(told.contains(u"Diocesis"_s));
}

void tst_presence::AnIdleSessionComesBack() {
  const int before = OwnPresence(Connection());
  int now = 0;
  bool isUnknown = false;
  database::OnNewPresence(Connection(), [&](int, int to) {
    now = to;
    return QString();
  });
  const database::Notices notices(Connection(), [&](const QStringList& tables) { isUnknown |= tables.isEmpty(); });
  CutLines();
  QTRY_VERIFY(now > before);
  QTRY_VERIFY(isUnknown);
  QVERIFY(!HasEnded(*m_database->Connect(), now));
}

// A wrong answer is asked for again; nobody asks for a second connection.
void tst_presence::APasswordIsAskedForOnce() {
  Server().Run(
      u"DO $$BEGIN CREATE ROLE con_clave LOGIN PASSWORD 'suya'; EXCEPTION WHEN duplicate_object OR unique_violation "
      "THEN NULL; END$$; GRANT USAGE ON SCHEMA kel TO con_clave; GRANT SELECT ON ALL TABLES IN SCHEMA kel TO con_clave"_s);
  const QString address = m_database->ConnectionString().replace(u"Usuario=postgres"_s, u"Usuario=con_clave"_s);
  const auto opening = [&] { return ErrorOf([&] { database::CreateConnection(address)->Open(); }); };
  QStringList answers;
  QStringList asked;
  database::SetPasswordQuestion([&](const QString& shown, bool isRepeated) -> std::optional<QString> {
    asked += (isRepeated ? u"again "_s : QString()) + shown.section(u' ', -1);
    return answers.isEmpty() ? std::nullopt : std::optional(answers.takeFirst());
  });
  answers = QStringList{u"otra"_s};
  QCOMPARE(opening(), int(adodb::CannotOpen));
  QCOMPARE(asked, (QStringList{u"con_clave"_s, u"again con_clave"_s}));
  asked.clear();
  answers = QStringList{u"otra"_s, u"suya"_s};
  QCOMPARE(opening(), 0);
  QCOMPARE(opening(), 0);
  QCOMPARE(asked, (QStringList{u"con_clave"_s, u"again con_clave"_s}));
  database::SetPasswordQuestion({});
}

KEL_TEST(tst_presence);
#include "tst_presence.moc"
