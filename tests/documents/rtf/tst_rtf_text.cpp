#include "documents/rtf/Documents.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;
using support::Document;
using support::Letter;
using support::Text;

/// What text comes out of RTF, whatever its encoding, nesting and damage; each row is also written and read again.
class tst_rtf_text : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void text_data();
  void text();
  void charsets_data();
  void charsets();
  void borderOfBytesAndCharacters_data();
  void borderOfBytesAndCharacters();
  void columnsCharactersComeBack();
};

void tst_rtf_text::text_data() {
  QTest::addColumn<QByteArray>("content");
  QTest::addColumn<QString>("expected");
  const auto row = [](const char* name, const QByteArray& content, const QString& expected) {
    QTest::newRow(name) << content << expected;
  };
  row("the last paragraph mark ends the last paragraph", Letter("uno\\par dos\\par"), u"uno|dos"_s);
  row("text behind the last mark", Letter("uno\\par dos"), u"uno|dos"_s);
  row("empty paragraphs", Letter("\\par\\par x\\par\\par"), u"||x|"_s);
  row("empty letter", Letter(""), u""_s);
  row("line ends and NUL are none", QByteArray("{\\rtf1 a\r\nb\0c}", 14), u"abc"_s);
  row("backslash before a line end", Letter("a\\\r\nb\\\nc"), u"a|b|c"_s);
  row("raw tab and tab word", Letter("a\tb\\tab c"), u"a\tb\tc"_s);
  row("line break", Letter("a\\line b"), u"a/b"_s);
  row("special characters", Letter("\\ldblquote a\\rdblquote\\emdash\\endash\\bullet\\~b\\_c\\-d"),
      u"\u201Ca\u201D\u2014\u2013\u2022\u00A0b\u2011c\u00ADd"_s);
  row("escaped braces", Letter("\\{\\\\\\}"), u"{\\}"_s);
  row("western accents", Letter("\\'e1\\'F1\\'80\\'bf"), u"áñ€¿"_s);
  row("font's code page", Letter("\\'e8\\f2\\'e8\\'9a\\f0\\'e8"), u"èčšè"_s);
  row("double byte, cut by a line end", Letter("\\f3\\'82\r\n\\'a0\\'83\\'5c"), u"あソ"_s);
  row("double byte, raw trail byte", Letter("\\f3\\'83\\\\"), u"ソ"_s);
  row("symbol font", Letter("\\f1\\'b7a"), u"\uF0B7\uF061"_s);
  row("document's code page", "{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0}", u"Пр"_s);
  row("document's code page, the second one", "{\\rtf1\\ansi\\ansicpg932 \001\\ansicpg1252 \\'e1}", u"á"_s);
  row("raw bytes", "{\\rtf1\\ansi\\ansicpg1250 \xB9\xE6}", u"ąć"_s);
  row("Macintosh", "{\\rtf1\\mac \\'8e}", u"é"_s);
  row("Unicode with fallback", Letter("\\u8364?\\u8364\\'80x"), u"€€x"_s);
  row("Unicode without fallback", Letter("{\\uc0\\u8364 x}\\u8364?y"), u"€x€y"_s);
  row("fallback of two", Letter("\\uc2\\u8364 ?\\'80x"), u"€x"_s);
  row("a word is one character of the fallback", Letter("\\uc1\\u8364\\b x"), u"€x"_s);
  row("a brace ends the fallback", Letter("\\uc3\\u8364?{x}"), u"€x"_s);
  row("two halves", Letter("\\u-10179?\\u-9047?"), QString::fromUcs4(U"\U0001F4A9"));
  row("lone halves", Letter("\\u-10179?x\\u-9047?"), u"\uFFFDx\uFFFD"_s);
  row("binary data holds braces", Letter("a{\\*\\x\\bin4 }{\\}b}c"), u"a@c"_s);
  row("binary data beyond the end", "{\\rtf1 a{\\*\\x\\bin2000000000 b", u"a@"_s);
  row("bad hexadecimal escape", Letter("a\\'zb"), u"azb"_s);
  row("missing braces", "{\\rtf1 {a{b", u"ab"_s);
  row("extra brace ends the letter", "{\\rtf1 a}b}", u"a"_s);
  row("what stands behind is none", QByteArray("{\\rtf1 a}\r\n\0", 13), u"a"_s);
  row("blanks and a mark in front", "\xEF\xBB\xBF \r\n{\\rtf1 a}", u"a"_s);
  row("plain text", "uno\r\ndos", u"uno|dos"_s);
  row("plain text in Windows-1252", "a\xF1o", u"año"_s);
  row("plain text in UTF-8", "año", u"año"_s);
  row("nothing", "", u""_s);
  row("unknown words are passed over", Letter("a\\unheardof12 b{\\unheardof c}"), u"abc"_s);
  row("alternative texts of items", Letter("{\\pntext\\f1\\'B7\\tab}{\\*\\pn\\pnlvlblt}a\\par{\\listtext 1.\\tab}b"),
      u"a|b"_s);
  row("Unicode alternative", Letter("a{\\upr{b}{\\*\\ud{\\u8364?}}}c"), u"a€c"_s);
  row("result of a field", Letter("{\\field{\\*\\fldinst DATE}{\\fldrslt hoy}} es"), u"hoy es"_s);
  row("result of an object", Letter("{\\object{\\*\\objdata 00}{\\result x}}"), u"x"_s);
  row("hidden text", Letter("a{\\v b}c\\v d\\v0 e"), u"a@c@e"_s);
  row("cells are paragraphs", Letter("\\trowd\\cellx1\\cellx2\\intbl a\\cell b\\par c\\cell\\row\\pard d\\par"),
      u"a|b|c|d"_s);
  row("page break within a paragraph", Letter("a\\page b\\par"), u"a|b"_s);
  row("headers do not show", Letter("{\\header x}a{\\footer y}"), u"a"_s);
  row("characters of Qt's own", Letter("a\\u64976?\\u65532?\\u8232?b"), u"a\uFFFD\uFFFD/b"_s);
}

