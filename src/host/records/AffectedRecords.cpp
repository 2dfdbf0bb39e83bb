#include "host/records/AffectedRecords.h"

#include "host/records/RecordReferences.h"

#include <QSet>

namespace host {

namespace {

constexpr qsizetype mostRecords = 1000;

bool ConcernsDeletions(const Change& change) {
  return change.kind == ChangeKind::Deleted || change.kind == ChangeKind::Recovered;
}

}  // namespace

std::optional<QList<int>> AffectedRecords(adodb::Connection& connection, const Node& node,
                                          const QList<Change>& changes) {
  QSet<int> affected;
  for (const Change& change : changes) {
    if (node.id == changesNode) {
      affected.insert(static_cast<int>(change.number));
      continue;
    }
    const bool isOwn = change.table.compare(node.table, Qt::CaseInsensitive) == 0;
    const bool isShown = isOwn || RefersTo(node, change.table);
    // Whose uses are others now is not in the note.
    if ((isShown && change.key == 0) || (node.readsUses && UsesDependOn(node.id, change.table)) ||
        (node.canRecover && ConcernsDeletions(change))) {
      return std::nullopt;
    }
    if (isOwn) {
      affected.insert(static_cast<int>(change.key));
    } else if (isShown) {
      const QList<int> referring = ReferringIds(connection, node, change.table, change.key);
      affected.unite(QSet<int>(referring.cbegin(), referring.cend()));
    }
    if (affected.size() > mostRecords) {
      return std::nullopt;
    }
  }
  return affected.values();
}

}  // namespace host
