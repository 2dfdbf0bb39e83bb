#include "framework/Terminacion.h"

#include <QApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QTimer>

#include <sys/socket.h>

#include <unistd.h>
#include <array>
#include <csignal>
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
    if (read(wakeUp[1], &number, 1) == 1 && CloseForms(Formulario::AppTaskManager)) {
      m_received = number;
    }
  }

  std::unique_ptr<QSocketNotifier> m_notifier;
  std::array<struct sigaction, watchedSignals.size()> m_before = {};
  int m_received = 0;
};

int watches = 0;
std::unique_ptr<Listener> listener;
bool closing = false;

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
  // A second request while the first one waits for the user's answer changes nothing.
  if (closing) {
    return false;
  }
  closing = true;
  bool closed = true;
  while (QWidget* top = QApplication::activeModalWidget()) {
    if (auto* form = qobject_cast<Formulario*>(top)) {
      closed = form->RequestUnload(mode);
    } else if (auto* box = qobject_cast<QDialog*>(top)) {
      box->reject();
    } else {
      break;
    }
    if (!closed || QApplication::activeModalWidget() == top) {
      break;
    }
  }
  closing = false;
  return closed;
}

}  // namespace Terminacion
