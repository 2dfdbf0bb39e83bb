#pragma once

#include <QPaintDevice>
#include <QWidget>

#include <cmath>

namespace letters {

/// A device with the dots per inch of a widget, times the zoom: a document laid out for it is that much larger, and its
/// measures are the same. Nothing is painted on it.
class ZoomedScreen : public QPaintDevice {
 public:
  explicit ZoomedScreen(const QWidget* widget) : m_widget(widget) {}
  void SetZoom(double zoom) { m_zoom = zoom; }

  QPaintEngine* paintEngine() const override { return nullptr; }

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmDpiX:
      case PdmPhysicalDpiX:
        return static_cast<int>(std::lround(m_widget->logicalDpiX() * m_zoom));
      case PdmDpiY:
      case PdmPhysicalDpiY:
        return static_cast<int>(std::lround(m_widget->logicalDpiY() * m_zoom));
      case PdmDevicePixelRatio:
        return 1;
      case PdmDevicePixelRatioScaled:
        return qRound(devicePixelRatioFScale());
      default:
        return QPaintDevice::metric(metric);
    }
  }

 private:
  const QWidget* m_widget;
  double m_zoom = 1.0;
};

}  // namespace letters
