#pragma once

#include <QObject>

#include <memory>

namespace process {

/// Brings the signals that end a program (SIGTERM, SIGINT, SIGHUP) into the event loop. Objects nest: the last one made
/// hears the signals alone, and the handlers that were there before come back with its end. They must end in the
/// reverse order of their making.
class TerminationSignals : public QObject {
  Q_OBJECT

 public:
  explicit TerminationSignals(QObject* parent = nullptr);
  ~TerminationSignals() override;

 Q_SIGNALS:
  /// The number of the signal; of several that came together, the last one's.
  void Received(int number);

 private:
  void Read();

  struct Private;
  std::unique_ptr<Private> m_private;
};

}  // namespace process
