#pragma once

#include "database/ConnectionString.h"
#include "database/Maintenance.h"

namespace database {

/// CopyDatabase and RestoreDatabase for this engine. `file` is an absolute path.
CopySize CopySqlite(const ConnectionString& source, const QString& file, const Stop& stop);
QString RestoreSqlite(const ConnectionString& copy, const QString& file);

}  // namespace database
