#include "documents/rtf/Documents.h"
#include "documents/rtf/Properties.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QImage>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocumentFragment>

using namespace Qt::Literals::StringLiterals;
using support::Document;
using support::Letter;
using support::Text;

/// What is not understood stays: unchanged to the byte, and after edits beside it.
class tst_rtf_kept : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void afterAnEdit_data();
  void afterAnEdit();
  void untouchedPartsKeepTheirBytes_data();
  void untouchedPartsKeepTheirBytes();
  void rewordedTextIsWrittenAtItsPlace_data();
  void rewordedTextIsWrittenAtItsPlace();
  void wordsBehindTheFirstTextStayThere();
  void aLinkAroundTheDeepestFieldIsLeftOut();
  void undoneIsUnchanged();
  void oddPlaces_data();
  void oddPlaces();
  void pictures_data();
  void pictures();
  void piecesSurviveCutAndPaste();
  void copiesBeginAsTheirText_data();
  void copiesBeginAsTheirText();
  void foreignTablesStayBehind();
  void linkOverASection();
  void addedToTables_data();
  void addedToTables();
  void noFontStaysNone();
  void tableEdits_data();
  void tableEdits();
};

namespace {

QByteArray PictureFile(QImage image, const char* format) {
  image.fill(Qt::green);
  QBuffer buffer;
  buffer.open(QBuffer::WriteOnly);
  image.save(&buffer, format);
  return buffer.data();
}

QByteArray Png() {
  return PictureFile(QImage(3, 2, QImage::Format_RGB32), "PNG");
}

QByteArray Little(quint32 number, int bytes) {
  QByteArray result;
  for (; bytes > 0; --bytes, number >>= 8) {
    result += static_cast<char>(number & 0xFF);
  }
  return result;
}

/// A bitmap of 2 by 1 pixels with 24 bits each.
QByteArray Dib() {
  return Little(40, 4) + Little(2, 4) + Little(1, 4) + Little(1, 2) + Little(24, 2) + Little(0, 4) + Little(8, 4) +
         Little(0, 16) + QByteArray(8, '\x40');
}

/// The metafile that a pasted bitmap becomes.
QByteArray Metafile() {
  const QByteArray record = Little(0x0F43, 2) + QByteArray(22, '\0') + Dib();
  return Little(1, 2) + Little(9, 2) + QByteArray(14, '\0') + Little(quint32(record.size() + 4) / 2, 4) + record;
}

}  // namespace

void tst_rtf_kept::afterAnEdit_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QByteArray>("kept");
  const auto row = [](const char* name, const QByteArray& body, const QByteArray& kept) {
    QTest::newRow(name) << body << kept;
  };
  const auto same = [&row](const char* name, const QByteArray& group) { row(name, "a" + group + "b\\par", group); };
  same("unknown group", "{\\*\\unheardof{\\b x}\\'e1\xFF}");
  same("footnote", "{\\footnote{\\super 1} nota}");
  same("bookmark", "{\\*\\bkmkstart sitio}");
  same("metafile", "{\\pict\\wmetafile8\\picw10\\pich10 0100\r\n0900}");
  same("binary picture", QByteArray("{\\pict\\pngblip\\bin5 }{\\\0}", 25) + "}");
  same("both pictures", "{\\*\\shppict{\\pict\\pngblip 00}}{\\nonshppict{\\pict\\wmetafile8 01}}");
  same("object", "{\\object\\objemb{\\*\\objclass X}{\\*\\objdata 0105}}");
  same("drawing", "{\\shp{\\*\\shpinst{\\sp{\\sn a}{\\sv b}}}}");
  row("object with a result", "a{\\object\\objemb{\\*\\objdata 0105}{\\result r}}b\\par",
      "{\\object\\objemb{\\*\\objdata 0105}{\\result r}}");
  row("field", "a{\\field\\fldedit{\\*\\fldinst MERGEFIELD x}{\\fldrslt r}}b\\par",
      "{\\field\\fldedit{\\*\\fldinst MERGEFIELD x}{\\fldrslt r}}");
  row("field over paragraphs", "{\\field{\\*\\fldinst X}{\\fldrslt a\\par\\pard\\qc b}}c\\par\\pard d\\par",
      "{\\field{\\*\\fldinst X}");
  row("field over sections", "{\\field{\\*\\fldinst X}{\\fldrslt a\\sect\\sectd\\cols2 b}}c\\par", "a\\sect\r\nb}}");
  row("nested table",
      "\\trowd\\cellx9\\pard\\intbl\\itap2 a\\nestcell{\\*\\nesttableprops\\trowd\\cellx7\\nestrow}\\pard\\intbl "
      "b\\cell\\row\\pard\\par",
      "{\\*\\nesttableprops\\trowd\\cellx7\\nestrow}");
  row("row defined behind its cells", "\\pard\\intbl a\\cell\\trowd\\cellx77\\row\\pard\\par", "\\trowd\\cellx77");
  row("field without a result", "a{\\field{\\*\\fldinst PAGE}}b\\par", "{\\field{\\*\\fldinst PAGE}}");
  row("page number", "a\\chpgn b\\par", "a\\chpgn b");
  row("header and footer", "{\\header h}{\\footerf f}a\\par", "{\\header h}{\\footerf f}");
  row("paper", "\\paperw11906\\margl567 a\\par", "\\paperw11906\\margl567");
  row("section", "a\\sect\\sectd\\cols2{\\header h}b\\par", "\\sect\r\n\\sectd\\cols2{\\header h}");
  row("styles", "{\\stylesheet{\\s1 Uno;}}\\pard\\s1 a\\par", "{\\stylesheet{\\s1 Uno;}}");
  row("words of paragraphs", "\\keepn\\brdrb\\brdrs\\brdrw15\\brdrcf2 a\\par",
      "\\keepn\\brdrb\\brdrs\\brdrw15\\brdrcf2");
  row("words of characters", "\\lang1034\\expndtw20\\uldb a\\par", "\\expndtw20\\lang1034\\f0\\fs20\\uldb");
  row("capitals in turns", "{\\caps uno} dos {\\scaps tres}{\\caps cuatro} cinco\\par",
      "\\caps uno\\caps0  dos \\scaps tres\\caps\\scaps0 cuatro\\caps0  cinco");
  row("direction of a run", "\\rtlch a\\ltrch b\\par", "\\fs20\\rtlch a\\ltrch b");
  row("no mark behind the last paragraph", "a\\par\\pard\\sb120\\qr b", "\\pard\\sb120\\qr b fin\\par");
  row("tab distance", "\\deftab708 a\\par", "\\deftab708");
  row("numbers for readers that don't number",
      "\\pard{\\*\\pn\\pnlvlbody\\pnlcrm\\pnstart3{\\pntxtb (}{\\pntxta)}}a\\par b\\par", "{\\pntext(iv)\\tab}b");
  row("numbers of the list table",
      "{\\*\\listtable{\\list{\\listlevel\\levelnfc0\\levelstartat9{\\leveltext\\'02\\'00.;}}\\listid7}}"
      "{\\*\\listoverridetable{\\listoverride\\listid7\\ls1}}\\ls1 a\\par\\pard b\\par\\ls1 c\\par",
      "{\\listtext 10.\\tab}\\ls1\\ilvl0 c");
  row("exact rise", "\\up7 a\\par", "\\up7 a");
  row("leader", "\\tldot\\tqr\\tx9000 a\\par", "\\tqr\\tldot\\tx9000");
  row("table", "\\trowd\\trgaph70\\clcbpat1\\cellx4500\\pard\\intbl a\\cell\\row\\pard b\\par",
      "\\trowd\\trgaph70\\clcbpat1\\cellx4500\\pard\\intbl");
}

