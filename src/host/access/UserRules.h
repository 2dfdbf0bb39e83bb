#pragma once

#include "host/access/Accounts.h"
#include "host/access/OfficePolicy.h"
#include "host/records/Session.h"

namespace host {

/// What administrators say of a user.
struct UserData {
  QString name;  ///< By which one enters; live users have different ones.
  QString fullName;
  Rights rights = Rights::ChangesAndDeletes;
};

/// The changes of users, each in a transaction and noted in the change log, never with a password. The session's user
/// has to be an administrator at that moment: of two who take away each other's rights at once, the second one is
/// refused, so that one always stays. Nobody takes rights from himself. A session without a user (0) is the command
/// line of the file's owner, who may do all.
///
/// What is refused raises InvalidProcedureCall with what to do; errors of the database leave all of it.
class UserRules {
 public:
  /// Borrows the session, whose connection is open.
  explicit UserRules(Session& session) : m_session(session) {}

  /// The new user's key. Without a password nobody enters by it.
  int Add(const UserData& data);
  void Change(int id, const UserData& data);
  /// A password that somebody else knows has to be changed by its user at the entry.
  void SetPassword(int id, const QString& hash);
  void SwitchOff(int id, bool isOff);
  /// From now on a user and a password are asked for. This user is the first to have one, and gets that name.
  void TurnOn(const QString& name, const QString& hash);
  void TurnOff();
  /// Minutes without use, 0 for never.
  void LockAfter(int minutes);
  /// What holds for all users of the database; changed by somebody else meanwhile it is refused, so that nobody takes
  /// back what was not seen. On a server the role's rights decide who may.
  void ChangeForAll(const OfficePolicy& before, const OfficePolicy& wanted);

  /// One's own password, for which nobody needs rights.
  void ChangeOwnPassword(const QString& hash);
  /// The same password by today's parameters.
  void Rehash(int id, const QString& hash);

 private:
  class Step;

  Session& m_session;
};

}  // namespace host
