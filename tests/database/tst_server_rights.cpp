#include "database/Maintenance.h"
#include "database/Schema.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QRegularExpression>
#include <QTest>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// Who may do what on a server, what its preparation does, and that nobody talks to one over an open line.
class tst_server_rights : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void EachGroupMayDoItsWork();
  void OwnersMakeAndMigrate();
  void OtherRulesOfOrderWaitForAnOwner();
  void OnlyTheRightOneMayPrepare();
  void AnOpenLineIsRefused();

 private:
  QString Text() const { return m_database->ConnectionString(); }
  QString Base() const { return QRegularExpression(u"Base=(\\w+)"_s).match(Text()).captured(1); }
  const support::ServerDatabase& Server() const { return *m_database->Server(); }

  /// The database as a person of that group, or of none, sees it.
  QString As(const QString& group) const {
    const QString person = Base() + u"_p_"_s + group;
    Server().Run(u"CREATE ROLE %1 LOGIN"_s.arg(person));
    if (!group.isEmpty()) {
      Server().Run(u"GRANT %1_%2 TO %3"_s.arg(Base(), group, person));
    }
    return Text().replace(u"Usuario=postgres"_s, u"Usuario="_s + person);
  }

  static QString Outcomes(const QString& address, const QStringList& statements) {
    const TestDatabase database(address);
    QStringList outcomes;
    for (const QString& statement : statements) {
      outcomes += QString::number(ErrorOf([&] { database.Connection().Execute(statement); }) == 0);
    }
    return outcomes.join(u' ');
  }

  std::unique_ptr<TestDatabase> m_database;
};

void tst_server_rights::EachGroupMayDoItsWork() {
  database::SetUpServer(Text(), database::Content::Reference);
  const std::pair<QString, QString> groups[] = {{u"lectores"_s, u"1 1 0 0 0 0 0 0"_s},
                                                {u"usuarios"_s, u"1 1 1 1 0 0 0 0"_s},
                                                {u"administradores"_s, u"1 1 1 1 0 0 1 1"_s},
                                                {u"propietarios"_s, u"1 1 1 1 1 1 1 1"_s}};
  for (const auto& [group, may] : groups) {
    const QString address = As(group);
    QCOMPARE(
        Outcomes(address,
                 {u"SELECT MAX(IDPais) FROM Paises"_s, u"SELECT Nombre FROM Usuarios"_s,
                  u"INSERT INTO Bancos(IDBanco,Nombre) SELECT MAX(IDPais)+%1,'a' FROM Paises"_s.arg(group.size()),
                  u"INSERT INTO Cambios(Tabla) VALUES('a')"_s, u"UPDATE Cambios SET Tabla='b'"_s,
                  u"DELETE FROM Cambios"_s, u"UPDATE Usuarios SET Nombre='a'"_s, u"UPDATE Ajustes SET Valor='a'"_s}),
        may);
    QCOMPARE(database::MayBeWritten(address), group != u"lectores");
    QCOMPARE(ErrorOf([&] { database::SetUpServer(address, database::Content::Reference); }) == 0,
             group == u"propietarios");
    database::PrepareDatabase(address, database::Content::Reference);
  }
}

// Whoever of them does it: everything belongs to the group, so that any other one can go on, and all get their rights.
void tst_server_rights::OwnersMakeAndMigrate() {
  database::SetUpServer(Text(), database::Content::Reference);
  const QString owner = As(u"propietarios"_s);
  const QString user = As(u"usuarios"_s);
  Server().Run(u"DROP SCHEMA kel CASCADE"_s);
  const auto preparing = [](const QString& address) {
    return ErrorOf([&] { database::PrepareDatabase(address, database::Content::Reference); });
  };
  QCOMPARE(preparing(user), int(adodb::OlderDatabase));
  QCOMPARE(preparing(owner), 0);
  QCOMPARE(Outcomes(user, {u"INSERT INTO Bancos(Nombre) VALUES('a')"_s}), u"1"_s);

  const QTemporaryDir folder;
  const QString copy = folder.filePath(u"copia.db"_s);
  database::CopyDatabase(user, copy);
  QVERIFY(ErrorOf([&] { database::RestoreDatabase(copy, user); }) != 0);
  QVERIFY(!database::RestoreDatabase(copy, owner).isEmpty());
  QCOMPARE(Outcomes(user, {u"INSERT INTO Bancos(Nombre) VALUES('a')"_s, u"DELETE FROM Cambios"_s}), u"1 0"_s);

  Server().Run(u"UPDATE kel.kelmotor SET valor='3'; DROP SEQUENCE kel.presencias"_s);
  for (const database::Table& table : database::Schema::Current().Tables()) {
    if (table.since > 3) {
      Server().Run(u"DROP TABLE kel."_s + table.name);
    }
    for (const database::Column& column : table.columns) {
      if (table.since <= 3 && column.since > 3) {
        Server().Run(u"ALTER TABLE kel.%1 DROP COLUMN %2"_s.arg(table.name, column.name));
      }
    }
  }
  QCOMPARE(preparing(user), int(adodb::OlderDatabase));
  QCOMPARE(preparing(owner), 0);
  QCOMPARE(Outcomes(user, {u"INSERT INTO Cambios(Tabla) VALUES('a')"_s, u"DELETE FROM Cambios"_s}), u"1 0"_s);
  Server().Run(
      u"DO $$BEGIN ASSERT NOT EXISTS (SELECT FROM pg_class WHERE relnamespace='kel'::regnamespace AND "
      "relowner<>'%1_propietarios'::regrole); END$$"_s.arg(Base()));
}

