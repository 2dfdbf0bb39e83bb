#include "support/TestProgram.h"

#include <QProcess>
#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;

/// What kel-lector can't do, whatever a file makes of it.
class tst_confinement : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ForbiddenDeeds_data();
  void ForbiddenDeeds();
  void OnlyFilesAreRead();
};

void tst_confinement::ForbiddenDeeds_data() {
  QTest::addColumn<bool>("isAllowed");
  QTest::newRow("read") << true;
  for (const char* deed : {"open", "socket", "fork", "kill", "exec", "memory"}) {
    QTest::newRow(deed) << false;
  }
}

void tst_confinement::ForbiddenDeeds() {
  if (IS_SANITIZED) {
    QSKIP("the sanitizers need what is forbidden");
  }
  QFETCH(bool, isAllowed);
  QTemporaryFile file;
  QVERIFY(file.open() && file.write("content") == 7 && file.flush());
  QProcess process;
  process.setStandardInputFile(file.fileName());
  process.start(QStringLiteral(TRESPASSER), {QString::fromLatin1(QTest::currentDataTag())});
  QVERIFY(process.waitForFinished());
  QCOMPARE(process.exitStatus(), isAllowed ? QProcess::NormalExit : QProcess::CrashExit);
  QCOMPARE(process.readAllStandardOutput(), isAllowed ? "content" : "");
}

void tst_confinement::OnlyFilesAreRead() {
  for (const QString& input : {u"/dev/zero"_s, u"/dev/null"_s}) {
    QProcess process;
    process.setStandardInputFile(input);
    process.start(QStringLiteral(TRESPASSER), {u"read"_s});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 9);
  }
}

KEL_TEST(tst_confinement);

#include "tst_confinement.moc"
