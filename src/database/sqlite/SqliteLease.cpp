#include "database/sqlite/SqliteLease.h"

#include "database/dialect/Literal.h"

#include <sqlite3.h>

#include <vector>

namespace database {

namespace {

constexpr std::size_t mostIdle = 4;

// The prepared statements of a plan that are not in use.
class IdleStatements : public PreparedForms {
 public:
  static IdleStatements& Of(CachedPlan& plan) {
    if (plan.prepared == nullptr) {
      plan.prepared = std::make_unique<IdleStatements>();
    }
    return static_cast<IdleStatements&>(*plan.prepared);
  }

  SqliteStatement Take(const SqliteHandle& handle, const QByteArray& sql) {
    if (m_statements.empty()) {
      return handle.Prepare(sql);
    }
    SqliteStatement taken = std::move(m_statements.back());
    m_statements.pop_back();
    return taken;
  }

  void GiveBack(SqliteStatement statement) {
    sqlite3_reset(statement.get());
    if (m_statements.size() < mostIdle) {
      m_statements.push_back(std::move(statement));
    }
  }

 private:
  std::vector<SqliteStatement> m_statements;
};

}  // namespace

SqliteLease::SqliteLease(const SqliteHandle& handle, std::shared_ptr<CachedPlan> plan, const ParameterValues& values,
                         Texts texts)
    : m_plan(std::move(plan)), m_statement(IdleStatements::Of(*m_plan).Take(handle, m_plan->plan.sql)) {
  Bind(handle, values, texts);
}

SqliteLease::~SqliteLease() {
  IdleStatements::Of(*m_plan).GiveBack(std::move(m_statement));
}

void SqliteLease::Bind(const SqliteHandle& handle, const ParameterValues& values, Texts texts) const {
  const sqlite3_destructor_type care = texts == Texts::Copied ? SQLITE_TRANSIENT : SQLITE_STATIC;
  int parameter = 0;
  for (const ParameterValues::Value& value : values.Values()) {
    ++parameter;
    switch (value.kind) {
      case ParameterValues::Kind::Integer:
        handle.Check(sqlite3_bind_int64(Statement(), parameter, value.integer));
        break;
      case ParameterValues::Kind::Real:
        handle.Check(sqlite3_bind_double(Statement(), parameter, value.real));
        break;
      case ParameterValues::Kind::Amount:
        handle.Check(sqlite3_bind_double(Statement(), parameter, MoneyToDouble(value.integer)));
        break;
      case ParameterValues::Kind::Text: {
        const std::string_view text = values.TextOf(value);
        handle.Check(sqlite3_bind_text64(Statement(), parameter, text.data(), text.size(), care, SQLITE_UTF8));
        break;
      }
    }
  }
}

}  // namespace database
