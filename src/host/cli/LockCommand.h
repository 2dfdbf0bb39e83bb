#pragma once

#include "host/cli/CommandLine.h"

namespace host {

/// `kel-host bloqueos`: prints who holds which record since when; with a lock's number releases that one instead.
/// Raises 5 for a number that no lock has, and the errors of the database, which is neither made nor migrated.
void RunLockCommand(const CommandLine& line);

}  // namespace host
