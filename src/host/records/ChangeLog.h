#pragma once

#include "platform/adodb/Connection.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace host {

/// What happened to a record. The numbers are stored.
enum class ChangeKind {
  Added = 1,
  Changed = 2,
  Deleted = 3,    ///< Marked as deleted, or its row taken out.
  Recovered = 4,  ///< The mark was taken away.
  Several = 5,    ///< One statement wrote several rows of the table, it is not known which.
  /// The record stayed as it was; its lock was taken from whoever held it.
  LockReleased = 6,
};

/// "Agregado", "Cambiado", ...
QString KindText(ChangeKind kind);

/// A column before and after, as texts (automation::Text): of a long one the first 200 characters, of one without a
/// usual length, such as a letter's, only how many characters it had.
struct ColumnChange {
  QString column;
  QString before;
  QString after;
};

/// A note of the change log, the host's table Cambios.
struct Change {
  qint64 number = 0;  ///< Grows from note to note.
  QDateTime moment;   ///< UTC.
  int userId = 0;
  QString userName;
  QString machine;
  QString program = {};  ///< Of which run of a program; see OfficeConnection::Program.
  QString table;         ///< As the schema spells it.
  qint64 key = 0;        ///< 0 for several rows.
  QString name;          ///< The record's, as lists name it; for several rows the condition that they met.
  ChangeKind kind = ChangeKind::Changed;
  QList<ColumnChange> columns =
      {};        ///< Those that differ, of a new record those that are not empty; none for several rows.
  int rows = 1;  ///< How many were written.
};

/// The number of the newest note, 0 for none. Errors of the database leave every function.
qint64 NewestChange(adodb::Connection& connection);

/// The notes with higher numbers than `number`, in their order, at most `most` of them.
QList<Change> ChangesAfter(adodb::Connection& connection, qint64 number, int most);

/// The notes about single records of these tables, the newest first, at most `most`; of locks none.
QList<Change> NewestChanges(adodb::Connection& connection, const QStringList& tables, int most);

/// The last note of what was done to a record; nothing where it has none.
std::optional<Change> LastChangeOf(adodb::Connection& connection, const QString& table, qint64 key);

/// When the records of a table were written last, as the log has it (ISO format, UTC), by their keys: of those whose
/// keys meet the condition ("=3"), of all without one.
QHash<int, QString> LastChanges(adodb::Connection& connection, const QString& table, const QString& condition);

/// What was done to a record, the newest first, at most `most` notes.
QList<Change> ChangesOf(adodb::Connection& connection, const QString& table, qint64 key, int most);

/// The first note with a higher number than `number` of a record's lock that was taken from whoever held it; nothing
/// where it has none.
std::optional<Change> LockReleaseAfter(adodb::Connection& connection, qint64 number, const QString& table, qint64 key);

/// Deletes the notes from before that moment.
void ForgetChangesBefore(adodb::Connection& connection, const QDateTime& moment);

}  // namespace host
