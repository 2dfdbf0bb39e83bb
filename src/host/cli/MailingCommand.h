#pragma once

#include "host/cli/CommandLine.h"

namespace host {

/// The commands cartas and etiquetas: everything is read and checked, then written without a window. What is left out
/// or doubtful goes to the error output, how many there are to the usual one. Raises 5, in words, where nothing can be
/// written, and the errors of the database. Returns ExitCannotGoOn for a run that a signal ended.
int RunMailingCommand(const CommandLine& line, int& argc, char** argv);

}  // namespace host
