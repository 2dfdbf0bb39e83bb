#include "host/access/NewPassword.h"
#include "host/access/Passwords.h"
#include "host/access/SignIn.h"
#include "host/access/UserRules.h"
#include "host/access/UsersDialog.h"
#include "host/records/OfficeConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "support/Driver.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

using host::Account;
using host::Rights;
using support::DialogUser;

namespace {

const QString password = u"tres tigres tristes"_s;
const QString otherPassword = u"en un trigal"_s;

QString Hash(const QString& text) {
  static QHash<QString, QString> hashes;
  if (!hashes.contains(text)) {
    hashes[text] = host::HashOf(text);
  }
  return hashes[text];
}

// The alert of a form, once it is there and the form waits for its user again.
QString Alert(const QDialog& dialog) {
  const auto* alert = dialog.findChild<QLabel*>(u"alert"_s);
  const auto isThere = [&] { return alert->isVisible() && dialog.findChild<QLineEdit*>()->isEnabled(); };
  return QTest::qWaitFor(isThere) ? alert->text() : u"no alert"_s;
}

void WaitUntilAccepted(const DialogUser& user) {
  if (!QTest::qWaitFor([&] { return user.Dialog()->result() == QDialog::Accepted; })) {
    throw std::runtime_error("not accepted");
  }
}

}  // namespace

/// Entering, choosing passwords, and the users' dialog, as a person meets them.
class tst_sign_in : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();
  void Entering_data();
  void Entering();
  void TheWindowIsNotHeldUp();
  void WaitingIsSaid();
  void APasswordThatAnotherKnows();
  void NewPasswords_data();
  void NewPasswords();
  void OnesOwnPassword();
  void TurningItOn();
  void Users();

 private:
  int Add(const QString& name, Rights rights, const QString& with) {
    const int id = host::UserRules(m_session).Add({name, u"Persona "_s + name, rights});
    if (!with.isEmpty()) {
      host::UserRules(m_session).SetPassword(id, Hash(with));
      m_database->Execute(u"UPDATE Claves SET DebeCambiar=False WHERE codUsuario={}", id);
    }
    return id;
  }

  std::unique_ptr<support::TestDatabase> m_database;
  host::Session m_session;
  std::unique_ptr<host::OfficeConnection> m_office;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  host::Door m_door;
};

void tst_sign_in::init() {
  m_database = std::make_unique<support::TestDatabase>();
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_database->Path(u"."_s));
  QSettings().clear();
  m_session = {};
  m_office = std::make_unique<host::OfficeConnection>(m_database->Connect(), m_session);
  m_session.connection = m_office.get();
  m_session.office = m_office.get();
  m_session.title = u"Kel"_s;
  m_session.userId = 1;
  m_session.userName = u"administrador"_s;
  m_session.userKind = 1;
  host::RegisterClasses(m_session);
  m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
  m_door = host::Door();
}

void tst_sign_in::cleanup() {
  m_bridge.reset();
  m_services.reset();
  host::UnregisterClasses();
  m_office.reset();
}

void tst_sign_in::Entering_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("alert");
  const QString wrong = u"El usuario o la contraseña no es correcta."_s;
  QTest::newRow("right") << u"marta"_s << password << QString();
  QTest::newRow("other case and blanks") << u" MARTA "_s << password << QString();
  QTest::newRow("wrong password") << u"marta"_s << otherPassword << wrong;
  QTest::newRow("no password") << u"marta"_s << QString() << wrong;
  QTest::newRow("wrong name") << u"nadie"_s << password << wrong;
  QTest::newRow("no name") << QString() << password << wrong;
  QTest::newRow("a statement") << u"' OR ''='"_s << password << wrong;
  QTest::newRow("without one of his own") << u"administrador"_s << QString() << wrong;
  QTest::newRow("switched off") << u"apagada"_s << password << wrong;
  QTest::newRow("deleted") << u"borrada"_s << password << wrong;
  QTest::newRow("10,000 characters") << u"marta"_s << u"x"_s.repeated(10'000) << wrong;
  QTest::newRow("spoiled")
      << u"rota"_s << password
      << u"La contraseña guardada de este usuario está dañada. Un administrador tiene que darle otra."_s;
}

