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

void RunOn(const QString& base, const QString& sql) {
  const QString address = u"host='%1' user=postgres dbname='%2'"_s.arg(Folder(), base);
  const std::unique_ptr<PGconn, decltype(&PQfinish)> server(PQconnectdb(qUtf8Printable(address)), PQfinish);
  const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(server.get(), qUtf8Printable(sql)), PQclear);
  if (PQresultStatus(result.get()) != PGRES_COMMAND_OK && PQresultStatus(result.get()) != PGRES_TUPLES_OK) {
    throw std::runtime_error(PQerrorMessage(server.get()));
  }
}

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

std::map<database::Content, QStringList>& FreeDatabases() {
  static std::map<database::Content, QStringList> names;
  return names;
}

QString MakeDatabase(database::Content content) {
  QString name = NewName();
  RunOn(u"postgres"_s, u"CREATE DATABASE "_s + name);
  database::PrepareDatabase(Address(name), content);
  RunOn(name, memory);
  return name;
}

// A statement that is still at work for a test that has ended would stand in the way of the reset.
QString TakeDatabase(database::Content content) {
  QStringList& names = FreeDatabases()[content];
  if (names.isEmpty()) {
    return MakeDatabase(content);
  }
  QString name = names.takeLast();
  RunOn(name,
        u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname=current_database() AND "
        "pid<>pg_backend_pid(); SELECT kel_test.reset()"_s);
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
    FreeDatabases()[m_content] += m_name;
  }
}

QString ServerDatabase::ConnectionString() const {
  return Address(m_name);
}

void ServerDatabase::Run(const QString& sql) const {
  m_isSpoiled = true;
  RunOn(m_name, sql);
}

}  // namespace support
