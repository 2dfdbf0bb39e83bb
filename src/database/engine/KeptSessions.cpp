#include "database/engine/KeptSessions.h"

#include "database/engine/EngineConnection.h"

#include <QMutexLocker>

namespace database {

KeptSessions& KeptSessions::Instance() {
  static KeptSessions instance;
  return instance;
}

void KeptSessions::Add(EngineConnection* connection) {
  const QMutexLocker lock(&m_mutex);
  m_connections.push_back(connection);
}

void KeptSessions::Remove(EngineConnection* connection) {
  const QMutexLocker lock(&m_mutex);
  std::erase(m_connections, connection);
}

void KeptSessions::LetGo() {
  const QMutexLocker lock(&m_mutex);
  for (EngineConnection* connection : m_connections) {
    connection->LeaveSession();
  }
  m_connections.clear();
}

}  // namespace database
