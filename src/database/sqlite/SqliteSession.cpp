#include "database/sqlite/SqliteSession.h"

#include "database/Schema.h"
#include "database/sqlite/SqlitePreparation.h"
#include "database/sqlite/SqliteRows.h"
#include "database/sqlite/SqliteTarget.h"

#include "platform/automation/Error.h"

#include <sqlite3.h>

namespace database {

const Target& SqliteSession::ItsTarget() const {
  return SqliteTarget::Instance();
}

void SqliteSession::Connect(const ConnectionString& target) {
  SqliteHandle handle(target, SqliteHandle::Missing::Refuse);
  RequireCurrentDatabase(handle);
  m_handle.emplace(std::move(handle));
  m_isPlainUse = !m_handle->IsReadOnly();
}

// What the planner knows of the tables is refreshed on the way out, but nobody waits for it.
void SqliteSession::Leave() {
  UndoOpenTransaction();
  if (m_isPlainUse) {
    m_handle->SetWait(0);
    sqlite3_exec(m_handle->Engine(), "PRAGMA optimize", nullptr, nullptr, nullptr);
  }
  m_handle.reset();
}

void SqliteSession::UndoOpenTransaction() {
  if (!m_handle->IsAutocommit()) {
    sqlite3_exec(m_handle->Engine(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

bool SqliteSession::Pause() {
  UndoOpenTransaction();
  return m_isPlainUse && m_handle->IsAutocommit();
}

// Not the file that has the name now: it was restored, deleted or moved.
bool SqliteSession::Resume() {
  int hasMoved = 0;
  const int code = sqlite3_file_control(m_handle->Engine(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
  if (code != SQLITE_OK || hasMoved != 0) {
    return false;
  }
  try {
    return m_handle->Value("PRAGMA user_version").toInt() == SchemaVersion();
  } catch (const automation::Error&) {
    return false;
  }
}

qint64 SqliteSession::Clock() const {
  return m_handle->Value("PRAGMA data_version").toLongLong();
}

std::unique_ptr<Rows> SqliteSession::Read(std::shared_ptr<CachedPlan> plan, const ParameterValues& values) {
  return std::make_unique<SqliteRows>(*m_handle, std::move(plan), values);
}

qint64 SqliteSession::Write(const std::shared_ptr<CachedPlan>& plan, const ParameterValues& values) {
  const SqliteLease lease(*m_handle, plan, values, SqliteLease::Texts::Borrowed);
  const int code = sqlite3_step(lease.Statement());
  if (code != SQLITE_DONE) {
    m_handle->Check(code);
  }
  return sqlite3_changes64(m_handle->Engine());
}

qint64 SqliteSession::NewKey() const {
  return sqlite3_last_insert_rowid(m_handle->Engine());
}

void SqliteSession::Begin() {
  m_handle->Run("BEGIN IMMEDIATE");
}

// The log keeps what was there when the first statement read it.
void SqliteSession::BeginSnapshot() {
  m_handle->Run("BEGIN");
}

void SqliteSession::Commit() {
  m_handle->Run("COMMIT");
}

void SqliteSession::RollBack() {
  m_handle->Run("ROLLBACK");
}

bool SqliteSession::HasLostTransaction() const {
  return m_handle->IsAutocommit();
}

}  // namespace database