void tst_rtf_kept::afterAnEdit() {
  QFETCH(QByteArray, body);
  QFETCH(QByteArray, kept);
  const QByteArray content = Letter(body);
  const auto document = Document(content);
  QCOMPARE(rtf::Write(*document), content);
  QTextCursor cursor(document.get());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(u" fin"_s);
  const QByteArray written = rtf::Writer(*document).Write();
  QVERIFY2(written.contains(kept), written.constData());
  QCOMPARE(support::Loss(*document), QString());
  QCOMPARE(support::PatchLoss(*document), QString());
}

/// What nobody edited keeps its bytes, what the reader drops among them: here words \wa to \we that it does not know.
void tst_rtf_kept::untouchedPartsKeepTheirBytes_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<char>("edit");  // at the X: a letter, a new paragraph, a colour and font, all of its paragraph away
  QTest::addColumn<QByteArray>("kept");
  const auto row = [](const char* name, const QByteArray& body, char edit, const QByteArray& kept) {
    QTest::newRow(name) << body << edit << kept;
  };
  row("in the middle", "\\wa a\\par\\wb\\b X\\b0\\par\\wc c\\par", 'l', "ac");
  row("at the start", "\\wa X\\par\\wb b\\par", 'l', "b");
  row("at the end, without a mark", "\\wa a\\par\\wb X", 'n', "a");
  row("styles that go on", "{\\b\\qr\\wa a\\par \\i\\cf1\\sb60 X\\par \\wb b}\\par\\wc c\\par", 'l', "abc");
  row("a group around two of three", "\\wa a\\par{\\b\\wb X\\par\\wc c}\\par\\wd d\\par", 'l', "ad");
  row("a field around two of three", "\\wa a\\par{\\field{\\*\\fldinst Y}{\\fldrslt\\wb X\\par\\wc c}}\\par\\wd d\\par",
      'l', "ad");
  row("in a field", "\\wa a\\par{\\field{\\*\\fldinst Y}{\\fldrslt\\wb b\\par X\\par\\wc c}}\\par\\wd d\\par", 'l',
      "ad");
  row("in a row that never ends", "\\wa a\\par\\trowd\\cellx900\\wb\\intbl X\\cell x\\cell\\pard\\wc c\\par\\wd d\\par",
      'n', "ad");
  row("fallbacks of another length", "\\uc2\\wa a\\u8364??\\par X\\par\\wb\\u8364??\\par", 'n', "ab");
  row("a new font and colour", "\\wa a\\par X\\par\\wb b\\par", 'c', "ab");
  row("a paragraph less", "\\wa a\\par\\wb b\\par\\wc X\\par\\wd d\\par", 'd', "ad");
  row("in a table", "\\wa a\\par\\trowd\\cellx900\\wb\\intbl X\\cell\\row\\pard\\wc c\\par", 'n', "ac");
  row("beside a table",
      "\\trowd\\cellx900\\wa\\intbl a\\cell\\row\\pard\\wb X\\par\\trowd\\cellx900\\wc\\intbl c\\cell\\row\\pard\\wd "
      "d\\par",
      'n', "acd");
  row("in front of a section", "\\wa X\\par\\pard\\sect\\sectd\\cols2\\wb b\\par\\wc c\\par", 'l', "bc");
  row("a section's first", "\\wa a\\sect\\sectd\\cols2{\\header h}\\wb X\\par\\wc c\\par", 'l', "ac");
  row("in front of what else its section has", "\\wa a\\par\\sect\\sectd X\\par{\\header h}\\wb b\\par", 'n', "");
  row("a table in front of it",
      "\\wa a\\par\\sect\\trowd\\cellx900\\intbl X\\cell c\\cell\\row\\pard b\\par{\\header h}\\wc c\\par", 'n', "");
  row("behind it", "\\wa a\\par\\sect b\\par{\\header h}\\wb c\\par X\\par", 'n', "ab");
  row("in front of a page's middle", "\\wa a\\par\\wb X\\page\\wc c\\par\\wd d\\par", 'l', "ad");
  row("in front of a page at a row's end",
      "\\wa a\\par\\trowd\\cellx900\\intbl X\\cell\\page\\row\\pard\\wb b\\par\\wc c\\par", 'n', "ac");
  row("in front of a table's page", "\\wa a\\par\\wb X\\page\\trowd\\cellx900\\wc\\intbl c\\cell\\row\\pard\\wd d\\par",
      'n', "ad");
  row("in front of a row without cells",
      "\\wa a\\par\\trowd\\cellx900\\intbl X\\cell\\row\\pard\\sect\\sectd\\cols2\\row\\wb b\\par", 'n', "ab");
  row("another number of items", "\\wa a\\par{\\*\\pn\\pnlvlbody\\pndec}\\wb b\\par X\\par\\wc c\\par\\pard\\wd d\\par",
      'n', "abd");
  row("another number of items that go on behind a paragraph",
      "\\wa a\\par{\\pntext 1\\tab}{\\*\\pn\\pnlvlbody\\pndec}\\wb X\\par\\pard\\wc c\\par"
      "{\\pntext 2\\tab}{\\*\\pn\\pnlvlbody\\pndec}\\wd d\\par\\pard\\we e\\par",
      'n', "ae");
  row("as many items", "{\\*\\pn\\pnlvlbody\\pndec} X\\par\\wa a\\par\\pard\\wb b\\par", 'l', "ab");
  row("what holds for the document", "\\wa a\\par X\\deftab300\\par\\wb b\\par", 'l', "");
  row("what holds for the document in a row's definition",
      "\\trowd\\deftab300\\cellx900\\intbl X\\cell\\row\\pard\\wb b\\par", 'n', "");
  row("a row's definition before its time",
      "\\wa a\\par X\\trowd\\cellx900\\par\\wb\\intbl b\\cell\\row\\pard\\wc c\\par", 'c', "ac");
  row("a row's definition in vain",
      "\\wa a\\par X\\trowd\\cellx900\\par\\wb\\intbl b\\cell\\trowd\\cellx900\\row\\pard\\wc c\\par", 'c', "abc");
  row("a row's definition in vain, as it never ends",
      "\\wa a\\par X\\trowd\\cellx900\\par\\wb\\intbl b\\cell\\trowd\\cellx800\\par", 'c', "");
  row("a border named in front of it", "\\wa a\\par\\plain\\brdrb\\wb X\\par\\brdrs\\wc c\\par\\pard\\wd d\\par", 'c',
      "ad");
  row("a row defined by the table before",
      "\\wa a\\par\\trowd\\cellx900\\intbl X\\cell\\row\\pard\\wb b\\par\\wc\\intbl c\\cell\\row\\pard\\wd d\\par", 'n',
      "ad");
  row("a row defined behind its cells", "\\wa X\\par\\pard\\wb\\intbl b\\cell\\trowd\\cellx900\\row\\pard\\wc c\\par",
      'n', "bc");
  row("a group without its brace", "\\wa a\\par X\\*\\unheardof b", 'c', "");
  row("in front of a last section's words", "\\wa a\\par X\\par\\sect\\sectd\\cols2", 'n', "");
  row("in front of its header", "\\wa a\\par X\\sect{\\header h}", 'n', "");
  row("in front of one without text", "\\wa X\\par\\sect\\sectd\\cols2\\sect\\wb b\\par\\wc c\\par", 'n', "bc");
  row("in front of an empty one", "\\wa a\\par X\\par\\sect", 'n', "a");
  row("numbers of another table",
      "\\wa X\\par{\\fonttbl{\\f0\\fcharset2 Symbol;}{\\f1\\fswiss\\fcharset0 Arial;}}a\\par", 'n', "");
  row("a list's number that no table has", "\\ls5\\wa X\\par{\\*\\pn\\pnlvlblt}\\wb b\\par", 'n', "b");
  row("a list that waits for the end of another",
      "{\\*\\pn\\pnlvlblt}\\ls5\\wa X\\par\\ls0\\wb b\\par\\pard\\wc c\\par", 'n', "bc");
  row("a field that a new paragraph begins",
      "\\wa a\\par{\\field{\\*\\fldinst Y}{\\fldrslt X\\wb b\\par}}\\wc c\\par\\wd d\\par", 's', "cd");
  row("a field that goes on in what follows it",
      "\\wa a\\par{\\field{\\*\\fldinst Y}{\\fldrslt\\wb bX\\par}}\\wc c\\par\\wd d\\par", 'j', "ad");
  row("in front of a section behind half a tab stop", "\\wa a\\par\\tqr\\sect\\pard\\wb X\\par\\wc c\\par", 'n', "c");
  row("binary data", "\\wa a\\par X\\par{\\pict\\pngblip\\bin3 }}}}\\wb b\\par", 'l', "ab");
}

