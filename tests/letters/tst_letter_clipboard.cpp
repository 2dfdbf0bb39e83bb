// Text on its way into the letter and out of it.

#include "documents/rtf/Rtf.h"
#include "letters/editor/LetterEdit.h"
#include "support/TestProgram.h"
#include "support/TrapFile.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

using namespace Qt::StringLiterals;

using letters::LetterEdit;

namespace {

void Offer(const QString& format, const QByteArray& content) {
  auto* data = new QMimeData;
  data->setData(format, content);
  QApplication::clipboard()->setMimeData(data);
}

QString Pasted(const QString& format, const QByteArray& content) {
  LetterEdit letter;
  Offer(format, content);
  letter.paste();
  return letter.toPlainText();
}

}  // namespace

class tst_letter_clipboard : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void CutAndPasteKeepTheWholeFormat() {
    LetterEdit letter;
    const QString content =
        u"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\pard\\qj\\li720\\f0\\fs24 uno {\\b\\uldb [Nombre]}{\\*\\bkmkstart x} "
        "dos\\par fin\\par}"_s;
    letter.Load(content);
    letter.selectAll();
    letter.cut();
    QCOMPARE(letter.toPlainText(), QString());
    const QMimeData* cut = QApplication::clipboard()->mimeData();
    QVERIFY(cut->data(u"text/rtf"_s).contains("\\uldb"));
    QVERIFY(cut->html().contains(u"[Nombre]"_s));
    QCOMPARE(cut->text(), u"uno [Nombre] dos\nfin"_s);
    letter.paste();
    const QString pasted = letter.Content();
    for (const char* kept : {"\\uldb", "\\qj", "\\li720", "bkmkstart", "[Nombre]"}) {
      QVERIFY2(pasted.contains(QLatin1String(kept)), kept);
    }
    letter.undo();
    QCOMPARE(letter.toPlainText(), QString());
    letter.undo();
    QCOMPARE(letter.Content(), content);
  }

  void TakesWhatOtherProgramsOffer_data() {
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QString& format, const QByteArray& content, const QString& text) {
      QTest::newRow(name) << format << content << text;
    };
    row("RTF", u"application/rtf"_s, "{\\rtf1 a\\par b}", u"a\nb"_s);
    row("RTF by name only", u"text/rtf"_s, "plain", QString());
    row("HTML", u"text/html"_s, "<p>a <b>b</b></p><table><tr><td>c</td></tr></table>", u"a b\n\nc\n"_s);
    row("text", u"text/plain"_s, "a\r\nb\tc\x01", u"a\nb\tc"_s);
    row("a script", u"text/html"_s, "<script>alert(1)</script>a", u"a"_s);
  }

  void TakesWhatOtherProgramsOffer() {
    QFETCH(QString, format);
    QFETCH(QByteArray, content);
    QTEST(Pasted(format, content), "text");
  }

  void PastedHtmlOpensNothing_data() {
    QTest::addColumn<QString>("html");
    const char* const bodies[] = {
        "<img src='%1'>",
        "<img src='file://%1' width=9>",
        "<base href='file:///'><img src='.%1'>",
        "<link rel=stylesheet href='%1'>",
        "<link rel='stylesheet' type='text/css' href='file://%1'>",
        "<style>@import url(%1);</style>",
        "<style>@import '%1'; p {background-image: url(%1)}</style><p>p</p>",
        "<body background='%1'>b</body>",
        "<table background='%1'><tr><td background='%1'>c</td></tr></table>",
        "<p style='background-image: url(%1)'>p</p>",
        "<span style='background: url(file://%1)'>s</span>",
        "<table style='background-image: url(%1)'><tr style='background: url(%1)'><td>c</td></tr></table>",
        "<ul style='list-style-image: url(%1)'><li>i</li></ul>",
        "<object data='%1'></object><embed src='%1'><iframe src='%1'></iframe><script src='%1'></script>",
        "<html><head><link rel='stylesheet' "
        "href='%1'></head><body><!--StartFragment-->a<!--EndFragment--></body></html>",
    };
    for (const char* body : bodies) {
      QTest::newRow(body) << QString::fromLatin1(body);
    }
  }

  // Both ways into the letter, and what is shown afterwards: some files never end.
  void PastedHtmlOpensNothing() {
    QFETCH(QString, html);
    support::TrapFile trap;
    LetterEdit letter;
    Offer(u"text/html"_s, u"a%1b"_s.arg(html.arg(trap.Path())).toUtf8());
    letter.paste();
    const QMimeData* data = QApplication::clipboard()->mimeData();
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(letter.viewport(), &enter);
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(letter.viewport(), &drop);
    letter.grab();
    QVERIFY2(!trap.WasOpened(), qPrintable(letter.toPlainText()));
    QCOMPARE(letter.toPlainText().count(u'a'), 2);
  }

  void HtmlKeepsItsLooks() {
    LetterEdit letter;
    Offer(u"text/html"_s, "<p style='text-align:right'><b>a</b></p>");
    letter.paste();
    QVERIFY(letter.Content().contains(u"\\qr"_s));
    QVERIFY(letter.Content().contains(u"\\b"_s));
  }

  void HostileRtfIsRefusedOrTamed() {
    LetterEdit letter;
    letter.insertPlainText(u"a"_s);
    QSignalSpy refused(&letter, &LetterEdit::PasteRefused);
    QByteArray formats = "{\\rtf1 ";
    for (int i = 0; i <= 50'000; ++i) {
      formats += "\\li" + QByteArray::number(i % 30'000) + "\\ri" + QByteArray::number(i / 30'000) + " x\\par";
    }
    Offer(u"text/rtf"_s, formats);
    letter.paste();
    QCOMPARE(refused.size(), 1);
    QCOMPARE(letter.toPlainText(), u"a"_s);
    Offer(u"text/rtf"_s, "{\\rtf1 " + QByteArray(100'000, '{') + "b\\bin2000000000");
    letter.paste();
    QCOMPARE(letter.toPlainText(), u"ab"_s);
  }

  void APageBreakStaysWithItsParagraph() {
    LetterEdit letter;
    letter.Load(u"{\\rtf1 uno\\par\\page dos}"_s);
    letter.moveCursor(QTextCursor::End);
    QTest::keyClick(&letter, Qt::Key_Return);
    QTest::keyClicks(&letter, u"tres"_s);
    QApplication::clipboard()->setText(u"cuatro\ncinco"_s);
    letter.paste();
    QString breaks;
    for (QTextBlock block = letter.document()->begin(); block.isValid(); block = block.next()) {
      breaks += block.blockFormat().pageBreakPolicy() == QTextFormat::PageBreak_Auto ? u'-' : u'p';
    }
    QCOMPARE(breaks, u"-p--"_s);
    QCOMPARE(letter.toPlainText(), u"uno\ndos\ntrescuatro\ncinco"_s);
  }

  void ReturnsKeepTheFormat() {
    LetterEdit letter;
    letter.Load(u"{\\rtf1\\qj a\\par}"_s);
    letter.moveCursor(QTextCursor::End);
    QTest::keyClick(&letter, Qt::Key_Return);
    QTest::keyClick(&letter, Qt::Key_Return);
    QTest::keyClicks(&letter, u"b"_s);
    QCOMPARE(letter.toPlainText(), u"a\n\nb"_s);
    QCOMPARE(letter.textCursor().blockFormat().alignment(), Qt::AlignJustify);
    letter.undo();
    letter.undo();
    QCOMPARE(letter.toPlainText(), u"a\n"_s);
  }

  void MarkersAreOneStepInTheCaretsFormat() {
    LetterEdit letter;
    letter.Load(u"{\\rtf1{\\fonttbl{\\f0 Arial;}}\\f0\\fs40\\b uno dos\\par}"_s);
    QTextCursor cursor = letter.textCursor();
    cursor.setPosition(4);
    cursor.setPosition(7, QTextCursor::KeepAnchor);
    letter.setTextCursor(cursor);
    letter.TypeText(u"[dd/mm/aaaa hh:mm]"_s);
    QTest::keyClicks(&letter, u"!"_s);
    QVERIFY2(letter.Content().contains(u"uno [dd/mm/aaaa hh:mm]!"_s), qPrintable(letter.Content()));
    letter.undo();
    letter.undo();
    QCOMPARE(letter.toPlainText(), u"uno dos"_s);
  }
};

KEL_TEST(tst_letter_clipboard);
#include "tst_letter_clipboard.moc"
