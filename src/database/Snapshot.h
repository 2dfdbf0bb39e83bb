#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

namespace database {

/// Begins a transaction that only reads: all its statements see the database as the first one found it, whatever others
/// write meanwhile, and nobody waits for it. A database for viewing has it, too. It ends like any other; nothing may be
/// written in it. On a connection that is not of this library it is an ordinary transaction. Raises what beginning one
/// raises.
KELDATOS_EXPORT void BeginSnapshot(adodb::Connection& connection);

}  // namespace database
