#pragma once

#include "database/Export.h"

#include <QString>
#include <QStringList>

#include <functional>

/// What keeps a database file alive besides its use: copies, restoring one, checks. Errors are those of
/// platform/adodb/ErrorNumbers.h. Nothing here changes rows; every function may run in a thread of its own.
namespace database {

/// Asked now and then during long work, which ends with error 18 when the answer is true.
using Stop = std::function<bool()>;

/// False where only reading is possible: the connection string says so, the process may not write an existing file or
/// its folder, the server's user has no right to, or the server is a replica. Connects to a server, and raises what
/// that raises.
KELDATOS_EXPORT bool MayBeWritten(const QString& connectionString);

/// The same database for reading only.
KELDATOS_EXPORT QString ForViewing(const QString& connectionString);

/// What a copy holds.
struct CopySize {
  qint64 bytes = 0;
  int tables = 0;
  qint64 rows = 0;
};

/// Copies the database as it is at one moment, while others go on writing, into the new file `file`, which is the
/// user's alone; then opens and checks the copy. An existing `file` is refused with CannotOpen; a copy that does not
/// pass is deleted, and DatabaseDamaged raised. The file appears under its name only when it is whole.
KELDATOS_EXPORT CopySize CopyDatabase(const QString& connectionString, const QString& file, const Stop& stop = {});

/// Checks `copy` and puts it in the place of the database's file, or makes that file. Gives the name under which the
/// replaced file stays in its folder, empty where there was none. Raises DatabaseLocked while any program has the
/// database open, and leaves everything as it was after an error.
KELDATOS_EXPORT QString RestoreDatabase(const QString& copy, const QString& connectionString);

/// What a check found, a sentence each, in Spanish.
struct Findings {
  QStringList integrity;   ///< Pages, rows and tables.
  QStringList indexes;     ///< Missing ones, and ones that don't agree with their tables.
  QStringList references;  ///< Live rows that name a row that does not exist.
  QStringList lengths;     ///< Texts that are longer than what their columns are made for; they fit all the same.

  bool IsSound() const { return (integrity + indexes + references).isEmpty(); }
};

/// Looks at everything. Raises what opening the file raises.
KELDATOS_EXPORT Findings CheckDatabase(const QString& connectionString);

/// The engine's own quick check, for a start after an unclean end: what is wrong, nothing for a sound file.
KELDATOS_EXPORT QStringList QuickCheck(const QString& connectionString);

/// Whether the last program that had the file open ended without closing it, and none has it open now. Asked before the
/// file is opened. A server looks after itself: false.
KELDATOS_EXPORT bool WasLeftOpen(const QString& connectionString);

}  // namespace database
