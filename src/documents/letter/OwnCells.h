#pragma once

#include <QTextTable>

namespace documents {

/// Calls `use` with each cell that begins in the row: one that spans several places of the grid stands at its first.
template <typename Use>
void ForEachOwnCell(const QTextTable& table, int row, const Use& use) {
  for (int column = 0; column < table.columns(); ++column) {
    const QTextTableCell cell = table.cellAt(row, column);
    if (cell.row() == row && cell.column() == column) {
      use(cell);
    }
  }
}

}  // namespace documents
