#pragma once

#include "host/cli/CommandLine.h"
#include "host/desktop/NextStart.h"

#include <optional>

namespace host {

/// Whether a start with these arguments leaves it to the user which database is opened.
bool MayChooseDatabase(const CommandLine& line);

/// The connection string of the database that the arguments name, the same however they name it.
QString DatabaseOf(const CommandLine& line);

/// The arguments with the database that the window opens: the one that was chosen last or the usual one, else the one
/// that the user says now. Nothing where the user gives up.
std::optional<CommandLine> FirstDatabase(const CommandLine& line);
/// The same after those of `failed` could not be opened: a copy may take the place of their file.
std::optional<CommandLine> OtherDatabase(const CommandLine& line, const CommandLine& failed);

/// Puts a copy in its place, where one is wanted, and returns the arguments for what comes then. Says what was done or
/// why it was not. The database is closed.
CommandLine PrepareNext(const NextStart& next, const CommandLine& line);

}  // namespace host
