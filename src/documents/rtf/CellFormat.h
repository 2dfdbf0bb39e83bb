#pragma once

#include "documents/rtf/TableGrid.h"
#include "documents/rtf/TablePath.h"

#include <QTextCharFormat>
#include <QTextTableFormat>

namespace rtf {

/// What a cell of Qt's shows and keeps.
struct CellLook {
  QString definition;  ///< Its row's.
  int number = 0;      ///< Of the definition's cells.
  CellShape shape;
  EmptyCells empty;  ///< The cells that are part of it.
};

/// The format of a table: its columns, place and header rows; lines and padding are its cells'.
QTextTableFormat TableFormat(const Grid& grid, Alignment alignment);

/// The format of a cell, which Qt keeps in that of its first paragraph's mark: both in one.
QTextCharFormat CellFormat(const QTextCharFormat& mark, const CellLook& look);
/// The mark alone. Text that was typed into the cell has the cell's format, too.
QTextCharFormat WithoutCell(QTextCharFormat format);

}  // namespace rtf
