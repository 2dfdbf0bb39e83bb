#include "host/access/IdleLock.h"
#include "host/access/Passwords.h"
#include "host/access/RightsWatch.h"
#include "host/access/UserRules.h"
#include "host/records/OfficeConnection.h"
#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/process/TerminationSignals.h"
#include "support/Driver.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using host::Account;
using host::Rights;

namespace {

const QString password = u"tres tigres tristes"_s;

bool IsCovered(const QWidget& window) {
  const auto* cover = window.findChild<QLabel*>(u"lockCover"_s, Qt::FindDirectChildrenOnly);
  return cover != nullptr && cover->isVisible() && cover->geometry() == window.rect() &&
         window.windowTitle() == u"Kel"_s;
}

// What a program that reads the screen is told of a thing and all in it that it may show.
QString Read(QAccessibleInterface* told) {
  if (told == nullptr || !told->isValid()) {
    return u"?"_s;
  }
  QString read = told->text(QAccessible::Name) + told->text(QAccessible::Value) + told->text(QAccessible::Description);
  for (int child = 0; child < told->childCount(); ++child) {
    read += u' ' + Read(told->child(child));
  }
  return read.simplified();
}

QString Read(QObject& object) {
  return Read(QAccessible::queryAccessibleInterface(&object));
}

constexpr int notAnswered = -1;

// A box that gets no answer fails its test instead of stopping it.
int AnswerTo(QMessageBox& box) {
  QTimer::singleShot(10s, &box, [&box] { box.done(notAnswered); });
  return box.exec();
}

}  // namespace

/// A program that is locked: what is seen of its windows, who unlocks it, and how it ends.
class tst_idle_lock : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();
  void NothingIsSeenAndNothingEnds();
  void WhatComesMeanwhile();
  void Idle();
  void UnderAnotherName();
  void UnlockedWithout_data();
  void UnlockedWithout();
  void ForAnotherPerson_data();
  void ForAnotherPerson();
  void TheEnd_data();
  void TheEnd();

 private:
  host::LockBox& Box() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* box = qobject_cast<host::LockBox*>(window)) {
        return *box;
      }
    }
    throw std::runtime_error("no box");
  }
  /// What the box says; nothing when it has gone.
  QString Unlock(const QString& typed) {
    host::LockBox& box = Box();
    auto* line = box.findChild<QLineEdit*>(u"txtPassword"_s);
    line->setText(typed);
    box.findChild<QPushButton*>(u"unlock"_s)->click();
    const auto* alert = box.findChild<QLabel*>(u"alert"_s);
    const auto answered = [&] { return !m_lock->IsLocked() || (line->isEnabled() && alert->isVisible()); };
    return !QTest::qWaitFor(answered) ? u"no answer"_s : m_lock->IsLocked() ? alert->text() : QString();
  }

  std::unique_ptr<support::TestDatabase> m_database;
  host::Session m_session;
  std::unique_ptr<host::OfficeConnection> m_office;
  std::unique_ptr<QObject> m_services;
  std::unique_ptr<host::ComponentBridge> m_bridge;
  std::unique_ptr<host::Rescue> m_rescue;
  std::unique_ptr<host::IdleLock> m_lock;
  host::Door m_door;
};

void tst_idle_lock::init() {
  m_database = std::make_unique<support::TestDatabase>();
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_database->Path(u"."_s));
  m_session = {};
  m_office = std::make_unique<host::OfficeConnection>(m_database->Connect(), m_session);
  m_session.connection = m_office.get();
  m_session.office = m_office.get();
  m_session.title = u"Kel"_s;
  m_session.userId = 1;
  static const QString hash = host::HashOf(password);
  host::UserRules rules(m_session);
  rules.TurnOn(u"marta"_s, hash);
  rules.SetPassword(rules.Add({u"inés"_s, {}, Rights::Changes}), hash);
  host::RegisterClasses(m_session);
  m_services = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  m_bridge = std::make_unique<host::ComponentBridge>(*m_services, m_session);
  m_rescue = std::make_unique<host::Rescue>(*m_services, *m_bridge);
  m_door = host::Door();
  m_lock = std::make_unique<host::IdleLock>(m_session, m_door, *m_rescue,
                                            host::FindAccount(*m_office, u"marta"_s).value_or(Account()), u"kel.db"_s);
}

