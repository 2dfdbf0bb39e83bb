#include "platform/process/TerminationSignals.h"
#include "support/TestProgram.h"

#include <QSignalSpy>
#include <QTest>

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
    {
      TerminationSignals inner;
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
};

KEL_TEST(tst_termination_signals);
#include "tst_termination_signals.moc"
