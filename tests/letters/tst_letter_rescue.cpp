// What becomes of a letter that can't be stored: on a full disk, and where the program ends without a word.

#include "LetterOffice.h"
#include "documents/rtf/GradualWriter.h"
#include "documents/rtf/Rtf.h"
#include "framework/Form.h"
#include "letters/editor/RecoveryFile.h"
#include "letters/editor/RunningCopy.h"
#include "support/SmallDisk.h"

#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using letters::LetterEdit;
using support::action;
using support::DialogUser;
using support::node;

namespace {

/// Folders of the user's data until the end of the test.
class DataFolder {
 public:
  explicit DataFolder(const QString& path) : m_before(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", path.toUtf8());
  }
  DataFolder(const DataFolder&) = delete;
  DataFolder& operator=(const DataFolder&) = delete;
  ~DataFolder() { qputenv("XDG_DATA_HOME", m_before); }

 private:
  QByteArray m_before;
};

QStringList KeptFiles() {
  return QDir(letters::RescueFolder()).entryList(QDir::Files);
}

/// A program that writes a letter and is not asked whether it may end.
int WriteUntilTheEnd() {
  LetterEdit letter;
  letters::RunningCopy copy(&letter, 10ms);
  copy.Watch(7, u"Carta"_s);
  letter.insertPlainText(u"Trabajo"_s);
  QTest::qWait(60'000);
  return 0;
}

/// Text and formats, apart from how they are spelt.
QByteArray Meaning(const QByteArray& content) {
  QTextDocument document;
  rtf::Read(content, document);
  QTextCursor all(&document);
  all.select(QTextCursor::Document);
  return rtf::WriteSelection(all);
}

QByteArray WrittenGradually(rtf::GradualWriter& writer) {
  while (!writer.Continue(0ms)) {
  }
  return writer.Result();
}

}  // namespace

class tst_letter_rescue : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // Saving fails, and the disk has no room for the text either: the editor is the only one that has it.
  void AFullDiskKeepsTheEditorOpen() {
    const support::SmallDisk disk;
    if (!disk.IsThere()) {
      QSKIP("a full disk takes root's rights");
    }
    LetterOffice host;
    const DataFolder data(disk.Path(u"datos"_s));
    const int id = host.AddLetter(u"Carta"_s, u"{\\rtf1 a\\par}"_s);
    host.Recording().FailAt(u"UPDATE CartasModelo"_s);
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      QDir().mkpath(letters::RescueFolder());
      disk.Fill();
      dialog.Keys("rtfCarta", u"Trabajo "_s);
      Do(dialog, "mnuArchivoGuardar");
      QVERIFY(dialog.IsVisible("rtfCarta"));
      dialog.Close();
      QVERIFY(dialog.IsVisible("rtfCarta"));
      static_cast<framework::Form*>(dialog.Dialog())->RequestUnload(framework::Form::AppTaskManager);
      QVERIFY(dialog.IsVisible("rtfCarta"));
      // The copy of every minute does not fit either, and says so without a box.
      dialog.Find<QTimer>("runningCopy")->start(0);
      QTRY_VERIFY(dialog.Find("lblAviso")->isVisible());
      QCOMPARE(KeptFiles(), QStringList());
      disk.Free();
      Do(dialog, "mnuArchivoGuardar");
    });
    for (const auto button : {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::Ok, QMessageBox::Ok}) {
      host.driver.Answer(button);
    }
    EXPECT_ERROR(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id), -2147467259);
    const QStringList boxes = host.driver.TakeBoxes();
    QCOMPARE(boxes.size(), 4);
    QVERIFY(boxes[0].contains(u"Tampoco se puede conservar"_s));
    const auto kept = letters::FindRescued(id);
    QVERIFY(kept);
    QVERIFY(letters::ReadRescued(*kept).contains("Trabajo "));
  }

  void ALetterOnAFullDiskIsShown() {
    if (support::IsOnServer()) {
      QSKIP("a full disk under a file; under a server it is in tst_postgres");
    }
    const support::SmallDisk disk;
    if (!disk.IsThere()) {
      QSKIP("a full disk takes root's rights");
    }
    support::TestDatabase origin;
    origin.Execute(u"INSERT INTO CartasModelo(IDCartaModelo,Nombre,Contenido) VALUES(1,'Carta','texto')");
    origin.Disconnect();
    QVERIFY(QFile::copy(origin.Path(), disk.Path(u"kel.db"_s)));
    disk.Fill();
    support::TestHost host(database::ConnectionStringForFile(disk.Path(u"kel.db"_s)));
    host.session.showRefusedLocks = false;
    host.desktop.printers = 1;
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      QCOMPARE(Letter(dialog)->toPlainText(), u"texto"_s);
      QVERIFY(!dialog.IsEnabled("tlbEstandar_guardar"));
      QVERIFY(dialog.Text("readOnlyReason").startsWith(u"No queda sitio en el disco"_s));
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), 1));
  }

  void WhatIsTypedIsKeptMeanwhile() {
    const QTemporaryDir folder;
    const DataFolder data(folder.path());
    LetterEdit letter;
    auto* copy = new letters::RunningCopy(&letter, 10ms);
    QSignalSpy tried(copy, &letters::RunningCopy::Tried);
    copy->Watch(7, u"Carta"_s);
    for (const QString& typed : {u"uno "_s, u"dos"_s}) {
      letter.insertPlainText(typed);
      QTRY_VERIFY(!tried.isEmpty());
      QVERIFY(tried.takeFirst().constFirst().toBool());
      QCOMPARE(KeptFiles().size(), 1);
      // An editor still has it.
      QVERIFY(!letters::FindRescued(0));
    }
    delete copy;
    QVERIFY(letters::ReadRescued(*letters::FindRescued(7)).contains("uno dos"));
  }

  void AKilledProgramLosesNoMore() {
    const QTemporaryDir folder;
    const DataFolder data(folder.path());
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(), {u"--write_until_the_end"_s});
    QVERIFY(program.waitForStarted());
    QTRY_COMPARE_WITH_TIMEOUT(KeptFiles().filter(u"carta 7"_s).filter(QRegularExpression(u"rtf$"_s)).size(), 1, 30'000);
    program.kill();
    QVERIFY(program.waitForFinished());
    const auto kept = letters::FindRescued(7);
    QVERIFY(kept);
    QVERIFY(letters::ReadRescued(*kept).contains("Trabajo"));
  }

  // Stored or given up, a letter is offered to nobody.
  void TheCopyEndsWithTheEditor_data() {
    QTest::addColumn<bool>("saves");
    QTest::newRow("saved") << true;
    QTest::newRow("given up") << false;
  }

  void TheCopyEndsWithTheEditor() {
    QFETCH(bool, saves);
    LetterOffice host;
    const int id = host.AddLetter(u"Carta"_s, u"{\\rtf1 a\\par}"_s);
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      dialog.Keys("rtfCarta", u"Trabajo "_s);
      dialog.Find<QTimer>("runningCopy")->start(0);
      QTRY_COMPARE(KeptFiles().size(), 1);
      dialog.Close();
    });
    host.driver.Answer(saves ? QMessageBox::Yes : QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
    QCOMPARE(KeptFiles(), QStringList());
  }

  void GradualTextMeansTheSame_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("formats") << QByteArray(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f1 Courier;}}{\\colortbl ;\\red255\\green0\\blue0;}\\pard\\qj\\li720\\f1 "
        "a{\\b b}"
        "\\cf1 c\\par\\par\\pard\\qc\\fs40 d\\par}");
    QTest::newRow("lists") << QByteArray(
        "{\\rtf1\\pard{\\pntext 1.\\tab}{\\*\\pn\\pnlvlbody\\pnstart1\\pndec{\\pntxta.}}\\fi-360\\li720 a\\par"
        "{\\pntext 2.\\tab}b\\par{\\pntext 3.\\tab}c\\par\\pard d\\par}");
    QTest::newRow("a table") << QByteArray(
        "{\\rtf1 x\\par\\trowd\\cellx1000\\cellx2000\\pard\\intbl a\\par b\\cell "
        "c\\cell\\row\\trowd\\cellx1000\\pard\\intbl "
        "d\\cell\\row\\pard e\\par}");
    QTest::newRow("a link") << QByteArray(
        "{\\rtf1 a{\\field{\\*\\fldinst{HYPERLINK \"http://x/\"}}{\\fldrslt b {\\b c}}}d\\par e\\par}");
    QTest::newRow("sections and pages") << QByteArray("{\\rtf1 a\\page b\\par\\page c\\par\\sect\\sectd d\\par}");
  }

  void GradualTextMeansTheSame() {
    QFETCH(QByteArray, content);
    QTextDocument document;
    rtf::Read(content, document);
    rtf::GradualWriter writer(document);
    QCOMPARE(Meaning(WrittenGradually(writer)), Meaning(content));
    // Whatever is done to it on the way.
    QRandomGenerator random(1);
    for (int i = 0; i < 200; ++i) {
      QTextCursor cursor(&document);
      cursor.setPosition(random.bounded(document.characterCount()));
      const int end = cursor.position() + random.bounded(4);
      cursor.setPosition(std::min(end, document.characterCount() - 1), QTextCursor::KeepAnchor);
      switch (random.bounded(5)) {
        case 0:
          cursor.insertText(u"x\ny"_s);
          break;
        case 1:
          cursor.removeSelectedText();
          break;
        case 2:
          document.undo();
          break;
        case 3: {
          QTextCharFormat italic;
          italic.setFontItalic(true);
          cursor.mergeCharFormat(italic);
          break;
        }
        default:
          cursor.insertBlock();
      }
      writer.Continue(0ms);
      if (random.bounded(3) == 0) {
        rtf::GradualWriter anew(document);
        QCOMPARE(Meaning(WrittenGradually(writer)), Meaning(WrittenGradually(anew)));
      }
    }
  }
};

KEL_TEST(tst_letter_rescue);
KEL_TEST_HELPER(write_until_the_end, [](const QStringList&) { return WriteUntilTheEnd(); });
#include "tst_letter_rescue.moc"
