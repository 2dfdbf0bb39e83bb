#include "documents/letter/RowHeights.h"

#include "documents/letter/HalfPoints.h"
#include "documents/letter/OwnCells.h"
#include "documents/letter/RowWords.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>

namespace documents {

namespace {

// Of a cell that was lengthened.
constexpr int roomProperty = QTextFormat::UserProperty + 0x7C;

// Nothing that shows is smaller.
constexpr double tolerance = 0.1;

/// In half-points, 0 for none.
double LeastHeight(const QTextTable& table, int row) {
  return std::abs(double(RowWord(table, row, "trrh").value_or(0))) / 10;
}

using Levels = std::map<int, QList<QTextTable*>>;

/// Tables with such rows, by how deep they are.
void Collect(const QTextFrame& frame, int level, Levels& levels) {
  for (QTextFrame* child : frame.childFrames()) {
    if (auto* table = qobject_cast<QTextTable*>(child)) {
      for (int row = 0; row < table->rows(); ++row) {
        if (LeastHeight(*table, row) > 0) {
          levels[level].append(table);
          break;
        }
      }
    }
    Collect(*child, level + 1, levels);
  }
}

void GiveSpace(QTextTableCell cell) {
  const double before = cell.firstCursorPosition().blockFormat().topMargin();
  const double after = cell.lastCursorPosition().blockFormat().bottomMargin();
  if (before > 0 || after > 0) {
    QTextTableCellFormat format = cell.format().toTableCellFormat();
    format.setTopPadding(format.topPadding() + before);
    format.setBottomPadding(format.bottomPadding() + after);
    cell.setFormat(format);
  }
}

void GiveSpaceIn(const QTextFrame& frame) {
  for (const QTextFrame* child : frame.childFrames()) {
    const auto* table = qobject_cast<const QTextTable*>(child);
    for (int row = 0; table != nullptr && row < table->rows(); ++row) {
      ForEachOwnCell(*table, row, GiveSpace);
    }
    GiveSpaceIn(*child);
  }
}

/// Room, in half-points, to be left in a cell.
struct Room {
  QTextTableCell cell;
  double height = 0;
};

/// The rows of a table as they are laid out without pages.
class Rows {
 public:
  explicit Rows(const QTextTable& table) : m_table(table), m_layout(*table.document()->documentLayout()) {}

  /// A cell of that row alone, the highest one, and what the row lacks; none where it lacks nothing.
  std::optional<Room> Lacking(int row) const {
    const double least = LeastHeight(m_table, row);
    std::optional<Room> highest;
    ForEachOwnCell(m_table, row, [&](const QTextTableCell& cell) {
      if (least > 0 && cell.rowSpan() == 1 && (!highest || Height(cell) > highest->height)) {
        highest = Room{cell, Height(cell)};
      }
    });
    if (highest) {
      // A merged cell that ends here may be what the row is as high as.
      highest->height = least - (EndsMergedCell(row) ? highest->height : Bottom(row) - Top(row));
    }
    return highest && highest->height > tolerance ? highest : std::nullopt;
  }

 private:
  QRectF Place(int position) const { return m_layout.blockBoundingRect(m_table.document()->findBlock(position)); }

  double Top(const QTextTableCell& cell) const {
    return Place(cell.firstPosition()).top() -
           cell.format().toTableCellFormat().topPadding() * halfPointsPerFormatLength;
  }

  double Height(const QTextTableCell& cell) const {
    const double padding = cell.format().toTableCellFormat().bottomPadding() * halfPointsPerFormatLength;
    return Place(cell.lastPosition()).bottom() + padding - Top(cell);
  }

  double Top(int row) const {
    double top = std::numeric_limits<double>::max();
    ForEachOwnCell(m_table, row, [&](const QTextTableCell& cell) { top = std::min(top, Top(cell)); });
    return top;
  }

  double Bottom(int row) const {
    // Where Qt says that a table begins is off by the padding of its first cell.
    return row + 1 < m_table.rows() ? Top(row + 1)
                                    : Top(0) + m_layout.frameBoundingRect(const_cast<QTextTable*>(&m_table)).height();
  }

  bool EndsMergedCell(int row) const {
    for (int column = 0; column < m_table.columns(); ++column) {
      const QTextTableCell cell = m_table.cellAt(row, column);
      if (cell.row() < row && cell.row() + cell.rowSpan() == row + 1) {
        return true;
      }
    }
    return false;
  }

  const QTextTable& m_table;
  const QAbstractTextDocumentLayout& m_layout;
};

/// Leaves room where the text's place in its cell wants it.
void Leave(Room room) {
  QTextTableCellFormat format = room.cell.format().toTableCellFormat();
  const QTextCharFormat::VerticalAlignment place = format.verticalAlignment();
  const double above = place == QTextCharFormat::AlignBottom ? 1 : (place == QTextCharFormat::AlignMiddle ? 0.5 : 0);
  format.setTopPadding(format.topPadding() + above * room.height / halfPointsPerFormatLength);
  format.setBottomPadding(format.bottomPadding() + (1 - above) * room.height / halfPointsPerFormatLength);
  format.setProperty(roomProperty, true);
  room.cell.setFormat(format);
}

}  // namespace

void GiveCellsTheirSpace(QTextDocument& copy) {
  QTextCursor all(&copy);
  all.beginEditBlock();
  GiveSpaceIn(*copy.rootFrame());
  all.endEditBlock();
}

void GiveRowsTheirHeights(QTextDocument& copy, double width) {
  Levels levels;
  Collect(*copy.rootFrame(), 0, levels);
  if (!levels.empty()) {
    copy.setTextWidth(width);
  }
  // What is in a cell makes its row higher.
  for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
    QList<Room> rooms;
    for (const QTextTable* table : level->second) {
      const Rows rows(*table);
      for (int row = 0; row < table->rows(); ++row) {
        if (const std::optional<Room> room = rows.Lacking(row)) {
          rooms.append(*room);
        }
      }
    }
    QTextCursor all(&copy);
    all.beginEditBlock();
    std::for_each(rooms.begin(), rooms.end(), Leave);
    all.endEditBlock();
    // Qt does not lay a table out again because of its cells' padding alone.
    copy.markContentsDirty(0, copy.characterCount());
  }
}

bool HasRoom(const QTextTable& table, int row) {
  bool has = false;
  ForEachOwnCell(table, row,
                 [&has](const QTextTableCell& cell) { has = has || cell.format().hasProperty(roomProperty); });
  return has;
}

}  // namespace documents
