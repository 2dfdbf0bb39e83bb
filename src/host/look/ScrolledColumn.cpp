#include "host/look/ScrolledColumn.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>

namespace host {

ScrolledColumn::ScrolledColumn(QWidget* content, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(NoFrame);
  setFocusPolicy(Qt::NoFocus);
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
  const int wanted = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
  return {std::min(wanted, screen()->availableSize().width() / 2), lines * fontMetrics().height()};
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
