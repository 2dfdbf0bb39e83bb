#include "host/desktop/ViewOnly.h"

#include "host/services/ToolkitBox.h"
#include "platform/automation/Invoke.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPushButton>

namespace host {

ViewOnly::ViewOnly(QObject& services, const ComponentBridge& bridge) : m_services(services), m_bridge(bridge) {
  qApp->installEventFilter(this);
}

bool ViewOnly::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show && IsWanted() && qobject_cast<QDialog*>(watched) != nullptr &&
      !IsBoxOfTheToolkit(*watched)) {
    const QList<QPushButton*> buttons = watched->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
      if (button->isDefault()) {
        automation::Call(&m_services, "BloquearControles", static_cast<QObject*>(button));
      }
    }
  }
  return QObject::eventFilter(watched, event);
}

bool ViewOnly::IsWanted() const {
  const ComponentRequest* open = m_bridge.OpenRequest();
  return open != nullptr && (open->viewOnly || m_bridge.Session().readOnly);
}

}  // namespace host
