#pragma once

#include "documents/Export.h"

#include <QPointF>
#include <QString>
#include <QTransform>

#include <optional>

/// What a printer makes of a page, measured on a page with four crosses and taken back when it is printed.
namespace documents {

/// Where the crosses of the page stand, in millimetres from the paper's upper left corner: at the first one, and that
/// far from it to the right and below.
inline constexpr QPointF firstCross = {20, 20};
inline constexpr QPointF crossDistance = {170, 250};

/// A printer's own scale and offset: what should be at x is at scale * x + offset.
struct Calibration {
  QPointF offset = {0, 0};  ///< Millimetres.
  QPointF scale = {1, 1};

  /// False for what no printer does: more than 10 mm or 5 %.
  KELDOCUMENTOS_EXPORT bool IsPossible() const;
  /// What takes them back, for pages in half-points.
  KELDOCUMENTOS_EXPORT QTransform Correction() const;
};

/// What was measured on the printed page, as it was typed, in millimetres.
struct CrossMeasures {
  QString left;   ///< From the paper's left edge to the first cross.
  QString top;    ///< From its upper edge.
  QString right;  ///< From the first cross to the one on its right.
  QString down;   ///< To the one below.
};

/// A calibration, or why the measures are none, in a sentence for the user.
struct CalibrationReading {
  std::optional<Calibration> calibration;
  QString refusal;
};

/// Refuses what is no number, and what no printer does: more than 10 mm or 5 %. An edge and a distance that were typed
/// in each other's place, and a forgotten or missing decimal comma, are named.
KELDOCUMENTOS_EXPORT CalibrationReading ReadCalibration(const CrossMeasures& measures);

}  // namespace documents
