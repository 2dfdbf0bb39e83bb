#include "host/look/ScrolledColumn.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>

namespace host {

ScrolledColumn::ScrolledColumn(QWidget* content, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidgetResizable(true);
  setWidget(content);
  content->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  for (QWidget* field : content->findChildren<QWidget*>()) {
    if (qobject_cast<QComboBox*>(field) != nullptr || qobject_cast<QAbstractSpinBox*>(field) != nullptr) {
      field->setFocusPolicy(Qt::StrongFocus);
      field->installEventFilter(this);
    }
  }
}

QSize ScrolledColumn::sizeHint() const {
  return widget()->sizeHint();
}

QSize ScrolledColumn::minimumSizeHint() const {
  constexpr int lines = 10;
  return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(),
          lines * fontMetrics().height()};
}

bool ScrolledColumn::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
    event->ignore();
    return true;
  }
  // What the content wishes has changed.
  if (watched == widget() && event->type() == QEvent::LayoutRequest) {
    updateGeometry();
  }
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace host
