#pragma once

#include <QObject>

#include <memory>

namespace process {

/// Lets the signals that end a program end it at once, whatever the parent process had set for them (a shell lets
/// programs in the background ignore SIGINT). For a program's first line: until its event loop listens, nothing needs
/// to be asked or saved.
void EndAtOnceOnSignals();

/// Brings the signals that end a program (SIGTERM, SIGINT, SIGHUP) into the event loop. Objects nest: the last one made
/// hears the signals alone, and the handlers that were there before come back with its end. They must end in the
/// reverse order of their making. A signal that came and was not told any more when its object ends is raised again,
/// for those handlers.
class TerminationSignals : public QObject {
  Q_OBJECT

 public:
  explicit TerminationSignals(QObject* parent = nullptr);
  ~TerminationSignals() override;

  /// Whether this object hears the signals now.
  bool IsInnermost() const;
  /// Whether a signal has come that nobody was told yet: work that keeps the event loop from telling ends early.
  static bool IsOneUntold();
  /// Drops what came and was not told yet.
  void Forget() { TakeUntold(); }

 Q_SIGNALS:
  /// The number of the signal; of several that came together, the last one's.
  void Received(int number);

 private:
  void Tell();
  int TakeUntold();

  struct Private;
  std::unique_ptr<Private> m_private;
};

}  // namespace process
