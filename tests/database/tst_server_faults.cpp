#include "database/Announcement.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/OwnServer.h"
#include "support/Relay.h"
#include "support/SmallDisk.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <pwd.h>
#include <unistd.h>

using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// A server whose disk is full, and a line that is cut at the worst moment.
class tst_server_faults : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ALostAnswerIsSaidAndNothingSentTwice_data();
  void ALostAnswerIsSaidAndNothingSentTwice();
  void AFullDiskIsSaid();
};

namespace {

void GiveToServer(const QString& folder) {
  const passwd* user = getpwnam("postgres");
  QVERIFY(user != nullptr && chown(QFile::encodeName(folder).constData(), user->pw_uid, user->pw_gid) == 0);
}

}  // namespace

void tst_server_faults::ALostAnswerIsSaidAndNothingSentTwice_data() {
  QTest::addColumn<bool>("inTransaction");
  QTest::addColumn<bool>("isAnnounced");
  QTest::newRow("to COMMIT") << true << false;
  QTest::newRow("to a statement with its COMMIT") << true << true;
  QTest::newRow("to a statement") << false << false;
}

void tst_server_faults::ALostAnswerIsSaidAndNothingSentTwice() {
  QFETCH(const bool, inTransaction);
  QFETCH(const bool, isAnnounced);
  const TestDatabase database;
  support::Relay relay(database.ConnectionString());
  const auto connection = database::CreateConnection(relay.ConnectionString());
  connection->Open();
  const auto save = [&] {
    const QString statement = u"INSERT INTO Bancos(Nombre) VALUES('a')"_s;
    if (!inTransaction) {
      relay.SwallowAnswerTo("INSERT");
      connection->Execute(statement);
      return;
    }
    connection->BeginTrans();
    // COMMIT is prepared with the first statement of all.
    connection->Execute(u"SELECT COUNT(*) FROM Bancos"_s);
    const database::Announcement announcement(*connection, isAnnounced ? QStringList(statement) : QStringList(),
                                              database::Announcement::End::Commit);
    relay.SwallowAnswerTo("COMMIT");
    connection->Execute(statement);
    connection->CommitTrans();
  };
  try {
    save();
    QFAIL("nothing was said");
  } catch (const automation::Error& error) {
    QCOMPARE(error.Number(), int(adodb::TransactionLost));
    QVERIFY2(error.Description().contains(u"no se sabe si"_s), qUtf8Printable(error.Description()));
  }
  QTRY_COMPARE(database.Query(u"SELECT COUNT(*) FROM Bancos"), QStringList(u"1"_s));
  connection->Close();
  connection->Open();
  QCOMPARE(Outcome(*connection, u"SELECT COUNT(*) FROM Bancos"_s), u"1"_s);
}

// The disk of some tables is full; without room for its own log a server stops, which is a cut line.
void tst_server_faults::AFullDiskIsSaid() {
  const support::SmallDisk disk;
  if (!disk.IsThere()) {
    QSKIP("a full disk takes root's rights");
  }
  const QString tables = disk.Path(u"tables"_s);
  QVERIFY(QDir().mkpath(tables));
  GiveToServer(disk.Path({}));
  GiveToServer(tables);
  const support::OwnServer server;
  const TestDatabase database;
  database.Server()->Run(u"CREATE TABLESPACE pequeno LOCATION '%1'"_s.arg(tables));
  database.Server()->Run(u"ALTER TABLE kel.cabeceras SET TABLESPACE pequeno"_s);
  disk.Fill();
  adodb::Connection& connection = database.Connection();
  const QString insert = u"INSERT INTO Cabeceras(Nombre) VALUES('%1')"_s.arg(QString(5000, u'x'));
  connection.BeginTrans();
  connection.Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')"_s);
  QCOMPARE(ErrorOf([&] {
             for (int i = 0; i < 10000; ++i) {
               connection.Execute(insert);
             }
           }),
           int(adodb::DiskFull));
  disk.Free();
  QCOMPARE(Outcome(connection, insert), QString());
  connection.CommitTrans();
  QCOMPARE(database.Query(u"SELECT COUNT(*) FROM Bancos"), QStringList(u"1"_s));
}

KEL_TEST(tst_server_faults);
#include "tst_server_faults.moc"
