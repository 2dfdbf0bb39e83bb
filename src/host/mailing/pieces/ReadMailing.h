#pragma once

#include "host/mailing/pieces/LabelMailing.h"
#include "host/mailing/pieces/LetterMailing.h"

#include <memory>

namespace host {

/// Reads a mailing as the database is at one moment, on a connection of its own, so that any thread may. Raises what
/// the mailing and the database raise.
std::unique_ptr<LetterMailing> ReadLetters(const QString& connectionString, const LetterWish& wish, int userId);
std::unique_ptr<LabelMailing> ReadLabels(const QString& connectionString, const LabelWish& wish, int userId);

}  // namespace host
