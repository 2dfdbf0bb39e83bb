#include "host/desktop/SearchBox.h"

#include <QKeyEvent>

namespace host {

void SearchBox::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      clear();
      return;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT ListWanted();
      return;
    default:
      QLineEdit::keyPressEvent(event);
  }
}

}  // namespace host
