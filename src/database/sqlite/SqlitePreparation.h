#pragma once

#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"

namespace database {

/// Raises NewerDatabase, OlderDatabase, NotOurDatabase unless the file is of this program's schema version.
/// Rebuilds the indexes of texts where the ordering rules of this machine are not those that made them.
void RequireCurrentDatabase(const SqliteHandle& handle);

/// Raises NewerDatabase, and NotOurDatabase, for an empty file, too; an older one of this program will do.
void RequireKnownDatabase(const SqliteHandle& handle);

/// PrepareDatabase for this engine.
void PrepareSqlite(const ConnectionString& target, Content content);

/// Creates the tables and indexes of schema version `version` in an empty database; inside a transaction of the
/// caller. Older versions than the current one serve the tests of migrations.
void CreateTables(const SqliteHandle& handle, const Schema& schema, int version);
/// Brings the tables from an older version up to the schema's; inside a transaction of the caller.
void MigrateTables(const SqliteHandle& handle, const Schema& schema, int fromVersion);

}  // namespace database
