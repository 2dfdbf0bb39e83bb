#pragma once

#include "host/cli/CommandLine.h"

namespace host {

/// Brings the data of another program's file in, after a copy, and tells what became of them; only administrators may,
/// while nobody has a record open. The exit code: ExitDone where all came in or would, ExitWithLosses where something
/// would be left out and so nothing was written. Errors leave it.
int RunImportCommand(const CommandLine& line, int& argc, char** argv);

/// Writes tables to files for other programs.
int RunExportCommand(const CommandLine& line, int& argc, char** argv);

}  // namespace host
