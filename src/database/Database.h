#pragma once

#include "database/Export.h"
#include "database/Schema.h"
#include "platform/adodb/Connection.h"

#include <QString>

#include <chrono>
#include <memory>

/// The database of a host: a connection that runs the dialect of the component's statements, and the preparation
/// (schema, migrations, reference data) of the database behind it. Which engine is in use shows nowhere but in the
/// connection string.
///
/// Connection string: `key=value` pairs separated by semicolons, keys without regard to case, in any order:
///   - `Motor`    the engine: `sqlite`, the default, or `postgres` (PostgreSQL 15 or newer, with ICU)
///   - `Archivo`  the database file, for `sqlite`
///   - `Servidor`, `Puerto`, `Base`, `Usuario`, or `Servicio` (an entry of the service file of the server's library),
///   for
///     `postgres`; a folder as `Servidor` is that of a local socket. Left out, they are what that library takes: its
///     variables, the user's own name. `postgresql://usuario@servidor:puerto/base` stands for all of them, and
///     further keys may follow. A password in either is refused; it belongs into `~/.pgpass`. Beyond this machine the
///     line must be encrypted.
///   - `Acceso`   `escritura` (the default) or `lectura`: nothing may be written
///   - `Espera`   milliseconds to wait for another program's lock, 0 to 600000; 5000 when left out
/// A value with ';', '=', blanks at its ends or quotes stands between double or single quotes, the quote itself
/// doubled inside: `Motor=sqlite;Archivo="/datos/a;b.db"`.
///
/// Texts are Unicode. A lone surrogate, which is no character, is stored as U+FFFD; every other code unit, NUL
/// included, comes back as it went in. A column's length is what boxes and lists are made for: a longer text fits in
/// any engine, nothing is cut or refused, and the check of the database names it.
///
/// On a server everything stands in a schema `kel` of the database, which must exist; its encoding is UTF-8. A text of
/// more than 2,600 bytes fits everywhere but in columns of unique indexes and in those that are indexed together with
/// others (StatementTooBig).
///
/// A file database keeps a log beside its file while it is open, so that file and folder must be writable; one that
/// is not is refused with DatabaseReadOnly or CannotOpen, unless it is opened for reading (see MayBeWritten and
/// ForViewing of database/Maintenance.h). Its text indexes follow Spanish ordering rules that other tools lack: they
/// can copy the file, but not change its texts.
///
/// Errors are automation::Error; besides the numbers of adodb::Connection, those of platform/adodb/ErrorNumbers.h.
namespace database {

/// What PrepareDatabase fills a new database with.
enum class Content {
  Reference,      ///< Countries, provinces, percentages, headings, the configuration row, an administrator.
  Demonstration,  ///< The same and an invented organisation: banks, collaborators, donations, subscriptions.
};

/// A closed connection to the database that `connectionString` names. Opening it does not create or migrate
/// anything: prepare the database first. A connection belongs to the thread that opened it.
///
/// Closing undoes and ends everything, but the object keeps the engine's session, and so the file, for the next opening
/// with the same string; deleting the object lets it go, and restoring the database lets all of them go. A session on a
/// file that was replaced or brought to another version meanwhile is let go, too, and one that only reads is never
/// kept.
///
/// The key that the engine gives to a new row is remembered: `SELECT MAX(key) FROM table` gives that one, once,
/// whatever other programs add meanwhile; with a WHERE, where the new row meets it, and otherwise Null. It is forgotten
/// at a roll-back, at Close, and with the next change of the table.
/// Raises InvalidConnectionString for a text it cannot read or an unknown engine.
KELDATOS_EXPORT std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString);
/// The same with another wait than the string's, for whoever waits by itself.
KELDATOS_EXPORT std::unique_ptr<adodb::Connection> CreateConnection(const QString& connectionString,
                                                                    std::chrono::milliseconds wait);
/// How long a connection of that string waits for another program's lock.
KELDATOS_EXPORT std::chrono::milliseconds WaitOf(const QString& connectionString);

/// `Motor=sqlite;Archivo=...` for a path, quoted where the path needs it.
KELDATOS_EXPORT QString ConnectionStringForFile(const QString& path);

/// Creates the database (and its folder) when it is missing, for the user alone (modes 0600 and 0700), migrates an
/// older one, and leaves a current one as it is; `content` only matters for a database that is created or still empty.
/// Everything happens in one transaction: after an error the database is what it was. Two programs may prepare the same
/// one at once. Raises NewerDatabase, leaving the file untouched, for a database that a newer version of this program
/// wrote, NotOurDatabase for one that holds foreign tables, and the engine's refusals.
KELDATOS_EXPORT void PrepareDatabase(const QString& connectionString, Content content);

}  // namespace database
