#include "host/desktop/MainWindow.h"
#include "host/desktop/Strip.h"
#include "host/desktop/ViewOnly.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/ComponentLibrary.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"
#include "support/Driver.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>

using support::DialogUser;
using namespace Qt::StringLiterals;

/// A session on a database that can't be written, with the component's own dialogs, loaded by name.
class tst_view_only : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();
  void DialogsShowButDoNotAccept_data();
  void DialogsShowButDoNotAccept();
  void TheWindowSaysSo();

 private:
  std::unique_ptr<support::TestDatabase> m_database;
  std::unique_ptr<adodb::Connection> m_connection;
  host::Session m_session;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  support::Driver m_driver;
};

void tst_view_only::init() {
  m_database = std::make_unique<support::TestDatabase>();
  m_database->Execute(u"INSERT INTO Cobradores(Nombre) VALUES('Ana')");
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_database->Path(u"."_s));
  qputenv("KEL_CLASES", m_database->Path(u"clases.ini"_s).toLocal8Bit());
  QVERIFY(automation::ComponentLibrary(QStringLiteral(KEL_COMPONENT)).Register());
  m_connection = database::CreateConnection(m_database->ConnectionString() + u";Acceso=lectura"_s);
  m_session = {};
  m_session.connection = m_connection.get();
  m_session.readOnly = true;
  m_session.settingsFile = m_database->Path(u"anchos.ini"_s);
  host::RegisterClasses(m_session);
  m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
}

void tst_view_only::cleanup() {
  QCOMPARE(m_driver.TakeProblems(), QStringList());
  QCOMPARE(m_driver.TakeBoxes(), QStringList());
  host::UnregisterClasses();
}

void tst_view_only::DialogsShowButDoNotAccept_data() {
  constexpr cConstNodo node;
  constexpr cConstAccion action;
  QTest::addColumn<QString>("dialog");
  QTest::addColumn<int>("number");
  QTest::addColumn<int>("asked");
  QTest::addColumn<int>("id");
  QTest::newRow("with a lock") << u"frmPais"_s << int(node.Paises()) << int(action.Modificar()) << 35;
  QTest::newRow("without one") << u"frmCobrador"_s << int(node.Cobradores()) << int(action.Modificar()) << 1;
  QTest::newRow("an addition") << u"frmProvincia"_s << int(node.Provincias()) << int(action.Agregar()) << 0;
}

void tst_view_only::DialogsShowButDoNotAccept() {
  QFETCH(const QString, dialog);
  QFETCH(const int, number);
  QFETCH(const int, asked);
  QFETCH(const int, id);
  const host::ViewOnly viewOnly(*m_services, *m_bridge);
  int accepting = 0;
  bool couldAccept = true;
  bool boxServes = false;
  m_driver.On(dialog.toLatin1().constData(), [&](const DialogUser& user) {
    for (const QPushButton* button : user.Dialog()->findChildren<QPushButton*>()) {
      if (button->isDefault()) {
        ++accepting;
        couldAccept = button->isEnabled();
      }
    }
    // A box of Qt's own is no dialog of the component: what it asks is answered as ever.
    QMessageBox box(QMessageBox::Question, u"Kel"_s, u"?"_s, QMessageBox::Yes, user.Dialog());
    box.setDefaultButton(QMessageBox::Yes);
    box.setModal(false);
    box.show();
    boxServes = box.button(QMessageBox::Yes)->isEnabled();
    user.Close();
  });
  host::ComponentRequest request;
  request.node = number;
  request.action = asked;
  request.selectedId = id;
  QCOMPARE(support::ErrorOf([&] { m_bridge->ShowDialog(request); }), 0);
  QCOMPARE(accepting, 1);
  QVERIFY(!couldAccept);
  QVERIFY(boxServes);
  // A dialog of nobody's request is left alone.
  QDialog other;
  QPushButton close(&other);
  close.setDefault(true);
  other.show();
  QVERIFY(close.isEnabled());
  QCOMPARE(m_database->Id(u"SELECT COUNT(*) FROM BloqueoRegistros"), 0);
}

void tst_view_only::TheWindowSaysSo() {
  host::MainWindow window(*m_bridge, m_database->ConnectionString(),
                          {.title = u"Kel"_s,
                           .user = u"ana"_s,
                           .database = u"kel.db"_s,
                           .helpFile = {},
                           .readOnly = true,
                           .demonstration = true});
  window.show();
  window.ChooseNode(cConstNodo().Bancos());
  window.ChooseNode(cConstNodo().Paises());
  QTRY_VERIFY(window.IsListRead());
  QVERIFY(window.windowTitle().endsWith(u"(Demostración) (solo lectura)"_s));
  QVERIFY(window.findChild<host::Strip*>(u"stripDemonstration"_s)->isVisible());
  QVERIFY(window.findChild<host::Strip*>(u"stripReadOnly"_s)->isVisible());
  for (const char* name : {"actAdd", "actDelete", "actNewBranch"}) {
    QVERIFY2(!window.findChild<QAction*>(QLatin1StringView(name))->isEnabled(), name);
  }
  QVERIFY(window.findChild<QAction*>(u"actModify"_s)->isEnabled());
}

KEL_TEST(tst_view_only);
#include "tst_view_only.moc"
