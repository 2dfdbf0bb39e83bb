#pragma once

#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace host {

/// Ends the program, with `last` on its standard output and exit code 1, when the object lives longer than the limit:
/// for calls into other people's code, which nobody else could end.
class TimeLimit {
 public:
  TimeLimit(std::chrono::seconds limit, const QString& last);
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;
  ~TimeLimit();

 private:
  std::mutex m_mutex;
  std::condition_variable m_ended;
  bool m_isOver = false;
  std::thread m_watch;
};

}  // namespace host
