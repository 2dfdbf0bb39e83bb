#include "documents/rtf/Documents.h"
#include "documents/rtf/Picture.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;
using support::Letter;

/// Hostile input: what is accepted is read in a bounded way, what is not is refused with a reason.
class tst_rtf_limits : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void accepted_data();
  void accepted();
  void refused_data();
  void refused();
  void everyTruncation();
  void largePictureIsNotDecoded();
};

void tst_rtf_limits::accepted_data() {
  QTest::addColumn<QByteArray>("content");
  QTest::addColumn<QString>("text");
  const auto numbered = [](int count, const auto& entry) {
    QByteArray result;
    for (int i = 0; i < count; ++i) {
      result += entry(QByteArray::number(i));
    }
    return result;
  };
  QTest::newRow("a million open groups") << QByteArray("{\\rtf1 " + QByteArray(1'000'000, '{') + "x") << u"x"_s;
  QTest::newRow("deep groups that close")
      << QByteArray("{\\rtf1 " + QByteArray(600, '{') + "\\b x" + QByteArray(600, '}') + "y}") << u"xy"_s;
  QTest::newRow("200,000 fonts") << QByteArray("{\\rtf1{\\fonttbl" +
                                               numbered(200'000, [](auto n) { return "{\\f" + n + " F" + n + ";}"; }) +
                                               "}x}")
                                 << u"x"_s;
  QTest::newRow("250,000 colours") << QByteArray("{\\rtf1{\\colortbl;" +
                                                 numbered(250'000, [](auto n) { return "\\red" + n + ";"; }) + "}x}")
                                   << u"x"_s;
  QTest::newRow("50,000 tab stops") << QByteArray("{\\rtf1 " + numbered(50'000, [](auto n) { return "\\tx" + n; }) +
                                                  " x}")
                                    << u"x"_s;
  QTest::newRow("long words and numbers")
      << QByteArray("{\\rtf1\\" + QByteArray(100'000, 'a') + QByteArray(100'000, '9') + " x}") << u"x"_s;
  QTest::newRow("one long list") << QByteArray("{\\rtf1{\\*\\pn\\pnlvlbody\\pndec}" +
                                               QByteArray("x\\par ").repeated(2'000) + "}")
                                 << QString(u"x|"_s.repeated(2'000)).chopped(1);
  QTest::newRow("one long row definition, many cells")
      << QByteArray("{\\rtf1\\trowd" + numbered(20'000, [](auto n) { return "\\cellx" + n; }) + "\\intbl " +
                    QByteArray("\\cell").repeated(200) + "\\row}")
      << QString(199, u'|');
  QTest::newRow("a list in the text of another's level")
      << QByteArray("{\\rtf1{\\*\\listtable{\\list{\\listlevel{\\leveltext a{\\list}b}}}}x}") << u"x"_s;
  QTest::newRow("a field in a field in a field")
      << QByteArray("{\\rtf1 " + QByteArray("{\\field{\\*\\fldinst X}{\\fldrslt ").repeated(100) + "x" +
                    QByteArray("}}").repeated(100) + "}")
      << u"@"_s;
}

void tst_rtf_limits::accepted() {
  QFETCH(QByteArray, content);
  QFETCH(QString, text);
  QTextDocument document;
  QCOMPARE(rtf::Read(content, document).outcome, rtf::Outcome::RichText);
  QCOMPARE(support::Text(document), text);
  QCOMPARE(rtf::Write(document), content);
  QCOMPARE(support::Loss(document), QString());
}

void tst_rtf_limits::refused_data() {
  QTest::addColumn<QByteArray>("content");
  QTest::addColumn<QString>("reason");
  QTest::newRow("bytes") << Letter(QByteArray(2000, 'x')) << u"La carta ocupa más de 0 MB."_s;
  QTest::newRow("paragraphs") << Letter(QByteArray("\\par").repeated(60)) << u"La carta tiene más de 50 párrafos."_s;
  QTest::newRow("lines of plain text") << QByteArray("x\n").repeated(60) << u"La carta tiene más de 50 párrafos."_s;
  QTest::newRow("sizes") << Letter("\\fs1 a\\fs2 a\\fs3 a\\fs4 a\\fs5 a\\fs6 a\\fs7 a\\fs8 a\\fs9 a")
                         << u"La carta tiene demasiados formatos de letra distintos."_s;
  QTest::newRow("indents")
      << Letter("\\li1\\par\\li2\\par\\li3\\par\\li4\\par\\li5\\par\\li6\\par\\li7\\par\\li8\\par\\li9\\par")
      << u"La carta tiene demasiados formatos de párrafo distintos."_s;
  QTest::newRow("pieces") << Letter(QByteArray("{\\*\\x 1}").repeated(9)) << u"La carta tiene demasiados objetos."_s;
}

void tst_rtf_limits::refused() {
  QFETCH(QByteArray, content);
  QFETCH(QString, reason);
  QTextDocument document;
  document.setPlainText(u"antes"_s);
  const rtf::Report report = rtf::Read(content, document, {.bytes = 1500, .paragraphs = 50, .formats = 8});
  QCOMPARE(report.outcome, rtf::Outcome::Refused);
  QCOMPARE(report.reason, reason);
  QCOMPARE(document.toPlainText(), QString());
}

void tst_rtf_limits::everyTruncation() {
  const QByteArray whole = Letter(
      "a\\'e1\\u8364?{\\*\\pn\\pnlvlblt{\\pntxtb\\'B7}}b{\\pict\\pngblip\\bin4 1234}{\\object{\\*\\objdata "
      "00}{\\result r}}"
      "{\\field{\\*\\fldinst X}{\\fldrslt{\\b y}}}{\\upr{a}{\\*\\ud b}}\\trowd\\cellx9\\intbl "
      "c\\cell\\row\\sect\\sectd{\\header h}d");
  for (qsizetype size = 0; size <= whole.size(); ++size) {
    const QByteArray content = whole.left(size);
    QTextDocument document;
    rtf::Read(content, document);
    QCOMPARE(rtf::Write(document), content);
    QVERIFY2(support::Loss(document).isEmpty(), qPrintable(u"%1: "_s.arg(size) + support::Loss(document)));
  }
}

/// The file says 30,000 by 30,000 pixels.
void tst_rtf_limits::largePictureIsNotDecoded() {
  const QByteArray dib = QByteArray::fromHex(
      "28000000"
      "30750000"
      "30750000"
      "0100"
      "1800"
      "00000000"
      "00000000"
      "00000000"
      "00000000"
      "00000000"
      "00000000");
  QVERIFY(rtf::ReadPicture("{\\pict\\dibitmap0 " + dib.toHex() + "}").isNull());
}

KEL_TEST(tst_rtf_limits);
#include "tst_rtf_limits.moc"
