#include "platform/process/TerminationSignals.h"
#include "support/TestProgram.h"

#include <QSignalSpy>
#include <QTest>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using process::TerminationSignals;

class tst_termination_signals : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void SignalArrivesInTheEventLoop() {
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    sigaction(SIGTERM, &ignored, nullptr);
    for (int round = 0; round < 2; ++round) {
      TerminationSignals signals;
      QSignalSpy received(&signals, &TerminationSignals::Received);
      raise(SIGTERM);
      QVERIFY(received.wait());
      QCOMPARE(received.first().first().toInt(), SIGTERM);
    }
    struct sigaction after = {};
    sigaction(SIGTERM, nullptr, &after);
    QVERIFY(after.sa_handler == SIG_IGN);
  }

  // As a dialog's object stands inside the program's own.
  void TheInnermostHearsAlone() {
    TerminationSignals outer;
    QSignalSpy outerReceived(&outer, &TerminationSignals::Received);
    QVERIFY(outer.IsInnermost());
    {
      TerminationSignals inner;
      QVERIFY(inner.IsInnermost() && !outer.IsInnermost());
      QSignalSpy innerReceived(&inner, &TerminationSignals::Received);
      raise(SIGINT);
      QVERIFY(innerReceived.wait());
      QCOMPARE(innerReceived.first().first().toInt(), SIGINT);
      QCOMPARE(outerReceived.size(), 0);
    }
    raise(SIGHUP);
    QVERIFY(outerReceived.wait());
    QCOMPARE(outerReceived.first().first().toInt(), SIGHUP);
  }

  // The event loop may be left between a signal and its being told.
  void WhatWasNotToldIsRaisedAgain() {
    TerminationSignals outer;
    QSignalSpy received(&outer, &TerminationSignals::Received);
    {
      const TerminationSignals inner;
      raise(SIGINT);
    }
    QVERIFY(received.wait());
    QCOMPARE(received.first().first().toInt(), SIGINT);
    {
      TerminationSignals inner;
      raise(SIGINT);
      inner.Forget();
    }
    QVERIFY(!received.wait(100));
  }

  // As a shell starts what runs in the background.
  void IgnoredSignalsEndAProgramAgain() {
    const pid_t child = fork();
    if (child == 0) {
      std::signal(SIGINT, SIG_IGN);
      sigset_t blocked;
      sigemptyset(&blocked);
      sigaddset(&blocked, SIGINT);
      sigprocmask(SIG_BLOCK, &blocked, nullptr);
      process::EndAtOnceOnSignals();
      raise(SIGINT);
      _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGINT);
  }
};

KEL_TEST(tst_termination_signals);
#include "tst_termination_signals.moc"
