#include "documents/rtf/Documents.h"
#include "documents/rtf/GradualWriter.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/TableGrid.h"
#include "support/TestProgram.h"

#include <QAbstractTextDocumentLayout>
#include <QTest>
#include <QTextTable>

using namespace Qt::Literals::StringLiterals;
using support::Document;
using support::Letter;
using support::Text;

/// Tables of letters: what is shown as one, and what is written of it after edits.
class tst_rtf_tables : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void grids_data();
  void grids();
  void longTablesAreParted();
  void formatsAreTheCells();
  void emptyLinesAroundTables();
  void typedInEveryCell_data();
  void typedInEveryCell();
  void madeDefinitions_data();
  void madeDefinitions();
  void nestedNoDeeper();
};

namespace {

QByteArray Row(const QByteArray& definition, const QByteArray& cells) {
  return "\\trowd" + definition + "\\pard\\intbl " + cells + "\\row\r\n";
}

QList<const QTextTable*> TablesOf(const QTextFrame& frame) {
  QList<const QTextTable*> tables;
  for (const QTextFrame* child : frame.childFrames()) {
    tables.append(qobject_cast<const QTextTable*>(child));
    tables.append(TablesOf(*child));
  }
  return tables;
}

/// "2000,4000: a b(2x1) / c d": columns' edges, then the rows' cells with their columns and rows where more than one.
QString Shown(const QTextTable& table) {
  QStringList edges;
  double edge = table.format().leftMargin();
  for (const QTextLength& width : table.format().columnWidthConstraints()) {
    edge += width.rawValue();
    edges.append(QString::number(qRound(edge * 15)));
  }
  QStringList rows;
  for (int row = 0; row < table.rows(); ++row) {
    QStringList cells;
    for (int column = 0; column < table.columns(); ++column) {
      const QTextTableCell cell = table.cellAt(row, column);
      if (cell.row() != row || cell.column() != column) {
        continue;
      }
      QString text = cell.firstCursorPosition().block().text();
      text = text.isEmpty() ? u"-"_s : text;
      const bool spans = cell.columnSpan() > 1 || cell.rowSpan() > 1;
      cells.append(spans ? text + u"(%1x%2)"_s.arg(cell.columnSpan()).arg(cell.rowSpan()) : text);
    }
    rows.append(cells.join(u' '));
  }
  return edges.join(u',') + u": "_s + rows.join(u" / "_s);
}

QString Shown(const QTextDocument& document) {
  QStringList tables;
  for (const QTextTable* table : TablesOf(*document.rootFrame())) {
    tables.append(Shown(*table));
  }
  return tables.join(u" | "_s);
}

}  // namespace

