#include "host/desktop/TerminationSignals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <csignal>

namespace host {

namespace {

constexpr std::array<int, 3> signalsOfInterest = {SIGTERM, SIGINT, SIGHUP};

// Only what a signal handler may touch: both ends of the pipe, -1 while there is none.
int pipeEnds[2] = {-1, -1};
std::array<struct sigaction, signalsOfInterest.size()> previousActions;

void Handle(int) {
  const int kept = errno;
  const char byte = 1;
  // A full pipe already holds what this byte would say.
  [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
  errno = kept;
}

}  // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent) {
  if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
    return;
  }
  m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
  connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::Read);
  struct sigaction action = {};
  action.sa_handler = Handle;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  for (std::size_t i = 0; i < signalsOfInterest.size(); ++i) {
    sigaction(signalsOfInterest[i], &action, &previousActions[i]);
  }
}

TerminationSignals::~TerminationSignals() {
  if (m_notifier == nullptr) {
    return;
  }
  for (std::size_t i = 0; i < signalsOfInterest.size(); ++i) {
    sigaction(signalsOfInterest[i], &previousActions[i], nullptr);
  }
  delete m_notifier;
  close(pipeEnds[0]);
  close(pipeEnds[1]);
}

void TerminationSignals::Read() {
  char bytes[16];
  while (read(pipeEnds[0], bytes, sizeof bytes) > 0) {
  }
  Q_EMIT Received();
}

}  // namespace host
