#include "host/desktop/ViewOnly.h"

#include "platform/automation/Invoke.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace host {

ViewOnly::ViewOnly(QObject& services) : m_services(services) {
  qApp->installEventFilter(this);
}

bool ViewOnly::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show && qobject_cast<QDialog*>(watched) != nullptr &&
      watched->objectName().startsWith(u"frm"_s)) {
    const QList<QPushButton*> buttons = watched->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
      if (button->isDefault()) {
        automation::Call(&m_services, "BloquearControles", static_cast<QObject*>(button));
      }
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace host
