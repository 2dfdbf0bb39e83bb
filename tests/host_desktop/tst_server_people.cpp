#include "TestDesktop.h"
#include "database/Maintenance.h"
#include "host/access/AccessDesk.h"
#include "host/cli/Startup.h"
#include "platform/contract/cConstNodo.h"
#include "support/TestProgram.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

using host::Rights;

/// On a server each person works by a role, whose groups say what the window lets them do.
class tst_server_people : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TheGroupIsTheRights_data();
  void TheGroupIsTheRights();
  void EverybodyIsShown();
};

namespace {

QString BaseOf(const support::TestDatabase& database) {
  return QRegularExpression(u"Base=(\\w+)"_s).match(database.ConnectionString()).captured(1);
}

/// A role of that group; the person's address of the database.
QString AddPerson(const support::TestDatabase& database, const QString& name, const QString& group) {
  database.Server()->Run(
      u"CREATE ROLE %1 LOGIN; GRANT %2_%3 TO %1"_s.arg(BaseOf(database) + u'_' + name, BaseOf(database), group));
  return database.ConnectionString().replace(u"Usuario=postgres"_s, u"Usuario=%1_%2"_s.arg(BaseOf(database), name));
}

std::unique_ptr<host::StartedSession> Start(const QString& address, std::optional<int> user = {}) {
  host::CommandLine line;
  line.connectionString = address;
  line.user = user;
  return host::StartSession(line);
}

}  // namespace

void tst_server_people::TheGroupIsTheRights_data() {
  QTest::addColumn<Rights>("rights");
  QTest::newRow("lectores") << Rights::Viewer;
  QTest::newRow("usuarios") << Rights::ChangesAndDeletes;
  QTest::newRow("administradores") << Rights::Administrator;
  QTest::newRow("propietarios") << Rights::Administrator;
}

// Whatever the table of users says: its only one is an administrator.
void tst_server_people::TheGroupIsTheRights() {
  QFETCH(const Rights, rights);
  const support::TestDatabase database;
  database::SetUpServer(database.ConnectionString(), database::Content::Reference);
  const QString address = AddPerson(database, u"eva"_s, QString::fromLatin1(QTest::currentDataTag()));
  const QString name = BaseOf(database) + u"_eva"_s;
  {
    const auto started = Start(address);
    QCOMPARE(started->session.UserRights(), rights);
    QCOMPARE(started->session.userName, name);
    QCOMPARE(started->session.userId, 1);
    QCOMPARE(started->session.IsAdministrator(), rights == Rights::Administrator);
  }
  database.Execute(
      u"INSERT INTO Usuarios (Nombre, NombreCompleto, Administrador, TipoUsuario) VALUES ('{}', '', -1, 1)",
      name.toUpper());
  QCOMPARE(Start(address)->session.userId, database.Id(u"SELECT MAX(IDUsuario) FROM Usuarios"));
  const auto chosen = Start(address, 1);
  QCOMPARE(chosen->session.userId, 1);
  QVERIFY(chosen->session.userName != name);
  QCOMPARE(chosen->session.UserRights(), rights);
}

void tst_server_people::EverybodyIsShown() {
  TestDesktop desktop;
  database::SetUpServer(desktop.database.ConnectionString(), database::Content::Reference);
  AddPerson(desktop.database, u"blas"_s, u"lectores"_s);
  AddPerson(desktop.database, u"carmen"_s, u"administradores"_s);
  const QString base = BaseOf(desktop.database);
  desktop.database.Server()->Run(
      u"CREATE ROLE %1_nadie LOGIN; CREATE ROLE %1_nologin; GRANT %1_usuarios TO %1_nologin"_s.arg(base));
  host::Door door;
  host::Rescue rescue(desktop.Services(), desktop.Bridge());
  host::AccessDesk desk(desktop.Bridge(), door, rescue, {}, u"kel"_s, false);
  desktop.Window().Offer(desk);
  QVERIFY(!desktop.Action("actOwnPassword").isVisible());
  QStringList rows;
  desktop.driver.On("serverUsersDialog", [&](const support::DialogUser& dialog) {
    const auto* list = dialog.Find<QTreeWidget>("roleList");
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
      const QTreeWidgetItem& item = *list->topLevelItem(row);
      if (item.text(0).startsWith(base) || item.text(0).startsWith(u"postgres"_s)) {
        rows.append(QStringList{item.text(0), item.text(1), item.text(2)}.join(u'|').remove(base + u'_'));
      }
    }
    dialog.Close();
  });
  desktop.Action("actUsers").trigger();
  QCOMPARE(rows, (QStringList{u"blas|lectores|Solo consulta"_s, u"carmen|administradores|Administra"_s,
                              u"postgres (usted)|administra el servidor|Administra"_s}));
  QCOMPARE(desktop.TakeBoxes(), QStringList());
}

KEL_TEST(tst_server_people);
#include "tst_server_people.moc"