void tst_rtf_kept::untouchedPartsKeepTheirBytes() {
  QFETCH(QByteArray, body);
  QFETCH(char, edit);
  QFETCH(QByteArray, kept);
  const QByteArray content = "  " + Letter(body);
  const auto document = Document(content);
  QTextCursor cursor = document->find(u"X"_s);
  QTextCharFormat format;
  format.setFontFamilies({u"Nueva"_s});
  format.setForeground(QColor(1, 2, 3));
  switch (edit) {
    case 'l':
      cursor.insertText(u"Y"_s);
      break;
    case 'n':
      cursor.insertText(u"Y\nY"_s);
      break;
    case 's':
      cursor.setPosition(cursor.anchor());
      cursor.insertBlock();
      break;
    case 'j':
      // With the next paragraph, of one letter.
      cursor.setPosition(cursor.position() + 2);
      cursor.setPosition(cursor.position() - 3, QTextCursor::KeepAnchor);
      cursor.insertBlock();
      break;
    case 'c':
      cursor.mergeCharFormat(format);
      break;
    default:
      cursor.select(QTextCursor::BlockUnderCursor);
      cursor.removeSelectedText();
  }
  const QByteArray written = rtf::Write(*document);
  QByteArray found;
  for (const char word : {'a', 'b', 'c', 'd', 'e'}) {
    found += written.contains(QByteArray("\\w") + word) ? QByteArray(1, word) : QByteArray();
  }
  QVERIFY2(found == kept, written.constData());
  QVERIFY(kept.isEmpty() || written.startsWith("  {\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang3082{\\fonttbl"));
  QCOMPARE(support::PatchLoss(*document), QString());
  const auto sections = [](const QByteArray& letter) { return letter.count("\\sect") - letter.count("\\sectd"); };
  QCOMPARE(sections(written), sections(rtf::Writer(*document).Write()));
  QCOMPARE(support::PatchLoss(*document), QString());
  while (document->isUndoAvailable()) {
    document->undo();
  }
  QCOMPARE(rtf::Write(*document), content);
}

