#include "entry/CPrincipal.h"

#include "entry/Deletion.h"
#include "entry/Dispatch.h"
#include "entry/Request.h"
#include "framework/Help.h"
#include "framework/HostServices.h"
#include "framework/NestedRequest.h"
#include "platform/automation/Error.h"
#include "platform/contract/ContractVersion.h"

using namespace framework;

namespace entry {
namespace {

void OpenIfClosed(adodb::Connection& connection) {
  if (connection.State() == adodb::StateClosed) {
    connection.Open();
  }
}

}  // namespace

QString CPrincipal::VersionContrato() const {
  return contract::current.Text();
}

void CPrincipal::PasarDatos(QObject* obj) {
  DemandInterfaceThread();
  const Request request(obj);
  OwnDispatcher() = [](QObject* services) { CPrincipal().PasarDatos(services); };
  Help::SetFile(objApi().strFichAyuda());
  OpenIfClosed(objApi().congestion());
  if (dispatch::ShowDialog(objApi().IDNodo()) == dispatch::Outcome::NoPrinter) {
    // Intended: the connection stays open on this path only.
    return;
  }
  objApi().congestion().Close();
}

void CPrincipal::AbrirConexion(adodb::Connection* Conexion) {
  if (Conexion == nullptr) {
    throw automation::Error(automation::ObjectNotSet);
  }
  OpenStored(*Conexion);
}

void CPrincipal::EliminarRegistro(QObject* obj) {
  DemandInterfaceThread();
  const Request request(obj);
  OpenIfClosed(objApi().congestion());
  if (deletion::Delete(objApi().IDNodo(), objApi().IDSeleccionado()) == deletion::Outcome::Refused) {
    // Intended: the connection is left as it is after a refusal.
    return;
  }
  objApi().congestion().Close();
}

}  // namespace entry
