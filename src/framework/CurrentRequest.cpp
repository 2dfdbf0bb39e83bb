#include "framework/CurrentRequest.h"

#include "framework/HostServices.h"
#include "platform/contract/cConstAccion.h"

namespace framework {
namespace {

constexpr cConstAccion action;

}  // namespace

bool IsAdd() {
  const int requested = objApi().Accion();
  return requested == action.Agregar() || requested == action.Nuevo();
}

bool IsModify() {
  return objApi().Accion() == action.Modificar();
}

bool IsNuevo() {
  return objApi().Accion() == action.Nuevo();
}

qint32 Id() {
  return objApi().IDSeleccionado();
}

}  // namespace framework
