#include "documents/rtf/Documents.h"
#include "documents/rtf/Properties.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QTextList>

using namespace Qt::Literals::StringLiterals;
using support::Document;
using support::FormatAt;
using support::Letter;

/// How formatting words show in the document; each row is also written and read again.
class tst_rtf_formats : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void characters_data();
  void characters();
  void paragraphs_data();
  void paragraphs();
  void lists_data();
  void lists();
  void formatsOfTheEditor();
  void tabsFollowTheColumnsEdge();
  void backgroundOfTheFirstColour();
};

namespace {

QString Describe(const QTextCharFormat& f) {
  QStringList parts{f.fontFamilies().toStringList().value(0), QString::number(f.fontPointSize())};
  const auto add = [&parts](bool on, const QString& name) {
    if (on) {
      parts.append(name);
    }
  };
  add(f.fontWeight() == QFont::Bold, u"bold"_s);
  add(f.fontItalic(), u"italic"_s);
  add(f.underlineStyle() != QTextCharFormat::NoUnderline, u"underline%1"_s.arg(int(f.underlineStyle())));
  add(f.fontStrikeOut(), u"strike"_s);
  add(f.verticalAlignment() == QTextCharFormat::AlignSuperScript, u"super"_s);
  add(f.verticalAlignment() == QTextCharFormat::AlignSubScript, u"sub"_s);
  add(f.fontCapitalization() != QFont::MixedCase, u"caps%1"_s.arg(int(f.fontCapitalization())));
  add(f.foreground().style() != Qt::NoBrush, f.foreground().color().name());
  add(f.background().style() != Qt::NoBrush, u"on "_s + f.background().color().name());
  add(f.isAnchor(), f.anchorHref());
  return parts.join(u' ');
}

QString Describe(const QTextBlock& block) {
  const QTextBlockFormat f = block.blockFormat();
  QStringList parts{u"align%1 left%2 right%3 first%4 before%5 after%6"_s.arg(int(f.alignment()))
                        .arg(f.leftMargin())
                        .arg(f.rightMargin())
                        .arg(f.textIndent())
                        .arg(f.topMargin())
                        .arg(f.bottomMargin())};
  if (f.lineHeightType() != QTextBlockFormat::SingleHeight) {
    parts.append(u"line%1:%2"_s.arg(f.lineHeightType()).arg(f.lineHeight()));
  }
  for (const QTextOption::Tab& tab : f.tabPositions()) {
    parts.append(u"tab%1:%2"_s.arg(int(tab.type)).arg(tab.position));
  }
  if ((f.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) != 0) {
    parts.append(u"page"_s);
  }
  return parts.join(u' ');
}

}  // namespace

void tst_rtf_formats::characters_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QString>("expected");
  const auto row = [](const QByteArray& body, const QString& expected) {
    QTest::newRow(body.constData()) << body << expected;
  };
  row("X", u"Arial 10"_s);
  row("\\b X", u"Arial 10 bold"_s);
  row("\\b a\\b0 X", u"Arial 10"_s);
  row("{\\b a}X", u"Arial 10"_s);
  row("\\i\\fs17 X", u"Arial 8.5 italic"_s);
  row("\\ul X", u"Arial 10 underline1"_s);
  row("\\ul a\\ulnone X", u"Arial 10"_s);
  row("\\ul a\\ul0 X", u"Arial 10"_s);
  row("\\uldb X", u"Arial 10 underline1"_s);
  row("\\ulwave X", u"Arial 10 underline6"_s);
  row("\\strike X", u"Arial 10 strike"_s);
  row("\\striked1 X", u"Arial 10 strike"_s);
  row("\\super X", u"Arial 10 super"_s);
  row("\\sub a\\nosupersub X", u"Arial 10"_s);
  row("\\up4 X", u"Arial 10 super"_s);
  row("\\dn X", u"Arial 10 sub"_s);
  row("\\caps X", u"Arial 10 caps1"_s);
  row("\\caps\\scaps X", u"Arial 10 caps1"_s);
  row("\\scaps\\caps\\caps0 X", u"Arial 10 caps3"_s);
  row("\\strike\\striked0 X", u"Arial 10 strike"_s);
  row("\\cf2 X", u"Arial 10 #0000ff"_s);
  row("\\cf2 a\\cf0 X", u"Arial 10"_s);
  row("\\cf99 X", u"Arial 10"_s);
  row("\\highlight1 X", u"Arial 10 on #ff0000"_s);
  row("\\chcbpat1 a\\highlight0 X", u"Arial 10"_s);
  row("\\b\\cf1\\plain X", u"Arial 12"_s);
  row("\\f9 X", u"Arial 10"_s);
  row("\\f2 X", u"Arial CE 10"_s);
  row("\\f2 a{\\fonttbl{\\f2 Otra;}}X", u"Otra 10"_s);
  row("\\lang1034\\expndtw20\\outl X", u"Arial 10"_s);
  row("{\\field{\\*\\fldinst{HYPERLINK \"https://ejemplo.es/\"}}{\\fldrslt{\\ul X}}}",
      u"Arial 10 underline1 https://ejemplo.es/"_s);
  row("{\\field{\\*\\fldinst HYPERLINK \\\\l \"sitio\"}{\\fldrslt X}}", u"Arial 10 #sitio"_s);
}