void tst_rtf_tables::grids_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QString>("shown");  // nothing where the rows stay paragraphs
  const auto row = [](const char* name, const QByteArray& body, const QString& shown) {
    QTest::newRow(name) << body << shown;
  };
  const QByteArray two = Row("\\cellx1000\\cellx2000", "a\\cell b\\cell");
  row("other edges within", two + Row("\\cellx500\\cellx2000", "c\\cell d\\cell") + Row("\\cellx2000", "e\\cell"),
      u"500,1000,2000: a(2x1) b / c d(2x1) / e(3x1)"_s);
  row("edges that are nearly the same", two + Row("\\trleft9\\cellx1012\\cellx1990", "c\\cell d\\cell"),
      u"1000,2000: a b / c d"_s);
  row("other edges at the sides", two + Row("\\cellx1000\\cellx2500", "c\\cell d\\cell"),
      u"1000,2000: a b | 1000,2500: c d"_s);
  row("other alignment", two + Row("\\trqc\\cellx1000\\cellx2000", "c\\cell d\\cell"),
      u"1000,2000: a b | 1000,2000: c d"_s);
  row("left of the text", Row("\\trleft-108\\cellx892", "a\\cell"), u"892: a"_s);
  row("put together in a row", Row("\\clmgf\\cellx1000\\clmrg\\cellx2000\\cellx3000", "a\\cell\\cell c\\cell"),
      u"1000,2000,3000: a(2x1) c"_s);
  row("put together, but with text", Row("\\clmgf\\cellx1000\\clmrg\\cellx2000", "a\\cell b\\cell"),
      u"1000,2000: a b"_s);
  row("put together down",
      Row("\\clvmgf\\cellx1000\\cellx2000", "a\\cell b\\cell") +
          Row("\\clvmrg\\cellx1000\\cellx2000", "\\cell d\\cell") +
          Row("\\clvmrg\\cellx1000\\cellx2000", "\\cell f\\cell"),
      u"1000,2000: a(1x3) b / d / f"_s);
  row("put together down, but narrower",
      Row("\\clvmgf\\cellx1000\\cellx2000", "a\\cell b\\cell") + Row("\\clvmrg\\cellx500\\cellx2000", "\\cell d\\cell"),
      u"500,1000,2000: a(2x1) b / - d(2x1)"_s);
  row("both ways",
      Row("\\clvmgf\\clmgf\\cellx1000\\clmrg\\cellx2000\\cellx3000", "a\\cell\\cell c\\cell") +
          Row("\\clvmrg\\clmgf\\cellx1000\\clmrg\\cellx2000\\cellx3000", "\\cell\\cell d\\cell"),
      u"1000,2000,3000: a(2x2) c / d"_s);
  row("a row without a cell of its own", Row("\\clvmgf\\cellx1000", "a\\cell") + Row("\\clvmrg\\cellx1000", "\\cell"),
      u"1000: a / -"_s);
  row("nested",
      "\\trowd\\cellx5000\\pard\\intbl a\\par\\itap2 b\\nestcell{\\*\\nesttableprops\\trowd\\cellx900\\nestrow}\\pard"
      "\\intbl c\\cell\\row",
      u"5000: a | 900: b"_s);
  const QByteArray nested =
      "\\trowd\\cellx5000\\pard\\intbl\\itap2 b\\nestcell{\\*\\nesttableprops\\trowd\\cellx900\\nestrow}\\pard\\intbl "
      "c\\cell\\row";
  row("nested at the start, in another section", "\\sect\\sectd " + nested, u"5000: - | 900: b"_s);
  row("nested at the start, on another page", "\\page " + nested, u"5000: - | 900: b"_s);
  row("defined behind its cells", "\\pard\\intbl a\\cell\\trowd\\cellx900\\row", u"900: a"_s);
  row("not defined", "\\pard\\intbl a\\cell\\row", QString());
  row("fewer cells than defined", two + Row("\\cellx1000\\cellx2000", "a\\cell"), QString());
  row("more cells than defined", two + Row("\\cellx1000", "a\\cell b\\cell"), QString());
  row("edges that go back", Row("\\cellx1000\\cellx900", "a\\cell b\\cell"), QString());
  row("a nested row that no table holds",
      "\\trowd\\cellx5000\\pard\\intbl\\itap2 b\\nestcell{\\*\\nesttableprops\\trowd\\nestrow}\\pard\\intbl "
      "c\\cell\\row",
      QString());
  row("a section within", Row("\\cellx1000\\cellx2000", "a\\cell\\sect b\\cell"), QString());
  row("a section between rows", two + "\\sect\\sectd " + two, u"1000,2000: a b | 1000,2000: a b"_s);
}

void tst_rtf_tables::grids() {
  QFETCH(QByteArray, body);
  QFETCH(QString, shown);
  const QByteArray content = Letter("x\\par " + body + "\\pard y\\par");
  const auto document = Document(content);
  QCOMPARE(Shown(*document), shown);
  QCOMPARE(rtf::Write(*document), content);
  QCOMPARE(support::Loss(*document), QString());
}

