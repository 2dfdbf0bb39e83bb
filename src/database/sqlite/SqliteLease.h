#pragma once

#include "database/engine/ParameterValues.h"
#include "database/engine/PlanCache.h"
#include "database/sqlite/SqliteHandle.h"

#include <memory>

namespace database {

/// The use of one prepared statement of a plan: nobody else gets it meanwhile, and it is reset, so that it holds no
/// lock, and given back to the plan at the end.
class SqliteLease {
 public:
  /// Whether the bound texts must outlive the values: copies cost time.
  enum class Texts { Copied, Borrowed };

  /// A statement of the plan that is not in use, or one that is prepared now, with the values bound. Raises the
  /// engine's refusal.
  SqliteLease(const SqliteHandle& handle, std::shared_ptr<CachedPlan> plan, const ParameterValues& values, Texts texts);
  SqliteLease(const SqliteLease&) = delete;
  SqliteLease& operator=(const SqliteLease&) = delete;
  ~SqliteLease();

  sqlite3_stmt* Statement() const { return m_statement.get(); }

 private:
  void Bind(const SqliteHandle& handle, const ParameterValues& values, Texts texts) const;

  std::shared_ptr<CachedPlan> m_plan;
  SqliteStatement m_statement;
};

}  // namespace database
