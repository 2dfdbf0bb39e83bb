#pragma once

#include <QProxyStyle>

namespace host {

/// Fusion on every desktop, with what it leaves out: whatever has the focus has a ring of two pixels, and boxes, marks,
/// lists and frames have a line that is seen on light and dark grounds, and a selected row's icon is as clear as its
/// text. The colours are those of the palette.
/// It meets every control before it is seen, those of the component too, so it also names them to those who hear the
/// screen: as their labels do, without the marks for the eye; that one must be filled in is its description.
class Style : public QProxyStyle {
 public:
  Style();

  using QProxyStyle::polish;
  void polish(QWidget* widget) override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace host
