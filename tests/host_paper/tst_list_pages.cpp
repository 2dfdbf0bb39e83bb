#include "host/mailing/output/Outputs.h"
#include "host/mailing/printing/Printing.h"
#include "host/paper/ListPages.h"
#include "host_mailing/PdfWords.h"
#include "host_paper/Lists.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

using host::ListPages;
using support::OutputOf;
using namespace Qt::StringLiterals;

namespace {

constexpr double a4Width = 210;
constexpr double a4Height = 297;

host::ListTable Wide(int texts, qsizetype length) {
  QList<host::ListColumn> columns;
  QList<QVariant> row;
  for (int i = 0; i < texts; ++i) {
    columns.append({u"Columna%1"_s.arg(i)});
    row.append(u"palabra "_s.repeated(length / 8).trimmed());
  }
  return MakeList(columns, {row});
}

}  // namespace

/// Lists on paper, looked at by another program.
class tst_list_pages : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EveryRowOnceUnderItsHeadings();
  void Columns_data();
  void Columns();
  void LongTextsTakeSeveralLines();
  void LyingPagesForAPrinter();
  void Measures_data();
  void Measures();
  void Glyphs_data();
  void Glyphs();

 private:
  QString Pdf(const host::PrintedWork& work) {
    const QString path = m_folder.filePath(u"lista.pdf"_s);
    host::RunControl control;
    return host::WritePdf(work, path, control) ? path : QString();
  }

  QTemporaryDir m_folder;
};

void tst_list_pages::EveryRowOnceUnderItsHeadings() {
  constexpr int rows = 130;
  host::ListTable table = Banks(rows);
  table.search = u"<b>caja</b>  %1"_s;
  const ListPages pages(table, ListPages::Orientation::Upright);
  const QString pdf = Pdf(pages);
  QStringList texts = OutputOf(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s}).split(u'\f');
  texts.removeLast();
  QCOMPARE(texts.size(), pages.Count());
  QVERIFY(pages.Count() > 2);
  QVERIFY2(
      texts[0].contains(u"130 registros que contienen «<b>caja</b> %1»"_s) && texts[0].contains(u"Fundación Puente"_s),
      qPrintable(texts[0]));
  int row = 0;
  for (int page = 0; page < texts.size(); ++page) {
    QVERIFY(texts[page].contains(u"Saldo"_s));
    QVERIFY(texts[page].contains(u"Página %1 de %2"_s.arg(page + 1).arg(texts.size())));
    while (texts[page].contains(u"Banco %1 "_s.arg(row + 1))) {
      ++row;
    }
    QCOMPARE(texts[page].count(u"Banco "_s), row - (page == 0 ? 0 : texts.first(page).join(u' ').count(u"Banco "_s)));
  }
  QCOMPARE(row, rows);
  QVERIFY(texts.join(QString()).simplified().contains(u"0120 Banco 120 -180,00 €"_s));
  QSet<int> edges;
  for (const support::Word& word : support::WordsOf(pdf)) {
    if (word.text == u'€') {
      edges.insert(qRound(word.x * 20));
    }
  }
  QCOMPARE(edges.size(), 1);
}

void tst_list_pages::Columns_data() {
  QTest::addColumn<int>("texts");
  QTest::addColumn<int>("length");
  QTest::addColumn<bool>("lies");
  QTest::addColumn<bool>("narrowed");
  QTest::addColumn<QString>("leftOut");
  QTest::newRow("few") << 3 << 16 << false << false << QString();
  QTest::newRow("lying they fit") << 5 << 24 << true << false << QString();
  QTest::newRow("long texts give way") << 4 << 200 << true << true << QString();
  QTest::newRow("no room for all") << 14 << 200 << true << true << u"Columna11, Columna12, Columna13"_s;
  QTest::newRow("nothing at all") << 0 << 0 << false << false << QString();
}

void tst_list_pages::Columns() {
  QFETCH(int, texts);
  QFETCH(int, length);
  const host::ListTable table = Wide(texts, length);
  const ListPages::Orientation proposed = ListPages::Proposed(table);
  const ListPages pages(table, proposed);
  QTEST(proposed == ListPages::Orientation::Landscape, "lies");
  QTEST(pages.IsNarrowed(), "narrowed");
  QTEST(pages.LeftOut().join(u", "_s), "leftOut");
  const double width = proposed == ListPages::Orientation::Landscape ? a4Height : a4Width;
  for (const support::Word& word : support::WordsOf(Pdf(pages))) {
    QVERIFY2(word.x > 10 && word.x < width - 10, qPrintable(word.text));
  }
}

