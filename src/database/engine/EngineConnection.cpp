#include "database/engine/EngineConnection.h"

#include "database/Errors.h"
#include "database/engine/EngineRecordset.h"
#include "database/engine/KeptSessions.h"
#include "database/engine/RememberedKey.h"
#include "platform/adodb/ErrorNumbers.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace database {

EngineConnection::EngineConnection(std::unique_ptr<Session> session, const ConnectionString& target)
    : m_session(std::move(session)),
      m_target(target),
      m_isOpen(m_session->IsConnected()),
      m_plans(m_session->ItsTarget()) {}

EngineConnection::~EngineConnection() {
  if (m_isOpen) {
    EngineConnection::Close();
  }
  KeptSessions::Instance().Remove(this);
  LeaveSession();
}

int EngineConnection::State() const {
  return m_isOpen ? adodb::StateOpen : adodb::StateClosed;
}

void EngineConnection::Open() {
  CheckClosed();
  Enter(m_target);
}

void EngineConnection::Open(const QString& connectionString, const QString& /*user*/, const QString& /*password*/,
                            int /*options*/) {
  CheckClosed();
  if (connectionString.isEmpty()) {
    Enter(m_target);
    return;
  }
  const ConnectionString target(connectionString);
  if (target.Engine() != m_target.Engine()) {
    throw BadConnectionString(u"esta conexión es de otro motor"_s);
  }
  Enter(target);
  m_target = target;
}

void EngineConnection::Enter(const ConnectionString& target) {
  KeptSessions::Instance().Remove(this);
  if (!(target == m_target)) {
    m_presence = m_lastPresence = 0;
  }
  if (!m_session->IsConnected() || !(target == m_target) || !m_session->Resume()) {
    Connect(target);
  }
  m_isOpen = true;
}

void EngineConnection::Connect(const ConnectionString& target) {
  LeaveSession();
  const int before = std::exchange(m_presence, 0);
  m_lastPresence = m_lastPresence == 0 ? before : m_lastPresence;
  m_session->Connect(target);
}

void EngineConnection::LeaveSession() {
  m_plans.Clear();
  if (m_session->IsConnected()) {
    m_session->Leave();
  }
}

void EngineConnection::CheckOpen() const {
  if (!m_isOpen) {
    throw PlatformError(adodb::ObjectClosed);
  }
}

void EngineConnection::CheckClosed() const {
  if (m_isOpen) {
    throw PlatformError(adodb::ObjectOpen);
  }
}

void EngineConnection::Close() {
  CheckOpen();
  while (!m_recordsets.empty()) {
    m_recordsets.back()->Close();
  }
  m_keys.ForgetAll();
  m_announced.Set({}, false);
  m_inTransaction = false;
  m_isOpen = false;
  if (m_session->IsConnected() && m_session->Pause()) {
    KeptSessions::Instance().Add(this);
  } else {
    LeaveSession();
  }
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
  if (!m_announced.HasRun(statement)) {
    if (m_inTransaction && m_session->HasLostTransaction()) {
      throw PlatformError(adodb::TransactionLost);
    }
    Revive();
  }
  try {
    return Run(statement);
  } catch (const automation::Error&) {
    // What only reads may be asked again.
    const bool mayGoOn = !m_isReviving && !m_inTransaction && m_session->NeedsNewLine() && !m_lexer.Tokens().empty() &&
                         m_lexer.Tokens().front().IsWord(u"SELECT");
    const bool isOutdated = m_session->MustPrepareAnew();
    if (!mayGoOn && !isOutdated) {
      throw;
    }
    m_plans.Clear();
  }
  Revive();
  return Run(statement);
}

void EngineConnection::Revive() {
  if (m_isReviving) {
    return;
  }
  const QScopedValueRollback reviving(m_isReviving, true);
  const bool isCut = !m_session->IsConnected() || m_session->NeedsNewLine();
  if (!isCut && m_lastPresence == 0) {
    return;
  }
  if (isCut) {
    m_keys.ForgetAll();
    Connect(m_target);
  }
  // A transaction begins on the server with its first statement, which is still to come.
  m_session->RollBack();
  if (m_lastPresence != 0) {
    CarryPresenceOver();
  }
  if (m_inTransaction) {
    m_session->Begin();
  }
}

void EngineConnection::CarryPresenceOver() {
  if (m_presence == 0) {
    m_presence = m_session->TakePresence();
  }
  const QString said = m_carryOver ? m_carryOver(m_lastPresence, m_presence) : QString();
  m_lastPresence = 0;
  if (!said.isEmpty()) {
    throw automation::Error(adodb::TransactionLost, said);
  }
}

void EngineConnection::HoldWrites(const std::vector<const Table*>& tables) {
  CheckInTransaction();
  BufferRecordsets();
  m_session->HoldWrites(tables);
}

int EngineConnection::Presence() {
  CheckOpen();
  Revive();
  if (m_presence == 0) {
    m_presence = m_session->TakePresence();
  }
  return m_presence;
}

bool EngineConnection::HasEnded(int presence) {
  CheckOpen();
  Revive();
  return m_session->HasEnded(presence);
}

