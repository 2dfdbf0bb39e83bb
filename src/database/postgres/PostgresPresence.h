#pragma once

#include "database/postgres/PostgresHandle.h"

#include <QStringList>

namespace database {

/// Gives the session a presence (see database/Presence.h): the next number of the sequence `presencias`, under which it
/// holds an advisory lock. Waits for a preparation of the database that is under way, and raises what
/// RequireCurrentDatabase raises where that has brought it to another version.
int TakePresence(const PostgresHandle& handle);

/// Whether the session of that number has ended.
bool HasEnded(const PostgresHandle& handle, int presence);

/// Keeps every other preparation, and new presences, out until the transaction's end.
void LockForPreparation(const PostgresHandle& handle);

/// The programs of the other presences, "USER@MACHINE" each.
QStringList OtherPresences(const PostgresHandle& handle);

}  // namespace database
