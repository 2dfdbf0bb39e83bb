#include "documents/letter/LetterMarkers.h"
#include "documents/letter/LetterTemplate.h"
#include "documents/rtf/Joint.h"
#include "documents/rtf/Rtf.h"
#include "support/TestProgram.h"

#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

using documents::Marker;

namespace {

QByteArray Letter(const QByteArray& body) {
  return "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}}\\f0\\fs24 " + body + "}";
}

/// Bold text stands between asterisks, paragraphs between "|", lines between "/".
QString Shown(const QTextDocument& letter) {
  QStringList paragraphs;
  for (QTextBlock block = letter.begin(); block.isValid(); block = block.next()) {
    if (rtf::IsJoint(block)) {
      continue;
    }
    QString text;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const bool isBold = at.fragment().charFormat().fontWeight() > QFont::Normal;
      text += isBold ? u'*' + at.fragment().text() + u'*' : at.fragment().text();
    }
    paragraphs.append(text.replace(QChar::LineSeparator, u'/').replace(QChar::ObjectReplacementCharacter, u'@'));
  }
  return paragraphs.join(u'|');
}

QStringList Values(const QList<documents::MarkerPlace>& places, const QString& name, const QString& postcode = {}) {
  QStringList values;
  for (const documents::MarkerPlace& place : places) {
    values.append(place.marker == Marker::FirstName ? name : postcode);
  }
  return values;
}

}  // namespace

/// Markers found in a letter and filled.
class tst_letter_markers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Filled_data();
  void Filled();
  void EveryMarker();
  void Faults_data();
  void Faults();
  void FormatsStay();
  void WhatIsCarried();
  void WhatHasNoMarkerStays();
};

void tst_letter_markers::Filled_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QString>("name");
  QTest::addColumn<QString>("expected");
  const auto row = [](const char* title, const QByteArray& body, const QString& name, const QString& expected) {
    QTest::newRow(title) << body << name << expected;
  };
  row("several", "a [Nombre], [CP] b [Nombre].\\par c", u"Ana"_s, u"a Ana, 28 b Ana.|c"_s);
  row("over runs and escapes", "a {\\b [Nom}{\\b\\i bre]} \\'5bNombre\\'5d", u"Ana"_s, u"a *Ana* Ana"_s);
  row("format of the first letter", "[{\\b Nombre}]x", u"Ana"_s, u"*Ana*x"_s);
  row("bookmark inside", "[Nom{\\*\\bkmkstart m}bre]{\\*\\bkmkend m} x", u"Ana"_s, u"Ana@@ x"_s);
  row("bookmark behind the bracket", "[{\\*\\bkmkstart m}{\\b Nombre}] x", u"Ana"_s, u"*Ana*@ x"_s);
  row("neighbours", "[Nombre][CP][Nombre]", u"Ana"_s, u"Ana28Ana"_s);
  row("what a value holds is text", "[Nombre] x", u"[CP] {\\b \\par}"_s, u"[CP] {\\b \\par} x"_s);
  row("breaks and controls", "[Nombre]", u"a\r\nb\tc\u0001\u202E\uFFFC\uFDD0\u2029d "_s, u"a/b c/d"_s);
  row("emoji", "[Nombre]", u"\U0001F600"_s, u"\U0001F600"_s);
  row("empty between blanks", "a [Nombre] b", u""_s, u"a b"_s);
  row("empty before a point", "a [Nombre].", u""_s, u"a."_s);
  row("empty in front", "[Nombre] b", u" "_s, u"b"_s);
  row("empty brackets", "a ([Nombre]) b ([Nombre], [CP])", u""_s, u"a b (, 28)"_s);
  row("empty line goes", "a\\par [Nombre]\\par b", u""_s, u"a|b"_s);
  row("empty lines in sequence", "a\\par [Nombre] [Nombre]\\par [Nombre], -\\par b", u""_s, u"a|b"_s);
  row("first and second", "[Nombre]\\par {\\b b}", u""_s, u"*b*"_s);
  row("line of a paragraph", "a\\line [Nombre]\\line b\\line [Nombre]", u""_s, u"a/b"_s);
  row("first line of a paragraph", "[Nombre]\\line b [CP]", u""_s, u"b 28"_s);
  row("a caption keeps its line", "NIF: [Nombre]\\par b", u""_s, u"NIF:|b"_s);
  row("lines without markers stay", "\\par [Nombre]\\par\\par b", u""_s, u"||b"_s);
  row("a page's first stays", "a\\page [Nombre]\\par b", u""_s, u"a||b"_s);
  row("a footnote keeps its line", "a\\par [Nombre]{\\footnote n}\\par b", u""_s, u"a|@|b"_s);
  row("last of a cell stays", "\\trowd\\cellx999\\cellx1999\\intbl [Nombre]\\cell [Nombre]\\par b\\cell\\row\\pard c",
      u""_s, u"|b|c"_s);
}

