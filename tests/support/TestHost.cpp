#include "support/TestHost.h"

#include "entry/PublishedClasses.h"
#include "framework/Form.h"
#include "host/records/OfficeConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Invoke.h"

using namespace Qt::StringLiterals;

namespace support {

void CountingDesktop::ShowHelp(const QString& file, const QString& /*title*/) {
  helpShown.append(file);
}

TestHost::TestHost(database::Content content) : TestDatabase(content) {
  Start();
}

TestHost::TestHost(const QString& connectionString) : TestDatabase(connectionString) {
  Start();
}

void TestHost::Start() {
  m_real = std::make_unique<host::OfficeConnection>(database::CreateConnection(ConnectionString()), session);
  m_recording = std::make_unique<RecordingConnection>(*m_real);
  session.connection = m_recording.get();
  session.title = u"Prueba"_s;
  session.helpFile = u"/ayuda/kel.html"_s;
  session.userId = 1;
  session.userName = u"Administrador"_s;
  session.userKind = 1;
  session.settingsFile = Path(u"ajustes.ini"_s);
  host::RegisterClasses(session);
  for (const entry::PublishedClass& published : entry::PublishedClasses()) {
    automation::RegisterClass(published.progId, published.create);
  }
  m_services = std::make_unique<host::cPrincipal>(session);
  driver.EndBy(End);
}

// Unloaded, without a question, or it would be in use for every later request.
void TestHost::End(QDialog& dialog) {
  auto* form = qobject_cast<framework::Form*>(&dialog);
  if (form != nullptr) {
    form->RequestUnload(framework::Form::FormCode);
  } else {
    dialog.done(QDialog::Rejected);
  }
}

TestHost::~TestHost() {
  for (const entry::PublishedClass& published : entry::PublishedClasses()) {
    automation::UnregisterClass(published.progId);
  }
  host::UnregisterClasses();
}

std::optional<automation::Error> TestHost::PasarDatos(int node, int action, int id, const QVariant& aux) {
  automation::Put(m_services.get(), "IDNodo", node);
  automation::Put(m_services.get(), "Accion", action);
  automation::Put(m_services.get(), "IDSeleccionado", id);
  automation::Put(m_services.get(), "IDAux", aux);
  return Call("PasarDatos");
}

std::optional<automation::Error> TestHost::EliminarRegistro(int node, int id) {
  automation::Put(m_services.get(), "IDNodo", node);
  automation::Put(m_services.get(), "IDSeleccionado", id);
  return Call("EliminarRegistro");
}

std::optional<automation::Error> TestHost::Call(const char* method) {
  m_recording->Clear();
  const auto component = automation::CreateObject(u"kelconfiguracion.cprincipal"_s);
  try {
    automation::Call(component.get(), method, m_services.get());
  } catch (const automation::Error& error) {
    return error;
  }
  return std::nullopt;
}

}  // namespace support
