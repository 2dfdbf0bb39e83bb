#pragma once

#include "platform/adodb/Statement.h"

#include <optional>
#include <span>

/// Guarded deletion: per node, the record's table and key, the query that finds live rows which still refer to it, and
/// the statement that marks its dependent rows. `{0}` is the record's identifier.
namespace entry::deletion {

using RecordStatement = adodb::Statement<qint32>;

/// One row of the deletion table.
struct Rule {
  qint32 node;
  const char16_t* table;
  const char16_t* key;
  std::optional<RecordStatement> references = {};  ///< The record is kept when it returns a row.
  std::optional<RecordStatement> cascade = {};     ///< Run before the record is marked.
};

/// The rows in the order in which nodes are compared.
std::span<const Rule> Rules();

enum class Outcome { Done, Refused };

/// Deletes the record, or refuses with a message. Nothing is executed for a node without a row. Errors of the
/// database pass through.
Outcome Delete(qint32 node, qint32 id);

}  // namespace entry::deletion