void tst_rtf_formats::characters() {
  QFETCH(QByteArray, body);
  QFETCH(QString, expected);
  const auto document = Document(Letter(body));
  QCOMPARE(Describe(FormatAt(*document, u"X"_s)), expected);
  QCOMPARE(support::Loss(*document), QString());
}

void tst_rtf_formats::paragraphs_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QString>("expected");
  const auto row = [](const QByteArray& body, const QString& expected) {
    QTest::newRow(body.constData()) << body << expected;
  };
  const QString plain = u"align1 left0 right0 first0 before0 after0"_s;
  row("X\\par", plain);
  row("\\qc X\\par", u"align4 left0 right0 first0 before0 after0"_s);
  row("\\qj X\\par", u"align8 left0 right0 first0 before0 after0"_s);
  row("\\qr\\pard X\\par", plain);
  row("a\\line\\pard\\qr X\\par", u"align2 left0 right0 first0 before0 after0"_s);
  row("{\\qc X\\par}", u"align4 left0 right0 first0 before0 after0"_s);
  row("\\li720\\ri360\\fi180\\sb120\\sa240 X\\par", u"align1 left72 right36 first18 before8 after16"_s);
  row("\\sl276\\slmult1 X\\par", plain + u" line1:115"_s);
  row("\\sl-300 X\\par", plain + u" line2:20"_s);
  row("\\sl300\\slmult0 X\\par", plain + u" line3:20"_s);
  row("\\tx720\\tqr\\tldot\\tx9000\\tqdec\\tx1500 X\\par", plain + u" tab0:48 tab3:100 tab1:600"_s);
  row("\\li720\\fi-360\\tx720\\tx1440 X\\par",
      u"align1 left72 right0 first-36 before0 after0 tab0:24 tab0:24 tab0:72"_s);
  row("a\\par\\pard\\li720\\qr X", u"align2 left72 right0 first0 before0 after0"_s);
  row("{\\qr a}\\qc{\\b X}", u"align4 left0 right0 first0 before0 after0"_s);
  row("\\page X\\par", plain + u" page"_s);
  row("\\pagebb X\\par", plain + u" page"_s);
  row("\\qc{\\field{\\*\\fldinst Y}{\\fldrslt\\pard\\qr a}}X\\par", u"align4 left0 right0 first0 before0 after0"_s);
  row("\\li99999999999 X\\par", u"align1 left3276.7 right0 first0 before0 after0"_s);
}

void tst_rtf_formats::paragraphs() {
  QFETCH(QByteArray, body);
  QFETCH(QString, expected);
  const auto document = Document(Letter(body));
  QTextBlock block = document->begin();
  while (!block.text().contains(u'X')) {
    block = block.next();
  }
  QCOMPARE(Describe(block), expected);
  QCOMPARE(support::Loss(*document), QString());
}

void tst_rtf_formats::lists_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QString>("expected");
  const QByteArray tables =
      "{\\*\\listtable{\\list{\\listlevel\\levelnfc2\\levelstartat1{\\leveltext\\'02\\'00);}}\\listid7}}"
      "{\\*\\listoverridetable{\\listoverride\\listid7\\listoverridecount0\\ls1}}";
  QTest::newRow("bullets, the words on the first item only")
      << QByteArray(
             "\\pard{\\pntext\\f1\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnindent0{\\pntxtb\\'B7}}\\fi-360\\li720 a\\par"
             "{\\pntext\\f1\\'B7\\tab}b\\par\\pard c\\par")
      << u"a=-1 72 0.1,b=-1 72 0.2,c"_s;
  QTest::newRow("numbers") << QByteArray("\\pard{\\*\\pn\\pnlvlbody\\pnstart3\\pnucrm{\\pntxta)}}a\\par b\\par")
                           << u"a=-8) 0 0.1,b=-8) 0 0.2"_s;
  QTest::newRow("a list of the list table goes on behind other text")
      << tables + "\\pard\\ls1\\ilvl0 a\\par\\pard b\\par\\pard\\ls1\\ilvl0 c\\par" << u"a=-7) 0 0.1,b,c=-7) 0 0.2"_s;
  QTest::newRow("a list of the number 0")
      << QByteArray(tables).replace("\\ls1", "\\ls0") + "\\pard\\ls0 a\\par\\ls1 b\\par" << u"a=-7) 0 0.1,b"_s;
  QTest::newRow("number 0, which the tables lack") << tables + "\\ls0 a\\par" << u"a"_s;
  QTest::newRow("a list that the tables lack") << QByteArray("\\ls9 a\\par") << u"a"_s;
  QTest::newRow("two lists one after the other")
      << QByteArray("\\pard{\\*\\pn\\pnlvlbody\\pndec{\\pntxta.}}a\\par\\pard{\\*\\pn\\pnlvlblt{\\pntxtb o}}b\\par")
      << u"a=-4. 0 0.1,b=-2 0 1.1"_s;
}

