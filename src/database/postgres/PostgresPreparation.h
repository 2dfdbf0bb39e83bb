#pragma once

#include "database/Database.h"
#include "database/postgres/PostgresHandle.h"

namespace database {

/// The version of the schema as the database notes it. Raises the engine's refusal, also where it notes none.
int VersionOf(const PostgresHandle& handle);

/// Raises NewerDatabase, OlderDatabase, NotOurDatabase unless the database is of this program's schema version, and
/// CannotOpen where the server orders texts by other rules than those that made the indexes.
void RequireCurrentDatabase(const PostgresHandle& handle);

/// Whether this user may write here: not on a replica, and not with rights to read only.
bool MayWritePostgres(const ConnectionString& target);

/// PrepareDatabase for this engine; the database itself must exist. Everything stands in a schema of the server's of
/// its own, `kel`.
void PreparePostgres(const ConnectionString& target, Content content);

}  // namespace database
