#include "documents/letter/LetterPainter.h"
#include "documents/rtf/Rtf.h"
#include "support/TestProgram.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

using namespace Qt::StringLiterals;

using documents::LetterPainter;

namespace {

constexpr int scale = 4;  // Of the picture, to half-points: 576 dots per inch.
constexpr double twipsPerPixel = 10.0 / scale;
constexpr int leftMargin = 1701;  // 3 cm, in twips.

QByteArray Row(const QByteArray& words, const QByteArray& cells) {
  const QByteArray lines =
      "\\clbrdrt\\brdrs\\brdrw10\\clbrdrl\\brdrs\\brdrw10\\clbrdrb\\brdrs\\brdrw10\\clbrdrr\\brdrs\\brdrw10";
  return "\\trowd\\trgaph108\\trleft-108" + words + lines + "\\cellx2000" + lines + "\\cellx5000\\pard\\intbl " +
         cells + "\\row ";
}

QImage Page(const LetterPainter& letter, int page) {
  QImage image(1191 * scale, 1684 * scale, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(scale, scale);
  letter.Paint(painter, page);
  return image;
}

bool IsDark(QRgb pixel) {
  return qGray(pixel) < 100;
}

/// Where level lines cross a place of the second column that has no text, in twips.
QList<double> LinesDown(const QImage& image) {
  const int x = qRound((leftMargin + 4500) / twipsPerPixel);
  QList<double> lines;
  for (int y = 0; y < image.height(); ++y) {
    const int start = y;
    while (y < image.height() && IsDark(image.pixel(x, y))) {
      ++y;
    }
    if (y > start) {
      lines.append((start + y - 1) / 2.0 * twipsPerPixel);
    }
  }
  return lines;
}

/// The middle of what is dark between those heights in the second column, left.
double MiddleOfText(const QImage& image, double top, double bottom) {
  int first = 0;
  int last = 0;
  for (int y = qRound(top / twipsPerPixel) + scale; y < qRound(bottom / twipsPerPixel) - scale; ++y) {
    for (int x = qRound((leftMargin + 2050) / twipsPerPixel); x < (leftMargin + 4000) / twipsPerPixel; ++x) {
      if (IsDark(image.pixel(x, y))) {
        first = first == 0 ? y : first;
        last = y;
      }
    }
  }
  return (first + last) / 2.0 * twipsPerPixel;
}

/// Where upright lines cross that height, in twips from the text's edge.
QList<double> LinesAt(const QImage& image, int y) {
  QList<double> lines;
  for (int x = 0; x < image.width(); ++x) {
    const int start = x;
    while (x < image.width() && IsDark(image.pixel(x, y))) {
      ++x;
    }
    if (x > start) {
      lines.append((start + x - 1) / 2.0 * twipsPerPixel - leftMargin);
    }
  }
  return lines;
}

}  // namespace

/// Tables on paper.
class tst_table_paper : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void LinesStandAtTheEdges_data() {
    QTest::addColumn<bool>("selection");
    QTest::newRow("the letter") << false;
    QTest::newRow("what is selected of it") << true;
  }

  void LinesStandAtTheEdges() {
    QFETCH(bool, selection);
    QTextDocument letter;
    rtf::Read("{\\rtf1\\ansi " + Row("", "\\fs100\\cell\\cell") + Row("", "\\fs100\\cell\\cell") + "\\pard x\\par}",
              letter);
    QTextCursor cells(&letter);
    cells.setPosition(1);
    cells.setPosition(4, QTextCursor::KeepAnchor);
    const std::unique_ptr<LetterPainter> painter = selection
                                                       ? std::make_unique<LetterPainter>(cells, documents::Margins{})
                                                       : std::make_unique<LetterPainter>(letter, documents::Margins{});
    // In the first row, whose text is 50 points high and begins at the upper margin.
    const QList<double> lines = LinesAt(Page(*painter, 0), (142 + 60) * scale);
    const QList<double> edges{-108, 2000, 5000};
    QCOMPARE(lines.size(), edges.size());
    constexpr double fifthOfAMillimetre = 11.3;
    for (qsizetype i = 0; i < edges.size(); ++i) {
      QVERIFY2(qAbs(lines[i] - edges[i]) <= fifthOfAMillimetre, qPrintable(u"%1 for %2"_s.arg(lines[i]).arg(edges[i])));
    }
  }

  void HeaderRowsAreRepeated_data() {
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("tables");
    QTest::newRow("a table") << 120 << 1;
    // Each part of it is a table of Qt's.
    QTest::newRow("a long one, in parts") << 620 << 4;
  }

