#include "host/look/LinkLabel.h"

#include <QFocusEvent>

namespace host {

LinkLabel::LinkLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::RichText);
  setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  setWordWrap(true);
}

void LinkLabel::focusInEvent(QFocusEvent* event) {
  QLabel::focusInEvent(event);
  if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
    focusNextPrevChild(event->reason() == Qt::TabFocusReason);
  }
}

}  // namespace host
