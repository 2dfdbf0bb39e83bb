#include "framework/Terminacion.h"

#include <QApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QThread>
#include <QTimer>

#include <sys/socket.h>

#include <unistd.h>
#include <array>
#include <chrono>
#include <csignal>
#include <limits>
#include <memory>

namespace Terminacion {

namespace {

constexpr std::array watchedSignals{SIGTERM, SIGINT, SIGHUP};

// Written by the signal handler, read by the event loop.
std::array<int, 2> wakeUp{-1, -1};

extern "C" void OnTerminationSignal(int number) {
  const int savedErrno = errno;
  const auto byte = static_cast<char>(number);
  [[maybe_unused]] const ssize_t written = write(wakeUp[0], &byte, 1);
  errno = savedErrno;
}

bool closing = false;

// False when the topmost window stays: the user keeps the form open or is being asked, or it is no window of ours.
bool CloseTop(Formulario::UnloadMode mode) {
  if (closing) {
    return false;
  }
  closing = true;
  QWidget* top = QApplication::activeModalWidget();
  if (auto* form = qobject_cast<Formulario*>(top)) {
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
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, wakeUp.data()) != 0) {
      return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(wakeUp[1], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { OnWakeUp(); });
    for (std::size_t i = 0; i < watchedSignals.size(); ++i) {
      struct sigaction action = {};
      action.sa_handler = OnTerminationSignal;
      action.sa_flags = SA_RESTART;
      sigaction(watchedSignals[i], &action, &m_before[i]);
    }
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [](QSessionManager& manager) {
      if (manager.allowsInteraction() && !CloseForms(Formulario::AppWindows)) {
        manager.cancel();
      }
    });
  }

  ~Listener() override {
    if (!m_notifier) {
      return;
    }
    for (std::size_t i = 0; i < watchedSignals.size(); ++i) {
      sigaction(watchedSignals[i], &m_before[i], nullptr);
    }
    m_notifier.reset();
    close(wakeUp[0]);
    close(wakeUp[1]);
    if (m_received != 0) {
      raise(m_received);
    }
  }

  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

 private:
  void OnWakeUp() {
    char number = 0;
    if (read(wakeUp[1], &number, 1) == 1) {
      m_received = static_cast<unsigned char>(number);
      m_closedAtLevel = std::numeric_limits<int>::max();
      CloseNext();
    }
  }

  // One at a time: the handler that showed a nested form or a box ends, and restores what it saved, before the form
  // under it is asked. It has ended when the event loop of what was closed is left.
  void CloseNext() {
    const int level = QThread::currentThread()->loopLevel();
    if (level >= m_closedAtLevel) {
      CloseLater();
    } else if (!CloseTop(Formulario::AppTaskManager)) {
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
  std::unique_ptr<QSocketNotifier> m_notifier;
  std::array<struct sigaction, watchedSignals.size()> m_before = {};
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

bool CloseForms(Formulario::UnloadMode mode) {
  const bool closed = CloseTop(mode);
  return closed && QApplication::activeModalWidget() == nullptr;
}

}  // namespace Terminacion
