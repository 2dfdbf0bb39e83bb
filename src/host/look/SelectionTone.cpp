#include "host/look/SelectionTone.h"

#include "host/look/Colours.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>

namespace host {

namespace {

// The share of the selection's colour in a pale selection.
constexpr double share = 0.25;

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
                       Mix(palette.color(group, QPalette::Highlight), palette.color(group, QPalette::Base), share));
      palette.setColor(group, QPalette::HighlightedText, palette.color(group, QPalette::Text));
    }
  }
  m_view->setPalette(palette);
}

}  // namespace host
