#pragma once

#include "host/records/ChangeWatch.h"
#include "host/records/DatabaseThread.h"
#include "host/records/NodeCatalog.h"

#include <QHash>
#include <QObject>

#include <vector>

namespace host {

/// Keeps the numbers of records that the tree shows: all are counted at once, afterwards only those that what was
/// written may have changed. What can't be counted now is counted with the next ones.
class TreeCounts : public QObject {
  Q_OBJECT

 public:
  /// Borrows both.
  TreeCounts(DatabaseThread& thread, const std::vector<Node>& nodes, QObject* parent = nullptr);

  void CountAll();
  void Follow(const SeenChanges& changes);

 Q_SIGNALS:
  /// The numbers by their nodes; of nodes that are not in it nothing is new.
  void Counted(const QHash<int, int>& counts);

 private:
  void Count(const std::vector<Node>& nodes);

  const std::vector<Node>& m_nodes;
  std::vector<Node> m_open;  ///< Asked for, and not answered yet.
  Reading<QHash<int, int>> m_reading;
};

}  // namespace host
