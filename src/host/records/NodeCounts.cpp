#include "host/records/NodeCounts.h"

#include "host/records/RecordReader.h"
#include "platform/automation/Conversion.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool MayChangeLength(const Change& change, const Node& node) {
  const bool isDeletion = change.kind == ChangeKind::Deleted || change.kind == ChangeKind::Recovered;
  if (node.canRecover) {
    return isDeletion;
  }
  const bool isOfItsTable = change.table.compare(node.table, Qt::CaseInsensitive) == 0;
  return node.id == changesNode ||
         (isOfItsTable && (isDeletion || change.kind == ChangeKind::Added || change.kind == ChangeKind::Several));
}

}  // namespace

QHash<int, int> CountRecords(adodb::Connection& connection, const std::vector<Node>& nodes) {
  QHash<int, int> counts;
  if (nodes.empty()) {
    return counts;
  }
  QStringList selects;
  for (const Node& node : nodes) {
    selects.append(CountStatement(node));
  }
  for (const auto rows = connection.Execute(selects.join(u" UNION ALL "_s)); !rows->AtEnd(); rows->MoveNext()) {
    counts.insert(automation::CLng(rows->Field(0)), automation::CLng(rows->Field(1)));
  }
  return counts;
}

std::vector<Node> NodesToCount(const std::vector<Node>& nodes, const QList<Change>& changes) {
  std::vector<Node> found;
  std::ranges::copy_if(nodes, std::back_inserter(found), [&](const Node& node) {
    return std::ranges::any_of(changes, [&](const Change& change) { return MayChangeLength(change, node); });
  });
  return found;
}

}  // namespace host
