#pragma once

#include <atomic>

namespace host {

/// How far a run in another thread is, and the wish to end it.
class RunControl {
 public:
  void Cancel() { m_cancelled = true; }
  bool IsCancelled() const { return m_cancelled; }
  void Begin(int parts) {
    m_parts = parts;
    m_done = 0;
  }
  void PartDone() { ++m_done; }
  int Done() const { return m_done; }
  int Parts() const { return m_parts; }

 private:
  std::atomic<bool> m_cancelled = false;
  std::atomic<int> m_done = 0;
  std::atomic<int> m_parts = 0;
};

}  // namespace host