void tst_letter_markers::Filled() {
  QFETCH(QByteArray, body);
  QFETCH(QString, name);
  QTextDocument letter;
  rtf::Read(Letter(body), letter);
  const documents::LetterMarkers markers = documents::FindMarkers(letter);
  QCOMPARE(markers.faults, QStringList());
  const std::unique_ptr<QTextDocument> copy(letter.clone());
  documents::FillMarkers(*copy, markers.places, Values(markers.places, name, u"28"_s));
  QTEST(Shown(*copy), "expected");
  QTextDocument again;
  rtf::Read(rtf::Write(*copy), again);
  QTEST(Shown(again), "expected");
}

void tst_letter_markers::EveryMarker() {
  QString text;
  QStringList values;
  for (int i = 0; i < documents::markerCount; ++i) {
    text += documents::TextOf(Marker(i)) + u'|';
    values.append(QString::number(i));
  }
  QTextDocument letter;
  letter.setPlainText(text);
  documents::FillMarkers(letter, documents::FindMarkers(letter).places, values);
  QString expected;
  for (int i = 0; i < documents::markerCount; ++i) {
    expected += QString::number(i) + u'|';
  }
  QCOMPARE(letter.toPlainText(), expected);
}

void tst_letter_markers::Faults_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<int>("places");
  QTest::addColumn<QStringList>("words");
  const auto row = [](const char* title, const QByteArray& body, int places, const QStringList& words) {
    QTest::newRow(title) << body << places << words;
  };
  row("unknown", "[Apellido] [nombre] [Nombre ] [Apellido] [CP]", 1, {u"[Apellido]"_s, u"[nombre]"_s, u"[Nombre ]"_s});
  row("not closed", "a [Nombre", 0, {u"[Nombre"_s});
  row("over two paragraphs", "a [Nom\\par bre]", 0, {u"[Nom"_s});
  row("over two lines", "a [Nom\\line bre]", 0, {u"[Nom"_s});
  row("inside another", "[Nom[CP]bre]", 1, {u"[Nom"_s});
  row("in hidden text", "{\\v [CP]} a", 0, {u"oculto"_s});
  row("hidden in the middle", "[Nom{\\v x}bre]", 1, {});
  row("closing alone", "a] [CP]", 1, {});
}

void tst_letter_markers::Faults() {
  QFETCH(QByteArray, body);
  QFETCH(QStringList, words);
  QTextDocument letter;
  rtf::Read(Letter(body), letter);
  const documents::LetterMarkers markers = documents::FindMarkers(letter);
  QTEST(int(markers.places.size()), "places");
  QCOMPARE(markers.faults.size(), words.size());
  for (qsizetype i = 0; i < words.size(); ++i) {
    QVERIFY2(markers.faults[i].contains(words[i]), qPrintable(markers.faults[i]));
  }
}

/// What is next to a line that goes keeps its own look.
void tst_letter_markers::FormatsStay() {
  QTextDocument letter;
  rtf::Read(Letter("\\pard\\ql a\\par\\qr [Nombre]\\par\\qc\\fs40 \\par\\pard\\qj\\fs24 c [Nombre]\\par\\ql d"),
            letter);
  const QList<documents::MarkerPlace> places = documents::FindMarkers(letter).places;
  documents::FillMarkers(letter, places, Values(places, {}));
  QCOMPARE(Shown(letter), u"a||c|d"_s);
  QList<Qt::Alignment> alignments;
  for (QTextBlock block = letter.begin(); block.isValid(); block = block.next()) {
    alignments.append(block.blockFormat().alignment() & Qt::AlignHorizontal_Mask);
  }
  QCOMPARE(alignments, QList<Qt::Alignment>({Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignJustify, Qt::AlignLeft}));
  QCOMPARE(letter.findBlockByNumber(1).charFormat().fontPointSize(), 20.0);
}