  void HeaderRowsAreRepeated() {
    QFETCH(int, rows);
    QTextDocument letter;
    rtf::Read("{\\rtf1\\ansi{\\colortbl;\\red0\\green0\\blue0;}" + Row("\\trhdr\\clcbpat1", "a\\cell b\\cell") +
                  Row("", "a\\cell b\\cell").repeated(rows) + "\\pard\\page fin\\par}",
              letter);
    QTEST(int(letter.rootFrame()->childFrames().size()), "tables");
    const LetterPainter painter(letter, {});
    QVERIFY(painter.PageCount() > 2);
    QCOMPARE(painter.PageOf(letter.characterCount() - 3), painter.PageCount() - 1);
    // The last cell.
    QCOMPARE(painter.PageOf(letter.characterCount() - 7), painter.PageCount() - 2);
    const auto rowOf = [](const QImage& page) { return page.copy(leftMargin / 2.5, 142 * scale, 500, 12 * scale); };
    QVERIFY(IsDark(rowOf(Page(painter, 0)).pixel(400, 20)));
    for (const int page : {1, painter.PageCount() - 2}) {
      QCOMPARE(rowOf(Page(painter, page)), rowOf(Page(painter, 0)));
    }
  }

  /// Rows that are to stay together begin the next page where they would go on there, one that no page holds does not.
  void KeptRows_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QList<int>>("pages");  // On which the row begins and ends.
    const QByteArray short40 = Row("", "a\\cell b\\cell").repeated(46);
    QTest::newRow("parted") << short40 << QByteArray() << 12 << QList<int>{0, 1};
    QTest::newRow("kept") << short40 << QByteArray("\\trkeep") << 12 << QList<int>{1, 1};
    QTest::newRow("with room") << short40 << QByteArray("\\trrh4200") << 12 << QList<int>{1, 1};
    QTest::newRow("behind a repeated row")
        << Row("\\trhdr", "a\\cell b\\cell") + short40 << QByteArray("\\trkeep") << 12 << QList<int>{1, 1};
    QTest::newRow("the first") << QByteArray("a\\par ").repeated(47) << QByteArray("\\trkeep") << 12
                               << QList<int>{1, 1};
    QTest::newRow("longer than a page") << short40 << QByteArray("\\trkeep") << 60 << QList<int>{0, 2};
  }

  void KeptRows() {
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, words);
    QFETCH(int, lines);
    QTextDocument letter;
    const QByteArray content =
        "{\\rtf1\\ansi " + before +
        Row(words, "primera\\par " + QByteArray("x\\par ").repeated(lines) + "fin\\cell b\\cell") +
        Row(words, "a\\cell b\\cell").repeated(3) + "\\pard x\\par}";
    rtf::Read(content, letter);
    const LetterPainter painter(letter, {});
    QTEST((QList<int>{painter.PageOf(letter.find(u"primera"_s).position()),
                      painter.PageOf(letter.find(u"fin"_s).position())}),
          "pages");
    QCOMPARE(rtf::Write(letter), content);
  }

  void AlignedTextIsWhole_data() {
    QTest::addColumn<QByteArray>("rows");
    const auto rows = [](int above, int lines) {
      return Row("", "a\\cell\\cell").repeated(above) +
             Row("", QByteArray("x\\par ").repeated(lines - 1) + "x\\cell W\\cell")
                 .replace("\\cellx2000", "\\cellx2000\\clvertalc");
    };
    // The page ends in the row.
    for (int above = 45; above < 48; ++above) {
      QTest::addRow("%d rows above", above) << rows(above, 4);
      QTest::addRow("%d rows above, one of them repeated", above) << rows(above, 5).replace(0, 6, "\\trowd\\trhdr");
    }
  }

  void AlignedTextIsWhole() {
    QFETCH(QByteArray, rows);
    QTextDocument letter;
    rtf::Read("{\\rtf1\\ansi\\fs24 " + rows + "}", letter);
    const LetterPainter painter(letter, {});
    // The only text in the second column.
    int height = 0;
    for (int page = 0; page < painter.PageCount(); ++page) {
      const QImage image = Page(painter, page);
      const int left = qRound((leftMargin + 2050) / twipsPerPixel);
      for (int y = 0; y < image.height(); ++y) {
        int dark = 0;
        for (int x = left; x < left + 60 * scale; ++x) {
          dark += IsDark(image.pixel(x, y)) ? 1 : 0;
        }
        height += dark > 0 && dark < 50 * scale ? 1 : 0;
      }
    }
    QVERIFY2(height > 15 * scale && height < 18 * scale, qPrintable(QString::number(height)));
  }

  void RowsHaveTheirHeights_data() {
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QList<int>>("heights");  // In twips; 0 for what the text needs.
    QTest::addColumn<int>("third");           // In which the last row's text stands, from 0.
    const auto row = [](const char* name, const QByteArray& rows, const QList<int>& heights, int third) {
      QTest::newRow(name) << rows << heights << third;
    };
    const QByteArray cells = "a\\cell b\\cell";
    // The room is in its cell.
    const QByteArray larger = "a\\cell\\fs30 b\\cell";
    row("at least", Row("", cells) + Row("\\trrh900", cells), {0, 900}, 0);
    row("exactly", Row("\\trrh-900", cells) + Row("\\trrh-1200", cells), {900, 1200}, 0);
    row("less than the text", Row("\\trrh100", cells) + Row("\\trrh-100", cells), {0, 0}, 1);
    row("none", Row("\\trrh0", cells), {0}, 1);
    row("text in the middle", Row("\\trrh900\\clvertalc", larger).replace("\\cellx2000", "\\cellx2000\\clvertalc"),
        {900}, 1);
    row("text below", Row("\\trrh900\\clvertalb", larger).replace("\\cellx2000", "\\cellx2000\\clvertalb"), {900}, 2);
    row("space and room in the cells", Row("\\trrh1200\\trpaddt100\\trpaddft3", "\\sb200\\sa100 a\\cell b\\cell"),
        {1200}, 1);
    row("space in the cells",
        Row("", "\\sb600\\sa200 a\\cell\\sb0\\sa0 b\\cell").replace("\\cellx5000", "\\clvertalc\\cellx5000"), {1076},
        1);
    row("a merged cell ends",
        Row("\\clvmgf", "a\\par a\\par a\\par a\\cell b\\cell") + Row("\\trrh900\\clvmrg", "\\cell b\\cell"), {0, 900},
        0);
    row("a merged cell begins",
        Row("\\trrh900\\clvmgf", "a\\par a\\par a\\cell b\\cell") + Row("\\clvmrg", "\\cell b\\cell"), {900, 0}, 1);
    row("in a cell, too",
        Row("\\trrh1400",
            "\\itap2 n\\nestcell{\\*\\nesttableprops\\trowd\\trrh1000\\cellx900\\nestrow}\\pard\\intbl\\cell b\\cell"),
        {1400}, 0);
  }

  void RowsHaveTheirHeights() {
    QFETCH(QByteArray, rows);
    QFETCH(QList<int>, heights);
    QFETCH(int, third);
    const auto linesOf = [](const QByteArray& body) {
      QTextDocument letter;
      rtf::Read("{\\rtf1\\ansi " + body + "\\pard\\par}", letter);
      const QImage page = Page(LetterPainter(letter, {}), 0);
      return std::pair(LinesDown(page), page);
    };
    const auto [lines, page] = linesOf(rows);
    const QList<double> usual = linesOf(Row("", "a\\cell b\\cell")).first;
    QCOMPARE(lines.size(), heights.size() + 1);
    for (qsizetype i = 0; i < heights.size(); ++i) {
      const double height = heights[i] == 0 ? usual[1] - usual[0] : heights[i];
      constexpr double halfAMillimetre = 28;
      QVERIFY2(qAbs(lines[i + 1] - lines[i] - height) < halfAMillimetre,
               qPrintable(u"%1 for %2"_s.arg(lines[i + 1] - lines[i]).arg(height)));
    }
    const double top = lines[lines.size() - 2];
    QCOMPARE(int(3 * (MiddleOfText(page, top, lines.last()) - top) / (lines.last() - top)), third);
  }

  void TablesAreClosedWherePagesEnd_data() {
    QTest::addColumn<QByteArray>("rows");
    QTest::newRow("between rows") << Row("", "a\\cell\\cell").repeated(120);
    QTest::newRow("behind a repeated row") << Row("\\trhdr", "a\\cell\\cell") + Row("", "a\\cell\\cell").repeated(120);
    QTest::newRow("with room left under the last row")
        << Row("", "a\\cell\\cell").repeated(45) + Row("", "\\fs96 a\\cell\\cell").repeated(20);
    QTest::newRow("in a row") << Row("", QByteArray("a\\par ").repeated(120) + "\\cell\\cell");
    QTest::newRow("in a merged cell") << Row("", "a\\cell\\cell").repeated(20) + Row("\\clvmgf", "\\cell x\\cell") +
                                             Row("\\clvmrg", "\\cell x\\cell").repeated(99);
  }

  void TablesAreClosedWherePagesEnd() {
    QFETCH(QByteArray, rows);
    QTextDocument letter;
    rtf::Read("{\\rtf1\\ansi " + rows + "}", letter);
    const LetterPainter painter(letter, {});
    QVERIFY(painter.PageCount() > 1);
    // Where what is dark begins and ends: at the left line, and in the first column where no text is.
    const auto ends = [](const QImage& page, int twips) {
      const int x = qRound((leftMargin + twips) / twipsPerPixel);
      QList<int> dark;
      for (int y = 0; y < page.height(); ++y) {
        if (IsDark(page.pixel(x, y))) {
          dark.append(y);
        }
      }
      return dark.isEmpty() ? std::pair(0, 0) : std::pair(dark.first(), dark.last());
    };
    for (int page = 0; page < 2; ++page) {
      const QImage image = Page(painter, page);
      const auto line = ends(image, -108);
      const auto inside = ends(image, 1500);
      const auto between = ends(image, 2000);
      QVERIFY2(qAbs(between.second - line.second) <= scale, qPrintable(QString::number(between.second)));
      QVERIFY(line.second > line.first);
      QVERIFY2(qAbs(line.first - inside.first) <= scale && (page == 1 || qAbs(line.second - inside.second) <= scale),
               qPrintable(u"%1 %2, %3 %4"_s.arg(line.first).arg(line.second).arg(inside.first).arg(inside.second)));
    }
  }
};

KEL_TEST(tst_table_paper);
#include "tst_table_paper.moc"
