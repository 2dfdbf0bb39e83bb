#pragma once

#include "host/access/Accounts.h"
#include "host/access/Door.h"
#include "host/access/IdleLock.h"
#include "host/access/RightsWatch.h"
#include "host/records/ComponentBridge.h"
#include "host/services/Rescue.h"

#include <QObject>

#include <memory>
#include <optional>

namespace host {

/// What a window offers of users and passwords, while a session lasts: the users' dialog, one's own password, the lock,
/// another user. Passwords are for files; on a server users are there to be looked at, and the rest is off.
class AccessDesk : public QObject {
  Q_OBJECT

 public:
  /// Borrows all but the account: whoever signed in, nobody where that is not asked for. `place` is the database as the
  /// user knows it.
  AccessDesk(ComponentBridge& bridge, Door& door, Rescue& rescue, const std::optional<Account>& account,
             const QString& place, bool isFile);

  /// On a server everybody may look at who else may what.
  bool MaySeeUsers() const;
  /// A user has signed in, or would at the next start.
  bool AsksForPasswords() const { return m_lock != nullptr; }
  /// The session is to end, and another one to begin.
  bool IsOtherUserWanted() const { return m_isOtherWanted; }

  // These show errors, and the window goes on.

  void ShowUsers(QWidget* window);
  /// After somebody may have changed who is asked for a password, and when the program locks.
  void ReadSettings();
  void ChangeOwnPassword(QWidget* window);
  void Lock();
  /// The window closes after that, unless the user keeps it.
  void WantOtherUser(bool isWanted) { m_isOtherWanted = isWanted; }

 Q_SIGNALS:
  /// AsksForPasswords or MaySeeUsers say otherwise now.
  void Changed();
  /// The session has become one for viewing.
  void Reduced(const QString& text);

 private:
  void Begin(const Account& account);
  void ShowServerUsers(QWidget* window);
  void HandOver();

  ComponentBridge& m_bridge;
  Door& m_door;
  Rescue& m_rescue;
  QString m_place;
  bool m_isFile;
  bool m_isOtherWanted = false;
  std::unique_ptr<RightsWatch> m_rights;
  std::unique_ptr<IdleLock> m_lock;
};

}  // namespace host
