#include "host/look/SmallScreens.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace host {

SmallScreens::SmallScreens(QObject* parent) : QObject(parent) {
  qApp->installEventFilter(this);
}

bool SmallScreens::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show || event->spontaneous() || !watched->isWidgetType()) {
    return false;
  }
  auto& window = static_cast<QWidget&>(*watched);
  const bool isFramed = window.isWindow() && (window.windowType() == Qt::Dialog || window.windowType() == Qt::Window);
  const QSize free = window.screen()->availableSize();
  if (isFramed && !window.isMaximized() && window.size() != window.size().boundedTo(free)) {
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    window.resize(window.size().boundedTo(free - QSize(0, title)));
  }
  return false;
}

}  // namespace host
