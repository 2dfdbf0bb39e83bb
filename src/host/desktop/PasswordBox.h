#pragma once

#include <QString>

#include <optional>

namespace host {

/// Asks for the password of a database on a server in a box; nothing when the user gives up. See database/Password.h.
std::optional<QString> AskPasswordInBox(const QString& shown, bool isRepeated);

/// Asks on the terminal and reads a line that shows nowhere; nothing for an empty one.
std::optional<QString> ReadUnseen(const QString& question);

/// The first one on the terminal, which shows nothing of what is typed; nothing without a terminal.
std::optional<QString> AskPasswordOnTerminal(const QString& shown, bool isRepeated);

}  // namespace host
