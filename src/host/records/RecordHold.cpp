#include "host/records/RecordHold.h"

#include <QScopeGuard>

namespace host {

RecordHold::RecordHold(ComponentBridge& bridge, const Node& node, int id) : m_bridge(bridge), m_node(node), m_id(id) {
  adodb::Connection& connection = bridge.OpenConnection();
  auto release = qScopeGuard([this] { m_bridge.ReleaseLock(m_node.key, m_id); });
  bridge.Session().LookAtRights(connection);
  m_locks = !bridge.Session().readOnly;
  if (m_locks) {
    m_holder = bridge.Session().Locks().Take(m_node.key, m_id);
    m_newest = NewestChange(connection);
  }
  m_deleted = FindDeleted(connection, node, id);
  release.dismiss();
}

RecordHold::~RecordHold() {
  if (m_locks && !m_holder) {
    m_bridge.ReleaseLock(m_node.key, m_id);
  }
}

std::optional<Change> RecordHold::LockReleased() const {
  if (!m_locks || m_holder) {
    return std::nullopt;
  }
  return LockReleaseAfter(m_bridge.OpenConnection(), m_newest, m_node.table, m_id);
}

}  // namespace host
