#pragma once

#include "database/Database.h"
#include "database/Export.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

/// What keeps a database alive besides its use: copies, restoring one, checks, the rights on a server. Errors are those
/// of platform/adodb/ErrorNumbers.h. Nothing here changes rows; every function may run in a thread of its own.
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
/// user's alone; then opens and checks the copy. A copy is always a file of the engine for files; that of a server has
/// all rows with their keys, but no locks and no passwords. An existing `file` is refused with CannotOpen; a copy that
/// does not pass is deleted, and DatabaseDamaged raised. The file appears under its name only when it is whole.
KELDATOS_EXPORT CopySize CopyDatabase(const QString& connectionString, const QString& file, const Stop& stop = {});

/// What is in a file that may take the place of a database.
struct CopyContent {
  int version = 0;              ///< Of the schema; 0 for a file that no program of this kind made.
  QHash<QString, qint64> rows;  ///< How many live rows each table has that marks deleted ones.
};

/// Looks into a copy without checking or changing it. Raises what opening a file for viewing raises.
KELDATOS_EXPORT CopyContent LookIntoCopy(const QString& copy);

/// Checks `copy` and puts it in the place of the database's file, or makes that file. Gives the name under which the
/// replaced file stays in its folder, empty where there was none. On a server its rows take the place of the tables,
/// which stay in a schema of the name that is given. Raises DatabaseLocked while any program has the database open, and
/// leaves everything as it was after an error.
KELDATOS_EXPORT QString RestoreDatabase(const QString& copy, const QString& connectionString);

/// What a check found, a sentence each, in Spanish.
struct Findings {
  QStringList integrity;   ///< Pages, rows and tables.
  QStringList indexes;     ///< Missing ones, and ones that don't agree with their tables.
  QStringList references;  ///< Live rows that name a row that does not exist.
  QStringList lengths;     ///< Texts that are longer than what their columns are made for; they fit all the same.

  bool IsSound() const { return (integrity + indexes + references).isEmpty(); }
};

/// Looks at everything; on a server at what can be asked of it, pages are its administrator's. Raises what opening
/// raises.
KELDATOS_EXPORT Findings CheckDatabase(const QString& connectionString);

/// What SetUpServer did.
struct ServerSetUp {
  QStringList groups;           ///< The groups of people, those that may most first.
  bool rebuiltIndexes = false;  ///< Those of texts, which were made by older rules of order.
};

/// Makes what a database on a server needs besides itself, or brings it up to date: the tables (see PrepareDatabase),
/// groups for its people and their rights, and the indexes of texts after the server's rules of order have changed.
/// Raises DatabaseReadOnly, saying what is lacking, for a user who may not do that, and InvalidConnectionString for a
/// file.
KELDATOS_EXPORT ServerSetUp SetUpServer(const QString& connectionString, Content content);

/// The engine's own quick check, for a start after an unclean end: what is wrong, nothing for a sound file.
KELDATOS_EXPORT QStringList QuickCheck(const QString& connectionString);

/// Whether the last program that had the file open ended without closing it, and none has it open now. Asked before the
/// file is opened. A server looks after itself: false.
KELDATOS_EXPORT bool WasLeftOpen(const QString& connectionString);

}  // namespace database
