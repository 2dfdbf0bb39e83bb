#pragma once

#include "database/ConnectionString.h"
#include "database/Maintenance.h"
#include "database/engine/Transfer.h"

namespace database {

/// CopyDatabase, LookIntoCopy and RestoreDatabase for this engine. `file` is an absolute path.
CopySize CopySqlite(const ConnectionString& source, const QString& file, const Stop& stop);
CopyContent LookIntoSqlite(const ConnectionString& copy);
QString RestoreSqlite(const ConnectionString& copy, const QString& file);

/// Makes the new file `file` with what `fill` puts into its empty tables, as CopySqlite makes a copy.
CopySize MakeSqlite(const QString& file, const std::function<void(const TransferTarget&)>& fill, const Stop& stop);

/// Checks the file, which stays as it is, and hands out its rows, of this program's version even where the file is of
/// an older one.
void ReadSqlite(const ConnectionString& source, const std::function<void(const TransferSource&)>& read);

}  // namespace database
