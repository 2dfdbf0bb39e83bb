#include "FakeComponent.h"

#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Invoke.h"

using namespace Qt::StringLiterals;

namespace {

const QString progId = u"KelConfiguracion.CPrincipal"_s;
FakeComponent::Behaviour currentBehaviour;
QStringList notedRequests;

}  // namespace

void FakeComponent::Register(Behaviour behaviour) {
  currentBehaviour = std::move(behaviour);
  notedRequests.clear();
  automation::RegisterClass(progId, [] { return std::make_unique<FakeComponent>(); });
}

void FakeComponent::Unregister() {
  automation::UnregisterClass(progId);
}

QStringList FakeComponent::Requests() {
  return notedRequests;
}

void FakeComponent::PasarDatos(QObject* api) {
  Serve(u"PasarDatos"_s, api);
}

void FakeComponent::EliminarRegistro(QObject* api) {
  Serve(u"EliminarRegistro"_s, api);
}

void FakeComponent::Serve(const QString& method, QObject* api) {
  const auto number = [api](const char* name) { return automation::Get(api, name).toInt(); };
  notedRequests.append(u"%1 nodo=%2 accion=%3 id=%4 aux=%5 %6"_s.arg(method)
                           .arg(number("IDNodo"))
                           .arg(number("Accion"))
                           .arg(number("IDSeleccionado"))
                           .arg(number("IDAux"))
                           .arg(automation::Get(api, "PathNodo").toString()));
  auto* connection = automation::Get(api, "congestion").value<adodb::Connection*>();
  if (connection->State() == adodb::StateClosed) {
    connection->Open();
  }
  if (currentBehaviour) {
    currentBehaviour(*connection, number("IDSeleccionado"));
  }
  connection->Close();
}
