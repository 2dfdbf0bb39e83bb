#pragma once

#include "moving/ImportReport.h"
#include "moving/NameMatch.h"
#include "platform/adodb/Connection.h"

#include <functional>

namespace moving {

/// How a file is to come in.
struct ImportWishes {
  NameWishes names;
  bool isTrial = false;        ///< Everything but writing.
  bool acceptsLosses = false;  ///< What can't come in is left out; otherwise nothing is written then.
  /// A tax identifier in its one form, empty for an invalid one: people with the same one are the same.
  std::function<QString(const QString&)> identifier;
  database::Stop stop;
};

/// Brings a file's tables in. It is read twice: the first time for keys, references and what is known here, the second
/// time row by row into the database, in one transaction; a trial does the same without the INSERTs. What fails on the
/// way leaves the database as it was. `connection` is open and in no transaction.
///
/// Raises 5 for a file that can't be read, has nothing that fits, or changed meanwhile, 18 where it was stopped, and
/// the engine's refusals, naming table and row.
ImportReport Import(const QString& path, adodb::Connection& connection, const ImportWishes& wishes);

}  // namespace moving
