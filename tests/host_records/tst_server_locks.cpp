#include "database/Presence.h"
#include "host/records/OfficeConnection.h"
#include "host/records/RecordReferences.h"
#include "host/records/Session.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/contract/cConstNodo.h"
#include "support/ErrorOf.h"
#include "support/OwnServer.h"
#include "support/PrivateNetwork.h"
#include "support/Relay.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include <atomic>
#include <barrier>
#include <thread>
#include <vector>

using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

namespace {

const QString column = u"IDBanco"_s;
const QString save = u"UPDATE Paises SET Nombre='x' WHERE IDPais=1"_s;

/// A program of an office: its session over the connection that the component gets.
struct Program {
  Program(const TestDatabase& database, int user, const QString& options = {})
      : Program(database.ConnectionString() + options, user) {}
  Program(const QString& connectionString, int user) : office(database::CreateConnection(connectionString), session) {
    session.connection = &office;
    session.office = &office;
    session.userId = user;
    office.Open();
  }

  bool Take() { return !session.Locks().Take(column, 1); }

  host::Session session;
  host::OfficeConnection office;
};

}  // namespace

/// Locks of sessions that come back, and of those that don't.
class tst_server_locks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void ALockOutlivesACut();
  void ALostLockSavesNothing();
  void ACutNetworkFreesTheLock();
  void WhatWasNotCommittedIsSentOnceMore();
  void ALockThatCouldNotBeReleasedEnds();
  void ABatchHoldsItsTables();
  void ManyOnOneRecord_data();
  void ManyOnOneRecord();

 private:
  void Cut(Program& program) const {
    m_database->Server()->Run(
        u"SELECT pg_terminate_backend(pid, 5000) FROM pg_locks WHERE locktype='advisory' AND objid=%1"_s.arg(
            database::OwnPresence(program.office)));
  }

  std::unique_ptr<TestDatabase> m_database;
};

void tst_server_locks::ALockOutlivesACut() {
  Program ana(*m_database, 1);
  Program blas(*m_database, 2);
  QVERIFY(ana.Take());
  Cut(ana);
  QCOMPARE(ErrorOf([&] { ana.office.Execute(save); }), 0);
  QVERIFY(!blas.Take());
  QVERIFY(ana.Take());
  ana.session.Locks().Release(column, 1);
  QVERIFY(blas.Take());
}

void tst_server_locks::ALostLockSavesNothing() {
  Program ana(*m_database, 1);
  Program blas(*m_database, 2);
  QVERIFY(ana.Take());
  Cut(ana);
  QVERIFY(blas.Take());
  for (int i = 0; i < 2; ++i) {
    QCOMPARE(ErrorOf([&] { ana.office.Execute(save); }), int(adodb::TransactionLost));
    ana.office.BeginTrans();
    QCOMPARE(ErrorOf([&] { ana.office.Execute(save); }), int(adodb::TransactionLost));
    ana.office.RollbackTrans();
  }
  const QString country = u"SELECT COUNT(*) FROM Paises WHERE Nombre='x'"_s;
  QCOMPARE(Outcome(ana.office, country), u"0"_s);
  // Its dialog is closed.
  ana.session.Locks().Release(column, 1);
  QVERIFY(!ana.Take());
  QCOMPARE(ErrorOf([&] { ana.office.Execute(save); }), 0);
  QCOMPARE(Outcome(ana.office, country), u"1"_s);
}