void tst_rtf_text::text() {
  QFETCH(QByteArray, content);
  QFETCH(QString, expected);
  const auto document = Document(content);
  QCOMPARE(Text(*document), expected);
  QCOMPARE(rtf::Write(*document), content);
  QCOMPARE(support::Loss(*document), QString());
}

void tst_rtf_text::charsets_data() {
  QTest::addColumn<int>("charset");
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<QString>("expected");
  const auto row = [](int charset, const QByteArray& bytes, const QString& expected) {
    QTest::addRow("%d", charset) << charset << bytes << expected;
  };
  row(0, "\xE1", u"á"_s);
  row(77, "\x8E", u"é"_s);
  row(128, "\x82\xA0", u"あ"_s);
  row(129, "\xB0\xA1", u"가"_s);
  row(134, "\xC4\xE3", u"你"_s);
  row(136, "\xA7\x41", u"你"_s);
  row(161, "\xE1", u"α"_s);
  row(162, "\xFE", u"ş"_s);
  row(163, "\xD0", u"Đ"_s);
  row(177, "\xE0", u"א"_s);
  row(178, "\xC7", u"ا"_s);
  row(186, "\xE0", u"ą"_s);
  row(204, "\xE1", u"б"_s);
  row(222, "\xA1", u"ก"_s);
  row(238, "\xE8", u"č"_s);
  row(254, "\xA4", u"ñ"_s);
}

void tst_rtf_text::charsets() {
  QFETCH(int, charset);
  QFETCH(QByteArray, bytes);
  QFETCH(QString, expected);
  const auto document =
      Document("{\\rtf1{\\fonttbl{\\f0\\fnil\\fcharset" + QByteArray::number(charset) + " X;}}\\f0 " + bytes + "}");
  QCOMPARE(Text(*document), expected);
  QCOMPARE(support::Loss(*document), QString());
}

void tst_rtf_text::borderOfBytesAndCharacters_data() {
  QTest::addColumn<QString>("column");
  QTest::addColumn<QString>("expected");
  QTest::newRow("bytes as characters") << u"{\\rtf1\\ansi\\ansicpg1250 \u00B9}"_s << u"ą"_s;
  QTest::newRow("control characters as bytes") << u"{\\rtf1\\ansi \u0080}"_s << u"€"_s;
  QTest::newRow("decoded characters") << u"{\\rtf1\\ansi €{\\uc0 ą}}"_s << u"€ą"_s;
  QTest::newRow("plain text of any script") << u"año €\nПр"_s << u"año €|Пр"_s;
  QTest::newRow("empty") << QString() << QString();
}

void tst_rtf_text::borderOfBytesAndCharacters() {
  QFETCH(QString, column);
  QFETCH(QString, expected);
  QTextDocument document;
  rtf::Read(column, document);
  QCOMPARE(Text(document), expected);
  QCOMPARE(rtf::WriteText(document), column);
}

/// A column takes no NUL: after an edit binary data is written as digits, and other NULs are line ends, which end words
/// as they do.
void tst_rtf_text::columnsCharactersComeBack() {
  const auto document = Document(Letter("{\\pict\\pngblip\\bin3 " + QByteArray("a\0b", 3) + "}\\par\r\nuno\\par" +
                                        QByteArray("\0dos\\\0", 6) + "\\par\r\n"));
  QTextCursor(document.get()).insertText(u"ñ"_s);
  const QString column = rtf::WriteText(*document);
  QVERIFY(!column.contains(QChar(0)));
  QVERIFY2(column.contains(u"{\\pict\\pngblip 610062}"_s), qPrintable(column));
  QVERIFY(column.contains(u"\\'f1"_s));
  QTextDocument again;
  rtf::Read(column, again);
  QCOMPARE(Text(again), Text(*document));
}

KEL_TEST(tst_rtf_text);
#include "tst_rtf_text.moc"
