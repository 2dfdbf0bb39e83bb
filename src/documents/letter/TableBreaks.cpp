#include "documents/letter/TableBreaks.h"

#include "documents/letter/HalfPoints.h"
#include "documents/letter/OwnCells.h"
#include "documents/letter/RowHeights.h"
#include "documents/letter/RowWords.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPainterPath>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextTable>

#include <algorithm>
#include <cmath>
#include <optional>

namespace documents {

namespace {

// Of a cell that was lengthened.
constexpr int ownPadding = QTextFormat::UserProperty + 0x7B;

// Nothing that shows is smaller.
constexpr double tolerance = 1;

/// Word processors part no row because of its empty room.
bool IsKept(const QTextTable& table, int row) {
  return RowWord(table, row, "trkeep").has_value() || HasRoom(table, row);
}

bool HasKeptRows(const QTextTable& table) {
  int row = 0;
  while (row < table.rows() && !IsKept(table, row)) {
    ++row;
  }
  return row < table.rows();
}

/// The rows of one table on their pages.
class BrokenTable {
 public:
  explicit BrokenTable(const QTextTable& table) : m_table(table), m_layout(*table.document()->documentLayout()) {}

  /// What is lacking under the row to the end of its page, if it has to stay on one page and goes on on the next; 0
  /// otherwise.
  double LackingUnder(int row, double pageHeight) const {
    const double top = Top(row).value_or(0);
    const double bottom = BottomOf(row);
    const double end = (std::floor((top + tolerance) / pageHeight) + 1) * pageHeight;
    const bool isParted =
        IsKept(m_table, row) && bottom > end + tolerance && bottom - top < pageHeight - HeaderHeight();
    return isParted ? end - top : 0;
  }

  /// Those with text in the middle or below of which a line crosses the end of a page, or stands where the next one
  /// repeats rows.
  QList<QTextTableCell> CutCells(double pageHeight) const {
    QList<QTextTableCell> cut;
    const double header = HeaderHeight();
    const double top = Top(0).value_or(0);
    for (int row = 0; row < m_table.rows(); ++row) {
      ForEachOwnCell(m_table, row, [&](const QTextTableCell& cell) {
        const auto place = cell.format().verticalAlignment();
        const bool isAligned = place == QTextCharFormat::AlignMiddle || place == QTextCharFormat::AlignBottom;
        if (isAligned && IsCut(cell, top, header, pageHeight)) {
          cut.append(cell);
        }
      });
    }
    return cut;
  }

  /// A cell that ends with the row.
  QTextTableCell EndingCell(int row) const {
    for (int column = 0; column < m_table.columns(); ++column) {
      const QTextTableCell cell = m_table.cellAt(row, column);
      if (cell.row() + cell.rowSpan() - 1 == row) {
        return cell;
      }
    }
    return {};
  }

  bool Crosses(double y) const {
    return Top(0).value_or(y) < y - tolerance && BottomOf(m_table.rows() - 1) > y + tolerance;
  }

  /// The line under the last row in front of a page's end at `y`.
  void PaintFoot(QPainter& painter, double y) const {
    ForEachFoot(y, [&](const QTextTableCell& cell, const QRectF& foot) {
      const QTextTableCellFormat format = cell.format().toTableCellFormat();
      const double width = format.bottomBorder() * halfPointsPerFormatLength;
      if (format.bottomBorderStyle() != QTextFrameFormat::BorderStyle_None && width > 0) {
        painter.fillRect(QRectF(foot.left(), std::min(foot.top(), y - width), foot.width(), width),
                         format.bottomBorderBrush());
      }
    });
  }

  /// What Qt paints of the table between its last row there and the page's end, where the next row had no room.
  void AddStubs(QPainterPath& path, double y) const {
    ForEachFoot(y, [&](const QTextTableCell& cell, const QRectF& foot) {
      const double line = cell.format().toTableCellFormat().bottomBorder() * halfPointsPerFormatLength;
      if (foot.height() > line + tolerance) {
        path.addRect(foot.adjusted(-2 * tolerance, line, 2 * tolerance, 0));
      }
    });
  }

