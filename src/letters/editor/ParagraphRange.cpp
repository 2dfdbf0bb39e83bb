#include "letters/editor/ParagraphRange.h"

#include <QTextDocument>
#include <QTextTable>

namespace letters {

QList<TextRange> SelectedRanges(const QTextCursor& cursor) {
  int firstRow = -1;
  int rows = 0;
  int firstColumn = 0;
  int columns = 0;
  cursor.selectedTableCells(&firstRow, &rows, &firstColumn, &columns);
  if (firstRow < 0) {
    const QTextDocument* letter = cursor.document();
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    const bool endsBefore =
        end > start && end < letter->characterCount() - 1 && letter->findBlock(end).position() == end;
    return {{start, endsBefore ? end - 1 : end}};
  }
  QList<TextRange> cells;
  const QTextTable* table = cursor.currentTable();
  for (int row = firstRow; row < firstRow + rows; ++row) {
    for (int column = firstColumn; column < firstColumn + columns; ++column) {
      const QTextTableCell cell = table->cellAt(row, column);
      // One that spans several places of the grid stands at its first.
      if (cell.row() == row && cell.column() == column) {
        cells.append({cell.firstPosition(), cell.lastPosition()});
      }
    }
  }
  return cells;
}

}  // namespace letters
