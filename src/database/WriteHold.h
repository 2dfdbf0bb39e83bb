#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

#include <QStringList>

namespace database {

/// Inside a transaction of this connection: until its end nobody else writes to these tables, reading goes on. What is
/// asked of them now still holds when the transaction ends. Whoever holds tables that others write to in one
/// transaction names them in the order in which those write: parents first.
///
/// A database file needs none of it, since a transaction has it for itself from its beginning. Nothing happens on a
/// connection that is not of this library. Raises NoTransaction, NoSuchTable, DatabaseLocked where others write longer
/// than the connection waits, and what losing the server raises; the transaction has to be rolled back then.
KELDATOS_EXPORT void HoldWrites(adodb::Connection& connection, const QStringList& tables);

}  // namespace database
