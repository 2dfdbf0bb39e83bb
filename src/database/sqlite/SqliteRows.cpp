#include "database/sqlite/SqliteRows.h"

#include "database/engine/EngineText.h"
#include "platform/automation/Conversion.h"

#include <sqlite3.h>

#include <limits>

namespace database {

namespace {

QVariant WholeNumber(sqlite3_int64 value) {
  const bool isShort = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
  return isShort ? QVariant(static_cast<int>(value)) : QVariant(static_cast<qlonglong>(value));
}

}  // namespace

SqliteRows::SqliteRows(const SqliteHandle& handle, std::shared_ptr<CachedPlan> plan, const ParameterValues& values)
    : m_handle(handle), m_lease(handle, std::move(plan), values, SqliteLease::Texts::Copied) {}

bool SqliteRows::Step() {
  const int code = sqlite3_step(m_lease.Statement());
  if (code != SQLITE_ROW && code != SQLITE_DONE) {
    m_handle.Check(code);
  }
  return code == SQLITE_ROW;
}

// The value is looked up once; without the engine's mutexes (SqliteHandle opens without) that is as safe as asking for
// type, text and length of the column one by one.
QVariant SqliteRows::Value(int position) const {
  sqlite3_value* value = sqlite3_column_value(m_lease.Statement(), position);
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return automation::Null();
    case SQLITE_INTEGER:
      return WholeNumber(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
      return sqlite3_value_double(value);
    default: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
      return TextFromEngine({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
    }
  }
}

}  // namespace database
