#pragma once

#include "host/records/RecordData.h"
#include "platform/adodb/Connection.h"

#include <functional>

namespace host {

/// Reads the live records of a node's list, in the node's order, until `goOn` says no: it is asked for each record.
/// The errors of the connection leave it.
RecordData ReadRecords(adodb::Connection& connection, const Node& node, const std::function<bool()>& goOn);
RecordData ReadRecords(adodb::Connection& connection, const Node& node);

/// Reads those of these records that are live.
RecordData ReadRecords(adodb::Connection& connection, const Node& node, const QList<int>& ids);

/// The statement by which one of them is read, or its name (RecordName).
QString RecordStatement(const Node& node, int id);

/// The statement that gives the node's number and how many live records its list has.
QString CountStatement(const Node& node);

/// Reads the live records whose keys are above `key`.
RecordData ReadRecordsAbove(adodb::Connection& connection, const Node& node, int key);

/// A live record as a question names it, by its first `nameColumns` columns; empty when the list does not have it.
QString RecordName(adodb::Connection& connection, const Node& node, int id);

/// The highest key of the node's table, deleted rows included; 0 for an empty table.
int HighestKey(adodb::Connection& connection, const Node& node);

/// Whether the record is marked as deleted; a record that is not there counts as deleted.
bool IsDeleted(adodb::Connection& connection, const Node& node, int id);

}  // namespace host
