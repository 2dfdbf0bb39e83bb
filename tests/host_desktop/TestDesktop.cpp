#include "TestDesktop.h"

#include "database/Database.h"
#include "platform/automation/ClassRegistry.h"

#include <QCoreApplication>
#include <QSettings>

TestDesktop::TestDesktop(bool demonstration) {
  // Neither the user's settings nor the user's class registry are touched.
  QCoreApplication::setOrganizationName(QStringLiteral("Kel"));
  QCoreApplication::setApplicationName(QStringLiteral("kel-host"));
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
  qputenv("KEL_CLASES", Path(QStringLiteral("clases.ini")).toLocal8Bit());
  const QString database = database::ConnectionStringForFile(Path(QStringLiteral("kel.db")));
  database::PrepareDatabase(database, demonstration ? database::Content::Demonstration : database::Content::Reference);
  m_connection = database::CreateConnection(database);
  m_connection->Open();
  m_session.connection = m_connection.get();
  m_session.title = QStringLiteral("Kel");
  m_session.settingsFile = Path(QStringLiteral("anchos.ini"));
  host::RegisterClasses(m_session);
  m_services = automation::CreateObject(QStringLiteral("KelAPI.cPrincipal"));
  m_bridge = std::make_unique<host::ComponentBridge>(*m_services, *m_connection);
}

TestDesktop::~TestDesktop() {
  m_window.reset();
  host::UnregisterClasses();
}

host::MainWindow& TestDesktop::Window() {
  if (!m_window) {
    m_window = std::make_unique<host::MainWindow>(
        *m_bridge, host::WindowTexts{QStringLiteral("Kel"), QStringLiteral("ana"), QStringLiteral("kel.db"), {}});
    m_window->show();
  }
  return *m_window;
}

host::MainWindow& TestDesktop::Restart() {
  m_window.reset();
  return Window();
}

host::RecordList& TestDesktop::List() {
  return *Window().findChild<host::RecordList*>(QStringLiteral("listaRegistros"));
}

QLineEdit& TestDesktop::SearchBox() {
  return *Window().findChild<QLineEdit*>(QStringLiteral("txtBuscar"));
}

QAction& TestDesktop::Action(const char* name) {
  return *Window().findChild<QAction*>(QLatin1StringView(name));
}

void TestDesktop::Execute(const QString& statement) {
  m_connection->Execute(statement);
}

QVariant TestDesktop::Value(const QString& statement) {
  return m_connection->Execute(statement)->Field(0);
}