  /// The line over the first row behind a page's beginning at `y`, which may be a repeated one.
  void PaintHead(QPainter& painter, double y) const {
    int row = 0;
    while (m_table.format().headerRowCount() == 0 && row + 1 < m_table.rows() && BottomOf(row) <= y + tolerance) {
      ++row;
    }
    ForEachCell(row, [&](const QTextTableCell& cell, double left, double right) {
      const QTextTableCellFormat format = cell.format().toTableCellFormat();
      const double width = format.topBorder() * halfPointsPerFormatLength;
      if (format.topBorderStyle() != QTextFrameFormat::BorderStyle_None && width > 0) {
        painter.fillRect(QRectF(left, y, right - left, width), format.topBorderBrush());
      }
    });
  }

 private:
  double HeaderHeight() const {
    const int headers = m_table.format().headerRowCount();
    return headers == 0 ? 0 : BottomOf(headers - 1) - Top(0).value_or(0);
  }

  /// Of a table that begins at `top`.
  bool IsCut(const QTextTableCell& cell, double top, double header, double pageHeight) const {
    for (QTextBlock block = cell.firstCursorPosition().block();
         block.isValid() && block.position() <= cell.lastPosition(); block = block.next()) {
      const double place = m_layout.blockBoundingRect(block).top();
      for (int i = 0; i < block.layout()->lineCount(); ++i) {
        const QRectF line = block.layout()->lineAt(i).rect();
        const double page = std::floor((place + line.bottom() - tolerance) / pageHeight) * pageHeight;
        if (page > top + tolerance && place + line.top() < page + header - tolerance) {
          return true;
        }
      }
    }
    return false;
  }

  QRectF Place(int position) const { return m_layout.blockBoundingRect(m_table.document()->findBlock(position)); }

  /// Of what stands in the row; none where all of its cells are parts of others.
  std::optional<double> Top(int row) const {
    std::optional<double> top;
    ForEachOwnCell(m_table, row, [&](const QTextTableCell& cell) {
      const double padding = cell.format().toTableCellFormat().topPadding() * halfPointsPerFormatLength;
      const double own = Place(cell.firstPosition()).top() - padding;
      top = std::min(top.value_or(own), own);
    });
    return top;
  }

  double BottomOf(int row) const {
    double bottom = 0;
    for (int column = 0; column < m_table.columns(); ++column) {
      const QTextTableCell cell = m_table.cellAt(row, column);
      if (cell.row() + cell.rowSpan() - 1 == row) {
        const QTextTableCellFormat format = cell.format().toTableCellFormat();
        const double padding =
            (format.hasProperty(ownPadding) ? format.doubleProperty(ownPadding) : format.bottomPadding()) *
            halfPointsPerFormatLength;
        bottom = std::max(bottom, Place(cell.lastPosition()).bottom() + padding);
      }
    }
    return bottom;
  }

  /// From the end of the last row in front of `y` down to there, cell by cell: empty for a cell that goes on below.
  template <typename Use>
  void ForEachFoot(double y, const Use& use) const {
    int row = 0;
    for (int next = 1; next < m_table.rows() && Top(next).value_or(0) < y - tolerance; ++next) {
      row = next;
    }
    const double bottom = std::min(BottomOf(row), y);
    ForEachCell(row, [&](const QTextTableCell& cell, double left, double right) {
      const double top = cell.row() + cell.rowSpan() > row + 1 ? y : bottom;
      use(cell, QRectF(left, top, right - left, y - top));
    });
  }

  template <typename Paint>
  void ForEachCell(int row, const Paint& paint) const {
    const QList<QTextLength> widths = m_table.format().columnWidthConstraints();
    for (int column = 0; column < m_table.columns();) {
      const QTextTableCell cell = m_table.cellAt(row, column);
      const double padding = cell.format().toTableCellFormat().leftPadding() * halfPointsPerFormatLength;
      const double left = Place(cell.firstPosition()).left() - padding;
      double right = left;
      const int end = cell.column() + cell.columnSpan();
      for (; column < end; ++column) {
        right += widths.value(column).rawValue() * halfPointsPerFormatLength;
      }
      paint(cell, left, right);
    }
  }

