#include "host/access/AccessDesk.h"

#include "host/access/NewPassword.h"
#include "host/access/ServerUsersDialog.h"
#include "host/access/UsersDialog.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"

#include <QApplication>

#include <csignal>

using namespace Qt::StringLiterals;

namespace host {

AccessDesk::AccessDesk(ComponentBridge& bridge, Door& door, Rescue& rescue, const std::optional<Account>& account,
                       const QString& place, bool isFile)
    : m_bridge(bridge), m_door(door), m_rescue(rescue), m_place(place), m_isFile(isFile) {
  if (account) {
    Begin(*account);
    m_lock->SetIdle(std::chrono::minutes(IdleMinutes(bridge.OpenConnection())));
  }
}

bool AccessDesk::MaySeeUsers() const {
  return !m_isFile || (!m_bridge.Session().readOnly && m_bridge.Session().IsAdministrator());
}

void AccessDesk::Begin(const Account& account) {
  // A file dialog of the desktop's own could not be covered.
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  m_rights = std::make_unique<RightsWatch>(m_bridge.Session(), account);
  m_lock = std::make_unique<IdleLock>(m_bridge.Session(), m_door, m_rescue, account, m_place);
  connect(m_rights.get(), &RightsWatch::Reduced, this, [this](const QString& text) {
    Q_EMIT Reduced(text);
    Q_EMIT Changed();
  });
  connect(m_lock.get(), &IdleLock::HandedOver, this, &AccessDesk::HandOver);
}

void AccessDesk::ShowUsers(QWidget* window) {
  if (!m_isFile) {
    ShowServerUsers(window);
    return;
  }
  UsersDialog dialog(m_bridge, window);
  connect(&dialog, &UsersDialog::SettingsChanged, this, &AccessDesk::ReadSettings);
  dialog.exec();
}

void AccessDesk::ShowServerUsers(QWidget* window) {
  try {
    ServerUsersDialog(m_bridge.Session(), window).exec();
  } catch (const automation::Error& error) {
    ShowError(window, m_bridge.Session().title, u"No se han podido leer los usuarios."_s, error);
  }
}

void AccessDesk::ReadSettings() {
  if (!m_isFile) {
    return;
  }
  try {
    adodb::Connection& connection = m_bridge.OpenConnection();
    const bool asks = host::AsksForPasswords(connection);
    const std::optional<Account> own = ReadAccount(connection, m_bridge.Session().userId);
    if (!asks) {
      m_rights.reset();
      m_lock.reset();
    } else if (!m_lock && own) {
      Begin(*own);
    }
    if (m_lock) {
      m_lock->SetIdle(std::chrono::minutes(IdleMinutes(connection)));
    }
  } catch (const automation::Error& error) {
    ShowError(QApplication::activeWindow(), m_bridge.Session().title, u"No se han podido leer los ajustes."_s, error);
  }
  Q_EMIT Changed();
}

void AccessDesk::ChangeOwnPassword(QWidget* window) {
  ChooseOwnPassword(m_bridge.Session(), u"La contraseña con la que entra usted."_s, &m_door, window);
}

void AccessDesk::Lock() {
  if (m_lock) {
    m_lock->Lock();
  }
}

// By the way of every end: dialogs close, what was typed is kept.
void AccessDesk::HandOver() {
  m_isOtherWanted = true;
  raise(SIGTERM);
}

}  // namespace host
