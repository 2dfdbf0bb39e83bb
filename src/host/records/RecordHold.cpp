#include "host/records/RecordHold.h"

#include <QScopeGuard>

namespace host {

RecordHold::RecordHold(ComponentBridge& bridge, const Node& node, int id)
    : m_bridge(bridge), m_keyColumn(node.key), m_id(id) {
  adodb::Connection& connection = bridge.OpenConnection();
  if (!bridge.Session().readOnly) {
    m_holder = bridge.Session().Locks().Take(m_keyColumn, m_id);
  }
  auto release = qScopeGuard([this] { m_bridge.ReleaseLock(m_keyColumn, m_id); });
  m_deleted = FindDeleted(connection, node, id);
  release.dismiss();
}

RecordHold::~RecordHold() {
  if (!m_bridge.Session().readOnly && !m_holder) {
    m_bridge.ReleaseLock(m_keyColumn, m_id);
  }
}

}  // namespace host