void tst_list_pages::LongTextsTakeSeveralLines() {
  const QString words = u"uno dos tres cuatro cinco seis siete ocho nueve diez once doce trece catorce"_s;
  const QString word(300, u'w');
  const host::ListTable table = MakeList(
      {{u"A"_s}, {u"B"_s}, {u"C"_s}}, {{words, word, u"fin"_s}, {u"línea\notra"_s, QString(1000, u'ñ'), u"Ελλάδα"_s}});
  const ListPages pages(table, ListPages::Orientation::Upright);
  QString text = OutputOf(u"pdftotext"_s, {Pdf(pages), u"-"_s});
  for (const QString& each : words.split(u' ')) {
    QVERIFY2(text.contains(each), qPrintable(each));
  }
  QVERIFY(text.contains(u"línea otra"_s) && text.contains(u"fin"_s) && text.contains(u"Ελλάδα"_s));
  text.remove(QRegularExpression(u"\\s"_s));
  QCOMPARE(text.count(u'w'), word.size());
  QVERIFY2(text.contains(u"ñ…"_s), "a text that is cut does not say so");
}

void tst_list_pages::LyingPagesForAPrinter() {
  const ListPages pages(Banks(80), ListPages::Orientation::Landscape);
  const QString pdf = m_folder.filePath(u"impresora.pdf"_s);
  QFile file(pdf);
  QVERIFY(file.open(QFile::WriteOnly));
  host::RunControl control;
  QCOMPARE(host::PaintForPrinter(pages, {.queue = {}, .tray = {}, .pages = {2, 2}, .calibration = {}}, file, control),
           1);
  file.close();
  QVERIFY(OutputOf(u"pdfinfo"_s, {pdf}).contains(QRegularExpression(u"Page size: +595[.\\d]* x 84[12]"_s)));
  const QList<support::Word> words = support::WordsOf(pdf);
  const auto find = [&](const QString& text) {
    return *std::find_if(words.begin(), words.end(), [&](const auto& each) { return each.text == text; });
  };
  // The headings run down along the right edge.
  QVERIFY(find(u"Número"_s).x > a4Width / 2 && find(u"Saldo"_s).x > a4Width / 2);
  QVERIFY(find(u"Saldo"_s).y > find(u"Número"_s).y + 10);
}

void tst_list_pages::Measures_data() {
  QTest::addColumn<QString>("text");
  QTest::newRow("Latin") << u"Caja de Ahorros Puerta Real, S.A. — «Ñandú»"_s;
  QTest::newRow("another script") << u"Ελληνικά и русский"_s;
  QTest::newRow("pairs") << QString(u"\U0001F600"_s).repeated(9);
  QTest::newRow("one word") << QString(50, u'W');
  QTest::newRow("nothing") << QString();
}

void tst_list_pages::Measures() {
  QFETCH(QString, text);
  QFont font(u"Sans Serif"_s);
  font.setPixelSize(18);
  font.setKerning(false);
  const host::TextMeasure measure(font);
  QFont large = font;
  large.setPixelSize(1800);
  QVERIFY(std::abs(measure.Width(text) - QFontMetricsF(large).horizontalAdvance(text) / 100) < 0.5);
  const double narrow = 100;
  const QStringList lines = measure.Lines(text, narrow, 99);
  for (const QString& line : lines) {
    QVERIFY(measure.Width(line) <= narrow && line.isValidUtf16());
  }
  QCOMPARE(QString(text).remove(u' '), lines.join(QString()).remove(u' '));
}

void tst_list_pages::Glyphs_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<bool>("isPlain");
  QTest::newRow("Latin") << u"Caja de Ahorros «Ñandú», S.A. fi AV Œ"_s << true;
  QTest::newRow("signs") << u"-1.234,50 € – “a”…"_s << true;
  QTest::newRow("nothing") << QString() << true;
  QTest::newRow("another script") << u"Banco Ελληνικά"_s << false;
  QTest::newRow("a mark that joins") << u"N\u0303"_s << false;
  QTest::newRow("soft hyphen") << u"banco\u00ADnes"_s << false;
  QTest::newRow("control character") << u"a\u0081b"_s << false;
}

/// The same picture as a text that the toolkit shapes.
void tst_list_pages::Glyphs() {
  QFETCH(QString, text);
  QFETCH(bool, isPlain);
  QFont font(u"DejaVu Sans"_s);
  font.setPixelSize(18);
  font.setKerning(false);
  font.setLetterSpacing(QFont::AbsoluteSpacing, 1.0 / 64);
  font.setHintingPreference(QFont::PreferNoHinting);
  const QPointF baseline(10.5, 30);
  const host::GlyphTable table(font);
  host::PlacedGlyphs glyphs;
  QCOMPARE(table.Add(text, baseline, glyphs), isPlain);
  QCOMPARE(glyphs.indexes.size(), isPlain ? text.size() : 0);
  const auto picture = [&](const std::function<void(QPainter & painter)>& paint) {
    QImage image(700, 60, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(1.3, 1.3);
    painter.setFont(font);
    paint(painter);
    return image;
  };
  const QImage shaped = picture([&](QPainter& painter) { painter.drawText(baseline, text); });
  const QImage placed = picture([&](QPainter& painter) { host::GlyphTable::Paint(painter, glyphs); });
  QCOMPARE(placed == shaped, isPlain);
}

KEL_TEST(tst_list_pages);
#include "tst_list_pages.moc"
