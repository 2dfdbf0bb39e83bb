#include "database/ChangeClock.h"

#include "database/Engines.h"

#include <utility>

namespace database {

ChangeClock::ChangeClock(const QString& connectionString)
    : m_target(std::make_unique<ConnectionString>(TargetOf(connectionString))), m_session(CreateSession(*m_target)) {}

ChangeClock::~ChangeClock() {
  if (m_session->IsConnected()) {
    m_session->Leave();
  }
}

bool ChangeClock::HasMoved() {
  const bool isFirst = !m_session->IsConnected() || !m_session->Resume();
  if (isFirst) {
    if (m_session->IsConnected()) {
      m_session->Leave();
    }
    m_session->Connect(*m_target);
  }
  const qint64 now = m_session->Clock();
  return std::exchange(m_seen, now) != now || isFirst;
}

}  // namespace database