/// Headers, footers and footnotes are filled, in the order of text, headers, footnotes; what has no marker stays to the
/// byte.
void tst_letter_markers::WhatIsCarried() {
  const QByteArray footer =
      "{\\footer\\pard\\qc\\fs16 P\\'e1gina \\chpgn  {\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}\\par}";
  auto letter = std::make_unique<QTextDocument>();
  rtf::Read(
      "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Arial;}{\\f1 Courier;}}{\\header\\pard\\qr {\\b [Nom}bre] "
      "\\f1 y [CP]\\par}" +
          footer + "\\pard a [Nombre]{\\footnote\\pard\\fs16 nota de [CP]}, {\\footnote b} c\\par}",
      *letter);
  const documents::LetterTemplate whole(std::move(letter), {.left = 2, .right = 2, .top = 2, .bottom = 2});
  QCOMPARE(whole.Faults(), QStringList());
  QCOMPARE(whole.Markers(), QList<Marker>({Marker::FirstName, Marker::FirstName, Marker::Postcode, Marker::Postcode}));
  const QByteArray written = rtf::Write(*whole.Filled({u"uno"_s, u"dos"_s, u"tres"_s, u"cu{atr}o"_s}));
  QVERIFY2(written.contains(footer) && written.contains("{\\footnote b}"), written.constData());
  QVERIFY2(written.contains("\\margl1134") && written.contains("\\paperw11907"), written.constData());
  static const QRegularExpression words(u"\\\\b |dos|\\\\b0|\\\\f1|tres|nota de cu|\\\\\\{atr\\\\\\}o|a uno"_s);
  QStringList found;
  for (auto at = words.globalMatch(QString::fromLatin1(written)); at.hasNext();) {
    found.append(at.next().captured().trimmed());
  }
  QCOMPARE(found.join(u' '), u"\\f1 \\b dos \\b0 \\f1 tres a uno nota de cu \\{atr\\}o"_s);
}

/// Pictures, objects, definitions of rows, links and headers without markers keep their bytes in a filled letter.
void tst_letter_markers::WhatHasNoMarkerStays() {
  const QByteArrayList pieces = {
      "{\\header\\pard\\qr\\b Fundaci\\'f3n\\par}",
      "{\\pict\\pngblip\\picwgoal300\\pichgoal300 "
      "89504e470d0a1a0a0000000d49484452000000010000000108000000003a7e9b550000000a49444154789c63680000008200"
      "8177cd72b60000000049454e44ae426082}",
      "{\\object\\objemb{\\*\\objdata 0105}{\\result x}}",
      "\\trowd\\trgaph70\\trleft-70\\clbrdrt\\brdrs\\brdrw15\\cellx3000\\cellx6000",
      "{\\field{\\*\\fldinst HYPERLINK \"https://ejemplo.invalid/\"}{\\fldrslt\\ul enlace}}"};
  auto letter = std::make_unique<QTextDocument>();
  rtf::Read(Letter(pieces[0] + "\\pard Para [Nombre]: " + pieces[1] + " y " + pieces[2] + "\\par " + pieces[3] +
                   "\\pard\\intbl [CP]\\cell b\\cell\\row\\pard " + pieces[4] + " [Nombre]\\par"),
            *letter);
  const documents::LetterTemplate whole(std::move(letter), {.left = 2, .right = 2, .top = 2, .bottom = 2});
  QCOMPARE(whole.Markers().size(), 3);
  const QByteArray written = rtf::Write(*whole.Filled({u"Ana"_s, u"28001"_s, u"Luz"_s}));
  for (const QByteArray& piece : pieces) {
    QVERIFY2(written.contains(piece), written.constData());
  }
  QVERIFY(written.contains("Ana") && written.contains("28001") && written.contains("Luz"));
}

KEL_TEST(tst_letter_markers);
#include "tst_letter_markers.moc"
