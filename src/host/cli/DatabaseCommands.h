#pragma once

#include "host/cli/CommandLine.h"

#include "database/Maintenance.h"

namespace host {

/// The commands copia, restaurar, preparar and comprobar: what they did, or what a check found, as a text for the user.
/// The errors of the database leave them.
QString CopyCommand(const CommandLine& line);
QString RestoreCommand(const CommandLine& line);
QString SetUpCommand(const CommandLine& line);

struct CheckOutcome {
  QString report;
  bool isSound = true;
};
CheckOutcome CheckCommand(const CommandLine& line);

}  // namespace host