// Nothing says that the network was cut: what is sent gets no answer.
void tst_server_locks::ACutNetworkFreesTheLock() {
  const support::PrivateNetwork network;
  if (!network.IsThere()) {
    QSKIP("a network of one's own takes root's rights");
  }
  const support::OwnServer server(u"network"_s);
  const TestDatabase database;
  static const QRegularExpression place(u"Servidor=[^;]*"_s);
  const QString country = u"SELECT COUNT(*) FROM Paises WHERE Nombre='x'"_s;
  const QString cut = database.ConnectionString().replace(place, u"Servidor=127.0.0.1"_s);
  Program ana(cut, 1);
  Program blas(database, 2);
  Program carla(cut, 3);
  QVERIFY(ana.Take());
  QVERIFY(!carla.session.Locks().Take(column, 2));
  // Her answer comes when there is no line any more.
  const QString held = u"UPDATE Paises SET Nombre='y' WHERE IDPais=2"_s;
  blas.office.BeginTrans();
  blas.office.Execute(held);
  const std::jthread waiting([&] { ErrorOf([&] { carla.office.Execute(held); }); });
  QTest::qWait(300);
  network.Cut();
  blas.office.RollbackTrans();
  QElapsedTimer elapsed;
  elapsed.start();
  QCOMPARE(ErrorOf([&] { ana.office.Execute(save); }), int(adodb::CannotOpen));
  QVERIFY2(elapsed.elapsed() < 25000, qPrintable(QString::number(elapsed.elapsed())));
  QTRY_VERIFY_WITH_TIMEOUT(blas.Take(), 30000 - static_cast<int>(elapsed.elapsed()));
  QTRY_VERIFY_WITH_TIMEOUT(!blas.session.Locks().Take(column, 2), 30000 - static_cast<int>(elapsed.elapsed()));
  network.Mend();
  try {
    ana.office.Execute(save);
    QFAIL("it was saved");
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(u"se perdió"_s), qPrintable(error.Description()));
  }
  QCOMPARE(Outcome(blas.office, country), u"0"_s);
}

// The dialog that saves does not hear of a cut that undid everything; where the server may have saved it does.
void tst_server_locks::WhatWasNotCommittedIsSentOnceMore() {
  support::Relay relay(m_database->ConnectionString());
  Program ana(relay.ConnectionString(), 1);
  QVERIFY(ana.Take());
  const QString notes = u"SELECT COUNT(*) FROM Cambios"_s;
  relay.SwallowAnswerTo("UPDATE");
  ana.office.Execute(save);
  QCOMPARE(Outcome(m_database->Connection(), notes), u"1"_s);
  QCOMPARE(Outcome(m_database->Connection(), u"SELECT Nombre FROM Paises WHERE IDPais=1"_s), u"x"_s);
  relay.SwallowAnswerTo("COMMIT");
  QCOMPARE(ErrorOf([&] { ana.office.Execute(QString(save).replace(u'x', u'y')); }), int(adodb::TransactionLost));
  QTRY_COMPARE(Outcome(m_database->Connection(), notes), u"2"_s);
  // A transaction of the component is its own affair.
  ana.office.BeginTrans();
  ana.office.Execute(save);
  Cut(ana);
  QCOMPARE(ErrorOf([&] { ana.office.Execute(save); }), int(adodb::TransactionLost));
  ana.office.RollbackTrans();
  QCOMPARE(Outcome(m_database->Connection(), notes), u"2"_s);
}

void tst_server_locks::ALockThatCouldNotBeReleasedEnds() {
  Program ana(*m_database, 1);
  Program blas(*m_database, 2);
  QVERIFY(ana.Take());
  ana.session.Locks().Take(column, 2);
  m_database->Server()->Run(u"ALTER TABLE kel.bloqueoregistros RENAME TO away"_s);
  QVERIFY(ErrorOf([&] { ana.session.Locks().Release(column, 1); }) != 0);
  m_database->Server()->Run(u"ALTER TABLE kel.away RENAME TO bloqueoregistros"_s);
  Cut(ana);
  QCOMPARE(ErrorOf([&] { ana.office.Execute(save); }), 0);
  QVERIFY(blas.Take());
  QVERIFY(blas.session.Locks().Take(column, 2).has_value());
}

