#include "labels/BarGeometry.h"

#include "platform/automation/Conversion.h"

namespace labels {

namespace {

qint64 Whole(double value) {
  return static_cast<qint64>(automation::RoundHalfEven(value));
}

// How far a bar of that share reaches from one side of its cell.
qint64 Reach(qint64 cell, int percent) {
  return Whole(double(cell) - double(cell) * (100 - percent) / 200);
}

}  // namespace

Bar BarIn(const BarGrid& grid, const BarCell& cell) {
  const qint64 width = Whole((double(grid.right) - grid.left) / grid.columns);
  const qint64 height = Whole((double(grid.bottom) - grid.top) / grid.rows);
  const qint64 left = grid.left + cell.column * width;
  const qint64 top = grid.top + cell.row * height;
  const qint64 reachX = Reach(width, cell.widthPercent);
  const qint64 reachY = Reach(height, cell.heightPercent);
  return {.x1 = left + width - reachX, .y1 = top + height - reachY, .x2 = left + reachX, .y2 = top + reachY};
}

}  // namespace labels