void tst_sign_in::Entering() {
  QFETCH(const QString, name);
  QFETCH(const QString, typed);
  QFETCH(const QString, alert);
  Add(u"marta"_s, Rights::Changes, password);
  host::UserRules(m_session).SwitchOff(Add(u"apagada"_s, Rights::Changes, password), true);
  m_database->Execute(u"UPDATE Usuarios SET Eliminado=True WHERE IDUsuario={}",
                      Add(u"borrada"_s, Rights::Changes, password));
  m_database->Execute(u"UPDATE Claves SET Hash='$argon2id$v=19$m=4194304,t=3,p=1$' WHERE codUsuario={}",
                      Add(u"rota"_s, Rights::Changes, password));
  host::SignIn dialog(m_session, m_door, u"/datos/kel.db"_s, {});
  dialog.open();
  const DialogUser user(&dialog);
  user.Find<QComboBox>("cboUser")->setEditText(name);
  user.Find<QLineEdit>("txtPassword")->setText(typed);
  user.Press("enter");
  if (alert.isEmpty()) {
    QTRY_COMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.Entered().name, u"marta"_s);
    QVERIFY(dialog.Entered().lastEntry.isValid());
    QCOMPARE(host::SignIn(m_session, m_door, {}, {}).findChild<QComboBox*>()->currentText(), u"marta"_s);
  } else {
    QCOMPARE(Alert(dialog), alert);
    QVERIFY(dialog.isVisible());
  }
}

// The hash takes its time; meanwhile the window's thread goes round.
void tst_sign_in::TheWindowIsNotHeldUp() {
  Add(u"marta"_s, Rights::Changes, password);
  host::Entry entry(m_session, m_door);
  bool entered = false;
  connect(&entry, &host::Entry::Entered, this, [&] { entered = true; });
  QElapsedTimer time;
  time.start();
  entry.Try(u"marta"_s, password);
  const qint64 begun = time.restart();
  int turns = 0;
  while (!entered && time.elapsed() < 20'000) {
    QCoreApplication::processEvents();
    ++turns;
  }
  QVERIFY(entered);
  QVERIFY2(turns > 10, qPrintable(u"%1 turns, begun in %2 ms"_s.arg(turns).arg(begun)));
  qInfo("hashing: %lld ms", time.elapsed());
}

void tst_sign_in::WaitingIsSaid() {
  Add(u"marta"_s, Rights::Changes, password);
  host::SignIn dialog(m_session, m_door, u"kel.db"_s, u"marta"_s);
  dialog.open();
  const DialogUser user(&dialog);
  for (int i = 0; i < 3; ++i) {
    user.Find<QLineEdit>("txtPassword")->setText(otherPassword);
    user.Press("enter");
    QVERIFY(Alert(dialog).startsWith(u"El usuario o la contraseña no es correcta."_s));
    dialog.findChild<QLabel*>(u"alert"_s)->hide();
  }
  QVERIFY(dialog.findChild<QLabel*>(u"alert"_s)->text().contains(u"Puede volver a probar dentro de"));
  user.Find<QLineEdit>("txtPassword")->setText(password);
  user.Press("enter");
  QVERIFY(Alert(dialog).contains(u"Todavía no"_s));
  QVERIFY(dialog.isVisible());
}

