#include "support/TestServer.h"

#include <QCoreApplication>
#include <QFile>

#include <libpq-fe.h>

#include <map>
#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace support {

namespace {

QString Folder() {
  QFile place(qEnvironmentVariable("KEL_POSTGRES"));
  if (!place.open(QIODevice::ReadOnly)) {
    throw std::runtime_error("no server for the tests: KEL_POSTGRES names no file of tests/support/postgres.sh");
  }
  return QString::fromUtf8(place.readAll()).trimmed();
}

QString Address(const QString& base) {
  return u"Motor=postgres;Servidor=%1;Usuario=postgres;Base=%2"_s.arg(Folder(), base);
}

/// A line to a database, as its owner.
class OwnersLine {
 public:
  explicit OwnersLine(const QString& base)
      : m_server(PQconnectdb(qUtf8Printable(u"host='%1' user=postgres dbname='%2'"_s.arg(Folder(), base))), PQfinish) {}

  /// The number of rows that come back.
  int Run(const QString& sql) const {
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(m_server.get(), qUtf8Printable(sql)), PQclear);
    if (PQresultStatus(result.get()) != PGRES_COMMAND_OK && PQresultStatus(result.get()) != PGRES_TUPLES_OK) {
      throw std::runtime_error(PQerrorMessage(m_server.get()));
    }
    return PQntuples(result.get());
  }

 private:
  std::unique_ptr<PGconn, decltype(&PQfinish)> m_server;
};

QString NewName() {
  static int last = 0;
  return u"kel_%1_%2"_s.arg(QCoreApplication::applicationPid()).arg(++last);
}

// Beside the tables a copy of their rows, and who was written to, so that a reset touches only those.
const QString memory =
    uR"sql(
CREATE SCHEMA kel_test;
CREATE TABLE kel_test.written (name text);
CREATE FUNCTION kel_test.note() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER AS $$
BEGIN
  INSERT INTO kel_test.written VALUES (TG_TABLE_NAME);
  RETURN NULL;
END $$;
CREATE FUNCTION kel_test.reset() RETURNS void LANGUAGE plpgsql AS $$
DECLARE
  n text;
BEGIN
  FOR n IN SELECT DISTINCT name FROM kel_test.written LOOP
    EXECUTE format('TRUNCATE kel.%I', n);
    EXECUTE format('INSERT INTO kel.%1$I SELECT * FROM kel_test.%1$I', n);
  END LOOP;
  TRUNCATE kel_test.written;
  PERFORM setval(s.name::regclass, coalesce(s.last, 1), s.last IS NOT NULL) FROM kel_test.sequences AS s
    WHERE pg_sequence_last_value(s.name::regclass) IS DISTINCT FROM s.last;
END $$;
CREATE TABLE kel_test.sequences AS SELECT format('kel.%I', sequencename) AS name, last_value AS last FROM pg_sequences
  WHERE schemaname = 'kel';
DO $$
DECLARE
  n text;
BEGIN
  FOR n IN SELECT tablename FROM pg_tables WHERE schemaname = 'kel' LOOP
    EXECUTE format('CREATE TABLE kel_test.%1$I AS TABLE kel.%1$I', n);
    EXECUTE format('CREATE TRIGGER kel_test AFTER INSERT OR UPDATE OR DELETE ON kel.%I EXECUTE FUNCTION kel_test.note()', n);
  END LOOP;
END $$;
)sql"_s;

QStringList& FreeDatabases(database::Content content) {
  static std::map<std::pair<QString, database::Content>, QStringList> names;
  return names[{Folder(), content}];
}

// The first program of a run prepares it, the others wait; it counts as a template when it is ready.
QString Template(const OwnersLine& server, database::Content content) {
  QString name = u"kel_template_%1"_s.arg(static_cast<int>(content));
  server.Run(u"SELECT pg_advisory_lock(1)"_s);
  if (server.Run(u"SELECT FROM pg_database WHERE datistemplate AND datname='%1'"_s.arg(name)) == 0) {
    server.Run(u"DROP DATABASE IF EXISTS "_s + name);
    server.Run(u"CREATE DATABASE "_s + name);
    database::PrepareDatabase(Address(name), content);
    OwnersLine(name).Run(memory);
    server.Run(u"ALTER DATABASE %1 IS_TEMPLATE true"_s.arg(name));
  }
  server.Run(u"SELECT pg_advisory_unlock(1)"_s);
  return name;
}

QString MakeDatabase(database::Content content) {
  QString name = NewName();
  const OwnersLine server(u"postgres"_s);
  server.Run(u"CREATE DATABASE %1 TEMPLATE %2 STRATEGY file_copy"_s.arg(name, Template(server, content)));
  return name;
}

// What is still at work for a test that has ended would stand in the way of the reset, and a presence in that of the
// next test.
QString TakeDatabase(database::Content content) {
  QStringList& names = FreeDatabases(content);
  if (names.isEmpty()) {
    return MakeDatabase(content);
  }
  QString name = names.takeLast();
  OwnersLine(name).Run(
      u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname=current_database() AND "
      "pid<>pg_backend_pid() AND (state<>'idle' OR pid IN (SELECT pid FROM pg_locks WHERE locktype='advisory')); "
      "SELECT kel_test.reset()"_s);
  return name;
}

}  // namespace

bool IsOnServer() {
  return qEnvironmentVariable("KEL_MOTOR") == u"postgres";
}

ServerDatabase::ServerDatabase(database::Content content) : m_content(content), m_name(TakeDatabase(content)) {}

// Databases stay until the server's folder goes.
ServerDatabase::~ServerDatabase() {
  if (!m_isSpoiled) {
    FreeDatabases(m_content) += m_name;
  }
}

QString ServerDatabase::ConnectionString() const {
  return Address(m_name);
}

void ServerDatabase::Run(const QString& sql) const {
  m_isSpoiled = true;
  OwnersLine(m_name).Run(sql);
}

}  // namespace support
