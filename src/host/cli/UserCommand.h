#pragma once

#include "host/cli/CommandLine.h"

namespace host {

/// `kel-host usuarios`: prints who may enter and how, gives a user a new first password, or makes one an administrator
/// again. For the owner of the file; on a server there are no passwords of the program's. Raises what is to be told.
void RunUserCommand(const CommandLine& line);

}  // namespace host
