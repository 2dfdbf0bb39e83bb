#include "documents/rtf/Documents.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// Letters of many programs, from the folder that KEL_RTF_DIR names. They are not part of the project.
class tst_rtf_files : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everyFile_data();
  void everyFile();
};

void tst_rtf_files::everyFile_data() {
  QTest::addColumn<QString>("path");
  const QDir folder(qEnvironmentVariable("KEL_RTF_DIR"));
  const QStringList names = qEnvironmentVariableIsSet("KEL_RTF_DIR") ? folder.entryList({u"*.rtf"_s}) : QStringList();
  for (const QString& name : names) {
    QTest::newRow(qPrintable(name)) << folder.filePath(name);
  }
  if (names.isEmpty()) {
    QTest::newRow("none") << QString();
  }
}

void tst_rtf_files::everyFile() {
  QFETCH(QString, path);
  if (path.isEmpty()) {
    QSKIP("KEL_RTF_DIR names no folder of letters: real files are NOT tested");
  }
  QFile file(path);
  QVERIFY(file.open(QFile::ReadOnly));
  const QByteArray content = file.readAll();
  QTextDocument document;
  QVERIFY(rtf::Read(content, document).outcome != rtf::Outcome::Refused);
  QCOMPARE(rtf::Write(document), content);
  QCOMPARE(support::Loss(document), QString());

  // After an edit at the end everything else is as it was.
  QStringList before = support::Portrait(document);
  QTextCursor cursor(&document);
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(u"\nfin"_s);
  const auto again = support::Document(rtf::Write(document));
  const QStringList after = support::Portrait(*again).first(before.size() - 1);
  before.removeLast();
  QCOMPARE(support::Difference(before, after), QString());
}

KEL_TEST(tst_rtf_files);
#include "tst_rtf_files.moc"