QList<ServerRole> EngineConnection::Roles(bool onlyOwn) {
  CheckOpen();
  Revive();
  return m_session->Roles(onlyOwn);
}

std::unique_ptr<adodb::Recordset> EngineConnection::Run(const QString& statement) {
  m_affected = 0;
  if (m_announced.GoTo(statement)) {
    RunAnnounced();
    if (std::optional<StatementOutcome> outcome = m_announced.Take()) {
      return Answer(std::move(*outcome));
    }
    m_announced.Drop();
  }
  m_lexer.Read(statement);
  const std::shared_ptr<CachedPlan> plan = m_plans.Take(statement, m_lexer);
  const Effect& effect = plan->plan.effect;
  if (effect.maximumOf != nullptr) {
    if (const std::optional<qint64> key = m_keys.Take(*effect.maximumOf)) {
      return AnswerMaximum(statement, plan->plan, *key);
    }
  }
  m_values.Convert(plan->plan, m_lexer.Literals(), statement);
  if (plan->plan.returnsRows) {
    return std::make_unique<EngineRecordset>(*this, plan->plan.columns, m_session->Read(plan, m_values));
  }
  BufferRecordsets();
  m_affected = m_session->Write(plan, m_values);
  NoteKey(effect, m_session->NewKey());
  return std::make_unique<EngineRecordset>();
}

void EngineConnection::Announce(const QStringList& statements, bool commits) {
  if (m_session->GainsByAnnouncements()) {
    m_announced.Set(statements, commits);
  }
}

std::optional<ReadyStatement> EngineConnection::MakeReady(const QString& statement) {
  m_lexer.Read(statement);
  ReadyStatement ready{m_plans.Take(statement, m_lexer), {}};
  const Plan& plan = ready.plan->plan;
  if (plan.effect.maximumOf != nullptr || !(plan.returnsRows || m_inTransaction)) {
    return std::nullopt;
  }
  ready.values.Convert(plan, m_lexer.Literals(), statement);
  return ready;
}

// As many of the announced statements as can go together; what is wrong with another one is said when it is asked for.
void EngineConnection::RunAnnounced() {
  const QStringList& statements = m_announced.Statements();
  if (m_announced.HasRun(statements.constFirst())) {
    return;
  }
  std::vector<ReadyStatement> ready;
  try {
    for (const QString& statement : statements) {
      std::optional<ReadyStatement> next = MakeReady(statement);
      if (!next) {
        break;
      }
      ready.push_back(std::move(*next));
    }
  } catch (const automation::Error&) {  // NOLINT(bugprone-empty-catch): see above
  }
  const bool commits = m_announced.Commits() && std::ssize(ready) == statements.size();
  if (ready.size() > 1 || (commits && !ready.empty())) {
    BufferRecordsets();
    m_announced.SetOutcomes(m_session->RunAhead(ready, commits));
  }
}

std::unique_ptr<adodb::Recordset> EngineConnection::Answer(StatementOutcome outcome) {
  if (outcome.failure != nullptr) {
    std::rethrow_exception(outcome.failure);
  }
  const Plan& plan = outcome.plan->plan;
  if (plan.returnsRows) {
    return std::make_unique<EngineRecordset>(*this, plan.columns, std::move(outcome.rows));
  }
  m_affected = outcome.affected;
  NoteKey(plan.effect, outcome.newKey);
  return std::make_unique<EngineRecordset>();
}

void EngineConnection::NoteKey(const Effect& effect, qint64 newKey) {
  if (effect.makesKey) {
    m_keys.Remember(*effect.writtenTable, newKey);
  } else {
    m_keys.Forget(*effect.writtenTable);
  }
}

// Whoever asks for the highest key after adding a row means that row, not one that another program added since.
std::unique_ptr<adodb::Recordset> EngineConnection::AnswerMaximum(const QString& statement, const Plan& plan,
                                                                  qint64 key) {
  const QStringView condition = TextOf(plan.effect.condition, statement, m_lexer.Tokens());
  if (condition.isEmpty()) {
    return std::make_unique<EngineRecordset>(*this, plan.columns, std::make_unique<RememberedKey>(key));
  }
  const QString upToCondition = statement.left(condition.begin() - QStringView(statement).begin());
  const QString keyColumn = plan.effect.maximumOf->columns.front().name;
  return Execute(u"%1(%2) AND %3=%4"_s.arg(upToCondition, condition.toString(), keyColumn, QString::number(key)));
}

// An open read would make the engine refuse a write after another program's, and would see this one's rows.
void EngineConnection::BufferRecordsets() {
  for (EngineRecordset* recordset : m_recordsets) {
    recordset->Buffer();
  }
}

void EngineConnection::BeginTrans() {
  Begin(&Session::Begin);
}

void EngineConnection::BeginSnapshot() {
  Begin(&Session::BeginSnapshot);
}

void EngineConnection::Begin(void (Session::*begin)()) {
  CheckOpen();
  if (m_inTransaction) {
    throw PlatformError(adodb::TransactionActive);
  }
  BufferRecordsets();
  (m_session.get()->*begin)();
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
  m_keys.ForgetAll();
  if (!m_session->HasLostTransaction()) {
    m_session->RollBack();
  }
}

}  // namespace database
