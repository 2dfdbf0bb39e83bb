#include "letters/editor/TableKeys.h"

#include "documents/rtf/Joint.h"

#include <QKeyEvent>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextTable>

namespace letters {

namespace {

/// The table that goes on behind or in front of another, with nothing but a joint between; null for none.
QTextTable* Neighbour(const QTextTable& table, bool forward) {
  const QTextDocument& document = *table.document();
  const QTextBlock joint = document.findBlock(forward ? table.lastPosition() + 1 : table.firstPosition() - 1);
  const QTextBlock beyond = forward ? joint.next() : joint.previous();
  if (!beyond.isValid() || !rtf::IsJoint(joint)) {
    return nullptr;
  }
  QTextTable* other = QTextCursor(beyond).currentTable();
  return other != nullptr && other->parentFrame() == table.parentFrame() ? other : nullptr;
}

/// The cell that begins at that place of the grid, counted row by row, or the nearest one in that direction.
QTextTableCell CellFrom(const QTextTable& table, int index, bool forward) {
  const int columns = table.columns();
  for (; index >= 0 && index < table.rows() * columns; index += forward ? 1 : -1) {
    const QTextTableCell cell = table.cellAt(index / columns, index % columns);
    if (cell.row() * columns + cell.column() == index) {
      return cell;
    }
  }
  return {};
}

void GoToCell(QTextEdit& letter, const QTextTable& table, bool forward) {
  const QTextTableCell current = table.cellAt(letter.textCursor());
  const int index = current.row() * table.columns() + current.column();
  QTextTableCell next = CellFrom(table, index + (forward ? 1 : -1), forward);
  if (!next.isValid()) {
    const QTextTable* other = Neighbour(table, forward);
    if (other == nullptr) {
      return;
    }
    next = CellFrom(*other, forward ? 0 : other->rows() * other->columns() - 1, forward);
  }
  letter.setTextCursor(next.firstCursorPosition());
}

bool IsEmpty(const QTextTable& table, int firstRow, int rows) {
  for (int row = firstRow; row < firstRow + rows; ++row) {
    for (int column = 0; column < table.columns(); ++column) {
      const QTextTableCell cell = table.cellAt(row, column);
      if (cell.firstPosition() != cell.lastPosition()) {
        return false;
      }
    }
  }
  return true;
}

/// What a table that is gone leaves of its joints.
void RemoveJoint(QTextCursor& cursor, int position) {
  cursor.setPosition(position);
  if (cursor.block().length() == 1 && cursor.block().next().isValid()) {
    cursor.deleteChar();
  }
}

bool RemoveEmptyRows(QTextEdit& letter) {
  QTextCursor cursor = letter.textCursor();
  QTextTable* table = cursor.currentTable();
  int row = -1;
  int rows = 0;
  int column = 0;
  int columns = 0;
  if (table != nullptr) {
    cursor.selectedTableCells(&row, &rows, &column, &columns);
  }
  if (row < 0 || columns != table->columns() || !IsEmpty(*table, row, rows)) {
    return false;
  }
  const bool isWhole = rows == table->rows();
  const int before = table->firstPosition() - 1;
  cursor.clearSelection();
  cursor.beginEditBlock();
  table->removeRows(row, rows);
  if (isWhole) {
    RemoveJoint(cursor, before);
  }
  cursor.endEditBlock();
  letter.setTextCursor(cursor);
  return true;
}

bool IsBesideJoint(const QTextCursor& cursor, bool forward) {
  const QTextBlock block = cursor.block();
  const bool isAtEdge = forward ? cursor.atBlockEnd() : cursor.atBlockStart();
  const QTextBlock neighbour = forward ? block.next() : block.previous();
  return isAtEdge && neighbour.isValid() && (rtf::IsJoint(block) || rtf::IsJoint(neighbour));
}

}  // namespace

bool HandleTableKey(QTextEdit& letter, const QKeyEvent& event) {
  const QTextCursor cursor = letter.textCursor();
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      if (const QTextTable* table = cursor.currentTable()) {
        const bool isBack = event.key() == Qt::Key_Backtab || (event.modifiers() & Qt::ShiftModifier) != 0;
        GoToCell(letter, *table, !isBack);
        return true;
      }
      return false;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      if (letter.isReadOnly()) {
        return false;
      }
      return cursor.hasSelection() ? RemoveEmptyRows(letter) : IsBesideJoint(cursor, event.key() == Qt::Key_Delete);
    default:
      return false;
  }
}

void LeaveJoint(QTextEdit& letter, int before) {
  QTextCursor cursor = letter.textCursor();
  const QTextBlock block = cursor.block();
  const QTextBlock beyond = cursor.position() >= before ? block.next() : block.previous();
  const bool isOutermost = !block.previous().isValid() || !block.next().isValid();
  if (cursor.hasSelection() || isOutermost || !rtf::IsJoint(block)) {
    return;
  }
  cursor.setPosition(cursor.position() >= before ? beyond.position() : beyond.position() + beyond.length() - 1);
  letter.setTextCursor(cursor);
}

}  // namespace letters
