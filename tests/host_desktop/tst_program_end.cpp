#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/desktop/ProgramEnd.h"
#include "host/services/MessageBox.h"

#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

// Runs the program's event loop; false when the signal did not end it.
bool LoopEnds() {
  QTimer late;
  late.callOnTimeout([] { QCoreApplication::exit(1); });
  late.start(5000);
  return QCoreApplication::exec() == 0;
}

// A dialog of the component while it is shown: it hears the signals itself, closes at the first unless the user keeps
// it, and raises that again when it is gone.
void ShowComponentDialog(bool kept) {
  int heard = 0;
  {
    process::TerminationSignals signals;
    QDialog dialog;
    QObject::connect(&signals, &process::TerminationSignals::Received, &dialog, [&](int number) {
      heard = kept ? 0 : number;
      dialog.reject();
    });
    dialog.exec();
  }
  if (heard != 0) {
    raise(heard);
  }
}

}  // namespace

/// A termination signal ends the program at whatever moment it comes.
class tst_program_end : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Idle_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
  }
  void Idle() {
    QFETCH(int, number);
    TestDesktop desktop;
    desktop.Window();
    const host::ProgramEnd end(desktop.Bridge());
    raise(number);
    QVERIFY(LoopEnds());
  }

  // As the refusal of a lock, or an error that the host reports while the dialog loads.
  void BoxesWhileADialogLoads() {
    TestDesktop desktop;
    LeaveBoxesAlone(desktop);
    int boxes = 0;
    FakeComponent::Register([&](adodb::Connection&, int) {
      raise(SIGTERM);
      for (; boxes < 2; ++boxes) {
        host::ShowMessage(QMessageBox::Critical, u"x"_s, u"Kel"_s);
      }
    });
    const host::ProgramEnd end(desktop.Bridge());
    desktop.Bridge().ShowDialog({});
    QCOMPARE(boxes, 2);
    QVERIFY(LoopEnds());
  }

  // The signal was told to nobody when the dialog came up, and the dialog's handler never got it.
  void BeforeTheDialogListens() {
    TestDesktop desktop;
    LeaveBoxesAlone(desktop);
    FakeComponent::Register([](adodb::Connection&, int) {
      raise(SIGTERM);
      ShowComponentDialog(false);
    });
    const host::ProgramEnd end(desktop.Bridge());
    desktop.Bridge().ShowDialog({});
    QVERIFY(LoopEnds());
  }

  void TheUserKeepsTheDialog() {
    TestDesktop desktop;
    LeaveBoxesAlone(desktop);
    FakeComponent::Register([](adodb::Connection&, int) {
      raise(SIGTERM);
      ShowComponentDialog(true);
    });
    const host::ProgramEnd end(desktop.Bridge());
    desktop.Bridge().ShowDialog({});
    QVERIFY(!desktop.Bridge().IsEnding());
    QCoreApplication::processEvents();
    FakeComponent::Register({});
    desktop.Bridge().ShowDialog({});
    QCOMPARE(FakeComponent::Requests().size(), 1);
    raise(SIGTERM);
    QVERIFY(LoopEnds());
  }

  // Before the program's event loop runs, as while the window is filled.
  void BeforeTheLoop() {
    TestDesktop desktop;
    LeaveBoxesAlone(desktop);
    const host::ProgramEnd end(desktop.Bridge());
    raise(SIGHUP);
    host::ShowMessage(QMessageBox::Critical, u"No se ha podido leer"_s, u"Kel"_s);
    QVERIFY(LoopEnds());
  }

 private:
  static void LeaveBoxesAlone(TestDesktop& desktop) { qApp->removeEventFilter(&desktop.driver); }
};

KEL_TEST(tst_program_end);
#include "tst_program_end.moc"
