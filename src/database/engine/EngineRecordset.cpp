#include "database/engine/EngineRecordset.h"

#include "database/Errors.h"
#include "database/engine/EngineConnection.h"

#include <cstring>
#include <utility>

namespace database {

namespace {

constexpr std::size_t mostAsked = 64;

// Reading by name asks this for every value, mostly of short texts.
bool IsSameText(QStringView first, const QString& second) {
  return first.size() == second.size() &&
         std::memcmp(first.utf16(), second.utf16(), static_cast<std::size_t>(first.size()) * sizeof(char16_t)) == 0;
}

}  // namespace

EngineRecordset::EngineRecordset(EngineConnection& connection, const std::vector<ResultColumn>& columns,
                                 std::unique_ptr<Rows> engineRows)
    : m_connection(&connection), m_columns(columns), m_engineRows(std::move(engineRows)) {
  connection.Attach(this);
  try {
    Step();
  } catch (...) {
    connection.Detach(this);
    throw;
  }
}

EngineRecordset::~EngineRecordset() {
  Release();
}

int EngineRecordset::State() const {
  return m_connection != nullptr ? adodb::StateOpen : adodb::StateClosed;
}

void EngineRecordset::CheckOpen() const {
  if (m_connection == nullptr) {
    throw PlatformError(adodb::ObjectClosed);
  }
}

// Letting the engine's rows go at the end ends its read, too, though the recordset stays open.
void EngineRecordset::Step() {
  m_atEnd = true;
  try {
    m_atEnd = !m_engineRows->Step();
  } catch (...) {
    m_engineRows.reset();
    throw;
  }
  if (m_atEnd) {
    m_engineRows.reset();
  }
}

bool EngineRecordset::AtEnd() const {
  CheckOpen();
  return m_atEnd;
}

void EngineRecordset::MoveNext() {
  CheckOpen();
  if (m_atEnd) {
    throw PlatformError(adodb::NoCurrentRow);
  }
  if (m_engineRows != nullptr) {
    Step();
    return;
  }
  m_rows[m_row] = Row();
  ++m_row;
  m_atEnd = m_row >= m_rows.size();
  if (m_atEnd && m_failure != nullptr) {
    std::rethrow_exception(std::exchange(m_failure, nullptr));
  }
}

// A reader asks for the same names in the same order for every row, whatever their order and spelling are.
int EngineRecordset::Find(QStringView name) {
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
int EngineRecordset::Search(QStringView name) const {
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    if (name.compare(m_columns[i].label, Qt::CaseInsensitive) == 0) {
      return static_cast<int>(i);
    }
  }
  throw PlatformError(adodb::NoSuchField);
}

QVariant EngineRecordset::Field(QStringView name) {
  CheckOpen();
  return CurrentValue(Find(name));
}

QVariant EngineRecordset::Field(int position) {
  CheckOpen();
  if (position < 0 || static_cast<std::size_t>(position) >= m_columns.size()) {
    throw PlatformError(adodb::NoSuchField);
  }
  return CurrentValue(position);
}

QVariant EngineRecordset::CurrentValue(int position) const {
  if (m_atEnd) {
    throw PlatformError(adodb::NoCurrentRow);
  }
  return m_engineRows != nullptr ? Value(position) : m_rows[m_row][static_cast<std::size_t>(position)];
}

QVariant EngineRecordset::Value(int position) const {
  QVariant value = m_engineRows->Value(position);
  if (m_columns[static_cast<std::size_t>(position)].isBoolean && value.typeId() == QMetaType::Int) {
    return value.toInt() != 0;
  }
  return value;
}

int EngineRecordset::FieldCount() const {
  CheckOpen();
  return static_cast<int>(m_columns.size());
}

QString EngineRecordset::FieldName(int position) const {
  CheckOpen();
  if (position < 0 || static_cast<std::size_t>(position) >= m_columns.size()) {
    throw PlatformError(adodb::NoSuchField);
  }
  return m_columns[static_cast<std::size_t>(position)].label;
}

void EngineRecordset::Close() {
  CheckOpen();
  Release();
}

void EngineRecordset::Release() {
  if (m_connection == nullptr) {
    return;
  }
  m_connection->Detach(this);
  m_connection = nullptr;
  m_engineRows.reset();
  m_rows.clear();
}

// What fails here is the reader's matter, not that of the statement that made the rest be read.
void EngineRecordset::Buffer() {
  try {
    ReadRest();
  } catch (...) {
    m_failure = std::current_exception();
  }
  m_atEnd = m_row >= m_rows.size();
}

void EngineRecordset::ReadRest() {
  while (m_engineRows != nullptr && !m_atEnd) {
    Row row;
    row.reserve(m_columns.size());
    for (int i = 0; i < static_cast<int>(m_columns.size()); ++i) {
      row.push_back(Value(i));
    }
    m_rows.push_back(std::move(row));
    Step();
  }
}

}  // namespace database
