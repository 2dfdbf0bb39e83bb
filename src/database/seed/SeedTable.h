#pragma once

#include "platform/adodb/Connection.h"

#include <QString>

namespace database {

/// Inserts the rows of a compiled-in data file, `folder`/`table`.tsv, into the table of its name. The file's first line
/// names the columns; fields are separated by tabs, and the table's column types decide how their texts are stored.
/// Raises InvalidSchema for a file that is missing or has a line of another length.
void InsertSeedFile(adodb::Connection& connection, const QString& folder, const QString& table);

}  // namespace database
