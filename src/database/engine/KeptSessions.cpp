#include "database/engine/KeptSessions.h"

#include "database/engine/EngineConnection.h"

#include <QMutexLocker>

namespace database {

KeptSessions& KeptSessions::Instance() {
  // Never destroyed: a host's connection may be, at the end of the program, after everything of this library.
  static auto* instance = new KeptSessions;
  return *instance;
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
