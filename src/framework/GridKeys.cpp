#include "framework/GridKeys.h"

#include <QAbstractItemView>
#include <QKeyEvent>

namespace framework {

GridKeys::GridKeys(QAbstractItemView* grid) : QObject(grid) {
  grid->installEventFilter(this);
  connect(grid, &QAbstractItemView::doubleClicked, this, &GridKeys::Modify);
}

bool GridKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & ~Qt::KeypadModifier) {
      return false;
    }
    switch (key->key()) {
      case Qt::Key_Insert:
        Q_EMIT Add();
        return true;
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_F2:
        Q_EMIT Modify();
        return true;
      case Qt::Key_Delete:
        Q_EMIT Delete();
        return true;
      default:
        break;
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace framework
