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
    m_next.setSingleShot(true);
    m_next.setInterval(pause);
    connect(&m_next, &QTimer::timeout, this, &Listener::CloseNext);
    connect(m_signals.get(), &process::TerminationSignals::Received, this, [this](int number) { OnSignal(number); });
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& manager) {
      if (manager.allowsInteraction() && !Close(Form::AppWindows)) {
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

  bool Close(Form::UnloadMode mode) {
    // The user is being asked already.
    if (closing) {
      return false;
    }
    m_mode = mode;
    m_closedAtLevel = std::numeric_limits<int>::max();
    return CloseNext();
  }

 private:
  // An answer that the user is giving counts for this signal, too.
  void OnSignal(int number) {
    m_received = number;
    Close(Form::AppTaskManager);
  }

  // One at a time: the handler that showed a nested form or a box ends, and restores what it saved, before the form
  // under it is asked. It has ended when the event loop of what was closed is left. True when none is open any more.
  bool CloseNext() {
    const int level = QThread::currentThread()->loopLevel();
    if (level < m_closedAtLevel) {
      if (!CloseTop(m_mode)) {
        m_received = 0;
        return false;
      }
      if (QApplication::activeModalWidget() == nullptr) {
        return true;
      }
      m_closedAtLevel = level;
    }
    m_next.start();
    return false;
  }

  static constexpr std::chrono::milliseconds pause{5};
  Form::UnloadMode m_mode = Form::AppTaskManager;
  int m_closedAtLevel = 0;
  QTimer m_next;
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
  return listener == nullptr || listener->Close(mode);
}

}  // namespace framework::Termination
