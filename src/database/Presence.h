#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

#include <QString>

#include <functional>

/// Who is there: on a server each session can have a number that the server itself knows to be alive or not, whatever
/// became of the program, its machine or the network between. What is entered in a table under that number belongs to
/// somebody who is there.
///
/// A number is never given twice. It ends with its session's line, at the latest half a minute after a network was cut.
/// For the first seconds of a server's life nobody counts as ended, since the programs that it cut off are coming back
/// then: 30, or what the server's setting `kel.gracia` says.
namespace database {

/// The number of this connection's session, taken at the first call; 0 for a database file, and for a connection that
/// is not of this library. The connection is open. It keeps its presence while it is closed. Raises the errors of the
/// database.
KELDATOS_EXPORT int OwnPresence(adodb::Connection& connection);

/// Whether the session of that number has certainly ended; false for a database file, and for a connection that is not
/// of this library.
KELDATOS_EXPORT bool HasEnded(adodb::Connection& connection, int presence);

/// Takes what belonged to a presence over into the new one. It uses the same connection. What it returns is the error
/// of the statement under way, which is not run then; empty where there is nothing to say. Where it raises it is called
/// again before the next statement.
using CarryOver = std::function<QString(int before, int now)>;

/// A session whose line was cut connects anew with its next statement, outside of transactions, and has another
/// number then: `carryOver` is called before that statement. It lives as long as the connection.
KELDATOS_EXPORT void OnNewPresence(adodb::Connection& connection, CarryOver carryOver);

}  // namespace database
