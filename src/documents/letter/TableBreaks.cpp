#include "documents/letter/TableBreaks.h"

#include "documents/letter/HalfPoints.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <optional>

namespace documents {

namespace {

// Lengths of formats count 96 to an inch.
constexpr double scale = halfPointsPerInch / 96.0;

// Nothing that shows is smaller.
constexpr double tolerance = 1;

/// The rows of one table on their pages.
class BrokenTable {
 public:
  explicit BrokenTable(const QTextTable& table) : m_table(table), m_layout(*table.document()->documentLayout()) {}

  bool Crosses(double y) const {
    return Top(0).value_or(y) < y - tolerance && BottomOf(m_table.rows() - 1) > y + tolerance;
  }

  /// The line under the last row in front of a page's end at `y`.
  void PaintFoot(QPainter& painter, double y) const {
    int row = 0;
    for (int next = 1; next < m_table.rows() && Top(next).value_or(0) < y - tolerance; ++next) {
      row = next;
    }
    const double bottom = BottomOf(row);
    ForEachCell(row, [&](const QTextTableCell& cell, double left, double right) {
      const QTextTableCellFormat format = cell.format().toTableCellFormat();
      const double width = format.bottomBorder() * scale;
      if (format.bottomBorderStyle() != QTextFrameFormat::BorderStyle_None && width > 0) {
        // A cell that goes on below its row ends with the page, as a row does that has no room.
        const bool goesOn = cell.row() + cell.rowSpan() > row + 1;
        const double line = goesOn ? y - width : std::min(bottom, y - width);
        painter.fillRect(QRectF(left, line, right - left, width), format.bottomBorderBrush());
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
      const double width = format.topBorder() * scale;
      if (format.topBorderStyle() != QTextFrameFormat::BorderStyle_None && width > 0) {
        painter.fillRect(QRectF(left, y, right - left, width), format.topBorderBrush());
      }
    });
  }

 private:
  QRectF Place(int position) const { return m_layout.blockBoundingRect(m_table.document()->findBlock(position)); }

  /// Of what stands in the row; none where all of its cells are parts of others.
  std::optional<double> Top(int row) const {
    std::optional<double> top;
    for (int column = 0; column < m_table.columns(); ++column) {
      const QTextTableCell cell = m_table.cellAt(row, column);
      if (cell.row() == row && cell.column() == column) {
        const double padding = cell.format().toTableCellFormat().topPadding() * scale;
        const double own = Place(cell.firstPosition()).top() - padding;
        top = std::min(top.value_or(own), own);
      }
    }
    return top;
  }

  double BottomOf(int row) const {
    double bottom = 0;
    for (int column = 0; column < m_table.columns(); ++column) {
      const QTextTableCell cell = m_table.cellAt(row, column);
      if (cell.row() + cell.rowSpan() - 1 == row) {
        const double padding = cell.format().toTableCellFormat().bottomPadding() * scale;
        bottom = std::max(bottom, Place(cell.lastPosition()).bottom() + padding);
      }
    }
    return bottom;
  }

  template <typename Paint>
  void ForEachCell(int row, const Paint& paint) const {
    const QList<QTextLength> widths = m_table.format().columnWidthConstraints();
    for (int column = 0; column < m_table.columns();) {
      const QTextTableCell cell = m_table.cellAt(row, column);
      const double padding = cell.format().toTableCellFormat().leftPadding() * scale;
      const double left = Place(cell.firstPosition()).left() - padding;
      double right = left;
      const int end = cell.column() + cell.columnSpan();
      for (; column < end; ++column) {
        right += widths.value(column).rawValue() * scale;
      }
      paint(cell, left, right);
    }
  }

  const QTextTable& m_table;
  const QAbstractTextDocumentLayout& m_layout;
};

}  // namespace

void PaintTableBreaks(QPainter& painter, const QTextDocument& letter, int page) {
  const double height = letter.pageSize().height();
  const double head = page * height;
  for (const QTextFrame* frame : letter.rootFrame()->childFrames()) {
    const auto* table = qobject_cast<const QTextTable*>(frame);
    const QRectF place = letter.documentLayout()->frameBoundingRect(const_cast<QTextFrame*>(frame));
    if (table == nullptr || place.bottom() < head || place.top() > head + height) {
      continue;
    }
    const BrokenTable broken(*table);
    if (broken.Crosses(head)) {
      broken.PaintHead(painter, head);
    }
    if (broken.Crosses(head + height)) {
      broken.PaintFoot(painter, head + height);
    }
  }
}

}  // namespace documents
