#pragma once

#include "database/Maintenance.h"
#include "platform/adodb/Connection.h"

#include <QString>

namespace moving {

/// Writes the office's tables, all rows with their keys and marks: `path` is a .ods with a sheet for each table, a .csv
/// for one, or an existing folder, where each table becomes a .csv of its name. `table` is the only one to be written;
/// empty for all. What was written and is brought in again changes nothing. Raises 5 for a table that is not one of
/// these, a path that does not fit, or a file that can't be written, 18 where it was stopped. Gives the number of rows.
qint64 Export(const QString& path, const QString& table, adodb::Connection& connection, const database::Stop& stop);

}  // namespace moving
