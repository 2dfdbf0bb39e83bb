#include "database/Database.h"

#include "database/ConnectionString.h"
#include "database/Errors.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqlitePreparation.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

ConnectionString Parsed(const QString& text) {
  ConnectionString target(text);
  if (target.Engine() != u"sqlite") {
    throw BadConnectionString(u"no se conoce el motor «%1»; use «sqlite»"_s.arg(target.Engine()));
  }
  return target;
}

}  // namespace

std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString) {
  return std::make_unique<SqliteConnection>(Parsed(connectionString));
}

std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString, std::chrono::milliseconds wait) {
  return std::make_unique<SqliteConnection>(Parsed(connectionString).WithWait(wait));
}

std::chrono::milliseconds WaitOf(const QString& connectionString) {
  return std::chrono::milliseconds(Parsed(connectionString).WaitMilliseconds());
}

QString ConnectionStringForFile(const QString& path) {
  return u"Motor=sqlite;Archivo="_s + ConnectionString::Quoted(path);
}

void PrepareDatabase(const QString& connectionString, Content content) {
  PrepareSqlite(Parsed(connectionString), content);
}

}  // namespace database
