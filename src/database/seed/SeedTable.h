#pragma once

#include "platform/adodb/Connection.h"

#include <QString>

namespace database {

/// Inserts the rows of a compiled-in data file into a table. The file's first line names the columns; fields are
/// separated by tabs, and the table's column types decide how their texts are stored. Raises InvalidSchema for a
/// file that is missing or has a line of another length.
void InsertSeedFile(adodb::Connection& connection, const QString& table, const QString& fileName);

}  // namespace database
