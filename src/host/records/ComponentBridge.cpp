#include "host/records/ComponentBridge.h"

#include "host/records/OfficeConnection.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

std::unique_ptr<QObject> CreateComponent() {
  try {
    return automation::CreateObject(u"KelConfiguracion.CPrincipal"_s);
  } catch (const automation::Error& error) {
    throw automation::Error(
        error.Number(),
        u"%1\n\nRegistre la biblioteca del componente con la orden «kel-host registrar BIBLIOTECA» y "
        "vuelva a intentarlo."_s.arg(error.Description()),
        u"KelConfiguracion.CPrincipal"_s);
  }
}

}  // namespace

ComponentBridge::ComponentBridge(QObject& services, host::Session& session, QObject* parent)
    : QObject(parent), m_services(services), m_session(session) {}

void ComponentBridge::CheckComponent() {
  CreateComponent();
}

void ComponentBridge::ShowDialog(const ComponentRequest& request) {
  ComponentRequest shown = request;
  const QScopedValueRollback<const ComponentRequest*> open(m_open, &shown);
  m_session.openAgain.reset();
  Call("PasarDatos", shown);
  while (const std::optional<LockHolder> lock = std::exchange(m_session.openAgain, std::nullopt)) {
    // The dialog releases the lock itself, unless it could not even load its record.
    const auto release = qScopeGuard([&] { ReleaseLock(lock->keyColumn, lock->key); });
    shown.viewOnly = false;
    Call("PasarDatos", shown);
  }
}

void ComponentBridge::DeleteRecord(const ComponentRequest& request) {
  Call("EliminarRegistro", request);
}

adodb::Connection& ComponentBridge::OpenConnection() {
  adodb::Connection& connection = *m_session.connection;
  if (connection.State() == adodb::StateClosed) {
    connection.Open();
  }
  return connection;
}

void ComponentBridge::Call(QByteArrayView method, const ComponentRequest& request) {
  if (m_ending) {
    return;
  }
  ++m_calls;
  const auto atEnd = qScopeGuard([this] { --m_calls; });
  try {
    if (m_session.lookAtRights) {
      m_session.LookAtRights(OpenConnection());
    }
    const std::unique_ptr<QObject> component = CreateComponent();
    Fill(request);
    automation::Call(component.get(), method, &m_services);
  } catch (...) {
    const automation::Error error = automation::CurrentError();
    RecoverConnection();
    throw error;
  }
  OpenConnection();
}

void ComponentBridge::Fill(const ComponentRequest& request) {
  automation::Put(&m_services, "IDNodo", request.node);
  automation::Put(&m_services, "Accion", request.action);
  automation::Put(&m_services, "IDSeleccionado", request.selectedId);
  automation::Put(&m_services, "IDAux", request.aux);
  automation::Put(&m_services, "PathNodo", request.path);
}

// A call that failed may have left a transaction open: closing undoes it. Where the connection cannot be opened
// again, the next use of it says so; the error of the call matters more now.
void ComponentBridge::RecoverConnection() {
  try {
    if (m_session.connection->State() != adodb::StateClosed) {
      m_session.connection->Close();
    }
    m_session.connection->Open();
  } catch (const automation::Error&) {
    return;
  }
}

void ComponentBridge::ReleaseLock(const QString& keyColumn, int key) {
  try {
    m_session.Locks().Release(keyColumn, key);
  } catch (const automation::Error&) {
    if (m_session.office != nullptr) {
      m_session.office->ReleaseLater(keyColumn, key);
    }
  }
}

}  // namespace host
