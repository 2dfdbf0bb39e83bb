#pragma once

#include "host/cli/CommandLine.h"

namespace host {

/// Exit codes of the program.
enum ExitCode : int { ExitDone = 0, ExitCannotGoOn = 1, ExitWrongArguments = 2, ExitWithLosses = 3 };

/// Runs a command that shows windows: the host's own window, or one dialog of the component. Tells the user, in a box
/// and on the standard error output, what keeps it from going on. `argc` and `argv` are the program's own.
int RunApplication(const CommandLine& line, int& argc, char** argv);

}  // namespace host
