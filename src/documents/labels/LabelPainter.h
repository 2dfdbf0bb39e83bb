#pragma once

#include "documents/Export.h"
#include "documents/labels/Sheet.h"

#include <QFont>
#include <QRectF>
#include <QStringList>

#include <vector>

class QPainter;

namespace documents {

/// How the text of labels looks, on all labels of a sheet.
struct LabelFont {
  QString family;
  double points = 10;
  double left = 0.5;  ///< Centimetres from the label's left edge.
};

/// Paints labels: lines from the left, in the middle by height. Lines that are too wide or too many are shrunk, all of
/// a label alike, to 70 % at most and never below 6.5 points; the rest is cut at the label's edge.
class KELDOCUMENTOS_EXPORT LabelPainter {
 public:
  LabelPainter(const Sheet& sheet, const LabelFont& font);

  /// How large the lines are, 1 for unchanged; nothing where they don't fit.
  std::optional<double> ScaleOf(const QStringList& lines) const;
  /// Paints a label, from 1, on a painter whose unit is the half-point and whose origin is the paper's upper left
  /// corner.
  void Paint(QPainter& painter, int label, const QStringList& lines) const;

 private:
  std::vector<QRectF> m_labels;  ///< Half-points.
  QFont m_font;
  double m_lineHeight = 0;
  double m_left = 0;
  double m_smallest = 1;
  QSizeF m_room;
};

}  // namespace documents
