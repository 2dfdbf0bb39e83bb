#include "framework/FocusWatch.h"

#include <QFocusEvent>
#include <QWidget>

#include <utility>

namespace framework {

FocusWatch::FocusWatch(QWidget* control) : QObject(control) {
  control->installEventFilter(this);
}

bool FocusWatch::eventFilter(QObject* watched, QEvent* event) {
  const bool isFocusEvent = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
  if (!isFocusEvent || watched != parent()) {
    return QObject::eventFilter(watched, event);
  }
  watched->event(event);
  const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
  if (event->type() == QEvent::FocusIn) {
    // Coming back from a menu or from another window is no entering: what was selected stays so.
    if (!std::exchange(m_inside, true)) {
      Q_EMIT Entered();
    }
  } else if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
    m_inside = false;
    Q_EMIT Left();
  }
  return true;
}

}  // namespace framework
