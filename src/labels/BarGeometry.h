#pragma once

#include <QtGlobal>

namespace labels {

/// The area of a label in the units of its surface, and its division into cells.
struct BarGrid {
  qint32 left = 0;
  qint32 top = 0;
  qint32 right = 0;
  qint32 bottom = 0;
  qint32 rows = 1;     ///< at least 1
  qint32 columns = 1;  ///< at least 1
};

/// A cell, counted from 0, and how much of it a bar covers, in per cent. A cell may lie outside the grid.
struct BarCell {
  qint32 row = 0;
  qint32 column = 0;
  quint8 widthPercent = 0;
  quint8 heightPercent = 0;
};

/// Two corners of a bar. Bars of little or no width may have them crossed by a unit.
struct Bar {
  qint64 x1 = 0;
  qint64 y1 = 0;
  qint64 x2 = 0;
  qint64 y2 = 0;
  bool operator==(const Bar&) const = default;
};

/// The bar in the middle of its cell. Cells and bars are whole units; halves are rounded to even.
Bar BarIn(const BarGrid& grid, const BarCell& cell);

}  // namespace labels
