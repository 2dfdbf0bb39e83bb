#include "documents/rtf/WrittenRow.h"

#include "documents/rtf/CellFormat.h"
#include "documents/rtf/ParagraphFormat.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/TableShape.h"

#include <QBrush>
#include <QTextTable>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace rtf {

namespace {

// Of a table that has no widths: from margin to margin of a usual page.
constexpr int usualWidth = 8504;
constexpr int usualGap = 108;

EmptyCells EmptyCellsOf(const QTextCharFormat& format) {
  return format.property(EmptyCellsProperty).value<EmptyCells>();
}

/// The cells of one row: those that begin in it, and those that go on from above.
struct Row {
  struct Cell {
    QTextTableCell cell;
    bool goesOn = false;
  };
  QList<Cell> cells;

  Row(const QTextTable& table, int row) {
    for (int column = 0; column < table.columns();) {
      const QTextTableCell cell = table.cellAt(row, column);
      cells.append({cell, cell.row() < row});
      column = std::max(column + 1, cell.column() + cell.columnSpan());
    }
  }
};

/// The row as it was read, if all of its definition's cells are there, each once and in their order.
std::optional<WrittenRow> RowAsRead(const Row& row, int number) {
  WrittenRow written;
  EmptyCells empty;
  int last = -1;
  bool isFirst = true;
  for (const auto& [cell, goesOn] : row.cells) {
    const QTextCharFormat format = cell.format();
    if (!goesOn) {
      const QString definition = format.stringProperty(RowDefinitionProperty);
      const int index = format.intProperty(CellNumberProperty);
      if (definition.isEmpty() || index <= last || (!isFirst && definition != written.definition)) {
        return std::nullopt;
      }
      isFirst = false;
      last = index;
      written.definition = definition;
      written.numbers.append(index);
    }
    for (const EmptyCell& part : EmptyCellsOf(format)) {
      if (part.row == number - cell.row()) {
        empty.append(part);
      }
    }
  }
  if (isFirst) {
    return std::nullopt;
  }
  written.cells = CellsOf(written.definition);
  QList<int> all = written.numbers;
  for (const EmptyCell& part : empty) {
    all.append(part.cell);
  }
  std::sort(all.begin(), all.end());
  bool isWhole = all.size() == written.cells;
  for (int i = 0; isWhole && i < written.cells; ++i) {
    isWhole = all[i] == i;
  }
  if (!isWhole) {
    return std::nullopt;
  }
  if (!empty.isEmpty()) {
    std::sort(empty.begin(), empty.end(), [](const auto& a, const auto& b) { return a.cell < b.cell; });
    written.empty = std::make_shared<const EmptyCells>(std::move(empty));
  }
  return written;
}

/// Makes a row's definition, cell by cell.
class DefinitionMaker {
 public:
  DefinitionMaker(const QTextTable& table, const Row& row) : m_table(table) {
    const QTextCharFormat first = row.cells.first().cell.format();
    const QString known = first.stringProperty(RowDefinitionProperty);
    const auto shape = ShapeOf(known);
    m_edge = shape ? shape->left : qRound(table.format().leftMargin() * twipsPerPixel);
    m_text = shape ? PartsOf(known).row : u"\\trowd\\trgaph%1\\trleft%2"_s.arg(usualGap).arg(m_edge);
  }

  void Add(const QTextTableCell& cell, bool goesOn) {
    if (cell.rowSpan() > 1) {
      m_text += goesOn ? u"\\clvmrg"_s : u"\\clvmgf"_s;
    }
    const QString definition = cell.format().stringProperty(RowDefinitionProperty);
    const auto shape = ShapeOf(definition);
    const int number = cell.format().intProperty(CellNumberProperty);
    const bool isKnown = shape && number >= 0 && number < shape->cells.size();
    const int before = m_edge;
    if (isKnown) {
      m_text += WordsOf(PartsOf(definition).cells[number]);
      m_edge += WidthOf(*shape, number, cell);
    } else {
      m_text += LookOf(cell);
      m_edge += WidthOf(cell);
    }
    m_edge = std::clamp(m_edge, before + narrowestCell, std::max(before + narrowestCell, largestTwips));
    m_text += u"\\cellx%1"_s.arg(m_edge);
  }

  const QString& Text() const { return m_text; }

 private:
  /// Without what says which cells are put together.
  static QString WordsOf(const QString& cell) {
    QList<CarriedWord> words = WordsFromText(cell);
    words.removeIf([](const CarriedWord& word) {
      const std::string_view name = KeywordOf(word.word).name;
      return name == "clmgf" || name == "clmrg" || name == "clvmgf" || name == "clvmrg";
    });
    return ToText(words);
  }

  /// As read, with the cells that are part of it in its row.
  static int WidthOf(const RowShape& shape, int number, const QTextTableCell& cell) {
    const EmptyCells parts = EmptyCellsOf(cell.format());
    const qsizetype beside = std::count_if(parts.begin(), parts.end(), [](const auto& part) { return part.row == 0; });
    const qsizetype last = std::min(number + beside, shape.cells.size() - 1);
    return shape.cells[last].right - (number == 0 ? shape.left : shape.cells[number - 1].right);
  }

  /// By the columns.
  int WidthOf(const QTextTableCell& cell) const {
    const QList<QTextLength> widths = m_table.format().columnWidthConstraints();
    double width = 0;
    for (int column = cell.column(); column < cell.column() + cell.columnSpan(); ++column) {
      const QTextLength length = widths.value(column);
      const bool isFixed = length.type() == QTextLength::FixedLength && length.rawValue() > 0;
      const bool isPart = length.type() == QTextLength::PercentageLength && length.rawValue() > 0;
      width += isFixed ? length.rawValue() * twipsPerPixel
                       : (isPart ? length.rawValue() / 100 * usualWidth : double(usualWidth) / m_table.columns());
    }
    return static_cast<int>(std::clamp(width, 0.0, double(largestTwips)));
  }

  QString LookOf(const QTextTableCell& cell) const {
    const QTextTableCellFormat format = cell.format().toTableCellFormat();
    QString words;
    const auto line = [&](QChar side, double width) {
      if (width > 0 || m_table.format().border() > 0) {
        words += u"\\clbrdr%1\\brdrs\\brdrw10"_s.arg(side);
      }
    };
    line(u't', format.topBorder());
    line(u'l', format.leftBorder());
    line(u'b', format.bottomBorder());
    line(u'r', format.rightBorder());
    if (format.background().style() == Qt::SolidPattern) {
      words += u"\\clcbpat%1"_s.arg(format.background().color().rgb() & 0xFFFFFF);
    }
    return words;
  }

  const QTextTable& m_table;
  QString m_text;
  int m_edge = 0;
};

}  // namespace

WrittenRow WrittenRowOf(const QTextTable& table, int number) {
  const Row row(table, number);
  if (auto asRead = RowAsRead(row, number)) {
    return *asRead;
  }
  WrittenRow made;
  EmptyCells empty;
  DefinitionMaker maker(table, row);
  for (const auto& [cell, goesOn] : row.cells) {
    maker.Add(cell, goesOn);
    if (goesOn) {
      empty.append({.row = 0, .cell = made.cells, .format = {}, .mark = WithoutCell(cell.format())});
    } else {
      made.numbers.append(made.cells);
    }
    ++made.cells;
  }
  made.definition = maker.Text();
  if (!empty.isEmpty()) {
    made.empty = std::make_shared<const EmptyCells>(std::move(empty));
  }
  return made;
}

}  // namespace rtf
