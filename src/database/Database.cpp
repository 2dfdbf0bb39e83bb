#include "database/Database.h"

#include "database/Engines.h"
#include "database/Errors.h"
#include "database/postgres/PostgresPreparation.h"
#include "database/postgres/PostgresSession.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqlitePreparation.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

std::unique_ptr<adodb::Connection> ConnectionTo(const ConnectionString& target) {
  if (IsOnServer(target)) {
    return std::make_unique<EngineConnection>(CreateSession(target), target);
  }
  return std::make_unique<SqliteConnection>(target);
}

}  // namespace

bool IsOnServer(const ConnectionString& target) {
  return target.Engine() == u"postgres";
}

ConnectionString TargetOf(const QString& connectionString) {
  ConnectionString target(connectionString);
  if (target.Engine() != u"sqlite" && !IsOnServer(target)) {
    throw BadConnectionString(u"no se conoce el motor «%1»; use «sqlite» o «postgres»"_s.arg(target.Engine()));
  }
  return target;
}

std::unique_ptr<Session> CreateSession(const ConnectionString& target) {
  if (IsOnServer(target)) {
    return std::make_unique<PostgresSession>();
  }
  return std::make_unique<SqliteSession>();
}

std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString) {
  return ConnectionTo(TargetOf(connectionString));
}

std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString, std::chrono::milliseconds wait) {
  return ConnectionTo(TargetOf(connectionString).WithWait(wait));
}

std::chrono::milliseconds WaitOf(const QString& connectionString) {
  return std::chrono::milliseconds(TargetOf(connectionString).WaitMilliseconds());
}

QString ConnectionStringForFile(const QString& path) {
  return u"Motor=sqlite;Archivo="_s + ConnectionString::Quoted(path);
}

void PrepareDatabase(const QString& connectionString, Content content) {
  const ConnectionString target = TargetOf(connectionString);
  IsOnServer(target) ? PreparePostgres(target, content) : PrepareSqlite(target, content);
}

}  // namespace database