void tst_sign_in::APasswordThatAnotherKnows() {
  const int id = Add(u"inés"_s, Rights::Changes, password);
  m_database->Execute(u"UPDATE Claves SET DebeCambiar=True WHERE codUsuario={}", id);
  support::Driver driver;
  const auto enter = [&] {
    driver.On("signIn", [](const DialogUser& user) {
      user.Find<QLineEdit>("txtPassword")->setText(password);
      user.Press("enter");
      WaitUntilAccepted(user);
    });
  };
  enter();
  driver.On("newPassword", [](const DialogUser& user) { user.Dialog()->reject(); });
  Account account;
  QVERIFY(!host::AskWhoWorks(m_session, m_door, u"kel.db"_s, u"inés"_s, account));
  enter();
  driver.On("newPassword", [](const DialogUser& user) {
    user.Type("txtNew", otherPassword);
    user.Type("txtAgain", otherPassword);
    user.Key(Qt::Key_Return);
    WaitUntilAccepted(user);
  });
  QVERIFY(host::AskWhoWorks(m_session, m_door, u"kel.db"_s, u"inés"_s, account));
  QCOMPARE(driver.TakeProblems(), QStringList());
  QVERIFY(account.id == id && !account.mustChange);
  QCOMPARE(host::CheckPassword(otherPassword, account.hash), host::PasswordVerdict::Right);
}

void tst_sign_in::NewPasswords_data() {
  QTest::addColumn<QString>("first");
  QTest::addColumn<QString>("second");
  QTest::addColumn<QString>("alert");
  QTest::newRow("short") << u"corta"_s << u"corta"_s << u"al menos 8"_s;
  QTest::newRow("two") << password << otherPassword << u"no son iguales"_s;
  QTest::newRow("the typed name") << u"josefa 99"_s << u"josefa 99"_s << u"su nombre"_s;
  QTest::newRow("good") << password << password << QString();
}

void tst_sign_in::NewPasswords() {
  QFETCH(const QString, first);
  QFETCH(const QString, second);
  QFETCH(const QString, alert);
  host::NewPassword dialog(
      {.title = u"Nueva"_s, .text = u"Para usted."_s, .names = {}, .asksName = true, .name = u"Josefa"_s});
  dialog.open();
  const DialogUser user(&dialog);
  user.Type("txtNew", first);
  user.Type("txtAgain", second);
  user.Key(Qt::Key_Return);
  if (alert.isEmpty()) {
    QTRY_COMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(host::CheckPassword(first, dialog.Hash()), host::PasswordVerdict::Right);
  } else {
    QVERIFY2(Alert(dialog).contains(alert), qPrintable(Alert(dialog)));
    QVERIFY(dialog.Hash().isEmpty());
  }
}

void tst_sign_in::OnesOwnPassword() {
  m_session.userId = Add(u"marta"_s, Rights::Viewer, password);
  m_session.isViewer = true;
  m_session.readOnly = true;
  for (const bool isRight : {false, true}) {
    support::Driver driver;
    driver.On("newPassword", [isRight](const DialogUser& user) {
      user.Type("txtCurrent", isRight ? password : u"otra cosa"_s);
      user.Type("txtNew", otherPassword);
      user.Type("txtAgain", otherPassword);
      user.Key(Qt::Key_Return);
      if (isRight) {
        WaitUntilAccepted(user);
      } else {
        Alert(*user.Dialog());
        user.Dialog()->reject();
      }
    });
    QCOMPARE(host::ChooseOwnPassword(m_session, u"La suya."_s, &m_door), isRight);
    QCOMPARE(driver.TakeProblems(), QStringList());
    const Account account = host::ReadAccount(*m_office, m_session.userId).value_or(Account());
    QCOMPARE(host::CheckPassword(otherPassword, account.hash) == host::PasswordVerdict::Right, isRight);
  }
}

