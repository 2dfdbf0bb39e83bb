#include "framework/Termination.h"

#include "platform/process/TerminationSignals.h"

#include <QApplication>
#include <QSessionManager>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <limits>
#include <memory>

namespace framework::Termination {

namespace {

bool closing = false;

// False when the topmost window stays: the user keeps the form open or is being asked, or it is no window of ours.
bool CloseTop(Form::UnloadMode mode) {
  if (closing) {
    return false;
  }
  closing = true;
  QWidget* top = QApplication::activeModalWidget();
  if (auto* form = qobject_cast<Form*>(top)) {
    form->RequestUnload(mode);
  } else if (auto* box = qobject_cast<QDialog*>(top)) {
    box->reject();
  }
  closing = false;
  return top == nullptr || QApplication::activeModalWidget() != top;
}

class Listener : public QObject {
 public:
  Listener() {
    connect(m_signals.get(), &process::TerminationSignals::Received, this, [this](int number) { OnSignal(number); });
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [](QSessionManager& manager) {
      if (manager.allowsInteraction() && !CloseForms(Form::AppWindows)) {
        manager.cancel();
      }
    });
  }

  ~Listener() override {
    m_signals.reset();
    if (m_received != 0) {
      raise(m_received);
    }
  }

  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

 private:
  void OnSignal(int number) {
    m_received = number;
    // The user is being asked already, and the answer counts for this signal, too.
    if (closing) {
      return;
    }
    m_closedAtLevel = std::numeric_limits<int>::max();
    CloseNext();
  }

  // One at a time: the handler that showed a nested form or a box ends, and restores what it saved, before the form
  // under it is asked. It has ended when the event loop of what was closed is left.
  void CloseNext() {
    const int level = QThread::currentThread()->loopLevel();
    if (level >= m_closedAtLevel) {
      CloseLater();
    } else if (!CloseTop(Form::AppTaskManager)) {
      m_received = 0;
    } else if (QApplication::activeModalWidget() != nullptr) {
      m_closedAtLevel = level;
      CloseLater();
    }
  }

  void CloseLater() {
    QTimer::singleShot(pause, this, [this] { CloseNext(); });
  }

  static constexpr std::chrono::milliseconds pause{5};
  int m_closedAtLevel = 0;
  std::unique_ptr<process::TerminationSignals> m_signals = std::make_unique<process::TerminationSignals>();
  int m_received = 0;
};

int watches = 0;
std::unique_ptr<Listener> listener;

}  // namespace

Watch::Watch() {
  if (watches++ == 0) {
    listener = std::make_unique<Listener>();
  }
}

Watch::~Watch() {
  if (--watches == 0) {
    listener.reset();
  }
}

bool CloseForms(Form::UnloadMode mode) {
  const bool closed = CloseTop(mode);
  return closed && QApplication::activeModalWidget() == nullptr;
}

}  // namespace framework::Termination
