#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

#include <QList>
#include <QString>

#include <optional>

/// Who people are on a server: each one has a role of theirs, and the server says what it may. A file knows none.
namespace database {

enum class RoleRights {
  Looks,
  Writes,
  Administers,  ///< Also writes the table of users.
  Owns,         ///< Also makes and migrates the tables.
};

struct ServerRole {
  QString name;
  QString group;  ///< The one of the database's groups that may most and that it belongs to; empty for none.
  RoleRights rights = RoleRights::Looks;
  /// Of the server's administrator, who may everything whatever the groups.
  bool isSuperuser = false;
};

/// The role of this connection's session; nothing for a database file, and for a connection that is not of this
/// library. The connection is open. Raises the errors of the database.
KELDATOS_EXPORT std::optional<ServerRole> OwnRole(adodb::Connection& connection);

/// The same of everybody who may open the database, by name.
KELDATOS_EXPORT QList<ServerRole> RolesOf(adodb::Connection& connection);

}  // namespace database
