#pragma once

#include "host/records/ChangeLog.h"
#include "host/records/NodeCatalog.h"
#include "platform/adodb/Connection.h"

#include <QHash>
#include <QList>

#include <vector>

namespace host {

/// How many records the lists of these nodes have, by the nodes' numbers: one statement, whatever the nodes. Errors of
/// the connection leave it.
QHash<int, int> CountRecords(adodb::Connection& connection, const std::vector<Node>& nodes);

/// Those of the nodes whose lists have another length after these changes, perhaps.
std::vector<Node> NodesToCount(const std::vector<Node>& nodes, const QList<Change>& changes);

}  // namespace host
