#pragma once

#include "database/Database.h"
#include "platform/automation/Error.h"

namespace database {

/// What a database says of itself.
struct DatabaseState {
  int version = 0;      ///< Of the schema.
  bool isEmpty = true;  ///< Nothing in it.
  bool isOurs = false;  ///< It has this program's mark.
};

/// The database under a connection that is being prepared, as its engine offers it. Everything is asked inside one
/// transaction that keeps every other preparation out.
class PreparedDatabase {
 public:
  PreparedDatabase() = default;
  PreparedDatabase(const PreparedDatabase&) = delete;
  PreparedDatabase& operator=(const PreparedDatabase&) = delete;
  virtual ~PreparedDatabase() = default;

  /// The name for messages.
  virtual QString ShownName() const = 0;
  virtual DatabaseState State() const = 0;
  /// Makes the tables of the schema, in an empty database.
  virtual void Create(const Schema& schema) const = 0;
  /// Brings the tables from an older version up to the schema's.
  virtual void Migrate(const Schema& schema, int fromVersion) const = 0;
};

/// Refuses what this program must not touch: raises NewerDatabase and NotOurDatabase. An older database and an empty
/// one without anybody's mark will do.
void RefuseForeign(const DatabaseState& state, const QString& shownName);

/// The error for a database that must be prepared before it is used.
automation::Error OlderDatabaseError(const QString& shownName);

/// Creates or migrates, and fills a new database, in one transaction of the connection; a current database stays as it
/// is. Raises what RefuseForeign raises and the engine's refusals.
void BringUpToDate(adodb::Connection& connection, const PreparedDatabase& database, Content content);

}  // namespace database
