#include "host/access/ServerPeople.h"

#include "host/access/Accounts.h"

namespace host {

namespace {

constexpr int administratorKind = 1;
constexpr int usualKind = 2;

}  // namespace

Rights RightsOf(const database::ServerRole& role) {
  switch (role.rights) {
    case database::RoleRights::Looks:
      return Rights::Viewer;
    case database::RoleRights::Writes:
      return Rights::ChangesAndDeletes;
    case database::RoleRights::Administers:
    case database::RoleRights::Owns:
      return Rights::Administrator;
  }
  return Rights::Viewer;
}

void UseServerRole(adodb::Connection& connection, Session& session, bool isUserChosen) {
  const std::optional<database::ServerRole> role = database::OwnRole(connection);
  if (!role) {
    return;
  }
  const Rights rights = RightsOf(*role);
  session.userKind = rights == Rights::Administrator ? administratorKind : usualKind;
  session.readOnly = session.readOnly || rights == Rights::Viewer;
  if (isUserChosen) {
    return;
  }
  session.userName = role->name;
  if (const std::optional<Account> account = FindAccount(connection, role->name)) {
    session.userId = account->id;
  }
}

}  // namespace host
