#include "support/TestHost.h"

#include "entry/PublishedClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Invoke.h"

using namespace Qt::StringLiterals;

namespace support {

void TestPlatform::ShowHelp(const QString& file, const QString& /*title*/) {
  helpShown.append(file);
}

TestHost::TestHost(database::Content content)
    : m_file(m_folder.filePath(u"kel.db"_s)), m_connectionString(database::ConnectionStringForFile(m_file)) {
  database::PrepareDatabase(m_connectionString, content);
  Start();
}

TestHost::TestHost(const QString& file) : m_file(file), m_connectionString(database::ConnectionStringForFile(m_file)) {
  Start();
}

void TestHost::Start() {
  m_real = database::CreateConnection(m_connectionString);
  m_recording = std::make_unique<RecordingConnection>(*m_real);
  session.connection = m_recording.get();
  session.title = u"Prueba"_s;
  session.helpFile = u"/ayuda/kel.html"_s;
  session.userId = 1;
  session.userName = u"Administrador"_s;
  session.userKind = 1;
  session.settingsFile = m_folder.filePath(u"ajustes.ini"_s);
  host::RegisterClasses(session);
  for (const PublishedClass& published : PublishedClasses()) {
    automation::RegisterClass(published.progId, published.create);
  }
  m_services = std::make_unique<host::cPrincipal>(session);
}

TestHost::~TestHost() {
  for (const PublishedClass& published : PublishedClasses()) {
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

QStringList TestHost::Rows(const QString& statement) const {
  const auto connection = database::CreateConnection(m_connectionString);
  connection->Open();
  QStringList lines;
  const auto rows = connection->Execute(statement);
  while (rows->State() == adodb::StateOpen && !rows->AtEnd()) {
    QStringList values;
    for (int i = 0; i < rows->FieldCount(); ++i) {
      const QVariant value = rows->Field(i);
      values.append(automation::IsNull(value) ? u"NULL"_s : automation::CStr(value));
    }
    lines.append(values.join(u'|'));
    rows->MoveNext();
  }
  return lines;
}

int TestHost::FirstNumber(const QString& statement) const {
  const QStringList lines = Rows(statement);
  if (lines.isEmpty()) {
    throw Failure("no row:", statement);
  }
  return lines.first().toInt();
}

}  // namespace support
