#pragma once

#include <QString>

#include <optional>

namespace letters {

/// Asks for a letter's name until there is one, or the user gives up: then nothing. `prompt` is a string number.
///
/// Names are as typed. One of blanks only is taken once the user has said that he wants to type a name; that is
/// intended.
std::optional<QString> AskName(int prompt);

}  // namespace letters
