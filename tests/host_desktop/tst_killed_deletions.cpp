#include "FakeComponent.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include "host/records/Deletion.h"
#include "host/records/OfficeConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/contract/cConstNodo.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include <cstdio>

using namespace Qt::StringLiterals;

using support::TestDatabase;

/// Programs that delete the same banks at once, and ones that are killed meanwhile.
class tst_killed_deletions : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AKilledProgramLeavesNothingHalfDone();
  void TwoProgramsLeaveOneNote();
};

namespace {

constexpr int bankCount = 60;

void AddBanks(const TestDatabase& database) {
  const auto connection = database.Connect();
  connection->BeginTrans();
  for (int bank = 1; bank <= bankCount; ++bank) {
    adodb::Execute(*connection, u"INSERT INTO Bancos(IDBanco,Numero) VALUES({},'{}')", bank, QString::number(bank));
    for (int branch = 0; branch < 2; ++branch) {
      adodb::Execute(*connection, u"INSERT INTO Sucursales(codBanco,Codigo) VALUES({},'{}')", bank,
                     QString::number(branch));
    }
  }
  connection->CommitTrans();
}

// Deletes every bank there ever was, and says on its output when it begins.
int DeleteAsHelper(const QString& text) {
  host::Session session;
  host::OfficeConnection office(database::CreateConnection(text), session);
  session.connection = &office;
  session.office = &office;
  session.userName = u"ana"_s;
  office.Open();
  host::RegisterClasses(session);
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Sucursales SET Eliminado=-1 WHERE CodBanco={}", id);
    adodb::Execute(connection, u"UPDATE Bancos SET Eliminado=-1 WHERE IDBanco={}", id);
  });
  const auto services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  host::ComponentBridge bridge(*services, session);
  QList<host::DeletionTarget> targets;
  for (int bank = 1; bank <= bankCount; ++bank) {
    targets.append({bank, QString::number(bank)});
  }
  std::puts("");
  std::fflush(stdout);
  host::DeleteRecords(bridge, *host::FindNode(cConstNodo().Bancos()), targets, [](int) { return true; });
  host::UnregisterClasses();
  return 0;
}

std::unique_ptr<QProcess> Start(const TestDatabase& database) {
  auto process = std::make_unique<QProcess>();
  process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process->start(QCoreApplication::applicationFilePath(), {u"--delete"_s, database.ConnectionString()});
  return process;
}

// Banks whose note, branches and mark say different things.
QStringList HalfDone(const TestDatabase& database) {
  return database.Query(
             u"SELECT IDBanco FROM Bancos INNER JOIN Sucursales ON codBanco=IDBanco WHERE "
             u"Bancos.Eliminado<>Sucursales.Eliminado") +
         database.Query(
             u"SELECT IDBanco FROM Bancos WHERE Eliminado=0 AND IDBanco IN (SELECT ValorID FROM EliminacionesRegistros "
             u"WHERE Tabla='Bancos')") +
         database.Query(
             u"SELECT IDBanco FROM Bancos WHERE Eliminado<>0 AND IDBanco NOT IN (SELECT ValorID FROM "
             u"EliminacionesRegistros WHERE Tabla='Bancos')") +
         database.Query(
             u"SELECT IDBanco FROM Bancos WHERE Eliminado<>0 AND IDBanco NOT IN (SELECT ValorID FROM Cambios WHERE "
             u"Tabla='Bancos' AND Clase=3)");
}

}  // namespace

void tst_killed_deletions::AKilledProgramLeavesNothingHalfDone() {
  const int wanted = qEnvironmentVariableIntValue("KEL_DELETION_KILLS");
  const int kills = wanted > 0 ? wanted : 12;
  const TestDatabase database;
  AddBanks(database);
  int inTheMiddle = 0;
  for (int kill = 0; kill < kills; ++kill) {
    const auto process = Start(database);
    QVERIFY(process->waitForReadyRead(30000));
    QThread::usleep(QRandomGenerator::global()->bounded(40'000U));
    process->kill();
    QVERIFY(process->waitForFinished());
    QCOMPARE(HalfDone(database), QStringList());
    const int deleted = database.Id(u"SELECT COUNT(*) FROM Bancos WHERE Eliminado<>0");
    inTheMiddle += deleted > 0 && deleted < bankCount ? 1 : 0;
    for (const char16_t* table : {u"Bancos", u"Sucursales"}) {
      database.Execute(u"UPDATE {} SET Eliminado=0", adodb::Verbatim{QString::fromUtf16(table)});
    }
    for (const char16_t* table : {u"Eliminaciones", u"EliminacionesRegistros", u"Cambios"}) {
      database.Execute(u"DELETE FROM {}", adodb::Verbatim{QString::fromUtf16(table)});
    }
  }
  qInfo("%d of %d kills came in the middle", inTheMiddle, kills);
}

void tst_killed_deletions::TwoProgramsLeaveOneNote() {
  const TestDatabase database;
  AddBanks(database);
  const auto first = Start(database);
  const auto second = Start(database);
  for (QProcess* process : {first.get(), second.get()}) {
    QVERIFY(process->waitForFinished(60'000));
    QCOMPARE(process->exitCode(), 0);
  }
  QCOMPARE(HalfDone(database), QStringList());
  QCOMPARE(database.Id(u"SELECT COUNT(*) FROM Eliminaciones"), bankCount);
  QCOMPARE(database.Id(u"SELECT COUNT(*) FROM Bancos WHERE Eliminado<>0"), bankCount);
}

KEL_TEST(tst_killed_deletions);
KEL_TEST_HELPER(delete, [](const QStringList& arguments) { return DeleteAsHelper(arguments.value(0)); });

#include "tst_killed_deletions.moc"
