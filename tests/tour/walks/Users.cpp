#include "tour/Walks.h"

#include "database/Database.h"
#include "host/access/Door.h"
#include "host/access/IdleLock.h"
#include "host/access/Passwords.h"
#include "host/access/SignIn.h"
#include "host/access/UserRules.h"
#include "host/access/UsersDialog.h"
#include "host/records/OfficeConnection.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

const QString databaseFile = u"usuarios.db"_s;

std::unique_ptr<adodb::Connection> OwnDatabase(const Tour& tour) {
  const QString text = database::ConnectionStringForFile(tour.File(databaseFile));
  database::PrepareDatabase(text, database::Content::Demonstration);
  auto connection = database::CreateConnection(text);
  connection->Open();
  return connection;
}

/// An administrator at work on a database of this walk's own.
struct UsersOffice {
  explicit UsersOffice(const Tour& tour) : office(OwnDatabase(tour), session) {
    session.connection = &office;
    session.office = &office;
    session.title = u"Kel"_s;
    session.userId = 1;
    session.userName = u"administrador"_s;
    session.userKind = 1;
  }

  host::Session session;
  host::OfficeConnection office;
};

QStringList LookAtUsers(Tour& tour) {
  UsersOffice at(tour);
  host::UserRules rules(at.session);
  rules.TurnOn(u"marta"_s, u"-"_s);
  rules.SetPassword(rules.Add({u"inés"_s, u"Inés Sanz Pardo"_s, host::Rights::Changes}), u"-"_s);
  rules.Add({u"auditora"_s, u"Gestoría Rivera"_s, host::Rights::Viewer});
  QObject services;
  host::ComponentBridge bridge(services, at.session);
  host::UsersDialog dialog(bridge);
  dialog.show();
  tour.Picture(support::DialogUser(&dialog), u"usuarios"_s);
  return {};
}

QStringList LookAtTheSignIn(Tour& tour) {
  UsersOffice at(tour);
  host::Door door;
  host::SignIn dialog(at.session, door, databaseFile, u"nadie"_s);
  dialog.show();
  const support::DialogUser user(&dialog);
  user.Press("enter");
  const auto* alert = dialog.findChild<QLabel*>(u"alert"_s);
  const bool told = QTest::qWaitFor([&] { return alert->isVisible(); });
  tour.Picture(user, u"entrar"_s);
  return told ? QStringList() : QStringList(u"no se ha dicho nada"_s);
}

// The box above, the users' dialog below, of which nothing is seen.
QStringList LookAtTheLock(Tour& tour) {
  const QString password = u"una frase cualquiera"_s;
  UsersOffice at(tour);
  host::UserRules(at.session).TurnOn(u"marta"_s, host::HashOf(password));
  at.session.userName = u"marta"_s;
  host::ComponentBridge bridge(tour.Services(), at.session);
  host::Rescue rescue(tour.Services(), bridge);
  host::Door door;
  host::UsersDialog dialog(bridge);
  dialog.show();
  host::IdleLock lock(at.session, door, rescue, host::ReadAccount(at.office, 1).value_or(host::Account()),
                      databaseFile);
  bool isUnlocked = false;
  tour.Windows().On("lockBox", [&](const support::DialogUser& box) {
    tour.Picture(support::DialogUser(&dialog), u"tapado"_s);
    tour.Picture(box, u"bloqueado"_s);
    box.Find<QLineEdit>("txtPassword")->setText(password);
    // Without a window manager the box of a locked program is not the active window.
    box.Find<QPushButton>("unlock")->click();
    isUnlocked = QTest::qWaitFor([&] { return !lock.IsLocked(); });
  });
  lock.Lock();
  return QTest::qWaitFor([&] { return isUnlocked; }) ? QStringList() : QStringList(u"sigue bloqueado"_s);
}

}  // namespace

void WalkUsers(Tour& tour) {
  tour.Act(u"Usuarios: derechos y contraseñas"_s, [&] { return LookAtUsers(tour); });
  tour.Act(u"Entrar con un nombre que no existe"_s, [&] { return LookAtTheSignIn(tour); });
  tour.Act(u"El programa bloqueado, y desbloqueado"_s, [&] { return LookAtTheLock(tour); });
}

}  // namespace tour
