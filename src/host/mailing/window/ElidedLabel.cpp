#include "host/mailing/window/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace host {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

bool ElidedLabel::Fits() const {
  return fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
  if (Fits()) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
  painter.drawText(contentsRect(), static_cast<int>(alignment()), shown);
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && !Fits()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
    return true;
  }
  return QLabel::event(event);
}

}  // namespace host
