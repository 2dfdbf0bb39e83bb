#pragma once

#include "database/Place.h"
#include "host/cli/CommandLine.h"
#include "host/desktop/NextStart.h"
#include "host/records/OfficeConnection.h"
#include "host/records/Session.h"

#include <QString>

#include <memory>
#include <optional>

namespace host {

/// The database of a session, prepared and open, and the session on it.
struct StartedSession {
  QString connectionString;
  Session session;
  std::unique_ptr<OfficeConnection> connection;  ///< The session's.
  database::Place place;
  std::optional<NextStart> next;  ///< What the window left the session for.
  bool leftOpen = false;          ///< The last program that had the file open ended without closing it.
};

/// The database that the arguments name.
struct Target {
  QString connectionString;
  database::Place place;
  bool isUsual = false;  ///< The file that is used when the arguments name none.
};

Target TargetOf(const CommandLine& line);

/// Raises CannotOpen for a file that is not there, unless it is the usual one or the arguments allow a new one, whose
/// folder then must be there. A mistyped path makes nothing. A database on a server always has been made there.
void RequireWanted(const Target& target, const CommandLine& line);

/// Whether who runs the program owns the database's file, and so is an administrator on the command line.
bool OwnsFile(const database::Place& place);

/// Prepares the database that the arguments name, opens it and signs the user in. Raises the errors of the database,
/// RequireWanted, CannotOpen where everybody may write in a folder on the way, NoSuchTable for a file that lacks a
/// table, and 5 for a user that does not exist. A database that can't be written is opened for viewing.
std::unique_ptr<StartedSession> StartSession(const CommandLine& line);

/// The file of the database when the arguments name none, in the user's data folder.
QString UsualDatabaseFile(bool demonstration);

}  // namespace host
