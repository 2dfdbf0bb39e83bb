#include "documents/rtf/TableGrid.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace rtf {

namespace {

// Edges that programs round differently are one.
constexpr int tolerance = 15;

bool IsNear(int a, int b) {
  return std::abs(a - b) <= tolerance;
}

/// The cells of one row, those that go on in it put together.
QList<GridCell> CellsIn(const GridRow& row) {
  QList<GridCell> cells;
  bool open = false;
  for (int i = 0; i < row.shape->cells.size(); ++i) {
    const CellShape& cell = row.shape->cells[i];
    if (cell.goesOnInRow && open && row.isEmpty[i]) {
      cells.last().covered.append({0, i});
      ++cells.last().columns;
    } else {
      cells.append({.place = {0, i}, .column = i, .covered = {}});
      open = cell.beginsRow;
    }
  }
  return cells;
}

class Collector {
 public:
  Collector(const QList<GridRow>& rows, int mostCells) : m_rows(rows), m_mostCells(mostCells) {}

  QList<Grid> Collect() {
    for (int row = 0; row < m_rows.size(); ++row) {
      if (!Join(row)) {
        Finish();
        m_grid = {.firstRow = row, .edges = EdgesOf(row), .cells = {}};
        m_count = 0;
      }
      m_count += static_cast<int>(m_rows[row].shape->cells.size());
      ++m_grid.rows;
    }
    Finish();
    return m_grids;
  }

 private:
  QList<int> EdgesOf(int row) const {
    QList<int> edges{m_rows[row].shape->left};
    for (const CellShape& cell : m_rows[row].shape->cells) {
      edges.append(cell.right);
    }
    return edges;
  }

  /// Whether the row becomes part of the open grid, whose edges are added to then.
  bool Join(int row) {
    if (m_grid.rows == 0) {
      return false;
    }
    const RowShape& above = *m_rows[row - 1].shape;
    const RowShape& shape = *m_rows[row].shape;
    const bool fits = IsNear(m_grid.edges.first(), shape.left) &&
                      IsNear(m_grid.edges.last(), shape.cells.last().right) && above.alignment == shape.alignment;
    const bool parted = m_count + shape.cells.size() > m_mostCells && !HoldsOn(row);
    if (!fits || parted) {
      return false;
    }
    QList<int> edges = m_grid.edges;
    for (const int edge : EdgesOf(row)) {
      const auto place = std::lower_bound(edges.begin(), edges.end(), edge - tolerance);
      if (place == edges.end() || *place > edge + tolerance) {
        edges.insert(place, edge);
      }
    }
    if (edges.size() > mostColumns + 1) {
      return false;
    }
    // A new edge may be nearer to one of a row above than its own.
    const int first = edges.size() == m_grid.edges.size() ? row : m_grid.firstRow;
    for (int each = first; each <= row; ++each) {
      if (!IsApart(edges, each)) {
        return false;
      }
    }
    m_grid.edges = edges;
    return true;
  }

  /// Whether the row belongs to the one above whatever their number.
  bool HoldsOn(int row) const {
    const QList<CellShape>& cells = m_rows[row].shape->cells;
    const bool merges = std::any_of(cells.begin(), cells.end(), [](const CellShape& cell) { return cell.goesOnBelow; });
    // A table of header rows only, or of one merged cell, has to end somewhere.
    const bool isLong = m_count / 2 > m_mostCells;
    return !isLong && (merges || m_rows[row - 1].shape->isHeader);
  }

  /// Whether no two edges of the row are the same among `edges`.
  bool IsApart(const QList<int>& edges, int row) const {
    int before = ColumnAt(edges, m_rows[row].shape->left);
    return std::all_of(m_rows[row].shape->cells.begin(), m_rows[row].shape->cells.end(), [&](const CellShape& cell) {
      return std::exchange(before, ColumnAt(edges, cell.right)) < ColumnAt(edges, cell.right);
    });
  }

  static int ColumnAt(const QList<int>& edges, int edge) {
    return static_cast<int>(std::lower_bound(edges.begin(), edges.end(), edge - tolerance) - edges.begin());
  }

  void Finish() {
    if (m_grid.rows == 0) {
      return;
    }
    QList<GridCell> above;
    for (int row = 0; row < m_grid.rows; ++row) {
      above = PlaceRow(row, above);
    }
    for (int row = 0; row < m_grid.rows && m_rows[m_grid.firstRow + row].shape->isHeader; ++row) {
      ++m_grid.headerRows;
    }
    m_grids.append(m_grid);
  }

  /// Adds the row's cells to the grid, those that go on below to the cells above; gives what the row shows.
  QList<GridCell> PlaceRow(int row, const QList<GridCell>& above) {
    const GridRow& source = m_rows[m_grid.firstRow + row];
    QList<GridCell> cells = CellsIn(source);
    const QList<int> edges = EdgesOf(m_grid.firstRow + row);
    for (GridCell& cell : cells) {
      const int last = cell.column + cell.columns;
      cell.place.row = row;
      for (GridCell::Place& place : cell.covered) {
        place.row = row;
      }
      cell.column = ColumnAt(m_grid.edges, edges[cell.column]);
      cell.columns = ColumnAt(m_grid.edges, edges[last]) - cell.column;
    }
    const auto upper = [&](const GridCell& cell) {
      const auto place = std::find_if(above.begin(), above.end(), [&](const GridCell& other) {
        return other.column == cell.column && other.columns == cell.columns;
      });
      const bool goesOn = source.shape->cells[cell.place.cell].goesOnBelow && source.isEmpty[cell.place.cell];
      return goesOn && place != above.end() ? &*place : nullptr;
    };
    // Qt has no row without a cell of its own.
    const bool merges = !std::all_of(cells.begin(), cells.end(), [&](const GridCell& cell) { return upper(cell); });
    for (GridCell& cell : cells) {
      const GridCell* over = merges ? upper(cell) : nullptr;
      if (over == nullptr) {
        m_grid.cells.append(cell);
        continue;
      }
      const auto first = std::find_if(m_grid.cells.rbegin(), m_grid.cells.rend(),
                                      [&](const GridCell& other) { return other.place == over->place; });
      first->covered.append(cell.place);
      first->covered.append(cell.covered);
      first->rows = row + 1 - first->place.row;
      cell = *first;
    }
    return cells;
  }

  const QList<GridRow>& m_rows;
  int m_mostCells;
  QList<Grid> m_grids;
  Grid m_grid;
  int m_count = 0;
};

}  // namespace

QList<Grid> GridsOf(const QList<GridRow>& rows, int mostCells) {
  return Collector(rows, mostCells).Collect();
}

}  // namespace rtf