/// Text that is typed or deleted within its run is written there, and not a byte else changes: what would be dropped
/// or written otherwise stays even in that paragraph, here words that the reader does not know, spellings, malformed
/// rows. Edits are "text behind which it is typed>what is typed", "text in front of it<what" and "text that goes-";
/// bold behind a star.
void tst_rtf_kept::rewordedTextIsWrittenAtItsPlace_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QString>("edits");
  QTest::addColumn<QByteArray>("expected");
  const auto row = [](const char* name, const QByteArray& body, const QString& edits, const QByteArray& expected) {
    QTest::newRow(name) << body << edits << expected;
  };
  row("in a word", "\\wa a\\wb bcd{\\b\\wc e}\\par", u"c>xyz"_s, "\\wa a\\wb bcxyzd{\\b\\wc e}\\par");
  row("at a run's start", "\\wa abc\\par", u"a<x"_s, "\\wa xabc\\par");
  row("at a run's start, behind a word", "\\wa\\'e1bc\\par", u"á<x"_s, "\\wa{x}\\'e1bc\\par");
  row("at a run's end", "{\\b abc}\\wa  d\\par", u"c>x"_s, "{\\b abcx}\\wa  d\\par");
  row("behind a word's character", "ab\\endash\\wa cd\\par", u"–>x"_s, "ab\\endash{x}\\wa cd\\par");
  row("by its code page", "abc\\'e1d{\\f2 efgh}\\par", u"á>ñ€ł g>ł"_s,
      "abc\\'e1\\'f1\\'80\\u322?d{\\f2 efg\\u322?h}\\par");
  row("what is no text", "abcd\\par", u"b>\t c>{"_s, "ab\\tab c\\{d\\par");
  row("behind a fallback", "ab\\u322?cd\\par{\\u8364\\'80e}\\par", u"ł>x €>y"_s,
      "ab\\u322?xcd\\par{\\u8364\\'80ye}\\par");
  row("fallbacks of another length", "\\uc2 abc\\par\\u322??d\\par", u"ł>ñ b>ł"_s,
      "\\uc2 ab{\\uc1\\u322?}c\\par\\u322??\\'f1d\\par");
  row("a fallback cut short", "abc\\u322{\\wa}d\\par", u"ł>x"_s, "abc\\u322{x}{\\wa}d\\par");
  row("deleted over words", "abc\\wa def\\'e1\\wb ghi\\par", u"cdefá-"_s, "ab\\wa \\wb ghi\\par");
  row("deleted between a word and text", "abcd{\\b\\'e1e}\\par", u"á-"_s, "abcd{\\b{}e}\\par");
  row("replaced", "abc d\\u322?f\\par", u"ł-d>óñ"_s, "abc d\\'f3\\'f1f\\par");
  row("an empty paragraph", "\\wa a\\par\\wb\\b\\par\\wc c\\par", u"|>x"_s, "\\wa a\\par\\wb\\b{x}\\par\\wc c\\par");
  row("an empty paragraph, in other letters", "\\wa a\\par\\pard\\wb\\par\\pard\\wc c\\par", u"|>*x"_s,
      "\\wa a\\par\\pard\\plain\\f0\\fs20\\b x\\b0\\par\r\n\r\n\\pard\\wc c\\par");
  row("in a table",
      "\\trowd\\wa\\clmgf\\cellx900\\clmrg\\cellx1800\\cellx2700\\pard\\intbl a\\cell\\cell\\wb "
      "\\cell\\row\\trowd\\cellx900\\wc\\cellx2700\\intbl c\\cell d\\cell\\row\\pard e\\par",
      u"a>A a|>x d>D"_s,
      "\\trowd\\wa\\clmgf\\cellx900\\clmrg\\cellx1800\\cellx2700\\pard\\intbl aA\\cell\\cell\\wb "
      "x\\cell\\row\\trowd\\cellx900\\wc\\cellx2700\\intbl c\\cell dD\\cell\\row\\pard e\\par");
  row("in a row that never ends", "\\trowd\\cellx900\\wb\\intbl ab\\cell c\\cell\\pard d\\par", u"b>x"_s,
      "\\trowd\\cellx900\\wb\\intbl abx\\cell c\\cell\\pard d\\par");
  row("two bytes a character", "\\f3\\'82\\'a0b\\par\\'82\\'a2c\\{\\'82\\'a4d\\par", u"あ>x う-{>ñ"_s,
      "\\f3\\'82\\'a0xb\\par\\'82\\'a2c\\{\\u241?d\\par");
  row("deleted with a fallback among two bytes", "\\f3 abcd\\u8364?\\'82\\'a2e\\par", u"d€-"_s,
      "\\f3 abc\\'82\\'a2e\\par");
  row("deleted beside a byte that is no text", "\\wa a\\par\\pard bc\001de\\par\\pard\\wb f\\par", u"a>x d-"_s,
      "\\wa ax\\par\\pard\\plain\\f0\\fs20 bce\\par\r\n\r\n\\pard\\wb f\\par");
  row("behind hidden text", "{\\v a\\wa }bcd\\par", u"c>x"_s, "{\\v a\\wa }bcxd\\par");
  row("between a border and what it is like", "\\brdrb\\'e1b\\brdrs c\\par", u"á<x"_s,
      "\\brdrb{x}\\'e1b\\brdrs c\\par");
  row("deleted behind a star", "a\\*b\\unheard c\\par x\\* d\\unheard yz\\par", u"b- d-"_s,
      "a\\*{}\\unheard c\\par x\\* {}\\unheard yz\\par");
  row("in a field's result", "{\\field{\\*\\fldinst X}{\\fldrslt\\wa abc}}d\\par", u"b>x"_s,
      "{\\field{\\*\\fldinst X}{\\fldrslt\\wa abxc}}d\\par");
  row("beside what holds for the document", "abc\\deftab300\\par\\wa def\\par", u"b>x e>y"_s,
      "abxc\\deftab300\\par\\wa deyf\\par");
  row("a paragraph more between them", "ab\\wa c\\par\\pard d\\par\\pard e\\wb fg\\par", u"a>x d>\n f>y"_s,
      "axb\\wa c\\par\\pard\\plain\\f0\\fs20 d\\par\r\n\\par\r\n\r\n\\pard e\\wb fyg\\par");
  // A letter of many hundreds of pages is not read again: what was changed is written anew.
  const QByteArray manyPages = ("\\wb " + QByteArray(99'990, 'z') + "\\par").repeated(9);
  row("in a long letter", manyPages + "\\pard\\wa abc\\par", u"c>x"_s, manyPages + "\\pard\\wa abcx\\par");
  row("in one that is too long", manyPages + manyPages + "\\pard\\wa abc\\par\\pard e\\par", u"c>x"_s,
      manyPages + manyPages + "\\pard\\plain\\f0\\fs20 abcx\\par\r\n\r\n\\pard e\\par");
}

void tst_rtf_kept::rewordedTextIsWrittenAtItsPlace() {
  QFETCH(QByteArray, body);
  QFETCH(QString, edits);
  QFETCH(QByteArray, expected);
  const QByteArray content = "  " + Letter(body);
  const auto document = Document(content);
  static const QRegularExpression edit(u"([^ <>-]+)(?:([<>])([^ ]+)|-)"_s);
  for (const QRegularExpressionMatch& each : edit.globalMatch(edits)) {
    const QString text = each.captured(1);
    QTextCursor cursor = document->find(text.section(u'|', 0, 0).left(1));
    if (text.endsWith(u'|')) {
      // The next empty paragraph that is none of a table's joints.
      QTextBlock block = cursor.isNull() ? document->begin() : cursor.block();
      while (block.length() > 1 || rtf::IsJoint(block)) {
        block = block.next();
      }
      cursor = QTextCursor(block);
    } else if (each.captured(2).isEmpty()) {
      cursor.setPosition(cursor.anchor() + int(text.size()), QTextCursor::KeepAnchor);
      cursor.removeSelectedText();
      continue;
    } else {
      cursor.setPosition(each.captured(2) == u"<" ? cursor.anchor() : cursor.position());
    }
    QTextCharFormat bold = cursor.charFormat();
    bold.setFontWeight(QFont::Bold);
    const bool isBold = each.captured(3).startsWith(u'*');
    cursor.insertText(each.captured(3).mid(isBold ? 1 : 0), isBold ? bold : cursor.charFormat());
  }
  const QByteArray written = rtf::Write(*document);
  QVERIFY2(written == "  " + Letter(expected), written.constData());
  QCOMPARE(support::PatchLoss(*document), QString());
}

/// Where they stood behind text they meant nothing, or something else.
void tst_rtf_kept::wordsBehindTheFirstTextStayThere() {
  for (const char* letter : {"{\\rtf1\\*\\x b}", "{\\rtf1\\fonttbl\\f0\\fswiss b;}"}) {
    const auto empty = Document(letter);
    QTextCursor(empty.get()).insertText(u"a"_s);
    QCOMPARE(Text(*Document(rtf::Write(*empty))), u"a"_s);
    QCOMPARE(support::PatchLoss(*empty), QString());
  }
  const auto document = Document("{\\rtf1 a\\ansicpg1251 b{\\*\\x 1}\\'e1\\par c\\par}");
  QTextCursor cursor(document.get());
  cursor.deleteChar();
  QCOMPARE(support::PatchLoss(*document), QString());
  QCOMPARE(Text(*Document(rtf::Write(*document))), u"b@á|c"_s);
}

/// One field more would make the innermost ones another thing.
void tst_rtf_kept::aLinkAroundTheDeepestFieldIsLeftOut() {
  const auto document = Document(Letter(QByteArray("{\\field{\\*\\fldinst X}{\\fldrslt ").repeated(8) + "a" +
                                        QByteArray("}}").repeated(8) + "b\\par"));
  QCOMPARE(Text(*document), u"ab"_s);
  QTextCursor cursor(document.get());
  cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
  QTextCharFormat link;
  link.setAnchor(true);
  link.setAnchorHref(u"https://ejemplo.es/"_s);
  cursor.mergeCharFormat(link);
  const auto again = Document(rtf::Write(*document));
  QCOMPARE(Text(*again), u"ab"_s);
  QCOMPARE(support::FormatAt(*again, u"b"_s).anchorHref(), link.anchorHref());
}

void tst_rtf_kept::undoneIsUnchanged() {
  const QByteArray content = Letter("a{\\b b}{\\*\\x 1}\\par c\\par");
  const auto document = Document(content);
  QTextCursor cursor(document.get());
  cursor.insertText(u"x"_s);
  cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  QVERIFY(rtf::Write(*document) != content);
  document->setModified(false);
  QVERIFY(rtf::Write(*document) != content);
  document->undo();
  document->undo();
  QCOMPARE(rtf::Write(*document), content);
  // What a clone holds is not what was read into it.
  const std::unique_ptr<QTextDocument> clone(document->clone());
  QCOMPARE(support::Difference(support::Portrait(*document), support::Portrait(*clone)), QString());
  QVERIFY(rtf::Write(*clone).contains("{\\*\\x 1}"));
  document->clear();
  QVERIFY(rtf::Write(*document) != content);
}

/// Words where they don't belong, as generated letters had them.
void tst_rtf_kept::oddPlaces_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QString>("text");
  const auto row = [](const char* name, const QByteArray& body, const QString& text) {
    QTest::newRow(name) << body << text;
  };
  row("colours behind the text", "a{\\colortbl;\\red1\\green2\\blue3;}\\cf3 b\\cf1 c\\par", u"abc"_s);
  row("fonts behind the text", "a{\\fonttbl{\\f7\\fcharset161 Otra;}}\\f7 \\'e1\\par", u"aα"_s);
  row("code page behind the text", "\\'e1\\ansicpg1253\\'e1\\par", u"áá"_s);
  row("another font by the same number", "\\f1\\'e1{\\fonttbl{\\f1\\fcharset161 Otra;}}\\'e1\\par", u"\uF0E1α"_s);
  row("another list by the same number",
      "{\\*\\listtable{\\list{\\listlevel\\levelnfc0}\\listid7}}{\\*\\listoverridetable{\\listoverride\\listid7\\ls1}}"
      "\\ls1 a\\par{\\*\\listtable{\\list{\\listlevel\\levelnfc2}\\listid7}}\\pard b\\par",
      u"a|b"_s);
  row("two bytes of a character in two fonts", "\\f3\\'82\\f0\\'e1\\f3\\'82\\'a0\\par", u"\uFFFDáあ"_s);
  row("a letter in a letter", "a{\\rtf1\\ansi\\deff1{\\fonttbl{\\f0 Otra;}}\\paperw9 b\\par}c\\par", u"ab|c"_s);
  row("paper and section in a field", "{\\field{\\*\\fldinst X}{\\fldrslt\\sectd\\cols2\\paperw9\\deftab9 a}}b\\par",
      u"ab"_s);
  row("a section that began in a field",
      "{\\field{\\*\\fldinst X}{\\fldrslt a\\sect b}}c\\par\\cols2{\\header h}d\\par", u"a|bc|@d"_s);
  row("a field that begins with its section",
      "a\\sect{\\field{\\*\\fldinst X}{\\fldrslt{\\b}b}}{\\header h}\\par\\cols2 c\\par", u"a|b|c"_s);
  row("tables in a field", "{\\field{\\*\\fldinst X}{\\fldrslt a{\\colortbl;}{\\header h}b}}\\par", u"a@@b"_s);
  row("hidden text in a hidden field", "{\\v a{\\field{\\*\\fldinst X}{\\fldrslt b}}c}d\\par", u"@@@d"_s);
  row("hidden text in two fonts", "{\\v\\f1\\'e1\\f0 b}c\\par", u"@c"_s);
  row("hidden text in two groups", "{\\v a{\\b b}}{\\v c}d\\par", u"@@d"_s);
  row("a page in a field that shows nothing", "a\\par{\\field{\\*\\fldinst X}{\\fldrslt\\page}}b\\par", u"a|@b"_s);
  row("an object's result among fallbacks", "\\u945?{\\object\\objemb{\\*\\objdata 00}{\\result\\u946?}}\\u947?\\par",
      u"αβγ"_s);
  row("a border that is like nothing any more", "\\chbrdr\\brdrs a\\chbrdr b\\par", u"ab"_s);
  row("border colour without a border", "\\trowd\\brdrcf1\\cellx9\\pard\\intbl a\\cell\\row\\pard b\\par", u"a|b"_s);
  row("a nested row's definition alone", "{\\*\\nesttableprops\\trowd\\cellx7}a\\nestcell b\\cell\\row\\par",
      u"a|b|"_s);
  row("a fallback picture alone", "{\\nonshppict{\\pict\\pngblip 00}}{\\*\\shppict{\\pict\\pngblip 00}}a\\par",
      u"@@a"_s);
  row("a page break in front of a cell", "a\\page\\trowd\\cellx9\\pard\\intbl b\\cell\\row\\pard\\par", u"a|b|"_s);
}

