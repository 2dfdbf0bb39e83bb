#include "database/ServerRoles.h"

#include "database/engine/EngineBeneath.h"
#include "database/engine/EngineConnection.h"

namespace database {

namespace {

QList<ServerRole> Roles(adodb::Connection& connection, bool onlyOwn) {
  EngineConnection* engine = EngineBeneath(connection);
  return engine == nullptr ? QList<ServerRole>() : engine->Roles(onlyOwn);
}

}  // namespace

std::optional<ServerRole> OwnRole(adodb::Connection& connection) {
  const QList<ServerRole> own = Roles(connection, true);
  return own.isEmpty() ? std::nullopt : std::optional(own.constFirst());
}

QList<ServerRole> RolesOf(adodb::Connection& connection) {
  return Roles(connection, false);
}

}  // namespace database
