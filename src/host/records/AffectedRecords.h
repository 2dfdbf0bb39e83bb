#pragma once

#include "host/records/ChangeLog.h"
#include "host/records/NodeCatalog.h"

#include <QList>

#include <optional>

namespace host {

/// The records of a node's list that look otherwise after these changes: those that were written, and those that show
/// something of what was. Nothing where that can't be said, or the list is better read anew. Errors of the database
/// leave it.
std::optional<QList<int>> AffectedRecords(adodb::Connection& connection, const Node& node,
                                          const QList<Change>& changes);

}  // namespace host
