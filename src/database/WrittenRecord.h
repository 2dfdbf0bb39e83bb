#pragma once

#include "database/Export.h"
#include "platform/adodb/Connection.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace database {

/// What a statement writes, as far as its text says it; for a host that tells other windows what has changed.
struct WrittenRecord {
  enum class Kind { Inserted, Updated, Deleted };

  Kind kind = Kind::Updated;
  QString table;  ///< As the schema spells it.
  /// The key of the only row that can be concerned: of `WHERE key = n`, perhaps AND more, or the one that an INSERT of
  /// one row brings along. None for a row that gets its key from the engine, and for a statement that may write
  /// several.
  std::optional<qint64> key;
  bool makesKey = false;  ///< An INSERT of one row that leaves its key to the engine; see NewKeyOf.
  QString condition;      ///< What stands behind WHERE, as it is written; empty without one.
  QStringList columns;    ///< What an UPDATE sets, as it is written.
};

/// Nothing for a SELECT, of which nothing more is read. Of any other raises what an execution of the statement would
/// raise for its text (see adodb::Connection::Execute); nothing is executed.
KELDATOS_EXPORT std::optional<WrittenRecord> WrittenBy(const QString& statement);

/// The key that the engine gave to the row of the connection's last INSERT into the table; nothing for a connection
/// that is not of this library, and when the connection remembers none (see CreateConnection).
KELDATOS_EXPORT std::optional<qint64> NewKeyOf(adodb::Connection& connection, const QString& table);

}  // namespace database
