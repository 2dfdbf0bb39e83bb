#pragma once

#include "database/Maintenance.h"
#include "database/sqlite/SqliteHandle.h"

namespace database {

/// Raises 18 from any work of `handle` once `stop` says so; `stop` must outlive the handle.
void EndWhen(const SqliteHandle& handle, const Stop& stop);

/// Raises NotOurDatabase and NewerDatabase, DatabaseDamaged with the first faults for a file that is not sound.
void RequireSound(const SqliteHandle& handle);

/// CheckDatabase and QuickCheck for this engine.
Findings CheckSqlite(const ConnectionString& target);
QStringList QuickCheckSqlite(const ConnectionString& target);

}  // namespace database
