#pragma once

#include "database/engine/PlanCache.h"
#include "database/engine/Rows.h"
#include "database/postgres/PostgresPipeline.h"

#include <deque>
#include <memory>

namespace database {

class PostgresSession;

/// The rows of one SELECT as the server sends them. Before its session sends anything else, the rest is read into
/// memory.
class PostgresRows : public Rows {
 public:
  /// `pipeline` stands at the results of the statement; `session` outlives the rows.
  PostgresRows(PostgresSession& session, std::unique_ptr<PostgresPipeline> pipeline, std::shared_ptr<CachedPlan> plan);
  /// Rows that have been read.
  PostgresRows(PostgresSession& session, std::deque<PostgresResult> rows);
  ~PostgresRows() override;

  bool Step() override;
  QVariant Value(int position) const override;

  /// Reads what is left into memory. A refusal meanwhile is raised by the step that it belongs to.
  void Buffer();

 private:
  PostgresResult Take();
  void Leave();
  void Skip();

  PostgresSession& m_session;
  std::unique_ptr<PostgresPipeline> m_pipeline;  ///< Null once everything is read.
  std::shared_ptr<CachedPlan> m_plan;
  std::deque<PostgresResult> m_waiting;
  PostgresResult m_current;
  std::exception_ptr m_failure;
};

}  // namespace database
