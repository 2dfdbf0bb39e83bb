#include "database/sqlite/SqliteRecordset.h"

#include "database/Errors.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqliteText.h"
#include "platform/automation/Conversion.h"

#include <sqlite3.h>

#include <cstring>
#include <limits>

namespace database {

namespace {

constexpr std::size_t mostAsked = 64;

QVariant WholeNumber(sqlite3_int64 value) {
  const bool isShort = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
  return isShort ? QVariant(static_cast<int>(value)) : QVariant(static_cast<qlonglong>(value));
}

// Reading by name asks this for every value, mostly of short texts.
bool IsSameText(QStringView first, const QString& second) {
  return first.size() == second.size() &&
         std::memcmp(first.utf16(), second.utf16(), static_cast<std::size_t>(first.size()) * sizeof(char16_t)) == 0;
}

}  // namespace

SqliteRecordset::SqliteRecordset(SqliteConnection& connection, StatementLease lease)
    : m_connection(&connection), m_lease(std::move(lease)), m_columns(m_lease.ItsPlan().columns) {
  connection.Attach(this);
  try {
    Step();
  } catch (...) {
    connection.Detach(this);
    throw;
  }
}

SqliteRecordset::~SqliteRecordset() {
  Release();
}

int SqliteRecordset::State() const {
  return m_connection != nullptr ? adodb::StateOpen : adodb::StateClosed;
}

void SqliteRecordset::CheckOpen() const {
  if (m_connection == nullptr) {
    throw PlatformError(ObjectClosed);
  }
}

// Giving the statement back at the end ends the engine's read, too, though the recordset stays open.
void SqliteRecordset::Step() {
  const int code = sqlite3_step(m_lease.Statement());
  m_atEnd = code != SQLITE_ROW;
  if (!m_atEnd) {
    return;
  }
  if (code == SQLITE_DONE) {
    m_lease.Return();
    return;
  }
  const automation::Error error = m_connection->Refusal(code);
  m_lease.Return();
  throw error;
}

bool SqliteRecordset::AtEnd() const {
  CheckOpen();
  return m_atEnd;
}

void SqliteRecordset::MoveNext() {
  CheckOpen();
  if (m_atEnd) {
    throw PlatformError(NoCurrentRow);
  }
  if (m_lease.Statement() != nullptr) {
    Step();
    return;
  }
  m_rows[m_row] = Row();
  ++m_row;
  m_atEnd = m_row >= m_rows.size();
}

// A reader asks for the same names in the same order for every row, whatever their order and spelling are.
int SqliteRecordset::Find(QStringView name) {
  for (std::size_t i = 0; i < m_asked.size(); ++i) {
    const Asked& candidate = m_asked[m_nextAsked];
    m_nextAsked = m_nextAsked + 1 < m_asked.size() ? m_nextAsked + 1 : 0;
    if (IsSameText(name, candidate.name)) {
      return candidate.column;
    }
  }
  const int column = Search(name);
  if (m_asked.size() < mostAsked) {
    m_asked.push_back({name.toString(), column});
    m_nextAsked = 0;
  }
  return column;
}

// Where two columns have one name, the first is meant.
int SqliteRecordset::Search(QStringView name) const {
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    if (name.compare(m_columns[i].label, Qt::CaseInsensitive) == 0) {
      return static_cast<int>(i);
    }
  }
  throw PlatformError(NoSuchField);
}

QVariant SqliteRecordset::Field(QStringView name) {
  CheckOpen();
  return CurrentValue(Find(name));
}

QVariant SqliteRecordset::Field(int position) {
  CheckOpen();
  if (position < 0 || static_cast<std::size_t>(position) >= m_columns.size()) {
    throw PlatformError(NoSuchField);
  }
  return CurrentValue(position);
}

QVariant SqliteRecordset::CurrentValue(int position) const {
  if (m_atEnd) {
    throw PlatformError(NoCurrentRow);
  }
  return m_lease.Statement() != nullptr ? Value(position) : m_rows[m_row][static_cast<std::size_t>(position)];
}

// The value is looked up once; without the engine's mutexes (SqliteHandle opens without) that is as safe as asking for
// type, text and length of the column one by one.
QVariant SqliteRecordset::Value(int position) const {
  sqlite3_value* value = sqlite3_column_value(m_lease.Statement(), position);
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return automation::Null();
    case SQLITE_INTEGER: {
      const sqlite3_int64 number = sqlite3_value_int64(value);
      return m_columns[static_cast<std::size_t>(position)].isBoolean ? QVariant(number != 0) : WholeNumber(number);
    }
    case SQLITE_FLOAT:
      return sqlite3_value_double(value);
    default: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
      return TextFromEngine({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
    }
  }
}

int SqliteRecordset::FieldCount() const {
  CheckOpen();
  return static_cast<int>(m_columns.size());
}

QString SqliteRecordset::FieldName(int position) const {
  CheckOpen();
  if (position < 0 || static_cast<std::size_t>(position) >= m_columns.size()) {
    throw PlatformError(NoSuchField);
  }
  return m_columns[static_cast<std::size_t>(position)].label;
}

void SqliteRecordset::Close() {
  CheckOpen();
  Release();
}

void SqliteRecordset::Release() {
  if (m_connection == nullptr) {
    return;
  }
  m_connection->Detach(this);
  m_connection = nullptr;
  m_lease.Return();
  m_rows.clear();
}

void SqliteRecordset::Buffer() {
  while (m_lease.Statement() != nullptr && !m_atEnd) {
    Row row;
    row.reserve(m_columns.size());
    for (int i = 0; i < static_cast<int>(m_columns.size()); ++i) {
      row.push_back(Value(i));
    }
    m_rows.push_back(std::move(row));
    Step();
  }
  m_atEnd = m_row >= m_rows.size();
}

}  // namespace database
