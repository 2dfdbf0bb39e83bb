#include "database/postgres/PostgresRows.h"

#include "database/postgres/PostgresErrors.h"
#include "database/postgres/PostgresSession.h"
#include "database/postgres/PostgresTypes.h"
#include "platform/automation/Conversion.h"

#include <libpq-fe.h>

#include <charconv>
#include <limits>

namespace database {

namespace {

// Reading a few rows costs less than asking the server to stop.
constexpr int mostSkipped = 1000;

QVariant WholeNumber(qint64 value) {
  const bool isShort = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
  return isShort ? QVariant(static_cast<int>(value)) : QVariant(static_cast<qlonglong>(value));
}

// Digits without a point are a whole number, unless the type has fractions only.
QVariant Number(std::string_view digits, unsigned type) {
  const char* const end = digits.data() + digits.size();
  if (type != postgres::float8 && type != postgres::float4) {
    qint64 whole = 0;
    const auto [last, error] = std::from_chars(digits.data(), end, whole);
    if (error == std::errc() && last == end) {
      return WholeNumber(whole);
    }
  }
  double value = 0;
  std::from_chars(digits.data(), end, value);
  return value;
}

}  // namespace

PostgresRows::PostgresRows(PostgresSession& session, std::unique_ptr<PostgresPipeline> pipeline,
                           std::shared_ptr<CachedPlan> plan)
    : m_session(session), m_pipeline(std::move(pipeline)), m_plan(std::move(plan)) {}

PostgresRows::PostgresRows(PostgresSession& session, std::deque<PostgresResult> rows)
    : m_session(session), m_waiting(std::move(rows)) {}

PostgresRows::~PostgresRows() {
  Skip();
}

// Null behind the last row.
PostgresResult PostgresRows::Take() {
  PostgresResult result = m_pipeline->Next();
  if (PQresultStatus(result.get()) == PGRES_SINGLE_TUPLE) {
    return result;
  }
  Leave();
  return nullptr;
}

// The session may send again, whatever came of this.
void PostgresRows::Leave() {
  m_session.EndRead(*this);
  const std::unique_ptr<PostgresPipeline> pipeline = std::move(m_pipeline);
  m_session.Conclude(*pipeline, pipeline->HasFailed() ? NamesOf(m_plan->plan.readTables) : QString());
}

void PostgresRows::Buffer() {
  try {
    while (m_pipeline != nullptr) {
      if (PostgresResult result = Take()) {
        m_waiting.push_back(std::move(result));
      }
    }
  } catch (...) {
    m_failure = std::current_exception();
  }
}

void PostgresRows::Skip() {
  try {
    for (int i = 0; m_pipeline != nullptr && i < mostSkipped; ++i) {
      Take();
    }
    if (m_pipeline != nullptr) {
      m_session.Cancel();
      while (m_pipeline != nullptr) {
        Take();
      }
    }
  } catch (...) {  // NOLINT: nobody asks for these rows any more
  }
}

bool PostgresRows::Step() {
  m_current.reset();
  if (!m_waiting.empty()) {
    m_current = std::move(m_waiting.front());
    m_waiting.pop_front();
  } else if (m_failure != nullptr) {
    std::rethrow_exception(m_failure);
  } else if (m_pipeline != nullptr) {
    m_current = Take();
  }
  return m_current != nullptr;
}

QVariant PostgresRows::Value(int position) const {
  const PGresult* row = m_current.get();
  if (PQgetisnull(row, 0, position) != 0) {
    return automation::Null();
  }
  const std::string_view bytes(PQgetvalue(row, 0, position), static_cast<std::size_t>(PQgetlength(row, 0, position)));
  switch (const unsigned type = PQftype(row, position)) {
    case postgres::int2:
    case postgres::int4:
    case postgres::int8:
    case postgres::float4:
    case postgres::float8:
    case postgres::numeric:
      return Number(bytes, type);
    default:
      return TextFromServer(bytes);
  }
}

}  // namespace database
