#include "TestDesktop.h"

#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

TestDesktop::TestDesktop(database::Content content) : database(content), m_office(database.Connect(), m_session) {
  // Neither the user's settings nor the user's class registry are touched.
  QCoreApplication::setOrganizationName(u"Kel"_s);
  QCoreApplication::setApplicationName(u"kel-host"_s);
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, database.Path(u"."_s));
  qputenv("KEL_CLASES", database.Path(u"clases.ini"_s).toLocal8Bit());
  m_session.connection = &m_office;
  m_session.office = &m_office;
  m_session.title = u"Kel"_s;
  m_session.userId = 1;
  m_session.userName = u"ana"_s;
  m_session.userKind = 1;
  m_session.settingsFile = database.Path(u"widths.ini"_s);
  host::RegisterClasses(m_session);
  m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
}

TestDesktop::~TestDesktop() {
  for (const QString& problem : driver.TakeProblems()) {
    qWarning("%s", qPrintable(problem));
  }
  m_window.reset();
  host::UnregisterClasses();
}

host::MainWindow& TestDesktop::Window() {
  if (!m_window) {
    m_window = std::make_unique<host::MainWindow>(*m_bridge, database.ConnectionString(),
                                                  host::WindowTexts{u"Kel"_s, u"ana"_s, u"kel.db"_s, {}, {}});
    m_window->show();
  }
  return *m_window;
}

host::MainWindow& TestDesktop::Restart() {
  m_window.reset();
  return Window();
}

void TestDesktop::ChooseNode(int node) {
  Window().ChooseNode(node);
  WaitForTheList();
}

void TestDesktop::Refresh() {
  Action("actRefresh").trigger();
  WaitForTheList();
}

void TestDesktop::WaitForTheList() {
  if (!QTest::qWaitFor([this] { return Window().IsListRead(); }, 20'000)) {
    qWarning("the list is still being read");
  }
}

host::RecordList& TestDesktop::List() {
  return *Window().findChild<host::RecordList*>(u"recordList"_s);
}

QLineEdit& TestDesktop::SearchBox() {
  return *Window().findChild<QLineEdit*>(u"txtSearch"_s);
}

QAction& TestDesktop::Action(const char* name) {
  return *Window().findChild<QAction*>(QLatin1StringView(name));
}