void tst_rtf_kept::oddPlaces() {
  QFETCH(QByteArray, body);
  QFETCH(QString, text);
  const QByteArray content = Letter(body);
  const auto document = Document(content);
  QCOMPARE(Text(*document), text);
  QCOMPARE(rtf::Write(*document), content);
  QCOMPARE(support::Loss(*document), QString());
}

void tst_rtf_kept::pictures_data() {
  QTest::addColumn<QByteArray>("group");
  QTest::addColumn<QSize>("pixels");
  QTest::addColumn<QSizeF>("shown");
  const QByteArray png = Png();
  QTest::newRow("PNG") << QByteArray("{\\pict\\picwgoal300\\pichgoal150\\pngblip " + png.toHex() + "}") << QSize(3, 2)
                       << QSizeF(20, 10);
  QTest::newRow("scaled, binary") << QByteArray(
                                         "{\\pict\\picscalex50\\picscaley200\\picwgoal300\\pichgoal150\\pngblip\\bin" +
                                         QByteArray::number(png.size()) + ' ' + png + "}")
                                  << QSize(3, 2) << QSizeF(10, 20);
  QTest::newRow("in a shape") << QByteArray("{\\*\\shppict{\\pict{\\*\\picprop x}\\pngblip " + png.toHex() + "}}")
                              << QSize(3, 2) << QSizeF(0, 0);
  QTest::newRow("bitmap") << QByteArray("{\\pict\\dibitmap0 " + Dib().toHex() + "}") << QSize(2, 1) << QSizeF(0, 0);
  QTest::newRow("metafile of a bitmap") << QByteArray("{\\pict\\wmetafile8 " + Metafile().toHex() + "}") << QSize(2, 1)
                                        << QSizeF(0, 0);
  QTest::newRow("scanned at 600 dots per inch")
      << QByteArray("{\\pict\\jpegblip " + PictureFile(QImage(4960, 7016, QImage::Format_Grayscale8), "JPG").toHex() +
                    "}")
      << QSize(2480, 3508) << QSizeF(0, 0);
  // Black and white, in which the bound of Qt's own counts as much as in colours.
  const auto scanned = [](const QSize& size) {
    return QByteArray("{\\pict\\pngblip " + PictureFile(QImage(size, QImage::Format_Mono), "PNG").toHex() + "}");
  };
  QTest::newRow("a scanned PNG") << scanned({4960, 7016}) << QSize(2480, 3508) << QSizeF(0, 0);
  QTest::newRow("a larger one") << scanned({6001, 6000}) << QSize() << QSizeF(0, 0);
  QTest::newRow("damaged") << QByteArray("{\\pict\\pngblip 89504e47}") << QSize() << QSizeF(0, 0);
}

