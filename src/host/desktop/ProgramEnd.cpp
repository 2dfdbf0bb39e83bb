#include "host/desktop/ProgramEnd.h"

#include <QApplication>
#include <QDialog>

#include <chrono>
#include <csignal>

namespace host {

namespace {

constexpr std::chrono::milliseconds pause{10};

}  // namespace

ProgramEnd::ProgramEnd(ComponentBridge& bridge, QObject* parent) : QObject(parent), m_bridge(bridge) {
  m_nextStep.setSingleShot(true);
  connect(&m_nextStep, &QTimer::timeout, this, &ProgramEnd::Step);
  connect(&m_signals, &process::TerminationSignals::Received, this, [this](int number) {
    m_number = number;
    m_bridge.End();
    Step();
  });
}

ProgramEnd::~ProgramEnd() {
  m_signals.Forget();
}

// One thing at a time: what was dismissed returns to the code that showed it before the next look.
void ProgramEnd::Step() {
  if (!m_signals.IsInnermost()) {
    // A dialog of the component came up since. When it has closed, it raises the signal again.
    m_bridge.GoOn();
    raise(m_number);
    return;
  }
  if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
    box->reject();
  } else if (!m_bridge.IsBusy()) {
    QCoreApplication::exit();
  }
  // Until the program is gone, for it may show another box or enter its event loop only now.
  m_nextStep.start(pause);
}

}  // namespace host
