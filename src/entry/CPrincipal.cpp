#include "entry/CPrincipal.h"

#include "entry/Despacho.h"
#include "entry/Eliminacion.h"
#include "framework/Ayuda.h"
#include "framework/ServiciosHost.h"
#include "platform/automation/Error.h"

namespace {

void OpenIfClosed(adodb::Connection& connection) {
  if (connection.State() == adodb::StateClosed) {
    connection.Open();
  }
}

}  // namespace

void CPrincipal::PasarDatos(QObject* obj) {
  objApi() = ServiciosHost(obj);
  Ayuda::SetFile(objApi().strFichAyuda());
  OpenIfClosed(objApi().congestion());
  if (Despacho::MostrarDialogo(objApi().IDNodo()) == Despacho::Resultado::SinImpresora) {
    // Intended: the connection stays open on this path only.
    return;
  }
  objApi().congestion().Close();
}

void CPrincipal::AbrirConexion(adodb::Connection* Conexion) {
  if (Conexion == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
  if (Conexion->State() == adodb::StateClosed) {
    Conexion->Open({}, {}, {}, -1);
  }
}

void CPrincipal::EliminarRegistro(QObject* obj) {
  objApi() = ServiciosHost(obj);
  OpenIfClosed(objApi().congestion());
  if (Eliminacion::Eliminar(objApi().IDNodo(), objApi().IDSeleccionado()) == Eliminacion::Resultado::Rechazada) {
    // Intended: the connection is left as it is after a refusal.
    return;
  }
  objApi().congestion().Close();
}
