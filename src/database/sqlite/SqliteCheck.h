#pragma once

#include "database/Maintenance.h"
#include "database/Schema.h"
#include "database/sqlite/SqliteHandle.h"

namespace database {

/// Raises 18 from any work of `handle` once `stop` says so; `stop` must outlive the handle.
void EndWhen(const SqliteHandle& handle, const Stop& stop);

/// Raises NotOurDatabase and NewerDatabase, DatabaseDamaged with the first faults for a file that is not sound.
void RequireSound(const SqliteHandle& handle);

/// The table whose rows a column of identifiers names: CodPais those of the key IDPais, CodTipoDeduccionFisica those of
/// IDTipoDeduccion, CodDeduccion, too. nullptr for a column that names none.
const Table* ReferredTable(const Schema& schema, const Column& column);

/// CheckDatabase and QuickCheck for this engine.
Findings CheckSqlite(const ConnectionString& target);
QStringList QuickCheckSqlite(const ConnectionString& target);

}  // namespace database
