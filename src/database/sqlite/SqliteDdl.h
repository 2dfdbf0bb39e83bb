#pragma once

#include "database/engine/Ddl.h"

namespace database {

/// Tables and indexes of SQLite: types are enforced, texts compare by Spanish rules, a key is never used twice.
class SqliteDdl : public DdlForms {
 public:
  const Target& ItsTarget() const override;
  QString Type(const Column& column) const override;
  QString TableOptions() const override;
  QString Covered(const Table& table, const Index& index) const override;
};

}  // namespace database
