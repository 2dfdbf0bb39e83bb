#pragma once

#include "database/engine/Ddl.h"

namespace database {

/// Tables and indexes as PostgreSQL defines them.
class PostgresDdl : public DdlForms {
 public:
  const Target& ItsTarget() const override;
  QString Type(const Column& column) const override;
  QString TableOptions() const override { return {}; }
  /// An index of one text, alone or with the mark of deleted rows, only finds equal ones: an ordered one would take
  /// no text of more than 2,700 bytes.
  QString Covered(const Table& table, const Index& index) const override;
};

/// The statements that make the schema of the server's that everything stands in, which must be the first of the search
/// path, the Spanish collation and the functions that statements use (PostgresTarget). All run as they stand on a
/// server with ICU.
QByteArray FoundationStatements(const QByteArray& schemaName);

/// The statement that makes the sequence of presences.
QByteArray PresenceStatement();

}  // namespace database
