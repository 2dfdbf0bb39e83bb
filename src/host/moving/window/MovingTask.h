#pragma once

#include "moving/ImportWishes.h"
#include "platform/automation/Error.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

class QThread;

namespace host {

/// What the thread of a task and its window tell each other.
class TaskControl {
 public:
  void Tell(moving::ImportStep step, qint64 done, qint64 total);
  void Cancel() { m_isCancelled = true; }
  bool IsCancelled() const { return m_isCancelled; }
  moving::ImportStep Step() const { return m_step; }
  qint64 Done() const { return m_done; }
  qint64 Total() const { return m_total; }

 private:
  std::atomic<bool> m_isCancelled = false;
  std::atomic<moving::ImportStep> m_step = moving::ImportStep::Reading;
  std::atomic<qint64> m_done = 0;
  std::atomic<qint64> m_total = 0;
};

/// The assistant's work on file and database, in a thread of its own. One at a time: a later one ends the one before,
/// whose result is dropped, and begins when that has ended.
class MovingTask : public QObject {
  Q_OBJECT

 public:
  /// Runs in the window's thread when the work has ended.
  using Done = std::function<void()>;
  /// Runs in the thread; it may raise.
  using Work = std::function<Done(TaskControl& control)>;

  explicit MovingTask(QObject* parent = nullptr);
  /// Cancels what runs, and waits for it.
  ~MovingTask() override;

  void Start(Work work);
  void Cancel();
  bool IsRunning() const { return m_thread != nullptr; }

 Q_SIGNALS:
  void Progressed(moving::ImportStep step, qint64 done, qint64 total);
  void Failed(const automation::Error& error);
  /// Nothing runs any more; told before the result.
  void Ended();

 private:
  struct Result {
    Done done;
    std::unique_ptr<automation::Error> error;
  };

  void Run(Work work);
  void End();

  std::shared_ptr<TaskControl> m_control;
  std::shared_ptr<Result> m_result;
  std::unique_ptr<QThread> m_thread;
  Work m_next;
  QTimer m_look;
};

}  // namespace host
