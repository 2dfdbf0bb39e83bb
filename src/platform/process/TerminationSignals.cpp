#include "platform/process/TerminationSignals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace process {

namespace {

constexpr std::array signalsOfInterest{SIGTERM, SIGINT, SIGHUP};

// Only what a signal handler may touch: the end of the pipe that the object in charge reads, -1 while there is none.
std::atomic<int> writeEnd{-1};
std::atomic<bool> hasUntold{false};

void Handle(int number) {
  const int kept = errno;
  const auto byte = static_cast<unsigned char>(number);
  hasUntold = true;
  // A full pipe already holds what this byte would say.
  [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
  errno = kept;
}

struct sigaction ActionOf(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  return action;
}

}  // namespace

void EndAtOnceOnSignals() {
  const struct sigaction usual = ActionOf(SIG_DFL);
  sigset_t blocked;
  sigemptyset(&blocked);
  for (const int number : signalsOfInterest) {
    sigaction(number, &usual, nullptr);
    sigaddset(&blocked, number);
  }
  sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
}

struct TerminationSignals::Private {
  std::array<int, 2> pipeEnds{-1, -1};
  int outerWriteEnd = -1;
  std::array<struct sigaction, signalsOfInterest.size()> previousActions = {};
  std::unique_ptr<QSocketNotifier> notifier;
};

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent), m_private(std::make_unique<Private>()) {
  if (pipe2(m_private->pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    return;
  }
  m_private->notifier = std::make_unique<QSocketNotifier>(m_private->pipeEnds[0], QSocketNotifier::Read);
  connect(m_private->notifier.get(), &QSocketNotifier::activated, this, &TerminationSignals::Tell);
  m_private->outerWriteEnd = writeEnd.exchange(m_private->pipeEnds[1]);
  const struct sigaction action = ActionOf(Handle);
  for (std::size_t i = 0; i < signalsOfInterest.size(); ++i) {
    sigaction(signalsOfInterest[i], &action, &m_private->previousActions[i]);
  }
}

TerminationSignals::~TerminationSignals() {
  if (!m_private->notifier) {
    return;
  }
  for (std::size_t i = 0; i < signalsOfInterest.size(); ++i) {
    sigaction(signalsOfInterest[i], &m_private->previousActions[i], nullptr);
  }
  writeEnd = m_private->outerWriteEnd;
  m_private->notifier.reset();
  const int untold = TakeUntold();
  close(m_private->pipeEnds[0]);
  close(m_private->pipeEnds[1]);
  if (untold != 0) {
    raise(untold);
  }
}

bool TerminationSignals::IsInnermost() const {
  struct sigaction present = {};
  sigaction(SIGTERM, nullptr, &present);
  return present.sa_handler == Handle && writeEnd == m_private->pipeEnds[1];
}

void TerminationSignals::Tell() {
  if (const int number = TakeUntold(); number != 0) {
    Q_EMIT Received(number);
  }
}

bool TerminationSignals::IsOneUntold() {
  return hasUntold;
}

int TerminationSignals::TakeUntold() {
  hasUntold = false;
  std::array<unsigned char, 16> bytes{};
  int number = 0;
  ssize_t count = 0;
  while ((count = read(m_private->pipeEnds[0], bytes.data(), bytes.size())) > 0) {
    number = bytes[static_cast<std::size_t>(count - 1)];
  }
  return number;
}

}  // namespace process
