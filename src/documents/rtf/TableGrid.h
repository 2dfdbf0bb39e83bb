#pragma once

#include "documents/rtf/TableShape.h"

namespace rtf {

/// A cell of a grid: which of a row's cells shows there, and which are part of it.
struct GridCell {
  /// A cell of the row's definition; `row` is counted from the grid's first one.
  struct Place {
    int row = 0;
    int cell = 0;

    bool operator==(const Place&) const = default;
  };

  Place place;
  int column = 0;
  int columns = 1;
  int rows = 1;
  QList<Place> covered;  ///< In the order of the text.
};

/// Rows of one table that Qt can hold: columns between the edges of all of them.
struct Grid {
  int firstRow = 0;
  int rows = 0;
  int headerRows = 0;
  QList<int> edges;       ///< Twips from the column's edge, ascending; one more than columns.
  QList<GridCell> cells;  ///< In the order of the text.
};

/// A row that goes into a grid.
struct GridRow {
  const RowShape* shape = nullptr;
  QList<bool> isEmpty;  ///< Whether nothing would be lost of each cell, were it part of another one.
};

inline constexpr int mostColumns = 63;

/// All rows in as few grids as hold them: neighbours with the same edges at both sides and the same alignment, parted
/// where there are more than `mostCells` or too many columns, but not inside merged cells or between header rows and
/// the first row.
QList<Grid> GridsOf(const QList<GridRow>& rows, int mostCells);

}  // namespace rtf