void tst_server_rights::OtherRulesOfOrderWaitForAnOwner() {
  database::SetUpServer(Text(), database::Content::Reference);
  const QString user = As(u"usuarios"_s);
  Server().Run(u"UPDATE pg_collation SET collversion='1' WHERE collname='kel_es'"_s);
  const auto said = [](const QString& address) {
    try {
      TestDatabase(address).Connection();
    } catch (const automation::Error& error) {
      return error.Description();
    }
    return QString();
  };
  QVERIFY(said(user).contains(u"espere a que quien la administra ejecute «kel-host preparar"_s));
  QVERIFY(said(Text()).contains(u"ejecute «kel-host preparar"_s));
  QVERIFY(database::SetUpServer(Text(), database::Content::Reference).rebuiltIndexes);
  QCOMPARE(said(user), QString());
  QVERIFY(!database::SetUpServer(Text(), database::Content::Reference).rebuiltIndexes);
}

// Without the right to make groups nothing is made; the database's owner with that right will do.
void tst_server_rights::OnlyTheRightOneMayPrepare() {
  Server().Run(u"DROP SCHEMA kel CASCADE"_s);
  const QString person = As(QString());
  try {
    database::SetUpServer(person, database::Content::Reference);
    QFAIL("it was prepared");
  } catch (const automation::Error& error) {
    QCOMPARE(error.Number(), int(adodb::DatabaseReadOnly));
    QVERIFY2(error.Description().contains(u"CREATEROLE"), qUtf8Printable(error.Description()));
  }
  Server().Run(u"ALTER ROLE %1_p_ CREATEROLE; ALTER DATABASE %1 OWNER TO %1_p_"_s.arg(Base()));
  QCOMPARE(database::SetUpServer(person, database::Content::Reference).groups.size(), 4);
  QCOMPARE(Outcomes(person, {u"INSERT INTO Bancos(Nombre) VALUES('a')"_s}), u"1"_s);
  QCOMPARE(ErrorOf([&] { database::SetUpServer(u"Motor=sqlite;Archivo=/tmp/no.db"_s, database::Content::Reference); }),
           int(adodb::InvalidConnectionString));
}

// A server that says that it can't encrypt is told nothing, not even a name, unless it is this machine.
void tst_server_rights::AnOpenLineIsRefused() {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  inet_pton(AF_INET, "127.0.0.2", &address.sin_addr);
  socklen_t size = sizeof(address);
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  QVERIFY(bind(listener, plain, size) == 0 && listen(listener, 1) == 0 && getsockname(listener, plain, &size) == 0);
  int error = 0;
  std::thread program([&, port = ntohs(address.sin_port)] {
    const auto connection =
        database::CreateConnection(u"Motor=postgres;Servidor=127.0.0.2;Puerto=%1;Base=kel;Usuario=ana"_s.arg(port));
    error = ErrorOf([&] { connection->Open(); });
  });
  const int line = accept(listener, nullptr, nullptr);
  QByteArray heard(100, '\0');
  qsizetype count = read(line, heard.data(), 100);
  count += write(line, "N", 1) == 1 ? std::max<qsizetype>(read(line, heard.data() + count, 100 - count), 0) : 0;
  close(line);
  close(listener);
  program.join();
  QCOMPARE(error, int(adodb::CannotOpen));
  QCOMPARE(heard.left(count).toHex(), "0000000804d2162f");
}

KEL_TEST(tst_server_rights);
#include "tst_server_rights.moc"
