#include "framework/FocusWatch.h"

#include <QApplication>
#include <QFocusEvent>
#include <QWidget>

#include <utility>

namespace framework {

FocusWatch::FocusWatch(QWidget* control) : QObject(control) {
  control->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this, control](QWidget* /*old*/, QWidget* now) {
    const bool elsewhere = now != nullptr && now->window() == control->window() && !control->isAncestorOf(now);
    if (elsewhere && now != control) {
      Leave();
    }
  });
}

bool FocusWatch::eventFilter(QObject* watched, QEvent* event) {
  const bool isFocusEvent = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
  if (!isFocusEvent || watched != parent()) {
    return QObject::eventFilter(watched, event);
  }
  watched->event(event);
  const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
  if (event->type() == QEvent::FocusIn) {
    Enter();
  } else if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
    Leave();
  }
  return true;
}

void FocusWatch::LeaveAll(const QWidget& form, const QObject* except) {
  const QList<FocusWatch*> watches = form.findChildren<FocusWatch*>();
  for (FocusWatch* watch : watches) {
    if (watch->parent() != except) {
      watch->Leave();
    }
  }
}

// Coming back from a menu or from another window is no entering: what was selected stays so.
void FocusWatch::Enter() {
  if (!m_inside) {
    LeaveAll(*static_cast<QWidget*>(parent())->window(), parent());
    m_inside = true;
    Q_EMIT Entered();
  }
}

void FocusWatch::Leave() {
  if (std::exchange(m_inside, false)) {
    Q_EMIT Left();
  }
}

}  // namespace framework
