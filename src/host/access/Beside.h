#pragma once

#include "platform/automation/Error.h"

#include <QObject>
#include <QThread>

#include <functional>
#include <memory>
#include <optional>

namespace host {

/// One piece of work at a time on a thread of its own, so that no window waits for it.
class Beside : public QObject {
  Q_OBJECT

 public:
  /// Runs in the window's thread after the work, with what it raised.
  using Done = std::function<void(const std::optional<automation::Error>& error)>;

  explicit Beside(QObject* parent = nullptr) : QObject(parent) {}
  /// Waits for the work; `done` is not called any more.
  ~Beside() override;

  bool IsBusy() const { return m_thread != nullptr; }
  /// Nothing else is under way.
  void Run(std::function<void()> work, Done done);

 private:
  std::unique_ptr<QThread> m_thread;
};

}  // namespace host
