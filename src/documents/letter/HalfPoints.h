#pragma once

#include "documents/letter/Twips.h"

#include <QPaintDevice>
#include <QPainter>

#include <cmath>

namespace documents {

/// Letters are laid out in half-points, on the screen and on paper, and scaled when they are painted. Sizes of fonts
/// are whole numbers then, as RTF has them, where a screen's pixels would round them; so lines break at the same places
/// everywhere.
inline constexpr int halfPointsPerInch = 144;

/// Paddings and borders of a document's formats count 96 to an inch.
inline constexpr double halfPointsPerFormatLength = halfPointsPerInch / 96.0;

inline int ToHalfPoints(Twips length) {
  constexpr double twipsPerHalfPoint = 10;
  return static_cast<int>(std::lround(length.count / twipsPerHalfPoint));
}

inline Twips FromHalfPoints(double halfPoints) {
  return {static_cast<int>(std::ceil(halfPoints * 10))};
}

/// Prepares a painter of a printer or a PDF file, of that many dots per inch, for what is laid out in half-points.
inline void ScaleForPaper(QPainter& painter, int dotsPerInch) {
  painter.setRenderHint(QPainter::LosslessImageRendering);
  const double dotsPerHalfPoint = double(dotsPerInch) / halfPointsPerInch;
  painter.scale(dotsPerHalfPoint, dotsPerHalfPoint);
}

/// The device that documents are laid out for. Nothing is painted on it.
class HalfPointDevice : public QPaintDevice {
 public:
  QPaintEngine* paintEngine() const override { return nullptr; }

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmDpiX:
      case PdmDpiY:
      case PdmPhysicalDpiX:
      case PdmPhysicalDpiY:
        return halfPointsPerInch;
      case PdmDevicePixelRatio:
        return 1;
      case PdmDevicePixelRatioScaled:
        return qRound(devicePixelRatioFScale());
      default:
        return QPaintDevice::metric(metric);
    }
  }
};

}  // namespace documents
