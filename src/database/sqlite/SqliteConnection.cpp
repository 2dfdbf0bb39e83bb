#include "database/sqlite/SqliteConnection.h"

namespace database {

SqliteConnection::SqliteConnection(const ConnectionString& target)
    : EngineConnection(std::make_unique<SqliteSession>(), target) {}

SqliteConnection::SqliteConnection(SqliteHandle handle) : SqliteConnection(ConnectionString(handle.Target()), handle) {}

SqliteConnection::SqliteConnection(const ConnectionString& target, SqliteHandle& handle)
    : EngineConnection(std::make_unique<SqliteSession>(std::move(handle)), target) {}

const SqliteHandle& SqliteConnection::Handle() const {
  return static_cast<const SqliteSession&>(ItsSession()).Handle();
}

}  // namespace database