void tst_rtf_kept::pictures() {
  QFETCH(QByteArray, group);
  QFETCH(QSize, pixels);
  QFETCH(QSizeF, shown);
  const auto document = Document(Letter(group));
  const QTextImageFormat format =
      support::FormatAt(*document, QString(QChar::ObjectReplacementCharacter)).toImageFormat();
  QVERIFY(format.isValid());
  QCOMPARE(QSizeF(format.width(), format.height()), shown);
  const QVariant image = document->resource(QTextDocument::ImageResource, QUrl(format.name()));
  QCOMPARE(image.value<QImage>().isNull() ? QSize() : image.value<QImage>().size(), pixels);

  // Pasted into another letter it shows, too.
  QTextDocument other;
  QTextCursor cursor(&other);
  rtf::Insert(Letter(group), cursor);
  QCOMPARE(other.resource(QTextDocument::ImageResource, QUrl(format.name())), image);
}

void tst_rtf_kept::piecesSurviveCutAndPaste() {
  const auto document = Document(Letter("uno\\par{\\*\\x 1}dos{\\field{\\*\\fldinst X}{\\fldrslt r}}\\par"));
  QTextCursor cursor(document.get());
  cursor.setPosition(4);
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  const QByteArray selection = rtf::WriteSelection(cursor);
  cursor.removeSelectedText();
  QVERIFY(!rtf::Write(*document).contains("{\\*\\x 1}"));
  cursor.setPosition(0);
  rtf::Insert(selection, cursor);
  QCOMPARE(Text(*document), u"@dosruno|"_s);
  const QByteArray written = rtf::Write(*document);
  QVERIFY2(written.contains("{\\*\\x 1}dos{\\field{\\*\\fldinst X}{\\fldrslt r}}uno"), written.constData());
  document->undo();
  QCOMPARE(Text(*document), u"uno|"_s);
  QTextCursor none(document.get());
  QCOMPARE(rtf::WriteSelection(none), QByteArray());
}

