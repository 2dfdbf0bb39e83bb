#pragma once

#include "database/ServerRoles.h"
#include "host/records/Rights.h"
#include "host/records/Session.h"

namespace host {

/// What the program lets a person do whose role the server knows. Who may write may delete, too: the server has no
/// group between the two.
Rights RightsOf(const database::ServerRole& role);

/// Makes the session that of the connection's role, where it is on a server: its rights, and its name unless a user of
/// the table was chosen by hand. A user who is called like the role is that person. A file changes nothing. Errors of
/// the database leave it.
void UseServerRole(adodb::Connection& connection, Session& session, bool isUserChosen);

}  // namespace host
