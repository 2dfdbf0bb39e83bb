#include "framework/SolicitudAnidada.h"

#include "framework/ServiciosHost.h"
#include "platform/contract/cConstAccion.h"

SolicitudAnidada::SolicitudAnidada(const QVariant& idAux) : SolicitudAnidada(idAux, cConstAccion().Nuevo()) {}

SolicitudAnidada::SolicitudAnidada(const QVariant& idAux, int action)
    : m_accion(objApi().Accion()), m_idSeleccionado(objApi().IDSeleccionado()), m_idAux(objApi().IDAux()) {
  objApi().Accion(action);
  objApi().IDAux(idAux);
}

SolicitudAnidada::~SolicitudAnidada() {
  try {
    objApi().Accion(m_accion);
    objApi().IDSeleccionado(m_idSeleccionado);
    objApi().IDAux(m_idAux);
  } catch (...) {
    // A host that took these values a moment ago and refuses them now has told its own user why.
    return;
  }
}

qint32 SolicitudAnidada::Creado() const {
  return objApi().IDAuxNumero();
}
