#include "database/Database.h"

#include "database/ConnectionString.h"
#include "database/Errors.h"
#include "database/postgres/PostgresPreparation.h"
#include "database/postgres/PostgresSession.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqlitePreparation.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

ConnectionString Parsed(const QString& text) {
  ConnectionString target(text);
  if (target.Engine() != u"sqlite" && target.Engine() != u"postgres") {
    throw BadConnectionString(u"no se conoce el motor «%1»; use «sqlite» o «postgres»"_s.arg(target.Engine()));
  }
  return target;
}

bool IsOnServer(const ConnectionString& target) {
  return target.Engine() == u"postgres";
}

}  // namespace

std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString) {
  const ConnectionString target = Parsed(connectionString);
  if (IsOnServer(target)) {
    return std::make_unique<EngineConnection>(std::make_unique<PostgresSession>(), target);
  }
  return std::make_unique<SqliteConnection>(target);
}

QString ConnectionStringForFile(const QString& path) {
  return u"Motor=sqlite;Archivo="_s + ConnectionString::Quoted(path);
}

void PrepareDatabase(const QString& connectionString, Content content) {
  const ConnectionString target = Parsed(connectionString);
  IsOnServer(target) ? PreparePostgres(target, content) : PrepareSqlite(target, content);
}

}  // namespace database
