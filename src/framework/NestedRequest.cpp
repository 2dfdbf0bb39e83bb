#include "framework/NestedRequest.h"

#include "framework/HostServices.h"
#include "platform/automation/Error.h"

namespace framework {

Dispatcher& OwnDispatcher() {
  static Dispatcher dispatcher = [](QObject*) { throw automation::Error(automation::ObjectNotSet); };
  return dispatcher;
}

NestedRequest::NestedRequest(const QVariant& idAux, int action)
    : m_node(objApi().IDNodo()),
      m_action(objApi().Accion()),
      m_selected(objApi().IDSeleccionado()),
      m_idAux(objApi().IDAux()) {
  objApi().Accion(action);
  objApi().IDAux(idAux);
}

NestedRequest::~NestedRequest() {
  try {
    objApi().Accion(m_action);
    objApi().IDSeleccionado(m_selected);
    objApi().IDAux(m_idAux);
    // Only a dialog that was asked for through the dispatcher has a node of its own.
    if (objApi().IDNodo() != m_node) {
      objApi().IDNodo(m_node);
    }
  } catch (...) {
    // A host that took these values a moment ago and refuses them now has told its own user why.
    return;
  }
}

}  // namespace framework
