#pragma once

#include "database/engine/Rows.h"
#include "database/sqlite/SqliteLease.h"

namespace database {

/// The rows of one SELECT, stepped through as they are read.
class SqliteRows : public Rows {
 public:
  /// `handle` outlives the rows.
  SqliteRows(const SqliteHandle& handle, std::shared_ptr<CachedPlan> plan, const ParameterValues& values);

  bool Step() override;
  QVariant Value(int position) const override;

 private:
  const SqliteHandle& m_handle;
  SqliteLease m_lease;
};

}  // namespace database