void tst_sign_in::TurningItOn() {
  support::Driver driver;
  host::UsersDialog dialog(*m_bridge);
  int changes = 0;
  connect(&dialog, &host::UsersDialog::SettingsChanged, this, [&] { ++changes; });
  dialog.open();
  const DialogUser user(&dialog);
  auto* asks = user.Find<QCheckBox>("chkAsk");
  driver.On("newPassword", [](const DialogUser& first) { first.Dialog()->reject(); });
  asks->click();
  QVERIFY(!asks->isChecked() && !host::AsksForPasswords(*m_office));
  driver.On("newPassword", [](const DialogUser& first) {
    first.Type("txtName", u"marta"_s);
    first.Type("txtNew", password);
    first.Type("txtAgain", password);
    first.Key(Qt::Key_Return);
    WaitUntilAccepted(first);
  });
  asks->click();
  QVERIFY(asks->isChecked() && host::AsksForPasswords(*m_office));
  QCOMPARE(host::FindAccount(*m_office, u"marta"_s).value_or(Account()).id, 1);
  user.Find<QSpinBox>("spnIdle")->setValue(3);
  QTest::keyClick(user.Find<QSpinBox>("spnIdle"), Qt::Key_Return);
  QCOMPARE(host::IdleMinutes(*m_office), 3);
  // As assistive programs do.
  user.Find<QCheckBox>("chkLock")->toggle();
  QCOMPARE(host::IdleMinutes(*m_office), 0);
  asks->toggle();
  QVERIFY(!host::AsksForPasswords(*m_office));
  QVERIFY(changes >= 4);
  QCOMPARE(driver.TakeProblems(), QStringList());
}

void tst_sign_in::Users() {
  Add(u"secretaria"_s, Rights::Changes, {});
  host::UserRules(m_session).TurnOn(u"marta"_s, Hash(password));
  support::Driver driver;
  host::UsersDialog dialog(*m_bridge);
  dialog.open();
  const DialogUser user(&dialog);
  const auto row = [&] {
    const QTreeWidgetItem* item = user.Find<QTreeWidget>("userList")->currentItem();
    return QStringList{item->text(0), item->text(2), item->text(4)}.join(u'|');
  };
  QCOMPARE(row().section(u'|', 0, 1), u"marta|Administra"_s);
  QVERIFY(!user.IsEnabled("switchUser") && !user.IsEnabled("deleteUser"));
  driver.On("userDialog", [](const DialogUser& added) {
    added.Type("txtName", u"SECRETARIA"_s);
    added.Key(Qt::Key_Return);
    if (!Alert(*added.Dialog()).contains(u"Ya hay un usuario"_s)) {
      throw std::runtime_error("two of one name");
    }
    added.Type("txtName", u"<b>inés</b>"_s);
    added.Choose("cboRights", u"Solo consulta"_s);
    added.Key(Qt::Key_Return);
  });
  driver.On("newPassword", [](const DialogUser& given) {
    given.Type("txtNew", otherPassword);
    given.Type("txtAgain", otherPassword);
    given.Key(Qt::Key_Return);
    WaitUntilAccepted(given);
  });
  user.Find<QPushButton>("addUser")->click();
  QCOMPARE(row(), u"<b>inés</b>|Solo consulta|por elegir al entrar"_s);
  user.Find<QPushButton>("switchUser")->click();
  QCOMPARE(row().section(u'|', 2), u"desactivado"_s);
  QCOMPARE(user.Text("switchUser"), u"Act&ivar"_s);
  user.Find<QPushButton>("switchUser")->click();
  driver.On("userDialog", [](const DialogUser& changed) {
    changed.Choose("cboRights", u"Administra"_s);
    changed.Key(Qt::Key_Return);
  });
  user.Find<QPushButton>("modifyUser")->click();
  QCOMPARE(row().section(u'|', 1, 1), u"Administra"_s);
  driver.Answer(QMessageBox::Ok);
  user.Find<QPushButton>("deleteUser")->click();
  QVERIFY(driver.TakeBoxes().join(u' ').contains(u"es un administrador"_s));
  QCOMPARE(driver.TakeProblems(), QStringList());
}

KEL_TEST(tst_sign_in);

#include "tst_sign_in.moc"
