#pragma once

#include "host/desktop/RecordData.h"
#include "platform/adodb/Connection.h"

namespace host {

/// Reads the records of a node's list. The errors of the connection leave it.
RecordData ReadRecords(adodb::Connection& connection, const Node& node);

/// A live record as a question names it, by its first `nameColumns` columns; empty when the list does not have it.
QString RecordName(adodb::Connection& connection, const Node& node, int id);

/// The highest key of the node's table, deleted rows included; 0 for an empty table.
int HighestKey(adodb::Connection& connection, const Node& node);

/// Whether the record is marked as deleted; a record that is not there counts as deleted.
bool IsDeleted(adodb::Connection& connection, const Node& node, int id);

}  // namespace host
