#pragma once

#include "database/Schema.h"
#include "database/dialect/Target.h"

#include <QByteArrayList>

namespace database {

/// What an engine's definitions of tables and indexes say otherwise than another's.
class DdlForms {
 public:
  DdlForms() = default;
  DdlForms(const DdlForms&) = delete;
  DdlForms& operator=(const DdlForms&) = delete;
  virtual ~DdlForms() = default;

  /// How names are written.
  virtual const Target& ItsTarget() const = 0;
  /// The type of a column; of a key all that belongs to one.
  virtual QString Type(const Column& column) const = 0;
  /// What stands behind the columns of a table, with a blank in front; may be empty.
  virtual QString TableOptions() const = 0;
  /// What an index of the table covers, between parentheses, the kind of the index perhaps before.
  virtual QString Covered(const Table& table, const Index& index) const = 0;
};

/// The statements that bring a database from `fromVersion` (0 for an empty one) to `toVersion`, in order.
QByteArrayList SchemaStatements(const DdlForms& forms, const Schema& schema, int fromVersion, int toVersion);

}  // namespace database