void tst_rtf_kept::copiesBeginAsTheirText_data() {
  QTest::addColumn<QByteArray>("first");
  QTest::newRow("an empty paragraph") << QByteArray("\\fs40\\par ");
  QTest::newRow("an item") << QByteArray("{\\*\\pn\\pnlvlblt{\\pntxtb\\'b7}}\\li360 uno\\par ");
}

void tst_rtf_kept::copiesBeginAsTheirText() {
  QFETCH(QByteArray, first);
  const auto document = Document(Letter("a\\par " + first + "dos\\par"));
  QTextCursor cursor(document->begin().next());
  cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
  const auto copy = Document(rtf::WriteSelection(cursor));
  QCOMPARE(u"a|"_s + Text(*copy), Text(*document));
  QCOMPARE(copy->begin().charFormat().fontPointSize(), document->begin().next().charFormat().fontPointSize());
  QCOMPARE(copy->begin().textList() == nullptr, document->begin().next().textList() == nullptr);
}

void tst_rtf_kept::foreignTablesStayBehind() {
  const auto document = Document(Letter("a\\par"));
  QTextCursor cursor(document.get());
  cursor.movePosition(QTextCursor::End);
  const QByteArray foreign =
      "{\\rtf1{\\fonttbl{\\f0\\fnil\\fcharset0 "
      "Verdana;}}{\\*\\listtable{\\list{\\listlevel\\levelnfc23{\\leveltext\\'01*;}}"
      "\\listid1}}{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}{\\header h}\\paperw1 x\\par\\pard\\ls1 y\\par "
      "z\\par}";
  rtf::Insert(foreign, cursor);
  const QByteArray written = rtf::Write(*document);
  QVERIFY(!written.contains("header") && !written.contains("paperw") && !written.contains("\\ls1"));
  QVERIFY2(written.contains("Verdana") && written.contains("\\pnlvlblt"), written.constData());
  QCOMPARE(support::Loss(*Document(written)), QString());
}

/// In a field's result the section's words and header would count for nothing.
void tst_rtf_kept::linkOverASection() {
  const auto document = Document(Letter("x\\par a\\sect\\sectd\\cols2 b\\sect{\\header h}c\\par"));
  const QString target = u"https://ejemplo.es/"_s;
  QTextCharFormat link;
  link.setAnchor(true);
  link.setAnchorHref(target);
  QTextCursor cursor(document.get());
  cursor.select(QTextCursor::Document);
  cursor.mergeCharFormat(link);
  const auto again = Document(rtf::Write(*document));
  QCOMPARE(Text(*again), u"x|a|b|c"_s);
  for (const int paragraph : {2, 3}) {
    QCOMPARE(again->findBlockByNumber(paragraph).blockFormat(), document->findBlockByNumber(paragraph).blockFormat());
  }
  QCOMPARE(support::FormatAt(*again, u"a"_s).anchorHref(), target);
  QCOMPARE(support::FormatAt(*again, u"b"_s).anchorHref(), target);
}

