#include "documents/letter/LetterPainter.h"
#include "documents/rtf/Rtf.h"
#include "support/TestProgram.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

using documents::LetterPainter;

namespace {

constexpr int width = 1191;  // An A4, in half-points.
constexpr int height = 1684;
constexpr int topMargin = 142;

QByteArray Letter(const QByteArray& groups) {
  return "{\\rtf1\\ansi{\\fonttbl{\\f0 Liberation Sans;}}" + groups +
         "\\pard\\f0 uno\\par\\page dos\\par\\page tres\\par}";
}

std::unique_ptr<QTextDocument> Read(const QByteArray& content) {
  auto letter = std::make_unique<QTextDocument>();
  rtf::Read(content, *letter);
  return letter;
}

QImage Page(const LetterPainter& letter, int page) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  letter.Paint(painter, page);
  return image;
}

bool HasInk(const QImage& image, int top, int bottom) {
  for (int y = top; y < bottom; ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qGray(image.pixel(x, y)) < 128) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

/// Headers and footers on paper.
class tst_letter_strips : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void PagesThatHaveThem_data() {
    QTest::addColumn<QByteArray>("groups");
    QTest::addColumn<QString>("shown");  // For three pages: h and f, or a point.
    const auto row = [](const char* name, const QByteArray& groups, const QString& shown) {
      QTest::newRow(name) << groups << shown;
    };
    row("none", "", u". . ."_s);
    row("both", "{\\header X\\par}{\\footer X\\par}", u"hf hf hf"_s);
    row("the first page has none", "\\titlepg{\\header X}", u". h h"_s);
    row("the first page has its own", "\\titlepg{\\headerf X}{\\footer X}", u"h f f"_s);
    row("a first page's where none is asked for", "{\\headerf X}", u". . ."_s);
    row("left and right pages", "\\facingp{\\headerl X}{\\footerr X}", u"f h f"_s);
    row("pages that count from 2", "\\facingp\\pgnstart2{\\headerl X}", u"h . h"_s);
    row("right ones for all", "{\\headerr X}", u"h h h"_s);
    row("an empty one", "{\\header}", u". . ."_s);
  }

  void PagesThatHaveThem() {
    QFETCH(QByteArray, groups);
    const QByteArray content = Letter(groups);
    const auto letter = Read(content);
    const LetterPainter painter(*letter, {});
    QStringList shown;
    for (int page = 0; page < painter.PageCount() && page < 3; ++page) {
      const QImage image = Page(painter, page);
      const QString strips = (HasInk(image, 0, topMargin) ? u"h"_s : QString()) +
                             (HasInk(image, height - topMargin, height) ? u"f"_s : QString());
      shown.append(strips.isEmpty() ? u"."_s : strips);
    }
    while (shown.size() < 3) {
      shown.append(u"."_s);
    }
    QTEST(shown.join(u' '), "shown");
    QCOMPARE(painter.Problems(), QStringList());
    QCOMPARE(rtf::Write(*letter), content);
  }

  /// What stands for a number looks as the number itself would.
  void FieldsAreNumbers() {
    const auto letter =
        Read(Letter("{\\header P {\\b\\chpgn} de "
                    "{\\field{\\*\\fldinst { NUMPAGES \\\\* MERGEFORMAT }}{\\fldrslt {\\i 99}}}, "
                    "{\\field{\\*\\fldinst PAGE}}, {\\field{\\*\\fldinst DATE}{\\fldrslt hoy}}}"));
    const LetterPainter painter(*letter, {});
    for (const int page : {1, 0, 2}) {
      const QByteArray number = QByteArray::number(page + 1);
      const auto said = Read(Letter("{\\header P {\\b " + number + "} de {\\i 3}, " + number + ", hoy}"));
      QCOMPARE(Page(painter, page), Page(LetterPainter(*said, {}), page));
    }
  }

  void ProblemsAreNamed() {
    const QByteArray tall = QByteArray("x\\par ").repeated(30);
    const auto letter = Read(Letter("{\\header " + tall + "}{\\footer " + QByteArray(6'000, 'x') + "}"));
    const LetterPainter painter(*letter, {});
    QCOMPARE(painter.Problems().size(), 2);
    QVERIFY2(painter.Problems().first().contains(u"no cabe en el margen superior"), "cut");
    QVERIFY2(painter.Problems().last().contains(u"demasiado largo"), "too long");
    const QImage page = Page(painter, 0);
    // As far as there is room, and not over the letter's text.
    QVERIFY(HasInk(page, topMargin - 30, topMargin));
    QCOMPARE(page.copy(0, topMargin, width, 400),
             Page(LetterPainter(*Read(Letter("")), {}), 0).copy(0, topMargin, width, 400));
    // What shows otherwise than it is, or not at all.
    const std::pair<QByteArray, QString> said[] = {
        {"{\\f7 x}{\\f8 y}{\\f9  }", u"no está Sin Letra Kel."_s},
        {"\\trowd\\cellx14000\\pard\\intbl a\\cell\\row\\pard", u"más ancho que el papel"_s},
        {"\\trowd\\trrh3000\\cellx2000\\pard\\intbl a\\cell\\row\\pard", u"no cabe en el margen inferior"_s},
        {"x{\\shp{\\*\\shpinst{\\shptxt y}}}", u"dibujos, objetos o imágenes"_s},
        {"{\\pict\\pngblip 00}", u"dibujos, objetos o imágenes"_s}};
    for (const auto& [header, problem] : said) {
      const QStringList problems =
          LetterPainter(*Read("{\\rtf1{\\fonttbl{\\f7 Sin Letra Kel;}{\\f8 DejaVu Sans;}{\\f9 Otra "
                              "Sin;}}{\\footer\\pard " +
                              header + "\\par}x\\par}"),
                        {})
              .Problems();
      QVERIFY2(problems.size() == 1 && problems.first().contains(problem), qPrintable(problems.join(u'\n')));
    }
    const auto two = Read("{\\rtf1{\\header a}x\\par\\sect\\sectd{\\header b}y\\par}");
    QVERIFY(LetterPainter(*two, {}).Problems().value(0).contains(u"otra sección"));
    // With room for it there is nothing to say.
    QCOMPARE(LetterPainter(*Read(Letter("{\\header " + tall + "}")), {.top = 20}).Problems(), QStringList());
  }
};

KEL_TEST(tst_letter_strips);
#include "tst_letter_strips.moc"