void tst_idle_lock::cleanup() {
  m_lock.reset();
  m_rescue.reset();
  m_bridge.reset();
  m_services.reset();
  host::UnregisterClasses();
  m_office.reset();
}

// Over a dialog, with a box above it, and a menu.
void tst_idle_lock::NothingIsSeenAndNothingEnds() {
  QWidget window;
  window.setWindowTitle(u"Banco del Almendro – Kel"_s);
  QMenu menu(&window);
  menu.addAction(u"Banco del Almendro"_s);
  QDialog dialog(&window);
  dialog.setWindowTitle(u"Modificar banco"_s);
  auto* line = new QLineEdit(u"1"_s, &dialog);
  QMessageBox box(QMessageBox::Question, u"Kel"_s, u"¿Desea guardar?"_s, QMessageBox::Yes | QMessageBox::No, &dialog);
  window.show();
  QTimer::singleShot(0, &dialog, [&] { box.exec(); });
  QTimer::singleShot(50ms, this, [&] {
    const auto end = qScopeGuard([&] {
      box.done(QMessageBox::No);
      dialog.accept();
    });
    menu.popup({});
    QVERIFY(Read(dialog).contains(u"1"_s) && Read(box).contains(u"guardar"_s));
    const QAccessible::Id known = QAccessible::uniqueId(QAccessible::queryAccessibleInterface(line));
    QTest::keyClick(&box, Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(m_lock->IsLocked() && !menu.isVisible());
    QVERIFY(IsCovered(window) && IsCovered(dialog) && IsCovered(box));
    QCOMPARE(Read(window) + Read(dialog) + Read(box), u"Kel Bloqueado"_s.repeated(3));
    QVERIFY(QAccessible::accessibleInterface(known) == nullptr);
    QCOMPARE(Read(*line), QString());
    QVERIFY(Read(Box()).contains(u"Contraseña"_s));
    dialog.setWindowTitle(u"Modificar banco 2"_s);
    dialog.resize(700, 600);
    QTest::keyClicks(line, u"23"_s);
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    QTest::keyClick(&Box(), Qt::Key_Escape);
    Box().close();
    QVERIFY(m_lock->IsLocked() && Box().isVisible());
    QVERIFY(IsCovered(window) && IsCovered(dialog) && IsCovered(box));
    QVERIFY(dialog.isVisible() && box.isVisible() && dialog.result() == 0);
    QVERIFY(Unlock(u"otra cosa"_s).startsWith(u"El usuario o la contraseña"_s));
    QCOMPARE(Unlock(password), QString());
    QVERIFY(!IsCovered(window) && !IsCovered(dialog) && !IsCovered(box));
    QVERIFY(dialog.isVisible() && box.isVisible());
    QVERIFY(Read(dialog).contains(u"1"_s) && Read(box).contains(u"guardar"_s));
    QCOMPARE(window.windowTitle() + dialog.windowTitle(), u"Banco del Almendro – KelModificar banco 2"_s);
    QTest::keyClicks(line, u"4"_s);
  });
  QCOMPARE(dialog.exec(), int(QDialog::Accepted));
  QCOMPARE(line->text(), u"14"_s);
}

// A run that goes on shows a box.
void tst_idle_lock::WhatComesMeanwhile() {
  QWidget window;
  window.show();
  m_lock->Lock();
  QMessageBox box(QMessageBox::Information, u"Kel: 300 cartas"_s, u"Impresas"_s, QMessageBox::Ok, &window);
  box.open();
  QVERIFY(IsCovered(window) && IsCovered(box) && Box().isVisible());
  QTRY_COMPARE(QApplication::activeModalWidget(), &Box());
  QCOMPARE(Unlock(password), QString());
  QVERIFY(box.isVisible() && box.windowTitle() == u"Kel: 300 cartas"_s);
}

void tst_idle_lock::Idle() {
  QWidget window;
  window.show();
  m_lock->SetIdle(300ms);
  for (int i = 0; i < 8; ++i) {
    QTest::qWait(100);
    QTest::keyClick(&window, Qt::Key_A);
    QVERIFY(!m_lock->IsLocked());
  }
  QTRY_VERIFY(m_lock->IsLocked());
  QCOMPARE(Unlock(password), QString());
  QTRY_VERIFY(m_lock->IsLocked());
  m_lock->SetIdle(0ms);
  QCOMPARE(Unlock(password), QString());
  QTest::qWait(400);
  QVERIFY(!m_lock->IsLocked());
}

// Renamed while at work: the box says so, and the password is that of the new name.
void tst_idle_lock::UnderAnotherName() {
  const host::RightsWatch watch(m_session, host::FindAccount(*m_office, u"marta"_s).value_or(Account()));
  m_database->Execute(u"UPDATE Usuarios SET Nombre='eva' WHERE Nombre='marta'");
  m_session.lookAtRights(*m_office);
  m_lock->Lock();
  QVERIFY(Box().findChild<QLabel*>(u"lblLocked"_s)->text().contains(u"por «eva»"_s));
  QVERIFY(Unlock(u"otra cosa"_s).startsWith(u"El usuario o la contraseña"_s));
  QCOMPARE(m_database->Query(u"SELECT Fallos FROM Claves WHERE codUsuario=1"), QStringList(u"1"_s));
  QCOMPARE(Unlock(password), QString());
}

void tst_idle_lock::UnlockedWithout_data() {
  QTest::addColumn<QString>("statement");
  QTest::newRow("database") << QString();
  QTest::newRow("user") << u"UPDATE Usuarios SET Eliminado=True WHERE Nombre='marta'"_s;
  QTest::newRow("rows") << u"DELETE FROM Claves"_s;
}

void tst_idle_lock::UnlockedWithout() {
  QFETCH(const QString, statement);
  if (statement.isEmpty()) {
    m_session.connection = nullptr;
  } else {
    m_database->Connect()->Execute(statement);
  }
  m_lock->Lock();
  QVERIFY(Unlock(u"otra cosa"_s).startsWith(u"El usuario o la contraseña"_s));
  QCOMPARE(Unlock(password), QString());
}

void tst_idle_lock::ForAnotherPerson_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<bool>("isHanded");
  QTest::newRow("administrator") << u"marta"_s << true;
  QTest::newRow("anybody") << u"inés"_s << false;
}

