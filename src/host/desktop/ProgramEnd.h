#pragma once

#include "host/records/ComponentBridge.h"
#include "platform/process/TerminationSignals.h"

#include <QObject>
#include <QTimer>

namespace host {

/// The one way in which a termination signal ends the program, from the object's making on, whatever the program is
/// doing then: boxes that wait for an answer are dismissed, work under way is waited for, and then the event loop is
/// left with exit code 0. A dialog of the component is told through the component's own handler, which asks the user
/// about changes; where the user keeps the dialog, the program goes on.
class ProgramEnd : public QObject {
  Q_OBJECT

 public:
  /// Borrows the bridge, which must outlive this object.
  explicit ProgramEnd(ComponentBridge& bridge, QObject* parent = nullptr);
  /// A signal that comes this late finds a program that is ending.
  ~ProgramEnd() override;

 private:
  void Step();

  ComponentBridge& m_bridge;
  process::TerminationSignals m_signals;
  QTimer m_nextStep;
  int m_number = 0;
};

}  // namespace host
