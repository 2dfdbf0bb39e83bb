#include "host/desktop/SelectionTone.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>

namespace host {

namespace {

// The share of the selection's colour in a pale selection.
constexpr double share = 0.25;

QColor Blend(const QColor& over, const QColor& under) {
  const auto mix = [](float a, float b) { return static_cast<float>(a * share + b * (1 - share)); };
  return QColor::fromRgbF(mix(over.redF(), under.redF()), mix(over.greenF(), under.greenF()),
                          mix(over.blueF(), under.blueF()));
}

}  // namespace

SelectionTone::SelectionTone(QAbstractItemView* view) : QObject(view), m_view(view) {
  view->installEventFilter(this);
  Apply(view->hasFocus());
}

bool SelectionTone::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
      Apply(true);
      break;
    case QEvent::FocusOut:
    case QEvent::ApplicationPaletteChange:
      Apply(m_view->hasFocus());
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void SelectionTone::Apply(bool focused) {
  QPalette palette = QApplication::palette(m_view);
  if (!focused) {
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
      palette.setColor(group, QPalette::Highlight,
                       Blend(palette.color(group, QPalette::Highlight), palette.color(group, QPalette::Base)));
      palette.setColor(group, QPalette::HighlightedText, palette.color(group, QPalette::Text));
    }
  }
  m_view->setPalette(palette);
}

}  // namespace host