void tst_idle_lock::ForAnotherPerson() {
  QFETCH(const QString, name);
  int handed = 0;
  connect(m_lock.get(), &host::IdleLock::HandedOver, this, [&] { ++handed; });
  m_lock->Lock();
  support::Driver driver;
  driver.On("signIn", [&](const support::DialogUser& user) {
    user.Find<QComboBox>("cboUser")->setEditText(name);
    user.Type("txtPassword", password);
    user.Press("enter");
    if (!QTest::qWaitFor([&] { return user.Dialog()->result() == QDialog::Accepted; })) {
      throw std::runtime_error("not entered");
    }
  });
  Box().findChild<QPushButton*>(u"unlockForOther"_s)->click();
  QCOMPARE(driver.TakeProblems(), QStringList());
  QFETCH(const bool, isHanded);
  QCOMPARE(handed, isHanded ? 1 : 0);
  QVERIFY(m_lock->IsLocked());
  QCOMPARE(Box().findChild<QLabel*>(u"alert"_s)->text().contains(u"Solo un administrador"_s), !isHanded);
}

void tst_idle_lock::TheEnd_data() {
  QTest::addColumn<bool>("isSignal");
  QTest::newRow("by a signal") << true;
  QTest::newRow("with the session") << false;
}

// What dialogs ask then nobody sees.
void tst_idle_lock::TheEnd() {
  QFETCH(const bool, isSignal);
  process::TerminationSignals terminations;
  int heard = 0;
  connect(&terminations, &process::TerminationSignals::Received, this, [&] { ++heard; });
  QWidget window;
  window.show();
  m_lock->Lock();
  if (isSignal) {
    raise(SIGTERM);
  } else {
    Box().reject();
  }
  QTRY_VERIFY(!Box().isVisible() && IsCovered(window));
  QMessageBox question(QMessageBox::Question, u"Kel"_s, u"¿Desea guardar?"_s,
                       QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, &window);
  QCOMPARE(AnswerTo(question), int(QMessageBox::No));
  QMessageBox news(QMessageBox::Information, u"Kel"_s, u"Hecho"_s, QMessageBox::Ok, &window);
  QVERIFY(AnswerTo(news) != notAnswered);
  // By whoever heard signals before, and has nothing of the lock above it then.
  QTRY_COMPARE(heard, 1);
}

KEL_TEST(tst_idle_lock);

#include "tst_idle_lock.moc"
