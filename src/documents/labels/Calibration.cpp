#include "documents/labels/Calibration.h"

#include "documents/letter/HalfPoints.h"
#include "platform/automation/Conversion.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

constexpr double furthest = 10;
constexpr double largestStretch = 0.05;
constexpr double halfPointsPerMillimetre = halfPointsPerInch / 25.4;

/// One direction of the page.
struct Axis {
  double offset = 0;
  double scale = 1;
  bool IsPossible() const { return std::abs(scale - 1) <= largestStretch && std::abs(offset) <= furthest; }
};

Axis AxisOf(double edge, double distance, double firstAt, double distanceOnPage) {
  const double scale = distance / distanceOnPage;
  return {.offset = edge - firstAt * scale, .scale = scale};
}

// A ruler has no thousands: a point is a comma.
std::optional<double> NumberIn(const QString& text) {
  const std::optional<QByteArray> number = automation::SpanishNumber(QString(text).replace(u'.', u','));
  return number ? std::optional(number->toDouble()) : std::nullopt;
}

/// Why an edge and a distance give nothing; empty where they give something.
QString Refusal(const QString& edgeText, const QString& distanceText, double firstAt, double distanceOnPage,
                Axis& axis) {
  const std::optional<double> edge = NumberIn(edgeText);
  const std::optional<double> distance = NumberIn(distanceText);
  if (!edge || !distance) {
    return u"«%1» no es una medida en milímetros."_s.arg(edge ? distanceText : edgeText);
  }
  axis = AxisOf(*edge, *distance, firstAt, distanceOnPage);
  if (axis.IsPossible()) {
    return {};
  }
  if (AxisOf(*distance, *edge, firstAt, distanceOnPage).IsPossible()) {
    return u"Las medidas «%1» y «%2» parecen cambiadas la una por la otra."_s.arg(edgeText, distanceText);
  }
  return u"Con «%1» y «%2» la impresora se desviaría más de lo que se puede corregir: unos %3 y %4 mm son lo normal. "
         "Vuelva a medir."_s.arg(edgeText, distanceText, QString::number(firstAt), QString::number(distanceOnPage));
}

}  // namespace

bool Calibration::IsPossible() const {
  return Axis{offset.x(), scale.x()}.IsPossible() && Axis{offset.y(), scale.y()}.IsPossible();
}

QTransform Calibration::Correction() const {
  return QTransform::fromTranslate(-offset.x() * halfPointsPerMillimetre, -offset.y() * halfPointsPerMillimetre) *
         QTransform::fromScale(1 / scale.x(), 1 / scale.y());
}

CalibrationReading ReadCalibration(const CrossMeasures& measures) {
  Axis across;
  Axis down;
  QString refusal = Refusal(measures.left, measures.right, firstCross.x(), crossDistance.x(), across);
  if (refusal.isEmpty()) {
    refusal = Refusal(measures.top, measures.down, firstCross.y(), crossDistance.y(), down);
  }
  if (!refusal.isEmpty()) {
    return {.calibration = std::nullopt, .refusal = refusal};
  }
  return {.calibration = Calibration{.offset = {across.offset, down.offset}, .scale = {across.scale, down.scale}},
          .refusal = {}};
}

}  // namespace documents
