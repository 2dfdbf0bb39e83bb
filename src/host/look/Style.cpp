#include "host/look/Style.h"

#include "host/look/Colours.h"

#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QStyleOption>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int ringWidth = 2;
constexpr double cornerRadius = 2.5;
constexpr double leastContrast = 3;
// Between the title of a group and its line, as the base style has it.
constexpr int groupTopMargin = 3;

// Inside the rectangle, `width` pixels wide.
void DrawOutline(QPainter& painter, const QRect& rect, const QColor& colour, int width, double radius) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colour, width));
  const double half = width / 2.0;
  painter.drawRoundedRect(QRectF(rect).adjusted(half, half, -half, -half), radius, radius);
  painter.restore();
}

void DrawEdge(QPainter& painter, const QStyleOption& option) {
  const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
  const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
  const QColor colour = hasFocus ? RingColour(option.palette) : LineColour(option.palette, isEnabled);
  DrawOutline(painter, option.rect, colour, hasFocus ? ringWidth : 1, cornerRadius);
}

// On a selected row, or a strip, the ring's own colour may be that of the ground.
QColor RingOn(const QStyleOptionFocusRect* ring, const QPalette& palette) {
  const QColor colour = RingColour(palette);
  const bool isSeen =
      ring == nullptr || !ring->backgroundColor.isValid() || Contrast(colour, ring->backgroundColor) >= leastContrast;
  return isSeen ? colour : palette.color(QPalette::HighlightedText);
}

QIcon Coloured(const QIcon& icon, const QSize& size, double pixelRatio, const QColor& colour) {
  QPixmap picture = icon.pixmap(size, pixelRatio);
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(QRectF({}, picture.deviceIndependentSize()), colour);
  painter.end();
  QIcon coloured(picture);
  // Else the selected one would be mixed with the selection's colour.
  coloured.addPixmap(picture, QIcon::Selected);
  return coloured;
}

QRect BelowTitle(const QStyleOption& option, const QWidget* widget, int markHeight) {
  const auto* group = qobject_cast<const QGroupBox*>(widget);
  if (group == nullptr || group->title().isEmpty()) {
    return option.rect;
  }
  return option.rect.adjusted(0, std::max(markHeight, group->fontMetrics().height()) + groupTopMargin, 0, 0);
}

void NameByItsLabel(QWidget& control, QString name) {
  constexpr QStringView mandatory = u"(*)";
  if (name.contains(mandatory)) {
    control.setAccessibleDescription(u"Obligatorio"_s);
  }
  name = name.remove(mandatory.toString()).remove(u'&').trimmed();
  control.setAccessibleName(name.endsWith(u':') ? name.chopped(1) : name);
}

}  // namespace

Style::Style() : QProxyStyle(u"Fusion"_s) {}

void Style::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  const auto* label = qobject_cast<QLabel*>(widget);
  if (label != nullptr && label->buddy() != nullptr && label->buddy()->accessibleName().isEmpty()) {
    NameByItsLabel(*label->buddy(), label->text());
  }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  if (element == PE_FrameFocusRect) {
    const auto* ring = qstyleoption_cast<const QStyleOptionFocusRect*>(option);
    DrawOutline(*painter, option->rect, RingOn(ring, option->palette), ringWidth, cornerRadius);
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  switch (element) {
    case PE_FrameLineEdit:
    case PE_Frame:
    case PE_PanelButtonCommand:
      DrawEdge(*painter, *option);
      break;
    case PE_FrameGroupBox:
      DrawOutline(*painter, BelowTitle(*option, widget, pixelMetric(PM_IndicatorHeight, option, widget)),
                  LineColour(option->palette), 1, cornerRadius);
      break;
    case PE_IndicatorCheckBox:
    case PE_IndicatorRadioButton: {
      const bool isEnabled = option->state.testFlag(State_Enabled);
      const double radius = element == PE_IndicatorCheckBox ? cornerRadius : option->rect.height() / 2.0;
      DrawOutline(*painter, option->rect, LineColour(option->palette, isEnabled), 1, radius);
      break;
    }
    default:
      break;
  }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
  // An icon of no theme shows something by its colours.
  if (element == CE_ItemViewItem && item != nullptr && item->state.testFlag(State_Selected) &&
      item->state.testFlag(State_Enabled) && !item->icon.name().isEmpty()) {
    QStyleOptionViewItem selected = *item;
    selected.icon =
        Coloured(item->icon, item->decorationSize, painter->device()->devicePixelRatio(),
                 item->palette.color(item->state.testFlag(State_Active) ? QPalette::Active : QPalette::Inactive,
                                     QPalette::HighlightedText));
    QProxyStyle::drawControl(element, &selected, painter, widget);
    return;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  // A list is painted as the button that it is.
  if (control == CC_SpinBox) {
    DrawEdge(*painter, *option);
  }
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  // Room for the ring around what scrolls.
  return metric == PM_DefaultFrameWidth ? ringWidth : QProxyStyle::pixelMetric(metric, option, widget);
}

}  // namespace host
