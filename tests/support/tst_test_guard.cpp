#include "support/TestProgram.h"

#include <QDialog>
#include <QProcess>
#include <QTest>

#include <stdexcept>

using namespace Qt::StringLiterals;

/// Not a test of its own: what goes wrong in one.
class Faulty : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Throws() { throw std::runtime_error("no control x"); }
  void Warns() { qWarning("null pointer"); }
  void LeavesAWindow() { (new QDialog)->show(); }
  void IsExpectedToWarn() {
    QTest::ignoreMessage(QtWarningMsg, "foreseen");
    qWarning("foreseen");
  }
};

class tst_test_guard : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void OneFaultIsOneReport() {
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(), {u"Faulty"_s});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    const QStringList lines = QString::fromUtf8(program.readAllStandardOutput()).split(u'\n');
    QCOMPARE(lines.filter(u"FAIL!"_s),
             (QStringList{u"FAIL!  : Faulty::Throws() exception: no control x"_s,
                          u"FAIL!  : Faulty::Warns() Received a warning that resulted in a failure:"_s,
                          u"FAIL!  : Faulty::LeavesAWindow() left open: "_s}));
    QCOMPARE(program.exitCode(), 3);
  }
};

KEL_TEST(Faulty);
KEL_TEST(tst_test_guard);
#include "tst_test_guard.moc"
