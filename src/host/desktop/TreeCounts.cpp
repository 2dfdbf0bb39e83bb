#include "host/desktop/TreeCounts.h"

#include "host/records/NodeCounts.h"

#include <algorithm>

namespace host {

TreeCounts::TreeCounts(DatabaseThread& thread, const std::vector<Node>& nodes, QObject* parent)
    : QObject(parent), m_nodes(nodes), m_reading(thread, [this](const QHash<int, int>& counts) {
        m_open.clear();
        Q_EMIT Counted(counts);
      }) {}

void TreeCounts::CountAll() {
  Count(m_nodes);
}

void TreeCounts::Follow(const SeenChanges& changes) {
  const bool isSuspicion = changes.isUnknown && !changes.mayBeLocks;
  Count(isSuspicion ? m_nodes : NodesToCount(m_nodes, changes.notes));
}

void TreeCounts::Count(const std::vector<Node>& nodes) {
  for (const Node& node : nodes) {
    if (std::ranges::find(m_open, node.id, &Node::id) == m_open.end()) {
      m_open.push_back(node);
    }
  }
  if (!m_open.empty()) {
    m_reading.Ask([open = m_open](adodb::Connection& connection, const DatabaseThread::Wanted&) {
      return CountRecords(connection, open);
    });
  }
}

}  // namespace host
