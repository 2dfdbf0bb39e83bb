#pragma once

#include "database/engine/EngineConnection.h"
#include "database/sqlite/SqliteSession.h"

namespace database {

/// A connection to a database file.
class SqliteConnection : public EngineConnection {
 public:
  explicit SqliteConnection(const ConnectionString& target);
  /// An open connection over a file that is not, or not yet, of the current version; for its preparation and checks.
  explicit SqliteConnection(SqliteHandle handle);

  /// The open file; for this folder only.
  const SqliteHandle& Handle() const;

 private:
  SqliteConnection(const ConnectionString& target, SqliteHandle& handle);
};

}  // namespace database
