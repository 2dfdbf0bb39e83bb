#pragma once

#include "database/ConnectionString.h"
#include "platform/automation/Error.h"

struct sqlite3;

namespace database {

/// The error for a refusal of the engine: a number of platform/adodb/ErrorNumbers.h (or 6, 7, 13) and a Spanish text
/// that says what happened to which file and what to do. `code` is the engine's extended result code.
automation::Error EngineError(sqlite3* engine, int code, const ConnectionString& target);

}  // namespace database