/// A table of fonts gets another one in its own form; what is added has no number that what is kept has, in vain, too.
void tst_rtf_kept::addedToTables_data() {
  QTest::addColumn<QByteArray>("table");
  QTest::addColumn<QByteArray>("pasted");
  QTest::addColumn<QByteArray>("written");
  const auto row = [](const QByteArray& table, const QByteArray& pasted, const QByteArray& written) {
    QTest::newRow((table + pasted).constData()) << table << pasted << written;
  };
  const auto font = [](const QByteArray& words) { return "{\\fonttbl{\\f0" + words + " Otra;}}\\f0"; };
  const QByteArray other = font("\\fnil\\fcharset0");
  const QByteArray braced = "{\\fonttbl{\\f0\\fswiss Arial;}";
  row(braced + "}", other, braced + "{\\f2\\fnil\\fcharset0 Otra;}}");
  row("{\\fonttbl\\f0\\fswiss Arial;}", other, "{\\fonttbl\\f0\\fswiss Arial;\\f2\\fnil\\fcharset0 Otra;}");
  row(braced + "}", font("\\fcharset-5"), braced + "{\\f2\\fnil Otra;}}");
  row(braced + "}", font("\\fcharset256"), braced + "{\\f2\\fnil Otra;}}");
  row("{\\fonttbl}", other, "{\\fonttbl{\\f2\\fnil\\fcharset0 Otra;}}");
  row("\\deff2" + braced + "}", other, braced + "{\\f3\\fnil\\fcharset0 Otra;}}");
  const QByteArray colour = "{\\colortbl;\\red1\\green2\\blue3;}\\cf1";
  row("{\\colortbl;}", colour, "{\\colortbl;;\\red1\\green2\\blue3;}");
  row("{\\colortbl;\\red9}", colour, "{\\colortbl;\\red9}{\\colortbl;\\red1\\green2\\blue3;}");
  row("{\\colortbl\\red9;}", colour, "{\\colortbl\\red9;;\\red1\\green2\\blue3;}");
}

void tst_rtf_kept::addedToTables() {
  QFETCH(QByteArray, table);
  QFETCH(QByteArray, pasted);
  QFETCH(QByteArray, written);
  const auto document = Document("{\\rtf1\\ansi" + table + "a\\par b\\par\\wa\\f1\\cf1 c\\par}");
  QTextCursor cursor(document.get());
  rtf::Insert("{\\rtf1\\ansi" + pasted + " x}", cursor);
  const QByteArray result = rtf::Write(*document);
  QVERIFY2(result.contains(written) && result.contains("\\wa"), result.constData());
  QCOMPARE(support::Loss(*document), QString());
  QCOMPARE(support::PatchLoss(*document), QString());
  const QByteArray whole = rtf::Writer(*document).Write();
  QCOMPARE(rtf::Writer(*Document(whole)).Write(), whole);
}

/// Readers show a font of their own where a letter has none; a number without an entry would be a font's name to some.
void tst_rtf_kept::noFontStaysNone() {
  const auto document = Document("{\\rtf1 a\\par}");
  QTextCursor(document.get()).insertText(u"b"_s);
  const QByteArray written = rtf::Write(*document);
  QVERIFY2(!written.contains("\\f0") && !written.contains("\\deff"), written.constData());
  QCOMPARE(support::Loss(*document), QString());
  // Nor does the table grow by an empty one for it.
  const auto other = Document("{\\rtf1\\deff3{\\fonttbl{\\f0 Arial;}}a\\par}");
  QCOMPARE(rtf::Writer(*other).Write().count("fonttbl"), 1);
}

void tst_rtf_kept::tableEdits_data() {
  QTest::addColumn<int>("from");
  QTest::addColumn<int>("to");
  QTest::addColumn<QString>("typed");  // or pasted, where it begins with a control word
  QTest::addColumn<QByteArray>("cells");
  // The letter's text is "a b c d" with a paragraph for each cell of two rows, behind a joint.
  QTest::newRow("a new paragraph in a cell")
      << 2 << 2 << u"\nx"_s << QByteArray("a|par|x|cell|b|cell|row|c|cell|d|cell|row|");
  QTest::newRow("two paragraphs pasted into a cell")
      << 2 << 2 << u"\\pard x\\par y\\par"_s << QByteArray("ax|par|y|cell|b|cell|row|c|cell|d|cell|row|");
  QTest::newRow("a cell pasted into a cell") << 2 << 2 << u"\\trowd\\cellx900\\pard\\intbl x\\cell\\row"_s
                                             << QByteArray("ax|cell|b|cell|row|c|cell|d|cell|row|");
  QTest::newRow("an emptied cell") << 3 << 4 << QString() << QByteArray("a|cell|cell|row|c|cell|d|cell|row|");
  QTest::newRow("two emptied cells") << 1 << 3 << QString() << QByteArray("|cell|cell|row|c|cell|d|cell|row|");
}

void tst_rtf_kept::tableEdits() {
  QFETCH(int, from);
  QFETCH(int, to);
  QFETCH(QString, typed);
  QFETCH(QByteArray, cells);
  const QByteArray row = "\\trowd\\cellx1000\\cellx2000\\pard\\intbl ";
  const auto document = Document(Letter(row + "a\\cell b\\cell\\row" + row + "c\\cell d\\cell\\row\\pard e\\par"));
  QTextCursor cursor(document.get());
  cursor.setPosition(from);
  cursor.setPosition(to, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  if (typed.startsWith(u'\\')) {
    rtf::Insert(Letter(typed.toLatin1()), cursor);
  } else {
    cursor.insertText(typed);
  }
  QByteArray written = rtf::Write(*document);
  written = written.mid(written.indexOf("\\trowd"));
  for (const char* word :
       {"\\trowd", "\\cellx1000", "\\cellx2000", "\\pard", "\\intbl", "\\f0", "\\fs20", "\r\n", " "}) {
    written.replace(word, "");
  }
  for (const char* word : {"cell", "row", "par"}) {
    written.replace(QByteArray("\\") + word, QByteArray("|") + word + "|");
  }
  written.replace("||", "|");
  QCOMPARE(written.left(written.indexOf("e|par")), cells);
}

KEL_TEST(tst_rtf_kept);
#include "tst_rtf_kept.moc"
