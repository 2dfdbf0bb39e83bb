#include "database/Database.h"

#include "database/Engines.h"
#include "database/Errors.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqlitePreparation.h"

using namespace Qt::StringLiterals;

namespace database {

ConnectionString TargetOf(const QString& connectionString) {
  ConnectionString target(connectionString);
  if (target.Engine() != u"sqlite") {
    throw BadConnectionString(u"no se conoce el motor «%1»; use «sqlite»"_s.arg(target.Engine()));
  }
  return target;
}

std::unique_ptr<Session> CreateSession(const ConnectionString& /*target*/) {
  return std::make_unique<SqliteSession>();
}

std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString) {
  return std::make_unique<SqliteConnection>(TargetOf(connectionString));
}

std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString, std::chrono::milliseconds wait) {
  return std::make_unique<SqliteConnection>(TargetOf(connectionString).WithWait(wait));
}

std::chrono::milliseconds WaitOf(const QString& connectionString) {
  return std::chrono::milliseconds(TargetOf(connectionString).WaitMilliseconds());
}

QString ConnectionStringForFile(const QString& path) {
  return u"Motor=sqlite;Archivo="_s + ConnectionString::Quoted(path);
}

void PrepareDatabase(const QString& connectionString, Content content) {
  PrepareSqlite(TargetOf(connectionString), content);
}

}  // namespace database
