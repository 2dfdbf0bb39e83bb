#pragma once

#include "database/Export.h"

#include <QString>

#include <functional>
#include <optional>

namespace database {

/// Asks a person for the password of a database on a server; `shown` names the database (see Place), and `isRepeated`
/// says that the last answer was refused. Nothing where nobody answers. Called on the thread that connects.
using PasswordQuestion = std::function<std::optional<QString>(const QString& shown, bool isRepeated)>;

/// From now on `question` is asked where a server wants a password that neither ~/.pgpass nor the service file has. An
/// answer that serves is remembered while the program runs, for further connections, and is written nowhere.
KELDATOS_EXPORT void SetPasswordQuestion(PasswordQuestion question);

}  // namespace database