  const QTextTable& m_table;
  const QAbstractTextDocumentLayout& m_layout;
};

/// What is above the table ends its page.
void BreakBefore(const QTextTable& table) {
  QTextCursor joint(table.document()->findBlock(table.firstPosition() - 1));
  QTextBlockFormat format;
  format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
  joint.mergeBlockFormat(format);
}

void Lengthen(QTextTableCell cell, double length) {
  if (cell.isValid()) {
    QTextTableCellFormat format = cell.format().toTableCellFormat();
    format.setProperty(ownPadding, format.bottomPadding());
    format.setBottomPadding(format.bottomPadding() + length / halfPointsPerFormatLength);
    cell.setFormat(format);
  }
}

/// Has the next row from `row` on that must not go on on another page begin one; gives the row behind it.
int KeepNextRow(QTextTable& table, int row, double pageHeight) {
  const BrokenTable broken(table);
  while (row < table.rows() && broken.LackingUnder(row, pageHeight) <= 0) {
    ++row;
  }
  if (row < table.rows() && row <= table.format().headerRowCount()) {
    BreakBefore(table);
  } else if (row < table.rows()) {
    // Not quite to the page's end, where the row above would be a row of the next page, too.
    Lengthen(broken.EndingCell(row - 1), broken.LackingUnder(row, pageHeight) - tolerance);
  }
  return row + 1;
}

}  // namespace

void KeepRows(QTextDocument& copy) {
  int left = 50;
  for (QTextFrame* frame : copy.rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr || !HasKeptRows(*table)) {
      continue;
    }
    for (int row = 0; left > 0 && row < table->rows(); --left) {
      row = KeepNextRow(*table, row, copy.pageSize().height());
    }
  }
}

// Qt breaks text at the ends of pages before it aligns it.
void UncutCells(QTextDocument& copy) {
  QList<QTextTableCell> cut;
  for (const QTextFrame* frame : copy.rootFrame()->childFrames()) {
    if (const auto* table = qobject_cast<const QTextTable*>(frame)) {
      cut += BrokenTable(*table).CutCells(copy.pageSize().height());
    }
  }
  QTextCursor change(&copy);
  change.beginEditBlock();
  for (QTextTableCell& cell : cut) {
    QTextTableCellFormat format = cell.format().toTableCellFormat();
    format.setVerticalAlignment(QTextCharFormat::AlignTop);
    cell.setFormat(format);
  }
  change.endEditBlock();
}

namespace {

/// Calls `use` with the tables that are on the page.
template <typename Use>
void ForEachTable(const QTextDocument& letter, int page, const Use& use) {
  const double height = letter.pageSize().height();
  for (const QTextFrame* frame : letter.rootFrame()->childFrames()) {
    const auto* table = qobject_cast<const QTextTable*>(frame);
    const QRectF place = letter.documentLayout()->frameBoundingRect(const_cast<QTextFrame*>(frame));
    if (table != nullptr && place.bottom() >= page * height && place.top() <= (page + 1) * height) {
      use(BrokenTable(*table));
    }
  }
}

}  // namespace

QPainterPath TableStubs(const QTextDocument& letter, int page) {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  const double end = (page + 1) * letter.pageSize().height();
  ForEachTable(letter, page, [&](const BrokenTable& table) {
    if (table.Crosses(end)) {
      table.AddStubs(path, end);
    }
  });
  return path;
}

void PaintTableBreaks(QPainter& painter, const QTextDocument& letter, int page) {
  const double height = letter.pageSize().height();
  ForEachTable(letter, page, [&](const BrokenTable& table) {
    if (table.Crosses(page * height)) {
      table.PaintHead(painter, page * height);
    }
    if (table.Crosses((page + 1) * height)) {
      table.PaintFoot(painter, (page + 1) * height);
    }
  });
}

}  // namespace documents
