#include "database/sqlite/SqliteConnection.h"

#include "database/Errors.h"
#include "database/sqlite/SqliteErrors.h"
#include "database/sqlite/SqlitePreparation.h"
#include "database/sqlite/SqliteRecordset.h"

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace database {

SqliteConnection::SqliteConnection(const ConnectionString& target) : m_target(target) {}

SqliteConnection::SqliteConnection(SqliteHandle handle) : m_target(handle.Target()), m_handle(std::move(handle)) {}

SqliteConnection::~SqliteConnection() {
  if (m_handle) {
    Close();
  }
}

int SqliteConnection::State() const {
  return m_handle ? adodb::StateOpen : adodb::StateClosed;
}

void SqliteConnection::Open() {
  if (m_handle) {
    throw PlatformError(ObjectOpen);
  }
  OpenTarget(m_target);
}

void SqliteConnection::Open(const QString& connectionString, const QString& /*user*/, const QString& /*password*/,
                            int /*options*/) {
  if (m_handle) {
    throw PlatformError(ObjectOpen);
  }
  if (connectionString.isEmpty()) {
    OpenTarget(m_target);
    return;
  }
  const ConnectionString target(connectionString);
  if (target.Engine() != m_target.Engine()) {
    throw BadConnectionString(u"esta conexión es de otro motor"_s);
  }
  OpenTarget(target);
  m_target = target;
}

void SqliteConnection::OpenTarget(const ConnectionString& target) {
  SqliteHandle handle(target, SqliteHandle::Missing::Refuse);
  RequireCurrentDatabase(handle);
  m_handle.emplace(std::move(handle));
}

void SqliteConnection::CheckOpen() const {
  if (!m_handle) {
    throw PlatformError(ObjectClosed);
  }
}

// What the planner knows of the tables is refreshed on the way out, but nobody waits for it.
void SqliteConnection::Close() {
  CheckOpen();
  while (!m_recordsets.empty()) {
    m_recordsets.back()->Close();
  }
  m_cache.Clear();
  m_inTransaction = false;
  sqlite3* engine = m_handle->Engine();
  if (!m_handle->IsAutocommit()) {
    sqlite3_exec(engine, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  if (!m_handle->IsReadOnly()) {
    m_handle->SetWait(0);
    sqlite3_exec(engine, "PRAGMA optimize", nullptr, nullptr, nullptr);
  }
  m_handle.reset();
}

automation::Error SqliteConnection::Refusal(int code) const {
  return EngineError(m_handle->Engine(), code, m_target);
}

void SqliteConnection::Detach(SqliteRecordset* recordset) {
  const auto found = std::find(m_recordsets.begin(), m_recordsets.end(), recordset);
  if (found != m_recordsets.end()) {
    *found = m_recordsets.back();
    m_recordsets.pop_back();
  }
}

std::unique_ptr<adodb::Recordset> SqliteConnection::Execute(const QString& statement) {
  CheckOpen();
  if (m_inTransaction && m_handle->IsAutocommit()) {
    throw PlatformError(TransactionLost);
  }
  m_affected = 0;
  m_lexer.Read(statement);
  StatementLease lease = m_cache.Take(*m_handle, statement, m_lexer);
  Bind(lease.Statement(), lease.ItsPlan(), statement);
  if (lease.ItsPlan().returnsRows) {
    return std::make_unique<SqliteRecordset>(*this, std::move(lease));
  }
  RunWrite(lease);
  return std::make_unique<SqliteRecordset>();
}

// Every literal is converted before the first is handed over, because the texts share one piece of memory.
// A statement that only writes is done with them when Execute returns; a select needs its own copies.
void SqliteConnection::Bind(sqlite3_stmt* statement, const Plan& plan, QStringView text) {
  m_texts.clear();
  m_boundTexts.clear();
  int parameter = 0;
  for (const Binding& binding : plan.bindings) {
    ++parameter;
    const Token& literal = m_lexer.Literals()[static_cast<std::size_t>(binding.literal)];
    const EngineValue value = ConvertLiteral(literal, binding.negated, binding.conversion, binding.column);
    const std::size_t offset = m_texts.size();
    switch (value.kind) {
      case EngineValue::Kind::Integer:
        m_handle->Check(sqlite3_bind_int64(statement, parameter, value.integer));
        continue;
      case EngineValue::Kind::Real:
        m_handle->Check(sqlite3_bind_double(statement, parameter, value.real));
        continue;
      case EngineValue::Kind::TokenText:
        AppendUtf8(m_texts, literal, text);
        break;
      case EngineValue::Kind::OwnText:
        AppendUtf8(m_texts, value.text);
        break;
    }
    m_boundTexts.push_back({parameter, offset, m_texts.size() - offset});
  }
  for (const BoundText& bound : m_boundTexts) {
    m_handle->Check(sqlite3_bind_text64(statement, bound.parameter, m_texts.data() + bound.offset, bound.size,
                                        plan.returnsRows ? SQLITE_TRANSIENT : SQLITE_STATIC, SQLITE_UTF8));
  }
}

void SqliteConnection::RunWrite(StatementLease& lease) {
  BufferRecordsets();
  const int code = sqlite3_step(lease.Statement());
  if (code != SQLITE_DONE) {
    throw Refusal(code);
  }
  m_affected = sqlite3_changes64(m_handle->Engine());
}

// An open read would make the engine refuse a write after another program's, and would see this one's rows.
void SqliteConnection::BufferRecordsets() {
  for (SqliteRecordset* recordset : m_recordsets) {
    recordset->Buffer();
  }
}

void SqliteConnection::BeginTrans() {
  CheckOpen();
  if (m_inTransaction) {
    throw PlatformError(TransactionActive);
  }
  BufferRecordsets();
  m_handle->Run("BEGIN IMMEDIATE");
  m_inTransaction = true;
}

void SqliteConnection::CommitTrans() {
  CheckOpen();
  if (!m_inTransaction) {
    throw PlatformError(NoTransaction);
  }
  if (m_handle->IsAutocommit()) {
    m_inTransaction = false;
    throw PlatformError(TransactionLost);
  }
  m_handle->Run("COMMIT");
  m_inTransaction = false;
}

void SqliteConnection::RollbackTrans() {
  CheckOpen();
  if (!m_inTransaction) {
    throw PlatformError(NoTransaction);
  }
  m_inTransaction = false;
  if (!m_handle->IsAutocommit()) {
    m_handle->Run("ROLLBACK");
  }
}

}  // namespace database
