#pragma once

#include "documents/rtf/TablePath.h"

class QTextTable;

namespace rtf {

/// A row of Qt's as RTF has it.
struct WrittenRow {
  QString definition;
  QList<int> numbers;  ///< Of the cells that begin in this row, in their order: which of the definition's they are.
  int cells = 0;       ///< Of the definition.
  std::shared_ptr<const EmptyCells> empty;  ///< The definition's other cells.
};

/// The row with the definition that its cells were read with, if they are still what that says; otherwise with a new
/// one: the cells' own words where they have any, the columns' widths, thin lines where the cells have some.
WrittenRow WrittenRowOf(const QTextTable& table, int row);

}  // namespace rtf
