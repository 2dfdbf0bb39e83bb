#pragma once

#include <QString>

#include <optional>

namespace host {

/// Asks for the password of a database on a server in a box; nothing when the user gives up. See database/Password.h.
std::optional<QString> AskPasswordInBox(const QString& shown, bool isRepeated);

/// The same on the terminal, which shows nothing of what is typed; nothing without a terminal.
std::optional<QString> AskPasswordOnTerminal(const QString& shown, bool isRepeated);

}  // namespace host
