#pragma once

#include <QObject>

class QSocketNotifier;

namespace host {

/// Brings the signals that end a program (SIGTERM, SIGINT, SIGHUP) into the event loop. One object per process; the
/// handlers that were there before come back with its end.
class TerminationSignals : public QObject {
  Q_OBJECT

 public:
  explicit TerminationSignals(QObject* parent = nullptr);
  ~TerminationSignals() override;

 Q_SIGNALS:
  void Received();

 private:
  void Read();

  QSocketNotifier* m_notifier = nullptr;
};

}  // namespace host
