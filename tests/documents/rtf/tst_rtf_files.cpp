#include "documents/rtf/Documents.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// The folder that KEL_RTF_DIR names, or `shared/rtf` beside the project's.
QDir Letters() {
  const QString beside = qEnvironmentVariable("KEL_DATOS") + u"/../../../shared/rtf"_s;
  return qEnvironmentVariable("KEL_RTF_DIR", beside);
}

}  // namespace

/// Letters of many programs. They are not part of the project.
class tst_rtf_files : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everyFile_data();
  void everyFile();
  void cleanupTestCase();

 private:
  int m_read = 0;
};

void tst_rtf_files::everyFile_data() {
  QTest::addColumn<QString>("path");
  const QDir folder = Letters();
  const QStringList names = folder.entryList({u"*.rtf"_s});
  for (const QString& name : names) {
    QTest::newRow(qPrintable(name)) << folder.filePath(name);
  }
  if (names.isEmpty()) {
    QTest::newRow("none") << QString();
  }
}

void tst_rtf_files::cleanupTestCase() {
  if (m_read > 0) {
    qInfo("%d real letters read", m_read);
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

  // What is changed is written between the letter's own bytes, and reads as when all is written.
  constexpr int places = 12;
  for (int i = 0; i < places; ++i) {
    QTextCursor edit(document.findBlockByNumber(i * document.blockCount() / places));
    edit.movePosition(QTextCursor::EndOfBlock);
    if (i % 3 == 0) {
      edit.insertText(u"Z"_s);
    } else if (i % 3 == 1) {
      edit.insertText(u"Z\nZ"_s);
    } else {
      edit.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
      edit.removeSelectedText();
    }
    QCOMPARE(support::PatchLoss(document), QString());
    if (i % 4 == 3) {
      while (document.isUndoAvailable()) {
        document.undo();
      }
      QCOMPARE(rtf::Write(document), content);
    }
  }

  // After an edit at the end everything else is as it was.
  QStringList before = support::Portrait(document);
  QTextCursor cursor(&document);
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(u"\nfin"_s);
  const auto again = support::Document(rtf::Write(document));
  const QStringList after = support::Portrait(*again).first(before.size() - 1);
  before.removeLast();
  QCOMPARE(support::Difference(before, after), QString());
  ++m_read;
}

KEL_TEST(tst_rtf_files);
#include "tst_rtf_files.moc"