void tst_rtf_formats::lists() {
  QFETCH(QByteArray, body);
  QFETCH(QString, expected);
  const auto document = Document(Letter(body));
  QStringList items;
  QList<QTextList*> lists;
  for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
    QString item = block.text();
    if (QTextList* list = block.textList()) {
      if (!lists.contains(list)) {
        lists.append(list);
      }
      item += u"=%1%2 %3 %4.%5"_s.arg(int(list->format().style()))
                  .arg(list->format().numberSuffix())
                  .arg(block.blockFormat().leftMargin())
                  .arg(lists.indexOf(list))
                  .arg(list->itemNumber(block) + 1);
    }
    items.append(item);
  }
  QCOMPARE(items.join(u','), expected);
  QCOMPARE(support::Loss(*document), QString());
}

/// What an editor does with a new document comes back from what is written.
void tst_rtf_formats::formatsOfTheEditor() {
  QTextDocument document;
  document.setDefaultFont(QFont(u"Verdana"_s, 11));
  QTextCursor cursor(&document);
  cursor.insertText(u"normal "_s);
  QTextCharFormat format;
  format.setFontWeight(QFont::Bold);
  format.setFontFamilies({u"Courier New"_s});
  format.setForeground(QColor(1, 2, 3));
  format.setBackground(Qt::yellow);
  cursor.insertText(u"X "_s, format);
  QTextCharFormat link;
  link.setAnchor(true);
  link.setAnchorHref(u"https://ejemplo.es/a\\b"_s);
  cursor.insertText(u"enlace"_s, link);
  QTextBlockFormat paragraph;
  paragraph.setAlignment(Qt::AlignJustify);
  paragraph.setIndent(1);
  cursor.insertBlock(paragraph, {});
  cursor.insertText(u"Y"_s);
  cursor.createList(QTextListFormat::ListDisc);
  cursor.insertBlock();
  cursor.insertText(u"Z"_s);

  const QByteArray written = rtf::Write(document);
  const auto again = Document(written);
  QCOMPARE(support::Text(*again), u"normal X enlace|Y|Z"_s);
  QCOMPARE(Describe(FormatAt(*again, u"normal"_s)), u"Verdana 11"_s);
  QCOMPARE(Describe(FormatAt(*again, u"X"_s)), u"Courier New 11 bold #010203 on #ffff00"_s);
  QCOMPARE(Describe(FormatAt(*again, u"enlace"_s)), u"Verdana 11 https://ejemplo.es/a\\b"_s);
  const QTextBlock item = again->findBlockByNumber(1);
  QVERIFY(item.textList() != nullptr && item.textList() == again->findBlockByNumber(2).textList());
  QCOMPARE(int(item.textList()->format().style()), int(QTextListFormat::ListDisc));
  QCOMPARE(Describe(item), u"align8 left120 right0 first0 before0 after0"_s);
  QVERIFY2(written.contains("{\\pntext\\f"), written.constData());
  QVERIFY(written.contains("\\deflang3082"));
  QCOMPARE(support::Loss(*again), QString());
}

/// Stops stay where they are on the paper when a paragraph is indented.
void tst_rtf_formats::tabsFollowTheColumnsEdge() {
  const auto document = Document(Letter("\\tqr\\tldot\\tx9072 X\\par"));
  QTextCursor cursor(document.get());
  QTextBlockFormat indented;
  indented.setLeftMargin(72);
  cursor.mergeBlockFormat(indented);
  const QByteArray written = rtf::Write(*document);
  QVERIFY2(written.contains("\\li720\\tqr\\tldot\\tx9072"), written.constData());
}

/// Number 0 is no background, so that the table's first colour needs another number.
void tst_rtf_formats::backgroundOfTheFirstColour() {
  const auto document = Document("{\\rtf1{\\colortbl\\red255\\green0\\blue0;}X}");
  QTextCursor cursor(document.get());
  cursor.select(QTextCursor::Document);
  QTextCharFormat red;
  red.setBackground(QColor(255, 0, 0));
  cursor.mergeCharFormat(red);
  QCOMPARE(FormatAt(*Document(rtf::Write(*document)), u"X"_s).background().color().name(), u"#ff0000"_s);
}

KEL_TEST(tst_rtf_formats);
#include "tst_rtf_formats.moc"
