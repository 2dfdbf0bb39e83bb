#pragma once

struct sqlite3;

namespace database {

/// Gives an open database the functions that written statements call (see dialect/Functions.h), and a LIKE that
/// folds the case of every script. Returns the engine's result code. Statements may call them, a database's own
/// schema may not.
int RegisterFunctions(sqlite3* engine);

}  // namespace database
