#pragma once

#include "host/mailing/output/RunControl.h"
#include "platform/automation/Error.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

class QThread;

namespace host {

/// What a run made.
struct RunResult {
  bool isWhole = true;  ///< False for one that was cancelled.
  QString text;         ///< What was made, a sentence.
  int differing = 0;    ///< How many letters or labels were not as the preview had them.
  int lastLabel = 0;    ///< Where printed labels end on their last sheet; 0 for anything else.
};

/// One run in a thread of its own, which its end waits for.
class MailingRun : public QObject {
  Q_OBJECT

 public:
  /// Runs in the thread; it may raise.
  using Work = std::function<RunResult(RunControl& control)>;

  explicit MailingRun(QObject* parent = nullptr);
  /// Cancels what runs; nothing half-written is left.
  ~MailingRun() override;

  void Start(Work work);
  void Cancel();
  bool IsRunning() const { return m_thread != nullptr; }
  const RunControl& Control() const { return *m_control; }

 Q_SIGNALS:
  void Progressed(int done, int parts);
  void Finished(const host::RunResult& result);
  void Failed(const automation::Error& error);

 private:
  void End();

  std::unique_ptr<RunControl> m_control;
  std::unique_ptr<QThread> m_thread;
  std::shared_ptr<RunResult> m_result;
  std::shared_ptr<automation::Error> m_error;
  QTimer m_look;
};

}  // namespace host