// What was asked before the deletion holds until it is committed: no branch comes under a bank meanwhile.
void tst_server_locks::ABatchHoldsItsTables() {
  Program ana(*m_database, 1);
  const auto other = database::CreateConnection(m_database->ConnectionString() + u";Espera=50"_s);
  other->Open();
  const QString branch = u"INSERT INTO Sucursales(CodBanco,Nombre) VALUES(1,'x')"_s;
  ana.office.BeginBatch(host::TablesAround(*host::FindNode(cConstNodo().Bancos())));
  QCOMPARE(ErrorOf([&] { other->Execute(branch); }), int(adodb::DatabaseLocked));
  QCOMPARE(other->Execute(u"SELECT COUNT(*) FROM Sucursales"_s)->Field(0).toInt(), 0);
  other->Execute(u"UPDATE Diocesis SET Nombre='x' WHERE IDDiocesis=1"_s);
  QCOMPARE(ErrorOf([&] { ana.office.BeginBatch({u"Bancos"_s}); }), int(adodb::TransactionActive));
  ana.office.CommitBatch();
  ana.office.EndBatch();
  other->Execute(branch);
  QCOMPARE(other->RecordsAffected(), 1);

  // Whoever can't have them all has none, and begins no batch.
  other->BeginTrans();
  other->Execute(branch);
  Program blas(*m_database, 2, u";Espera=50"_s);
  QCOMPARE(ErrorOf([&] { blas.office.BeginBatch({u"Bancos"_s, u"Sucursales"_s}); }), int(adodb::DatabaseLocked));
  other->CommitTrans();
  blas.office.Execute(u"DELETE FROM Sucursales"_s);
  QCOMPARE(blas.office.RecordsAffected(), 2);
}

void tst_server_locks::ManyOnOneRecord_data() {
  QTest::addColumn<bool>("isHeld");
  QTest::addColumn<bool>("comesBack");
  QTest::newRow("free") << false << false;
  QTest::newRow("its holder has ended") << true << false;
  QTest::newRow("its holder comes back") << true << true;
}

// Fifty try at the same moment: one holder, and no error for those who are late.
void tst_server_locks::ManyOnOneRecord() {
  QFETCH(const bool, isHeld);
  QFETCH(const bool, comesBack);
  constexpr int racers = 50;
  const int wanted = qEnvironmentVariableIntValue("KEL_LOCK_ROUNDS");
  const int rounds = wanted > 0 ? wanted : 4;
  std::atomic<int> holders = 0;
  std::atomic<int> errors = 0;
  std::barrier start(racers + 1);
  std::barrier end(racers + 1);
  std::vector<std::thread> threads;
  for (int i = 0; i < racers; ++i) {
    threads.emplace_back([&, i] {
      Program racer(*m_database, i + 2);
      for (int round = 0; round < rounds; ++round) {
        start.arrive_and_wait();
        errors += ErrorOf([&] { holders += racer.Take() ? 1 : 0; }) == 0 ? 0 : 1;
        end.arrive_and_wait();
      }
    });
  }
  QStringList outcomes;
  for (int round = 0; round < rounds; ++round) {
    m_database->Execute(u"DELETE FROM BloqueoRegistros");
    auto holder = std::make_unique<Program>(*m_database, 1);
    if (isHeld) {
      holder->Take();
      Cut(*holder);
    }
    if (!comesBack) {
      holder.reset();
    }
    holders = 0;
    start.arrive_and_wait();
    int kept = 0;
    if (comesBack) {
      kept = ErrorOf([&] { holder->office.Execute(save); }) == 0 ? 1 : 0;
    }
    end.arrive_and_wait();
    outcomes += u"%1 holders, %2 errors, %3 rows"_s.arg(holders + kept)
                    .arg(errors)
                    .arg(m_database->Query(u"SELECT COUNT(*) FROM BloqueoRegistros").constFirst());
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  QCOMPARE(outcomes, QStringList(rounds, u"1 holders, 0 errors, 1 rows"_s));
}

KEL_TEST(tst_server_locks);
#include "tst_server_locks.moc"
