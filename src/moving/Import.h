#pragma once

#include "moving/ImportReport.h"
#include "moving/ImportWishes.h"
#include "platform/adodb/Connection.h"

namespace moving {

/// Brings a file's tables in. It is read twice: the first time for keys, references and what is known here, the second
/// time row by row into the database, in one transaction; a trial does the same without the INSERTs. What fails on the
/// way leaves the database as it was. `connection` is open and in no transaction.
///
/// Raises 5 for a file that can't be read, has nothing that fits, or changed meanwhile, and where something else would
/// come in than was seen; 18 where it was stopped; and the engine's refusals, naming table and row.
ImportReport Import(const QString& path, adodb::Connection& connection, const ImportWishes& wishes);

}  // namespace moving
