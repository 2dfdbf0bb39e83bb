#pragma once

#include "host/cli/CommandLine.h"
#include "host/services/Session.h"
#include "platform/adodb/Connection.h"

#include <QString>

#include <memory>

namespace host {

/// The database of a session, prepared and open, and the session on it.
struct StartedSession {
  std::unique_ptr<adodb::Connection> connection;
  QString connectionString;
  Session session;
  QString database;  ///< The database as the user knows it: a path, or the connection string.
};

/// Prepares the database that the arguments name, opens it and signs the user in. Raises the errors of the database,
/// and 5 for a user that does not exist.
std::unique_ptr<StartedSession> StartSession(const CommandLine& line);

/// The connection string of the database that the arguments name.
QString ConnectionStringOf(const CommandLine& line);

/// The file of the database when the arguments name none, in the user's data folder.
QString UsualDatabaseFile(bool demonstration);

}  // namespace host
