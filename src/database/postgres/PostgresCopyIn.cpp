#include "database/postgres/PostgresCopyIn.h"

#include "database/postgres/PostgresErrors.h"
#include "database/postgres/PostgresParameters.h"
#include "database/postgres/PostgresTarget.h"

#include <libpq-fe.h>

namespace database {

namespace {

constexpr qsizetype sentAtOnce = 64 * 1024;

// COPY's text format: tabs between values, a line for each row, the backslash before what means one of these.
void AppendValue(QByteArray& line, const CarriedValue& value) {
  if (value.kind == CarriedValue::Kind::Null) {
    line += "\\N";
    return;
  }
  if (value.kind == CarriedValue::Kind::Number) {
    line += value.digits;
    return;
  }
  const QByteArray utf8 = value.text.toUtf8();
  const QByteArray bytes = BytesForServer({utf8.constData(), static_cast<std::size_t>(utf8.size())});
  for (const char c : bytes) {
    switch (c) {
      case '\t':
        line += "\\t";
        break;
      case '\n':
        line += "\\n";
        break;
      case '\r':
        line += "\\r";
        break;
      case '\\':
        line += "\\\\";
        break;
      default:
        line += c;
    }
  }
}

QByteArray ColumnsOf(const Table& table) {
  QByteArray names;
  for (const Column& column : table.columns) {
    names += (names.isEmpty() ? "" : ", ") + PostgresTarget::Instance().Name(column.name).toUtf8();
  }
  return names;
}

}  // namespace

PostgresCopyIn::PostgresCopyIn(const PostgresHandle& handle, const Table& table) : m_handle(handle) {
  const QByteArray sql =
      "COPY " + PostgresTarget::Instance().Name(table.name).toUtf8() + " (" + ColumnsOf(table) + ") FROM STDIN";
  const PostgresResult result(PQexec(handle.Engine(), sql.constData()));
  m_isOpen = PQresultStatus(result.get()) == PGRES_COPY_IN;
  if (!m_isOpen) {
    throw ServerError(result.get(), handle.Target());
  }
}

PostgresCopyIn::~PostgresCopyIn() {
  if (m_isOpen) {
    PQputCopyEnd(m_handle.Engine(), "given up");
    while (PostgresResult(PQgetResult(m_handle.Engine())) != nullptr) {
    }
  }
}

void PostgresCopyIn::Add(const CarriedRow& row) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (i > 0) {
      m_waiting += '\t';
    }
    AppendValue(m_waiting, row[i]);
  }
  m_waiting += '\n';
  if (m_waiting.size() > sentAtOnce) {
    Send();
  }
}

void PostgresCopyIn::Send() {
  RequireSuccess(PQputCopyData(m_handle.Engine(), m_waiting.constData(), static_cast<int>(m_waiting.size())) == 1);
  m_waiting.resize(0);
}

void PostgresCopyIn::RequireSuccess(bool succeeded) const {
  if (!succeeded) {
    throw ServerError(nullptr, m_handle.Target());
  }
}

// A refusal of a row comes here, however early the row was.
void PostgresCopyIn::Finish() {
  Send();
  m_isOpen = false;
  RequireSuccess(PQputCopyEnd(m_handle.Engine(), nullptr) == 1);
  PostgresResult refused;
  while (PostgresResult result = PostgresResult(PQgetResult(m_handle.Engine()))) {
    if (PQresultStatus(result.get()) != PGRES_COMMAND_OK) {
      refused = std::move(result);
    }
  }
  if (refused != nullptr || !m_handle.IsAlive()) {
    throw ServerError(refused.get(), m_handle.Target());
  }
}

}  // namespace database
