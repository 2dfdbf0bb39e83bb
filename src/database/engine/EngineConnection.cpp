#include "database/engine/EngineConnection.h"

#include "database/Errors.h"
#include "database/engine/EngineRecordset.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace database {

EngineConnection::EngineConnection(std::unique_ptr<Session> session, const ConnectionString& target)
    : m_session(std::move(session)), m_target(target), m_plans(m_session->ItsTarget()) {}

EngineConnection::~EngineConnection() {
  if (m_session->IsConnected()) {
    EngineConnection::Close();
  }
}

int EngineConnection::State() const {
  return m_session->IsConnected() ? adodb::StateOpen : adodb::StateClosed;
}

void EngineConnection::Open() {
  CheckClosed();
  m_session->Connect(m_target);
}

void EngineConnection::Open(const QString& connectionString, const QString& /*user*/, const QString& /*password*/,
                            int /*options*/) {
  CheckClosed();
  if (connectionString.isEmpty()) {
    m_session->Connect(m_target);
    return;
  }
  const ConnectionString target(connectionString);
  if (target.Engine() != m_target.Engine()) {
    throw BadConnectionString(u"esta conexión es de otro motor"_s);
  }
  m_session->Connect(target);
  m_target = target;
}

void EngineConnection::CheckOpen() const {
  if (!m_session->IsConnected()) {
    throw PlatformError(adodb::ObjectClosed);
  }
}

void EngineConnection::CheckClosed() const {
  if (m_session->IsConnected()) {
    throw PlatformError(adodb::ObjectOpen);
  }
}

void EngineConnection::Close() {
  CheckOpen();
  while (!m_recordsets.empty()) {
    m_recordsets.back()->Close();
  }
  m_plans.Clear();
  m_inTransaction = false;
  m_session->Leave();
}

void EngineConnection::Detach(EngineRecordset* recordset) {
  const auto found = std::find(m_recordsets.begin(), m_recordsets.end(), recordset);
  if (found != m_recordsets.end()) {
    *found = m_recordsets.back();
    m_recordsets.pop_back();
  }
}

std::unique_ptr<adodb::Recordset> EngineConnection::Execute(const QString& statement) {
  CheckOpen();
  if (m_inTransaction && m_session->HasLostTransaction()) {
    throw PlatformError(adodb::TransactionLost);
  }
  m_affected = 0;
  m_lexer.Read(statement);
  const std::shared_ptr<CachedPlan> plan = m_plans.Take(statement, m_lexer);
  m_values.Convert(plan->plan, m_lexer.Literals(), statement);
  if (plan->plan.returnsRows) {
    return std::make_unique<EngineRecordset>(*this, plan->plan.columns, m_session->Read(plan, m_values));
  }
  BufferRecordsets();
  m_affected = m_session->Write(plan, m_values);
  return std::make_unique<EngineRecordset>();
}

// An open read would make the engine refuse a write after another program's, and would see this one's rows.
void EngineConnection::BufferRecordsets() {
  for (EngineRecordset* recordset : m_recordsets) {
    recordset->Buffer();
  }
}

void EngineConnection::BeginTrans() {
  CheckOpen();
  if (m_inTransaction) {
    throw PlatformError(adodb::TransactionActive);
  }
  BufferRecordsets();
  m_session->Begin();
  m_inTransaction = true;
}

void EngineConnection::CheckInTransaction() const {
  CheckOpen();
  if (!m_inTransaction) {
    throw PlatformError(adodb::NoTransaction);
  }
}

void EngineConnection::CommitTrans() {
  CheckInTransaction();
  if (m_session->HasLostTransaction()) {
    m_inTransaction = false;
    throw PlatformError(adodb::TransactionLost);
  }
  m_session->Commit();
  m_inTransaction = false;
}

void EngineConnection::RollbackTrans() {
  CheckInTransaction();
  m_inTransaction = false;
  if (!m_session->HasLostTransaction()) {
    m_session->RollBack();
  }
}

}  // namespace database
