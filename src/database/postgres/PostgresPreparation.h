#pragma once

#include "database/Database.h"
#include "database/Maintenance.h"
#include "database/engine/Preparation.h"
#include "database/postgres/PostgresHandle.h"

namespace database {

/// The version of the schema as the database notes it. Raises the engine's refusal, also where it notes none.
int VersionOf(const PostgresHandle& handle);

/// What the database says of itself.
DatabaseState StateOf(const PostgresHandle& handle);

/// Makes the tables of a new database in that schema of the server's, which must be the first of the search path.
void MakeTables(const PostgresHandle& handle, const Schema& schema, const QByteArray& schemaName);

/// Raises NewerDatabase, OlderDatabase, NotOurDatabase unless the database is of this program's schema version, and
/// CannotOpen where the server orders texts by other rules than those that made the indexes.
void RequireCurrentDatabase(const PostgresHandle& handle);

/// Whether texts are ordered by the rules that made the indexes.
bool HasCurrentCollation(const PostgresHandle& handle);

/// Whether this user may write here: not on a replica, and not with rights to read only.
bool MayWritePostgres(const ConnectionString& target);

/// PrepareDatabase for this engine; the database itself must exist. Everything stands in a schema of the server's of
/// its own, `kel`. Raises OlderDatabase, saying who can help, for a user who may not make or migrate it.
void PreparePostgres(const ConnectionString& target, Content content);

/// SetUpServer for this engine.
ServerSetUp SetUpPostgres(const ConnectionString& target, Content content);

}  // namespace database
