// Letters whose paragraphs would block the window.

#include "LetterOffice.h"
#include "documents/rtf/Rtf.h"
#include "platform/process/TerminationSignals.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>
#include <QTextBlock>

#include <csignal>

using namespace Qt::StringLiterals;

using letters::LetterEdit;
using support::action;
using support::DialogUser;
using support::node;

namespace {

QString Repeated(const QString& piece, int count) {
  return u"{\\rtf1 "_s + piece.repeated(count) + u"\\par}"_s;
}

}  // namespace

class tst_letter_limits : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // It is deaf to it otherwise, for half a second a megabyte.
  void ASignalEndsTheReading() {
    const process::TerminationSignals signals;
    const QString content = Repeated(u"uno\\par "_s, 5000);
    LetterEdit letter;
    raise(SIGTERM);
    QCOMPARE(letter.Load(content).outcome, rtf::Outcome::Refused);
    QTRY_VERIFY(!process::TerminationSignals::IsOneUntold());
    QCOMPARE(letter.Load(content).outcome, rtf::Outcome::RichText);
  }

  void Paragraphs_data() {
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("reading");
    // The sizes that real letters come near to pass with room; the others took from six seconds to minutes.
    QTest::newRow("a page of text") << Repeated(u"unas palabras "_s, 300) << false;
    QTest::newRow("ten pages of text") << Repeated(u"unas palabras "_s, 3'000) << false;
    QTest::newRow("a long paragraph") << Repeated(u"unas palabras "_s, 60'000) << true;
    QTest::newRow("a long address") << Repeated(u"x"_s, 3'000) << false;
    QTest::newRow("a long word") << Repeated(u"x"_s, 30'000) << true;
    QTest::newRow("a word of blanks that hold together") << Repeated(u"\\~"_s, 30'000) << true;
    QTest::newRow("Chinese, which has no blanks") << Repeated(u"\\u20013?"_s, 20'000) << false;
    QTest::newRow("formats") << Repeated(u"\\b x\\b0 y"_s, 200) << false;
    QTest::newRow("many formats") << Repeated(u"\\b x\\b0 y"_s, 20'000) << true;
    QTest::newRow("accents by marks") << Repeated(u"e\\u769?"_s, 3'000) << false;
    QTest::newRow("marks over one letter") << Repeated(u"\\u769?"_s, 5'000) << true;
    QTest::newRow("marks beyond the basic plane") << Repeated(u"\\u-9408?\\u-8960?"_s, 5'000) << true;
  }

  void Paragraphs() {
    QFETCH(QString, content);
    LetterEdit letter;
    letter.Load(content);
    QTEST(letter.IsForReading(), "reading");
    int longest = 0;
    for (QTextBlock block = letter.document()->begin(); block.isValid(); block = block.next()) {
      longest = std::max(longest, block.length());
    }
    QVERIFY(!letter.IsForReading() || longest <= 201);
    QTextDocument whole;
    rtf::Read(content, whole);
    QCOMPARE(letter.toPlainText().remove(u'\n'), whole.toPlainText().remove(u'\n'));
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Delete}) {
      if (letter.IsForReading()) {
        QTest::keyClick(&letter, key);
      }
    }
    letter.document()->clear();
    QCOMPARE(letter.Content() == content, letter.IsForReading());
  }

  void AHeavyLetterIsReadAndStoredAsItIs() {
    LetterOffice host;
    const QString content = Repeated(u"\\b x\\b0 y"_s, 5'000);
    const int id = host.AddLetter(u"Carta"_s, content);
    host.driver.On("frmCartaModelo", [](const DialogUser& dialog) {
      dialog.Keys("rtfCarta", u"Trabajo"_s);
      QVERIFY(!dialog.IsEnabled("tlbFormato_negrita"));
      QVERIFY(!dialog.Find<QAction>("mnuEdicionPegar")->isEnabled());
      dialog.Paste("txtMargenIzdo", u"4"_s);
      Do(dialog, "mnuArchivoGuardar");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
    QVERIFY(host.driver.TakeBoxes()[0].contains(u"solo para leerlo"_s));
    QCOMPARE(host.Query(u"SELECT Contenido, MargenIzquierdo FROM CartasModelo"), QStringList(content + u"|4"_s));
  }

  void WhatIsPastedHasTheSameLimits_data() {
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << u"text/plain"_s << QByteArray(40'000, 'x');
    QTest::newRow("RTF") << u"text/rtf"_s << Repeated(u"\\b x\\b0 y"_s, 5'000).toLatin1();
    QTest::newRow("HTML") << u"text/html"_s << "<p>" + QByteArray("palabra ").repeated(10'000);
    QTest::newRow("to a paragraph that is long already") << u"text/plain"_s << QByteArray("palabra ").repeated(4'000);
  }

  void WhatIsPastedHasTheSameLimits() {
    QFETCH(QString, format);
    QFETCH(QByteArray, content);
    LetterEdit letter;
    letter.Load(Repeated(u"palabra "_s, 3'000));
    QSignalSpy refused(&letter, &LetterEdit::PasteRefused);
    auto* data = new QMimeData;
    data->setData(format, content);
    QApplication::clipboard()->setMimeData(data);
    letter.paste();
    QCOMPARE(refused.size(), 1);
    QCOMPARE(letter.toPlainText().size(), 3'000 * 8);
    QVERIFY(letter.ReplaceAll(Repeated(u"x"_s, 30'000).toLatin1()).outcome == rtf::Outcome::Refused);
  }
};

KEL_TEST(tst_letter_limits);
#include "tst_letter_limits.moc"
