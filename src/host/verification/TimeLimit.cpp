#include "host/verification/TimeLimit.h"

#include <cstdio>
#include <cstdlib>

namespace host {

TimeLimit::TimeLimit(std::chrono::seconds limit, const QString& last) {
  m_watch = std::thread([this, limit, text = last.toUtf8()] {
    std::unique_lock lock(m_mutex);
    if (!m_ended.wait_for(lock, limit, [this] { return m_isOver; })) {
      std::fputs(text.constData(), stdout);
      std::fflush(stdout);
      std::_Exit(EXIT_FAILURE);
    }
  });
}

TimeLimit::~TimeLimit() {
  {
    const std::lock_guard lock(m_mutex);
    m_isOver = true;
  }
  m_ended.notify_one();
  m_watch.join();
}

}  // namespace host