void tst_rtf_tables::longTablesAreParted() {
  // Header rows stay with the first row behind them, merged cells with those above.
  QByteArray body = Row("\\trhdr\\cellx1000\\cellx2000", "t\\cell u\\cell").repeated(2);
  const int rows = 3 * rtf::Limits().tableCells / 2;
  for (int i = 2; i < rows; ++i) {
    const bool goesOn = i == rtf::Limits().tableCells / 2;
    body += Row(goesOn ? "\\clvmrg\\cellx1000\\cellx2000" : "\\clvmgf\\cellx1000\\cellx2000",
                goesOn ? "\\cell b\\cell" : "a\\cell b\\cell");
  }
  const auto document = Document(Letter(body));
  const QList<const QTextTable*> tables = TablesOf(*document->rootFrame());
  QCOMPARE(tables.size(), 3);
  QCOMPARE(tables[0]->rows(), rtf::Limits().tableCells / 2 + 1);
  QCOMPARE(tables[0]->format().headerRowCount(), 2);
  QCOMPARE(tables[0]->cellAt(rtf::Limits().tableCells / 2, 0).rowSpan(), 2);
  // The seam shows nothing.
  document->setPageSize({800, 100'000});
  const QAbstractTextDocumentLayout* layout = document->documentLayout();
  QCOMPARE(layout->frameBoundingRect(const_cast<QTextTable*>(tables[1])).top(),
           layout->frameBoundingRect(const_cast<QTextTable*>(tables[0])).bottom());
}

void tst_rtf_tables::formatsAreTheCells() {
  const auto document = Document(Letter(Row(
      "\\trgaph100\\trpaddt30\\trpaddft3\\trbrdrl\\brdrs\\brdrw30\\trbrdrv\\brdrdot\\clbrdrt\\brdrdb\\brdrw45\\brdrcf1"
      "\\clcbpat2\\clvertalb\\cellx1000\\clshdng5000\\clcbpat1\\clpadl60\\clpadfl3\\clbrdrl\\brdrnone\\cellx2000",
      "a\\cell b\\cell")));
  const QTextTable* table = TablesOf(*document->rootFrame()).first();
  const auto format = [table](int column) { return table->cellAt(0, column).format().toTableCellFormat(); };
  QCOMPARE(
      QList<double>({format(0).leftBorder(), format(0).rightBorder(), format(0).topBorder(), format(1).leftBorder()}),
      QList<double>({2, 1, 3, 0}));
  QCOMPARE(format(0).rightBorderStyle(), QTextFrameFormat::BorderStyle_Dotted);
  QCOMPARE(format(0).topBorderBrush().color(), QColor(Qt::red));
  QCOMPARE(format(0).background().color(), QColor(Qt::blue));
  QCOMPARE(format(1).background().color(), QColor(127, 0, 0));
  QCOMPARE(format(0).verticalAlignment(), QTextCharFormat::AlignBottom);
  // What is named after the left is the upper one's, as word processors write it.
  QCOMPARE(QList<double>({format(0).topPadding(), format(1).topPadding(), format(1).leftPadding()}),
           QList<double>({2, 4, 100 / 15.0}));
}

void tst_rtf_tables::emptyLinesAroundTables() {
  const QByteArray two = Row("\\cellx1000", "a\\cell");
  const QByteArray content = Letter("\\par " + two + "\\pard\\par x\\par " + two);
  const auto document = Document(content);
  QCOMPARE(Text(*document), u"|a||x|a"_s);
  document->setPageSize({800, 10'000});
  QList<int> lines;
  double before = 0;
  for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
    if (!rtf::IsJoint(block)) {
      const double top = document->documentLayout()->blockBoundingRect(block).top();
      lines.append(qRound((top - before) / document->documentLayout()->blockBoundingRect(block).height()));
      before = top;
    }
  }
  QCOMPARE(lines, QList<int>({0, 1, 1, 1, 1}));

  // A joint that gets text is a paragraph, one that loses it none.
  QTextCursor joint(document->lastBlock());
  QVERIFY(rtf::IsJoint(joint.block()));
  joint.insertText(u"fin"_s);
  QCOMPARE(Text(*Document(rtf::Write(*document))), u"|a||x|a|fin"_s);
  document->undo();
  QCOMPARE(rtf::Write(*document), content);
}

void tst_rtf_tables::typedInEveryCell_data() {
  QTest::addColumn<QByteArray>("body");
  const auto row = [](const char* name, const QByteArray& body) { QTest::newRow(name) << body; };
  row("shaded", Row("\\clcbpat1\\clvertalc\\cellx1000\\clcbpat2\\cellx2000", "\\cell{\\super\\highlight1 }\\cell"));
  row("merged", Row("\\clmgf\\clvmgf\\cellx1000\\clmrg\\clvmgf\\cellx2000\\cellx3000",
                    "\\cell\\pard\\intbl\\qr\\b\\cell\\b0\\cell") +
                    Row("\\clmgf\\clvmrg\\cellx1000\\clmrg\\clvmrg\\cellx2000\\cellx3000",
                        "\\li200\\cell\\pard\\intbl\\i\\cell\\i0\\cell"));
  row("words behind the last cell", Row("\\cellx1000\\lastrow", "\\cell"));
  row("nested",
      "\\trowd\\cellx5000\\pard\\intbl\\itap2\\nestcell\\nestcell{\\*\\nesttableprops\\trowd\\cellx900"
      "\\cellx1900\\nestrow}\\pard\\intbl\\cell\\row\r\n");
  row("rows that stay paragraphs", "\\trowd\\cellx1000\\pard\\intbl\\cell\\cell\\row\r\n");
}

/// A letter in the middle of nowhere changes nothing but its place; and what is kept while somebody writes says the
/// same.
void tst_rtf_tables::typedInEveryCell() {
  QFETCH(QByteArray, body);
  const auto document = Document(Letter("x\\par " + body + "\\pard y\\par"));
  rtf::GradualWriter gradual(*document);
  QVERIFY(gradual.Continue(std::chrono::minutes(1)));
  const QByteArray before = rtf::Writer(*document).Write();
  const qsizetype cells = before.count("cell\r") + before.count("cell\\");
  for (int i = 1; i < document->blockCount() - 1; ++i) {
    if (rtf::IsJoint(document->findBlockByNumber(i))) {
      continue;
    }
    QTextCursor(document->findBlockByNumber(i)).insertText(u"Z"_s);
    QByteArray written = rtf::Writer(*document).Write();
    QCOMPARE(written.count('Z'), 1);
    QCOMPARE(support::PatchLoss(*document), QString());
    QVERIFY(gradual.Continue(std::chrono::minutes(1)));
    QCOMPARE(Text(*Document(gradual.Result())), Text(*document));
    written.replace(" Z", "").replace("Z", "");
    QCOMPARE(written, before);
    QCOMPARE(written.count("cell\r") + written.count("cell\\"), cells);
    document->undo();
  }
}

void tst_rtf_tables::madeDefinitions_data() {
  QTest::addColumn<QByteArray>("body");
  QTest::addColumn<QList<int>>("selection");  // first row and column, last ones
  QTest::addColumn<QString>("shown");
  const QByteArray rows =
      Row("\\trgaph70\\trleft100\\cellx1000\\clvmgf\\cellx3000\\cellx3500", "a\\cell b\\cell c\\cell") +
      Row("\\trgaph70\\trleft100\\cellx1000\\clvmrg\\cellx3000\\cellx3500", "d\\cell\\cell f\\cell");
  QTest::newRow("the last cells of two rows") << rows << QList<int>({0, 2, 1, 2}) << u"600: c / f"_s;
  QTest::newRow("cells of two rows") << rows << QList<int>({0, 0, 1, 1}) << u"1000,3000: a b(1x2) / d"_s;
  QTest::newRow("all of it") << rows << QList<int>({0, 0, 1, 2}) << u"1000,3000,3500: a b(1x2) c / d f"_s;
  // Neither what is put together, nor what says so and is not, goes on in the piece beyond its text.
  QTest::newRow("put together both ways")
      << Row("\\clvmgf\\clmgf\\cellx1000\\clmrg\\cellx3000\\cellx3500\\cellx4000", "a\\cell\\cell b\\cell c\\cell") +
             Row("\\clvmrg\\clmgf\\cellx1000\\clmrg\\cellx3000\\cellx3500\\cellx4000", "\\cell\\cell d\\cell e\\cell")
      << QList<int>({0, 0, 1, 2}) << u"3000,3500: a(1x2) b / d"_s;
  QTest::newRow("not put together, as there is text")
      << Row("\\clvmgf\\cellx1000\\clmgf\\cellx2000\\cellx2500", "a\\cell b\\cell c\\cell") +
             Row("\\clvmrg\\cellx1000\\clmrg\\cellx2000\\cellx2500", "d\\cell e\\cell f\\cell")
      << QList<int>({0, 0, 1, 1}) << u"1000,2000: a b / d e"_s;
}

/// A piece of a table is a table with its cells' own widths.
void tst_rtf_tables::madeDefinitions() {
  QFETCH(QByteArray, body);
  QFETCH(QList<int>, selection);
  QFETCH(QString, shown);
  const auto document = Document(Letter(body + "\\pard y\\par"));
  const QTextTable* table = TablesOf(*document->rootFrame()).first();
  QTextCursor cells = table->cellAt(selection[0], selection[1]).firstCursorPosition();
  cells.setPosition(table->cellAt(selection[2], selection[3]).lastPosition(), QTextCursor::KeepAnchor);
  const QByteArray piece = rtf::WriteSelection(cells);
  QCOMPARE(piece.count("\\trowd"), piece.count("\\row"));
  QCOMPARE(piece.count("\\clvmrg") + piece.count("\\clvmgf"), 2 * shown.count(u"x2)"));
  QCOMPARE(piece.count("\\clm"), 0);
  const auto pasted = Document(piece);
  QCOMPARE(Shown(*pasted), shown);
  QCOMPARE(support::Loss(*pasted), QString());
  // Into a cell it goes as a table in it, elsewhere as one of its own.
  QTextCursor cell = table->cellAt(0, 0).firstCursorPosition();
  rtf::Insert(piece, cell);
  QCOMPARE(Shown(*document).section(u" | "_s, -1), shown);
  QCOMPARE(TablesOf(*Document(rtf::Write(*document))->rootFrame()).size(), 2);
}

void tst_rtf_tables::nestedNoDeeper() {
  // Each pasted into the one before.
  QTextDocument document;
  QTextCursor cursor(&document);
  const QByteArray row = Letter(Row("\\cellx1000\\cellx2000", "a\\cell b\\cell"));
  for (int i = 0; i < 10; ++i) {
    rtf::Insert(row, cursor);
    const QList<const QTextTable*> tables = TablesOf(*document.rootFrame());
    cursor = tables.last()->cellAt(0, 0).firstCursorPosition();
  }
  const auto again = Document(rtf::Write(document));
  QCOMPARE(TablesOf(*document.rootFrame()).size(), 8);
  QCOMPARE(again->toPlainText().count(u'b'), 10);
}

KEL_TEST(tst_rtf_tables);
#include "tst_rtf_tables.moc"
