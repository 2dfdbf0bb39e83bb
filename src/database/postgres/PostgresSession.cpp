#include "database/postgres/PostgresSession.h"

#include "database/Schema.h"
#include "database/postgres/PostgresErrors.h"
#include "database/postgres/PostgresPreparation.h"
#include "database/postgres/PostgresPresence.h"
#include "database/postgres/PostgresRights.h"
#include "database/postgres/PostgresRows.h"
#include "database/postgres/PostgresTarget.h"
#include "database/postgres/ServerStatements.h"
#include "platform/adodb/ErrorNumbers.h"

#include <libpq-fe.h>

#include <array>

namespace database {

namespace {

constexpr const char* begin = "BEGIN";
constexpr const char* savepoint = "SAVEPOINT kel";
constexpr const char* release = "RELEASE SAVEPOINT kel";
constexpr const char* commit = "COMMIT";
constexpr std::array commands = {begin, savepoint, release, commit};

// A new row comes back with the key that the server made for it.
QByteArray ServerSql(const Plan& plan) {
  if (!plan.effect.makesKey) {
    return plan.sql;
  }
  const QString& key = plan.effect.writtenTable->columns.front().name;
  return plan.sql + " RETURNING " + PostgresTarget::Instance().Name(key).toUtf8();
}

// It goes out behind what was written, in a transaction of its own, which waits for no disk: inside the other one it
// would make all commits of the server wait for one another's disk.
QByteArray NoticeOf(const std::set<const Table*>& tables) {
  QStringList names;
  for (const Table* table : tables) {
    names += table->name;
  }
  return names.isEmpty() ? QByteArray() : "NOTIFY kel, '" + names.join(u',').toUtf8() + '\'';
}

}  // namespace

PostgresSession::PostgresSession() : m_discarded(std::make_shared<Discarded>()) {}

PostgresSession::PostgresSession(PostgresHandle handle) : PostgresSession() {
  m_handle.emplace(std::move(handle));
}

PostgresSession::~PostgresSession() = default;

const Target& PostgresSession::ItsTarget() const {
  return PostgresTarget::Instance();
}

const PostgresHandle& PostgresSession::Handle() {
  BufferRows();
  return *m_handle;
}

const PostgresHandle& PostgresSession::InTransaction() {
  if (!m_isBegun) {
    Handle().Run("BEGIN");
    m_isBegun = true;
  }
  return Handle();
}

void PostgresSession::Connect(const ConnectionString& target) {
  PostgresHandle handle(target);
  RequireCurrentDatabase(handle);
  m_handle.emplace(std::move(handle));
  m_discarded = std::make_shared<Discarded>();
  m_inTransaction = m_isBegun = m_isLost = m_hasCommands = m_isPresent = m_isOutdated = false;
  if (m_onLine) {
    m_handle->Run("LISTEN kel");
    m_onLine(Socket());
  }
}

// The server undoes what was not committed.
void PostgresSession::Leave() {
  BufferRows();
  m_givenKeys.clear();
  if (m_onLine) {
    m_onLine(-1);
  }
  m_handle.reset();
}

void PostgresSession::Listen(std::function<void(int)> onLine, std::function<void()> onUse) {
  if (onLine && !m_onLine) {
    Handle().Run("LISTEN kel");
  }
  m_onLine = std::move(onLine);
  m_onUse = std::move(onUse);
}

int PostgresSession::Socket() const {
  return m_handle ? PQsocket(m_handle->Engine()) : -1;
}

QStringList PostgresSession::TakeNotices() {
  QStringList tables;
  if (!m_handle) {
    return tables;
  }
  m_handle->IsStillAlive();
  while (PGnotify* notice = PQnotifies(m_handle->Engine())) {
    tables += QString::fromUtf8(notice->extra).split(u',');
    PQfreemem(notice);
  }
  tables.removeDuplicates();
  return tables;
}

bool PostgresSession::Pause() {
  try {
    RollBack();
  } catch (const automation::Error&) {
    return false;
  }
  m_isLost = false;
  return m_handle->IsAlive();
}

// Nobody changes the version under a presence. Otherwise a line that was cut shows, too, when something is asked.
bool PostgresSession::Resume() {
  try {
    return m_isPresent ? m_handle->IsStillAlive() : VersionOf(*m_handle) == SchemaVersion();
  } catch (const automation::Error&) {
    return false;
  }
}

bool PostgresSession::NeedsNewLine() {
  return !m_isBegun && !m_isLost && !m_handle->IsStillAlive();
}

int PostgresSession::TakePresence() {
  const int presence = database::TakePresence(Handle());
  m_isPresent = true;
  return presence;
}

bool PostgresSession::HasEnded(int presence) {
  return database::HasEnded(Handle(), presence);
}

QList<ServerRole> PostgresSession::Roles(bool onlyOwn) {
  return RolesOn(Handle(), onlyOwn);
}

// How many transactions of the server have ended: those numbered so far without those at work. The highest number alone
// would miss a commit that comes after one of a later number.
qint64 PostgresSession::Clock() const {
  return m_handle
      ->Value(
          "SELECT pg_snapshot_xmax(s)::text::int8 - (SELECT count(*) FROM pg_snapshot_xip(s)) "
          "FROM pg_current_snapshot() AS s")
      .toLongLong();
}

void PostgresSession::BufferRows() {
  if (m_reading != nullptr) {
    m_reading->Buffer();
  }
}

void PostgresSession::EndRead(const PostgresRows& rows) {
  if (m_reading == &rows) {
    m_reading = nullptr;
  }
}

// What goes before the first statement; how many commands that is.
int PostgresSession::AddOpening(PostgresPipeline& pipeline) {
  int count = 0;
  for (const QByteArray& discarded : *m_discarded) {
    pipeline.Add("DEALLOCATE " + discarded);
    ++count;
  }
  m_discarded->clear();
  if (m_inTransaction && !m_hasCommands) {
    for (const char* command : commands) {
      pipeline.AddPreparation(command);
      ++count;
    }
  }
  if (m_inTransaction && !m_isBegun) {
    pipeline.AddPrepared(begin);
    ++count;
  }
  return count;
}

void PostgresSession::PassOpening(PostgresPipeline& pipeline, int opening) {
  m_isBegun = m_inTransaction;
  pipeline.Pass(opening);
  m_hasCommands = m_hasCommands || (m_inTransaction && !pipeline.HasFailed());
}

// A statement is prepared once for all that follow in the pipeline, too.
PostgresSession::Sent PostgresSession::Add(PostgresPipeline& pipeline, CachedPlan& plan,
                                           const PostgresParameters& parameters) {
  Sent sent{&plan};
  if (m_inTransaction) {
    pipeline.AddPrepared(savepoint);
    ++sent.before;
  }
  ServerStatements& statements = ServerStatements::Of(plan, m_discarded);
  QByteArray name = statements.Find(parameters.Signature());
  if (name.isEmpty()) {
    name = "kel" + QByteArray::number(++m_lastName);
    pipeline.AddPreparation(name, ServerSql(plan.plan), parameters);
    statements.Remember(parameters.Signature(), name);
    sent.signature = parameters.Signature();
    ++sent.before;
  }
  pipeline.AddStatement(name, parameters);
  if (m_inTransaction) {
    pipeline.AddPrepared(release);
  }
  return sent;
}

void PostgresSession::PassTo(PostgresPipeline& pipeline, const Sent& sent) {
  pipeline.Pass(sent.before);
  if (pipeline.HasFailed() && sent.signature) {
    ServerStatements::Of(*sent.plan, m_discarded).Forget(*sent.signature);
  }
}

// The pipeline comes back with the statement's own results to be read next, or failed.
std::unique_ptr<PostgresPipeline> PostgresSession::Send(CachedPlan& plan, const PostgresParameters& parameters) {
  BufferRows();
  auto pipeline = std::make_unique<PostgresPipeline>(*m_handle);
  const int opening = AddOpening(*pipeline);
  const Sent sent = Add(*pipeline, plan, parameters);
  const bool isAlone = !m_inTransaction && plan.plan.effect.writtenTable != nullptr;
  pipeline->Send(isAlone ? NoticeOf({plan.plan.effect.writtenTable}) : QByteArray());
  PassOpening(*pipeline, opening);
  PassTo(*pipeline, sent);
  return pipeline;
}

void PostgresSession::Conclude(PostgresPipeline& pipeline, const QString& concerned) {
  pipeline.Finish();
  if (m_onUse) {
    m_onUse();
  }
  if (pipeline.HasFailed()) {
    const bool isCutOff = m_inTransaction && !m_handle->IsAlive();
    const automation::Error error =
        isCutOff ? CutOff(m_handle->Target()) : ServerError(pipeline.Failure(), m_handle->Target(), concerned);
    m_isOutdated = SqlState(pipeline.Failure()) == "0A000";
    Undo(pipeline.Failure());
    throw error;
  }
}

// A deadlock or a cut line costs the transaction, anything else only the statement.
void PostgresSession::Undo(const pg_result* failure) {
  if (!m_inTransaction) {
    return;
  }
  PQexitPipelineMode(m_handle->Engine());
  const bool undoesAll = UndoesTransaction(SqlState(failure));
  try {
    m_handle->Run(undoesAll ? "ROLLBACK" : "ROLLBACK TO SAVEPOINT kel; RELEASE SAVEPOINT kel");
    m_isLost = undoesAll;
  } catch (const automation::Error&) {
    m_isLost = true;
  }
  m_inTransaction = m_isBegun = !m_isLost;
}

std::unique_ptr<Rows> PostgresSession::Read(std::shared_ptr<CachedPlan> plan, const ParameterValues& values) {
  const PostgresParameters parameters(plan->plan, values);
  std::unique_ptr<PostgresPipeline> pipeline = Send(*plan, parameters);
  pipeline->ReadRowByRow();
  if (pipeline->HasFailed()) {
    Conclude(*pipeline, ConcernedBy(plan->plan, values));
  }
  auto rows = std::make_unique<PostgresRows>(*this, std::move(pipeline), std::move(plan));
  m_reading = rows.get();
  return rows;
}

qint64 PostgresSession::Write(const std::shared_ptr<CachedPlan>& plan, const ParameterValues& values) {
  const Effect& effect = plan->plan.effect;
  const bool inserts = effect.kind == Effect::Kind::Inserts;
  if (inserts && effect.makesKey && m_givenKeys.contains(effect.writtenTable)) {
    CountOn();
  }
  qint64 affected = 0;
  {
    const PostgresParameters parameters(plan->plan, values);
    const std::unique_ptr<PostgresPipeline> pipeline = Send(*plan, parameters);
    if (!pipeline->HasFailed()) {
      const PostgresResult result = pipeline->Next();
      affected = QByteArray(PQcmdTuples(result.get())).toLongLong();
      if (PQntuples(result.get()) > 0) {
        m_newKey = QByteArray(PQgetvalue(result.get(), 0, 0)).toLongLong();
      }
    }
    pipeline->Finish();
    if (pipeline->HasFailed() && !m_inTransaction && !m_handle->IsAlive()) {
      throw OutcomeUnknown(m_handle->Target());
    }
    Conclude(*pipeline, pipeline->HasFailed() ? ConcernedBy(plan->plan, values) : QString());
  }
  if (m_inTransaction && affected > 0) {
    m_written.insert(effect.writtenTable);
  }
  if (inserts && !effect.makesKey) {
    CountOnFrom(*effect.writtenTable);
  }
  return affected;
}

// Keys beyond their sequence's numbers take questions of their own.
bool PostgresSession::MayGoAhead(const Effect& effect) const {
  return effect.kind != Effect::Kind::Inserts || (effect.makesKey && !m_givenKeys.contains(effect.writtenTable));
}

std::vector<StatementOutcome> PostgresSession::RunAhead(const std::vector<ReadyStatement>& statements, bool commits) {
  std::vector<StatementOutcome> outcomes;
  std::vector<PostgresParameters> parameters;
  std::set<const Table*> written = m_written;
  for (const auto& [plan, values] : statements) {
    if (!MayGoAhead(plan->plan.effect) || (commits && !m_givenKeys.empty())) {
      return outcomes;
    }
    parameters.emplace_back(plan->plan, values);
    if (plan->plan.effect.writtenTable != nullptr) {
      written.insert(plan->plan.effect.writtenTable);
    }
  }
  BufferRows();
  PostgresPipeline pipeline(*m_handle);
  std::vector<Sent> sent;
  const int opening = AddOpening(pipeline);
  for (std::size_t i = 0; i < statements.size(); ++i) {
    sent.push_back(Add(pipeline, *statements[i].plan, parameters[i]));
  }
  if (commits) {
    pipeline.AddPrepared(commit);
  }
  pipeline.Send(commits ? NoticeOf(written) : QByteArray());
  PassOpening(pipeline, opening);
  for (std::size_t i = 0; i < sent.size(); ++i) {
    const bool isReached = i == 0 || !pipeline.HasFailed();
    PassTo(pipeline, sent[i]);
    if (isReached) {
      outcomes.push_back(Receive(pipeline, statements[i].plan));
    }
  }
  const ReadyStatement& last = statements[outcomes.size() - 1];
  try {
    Conclude(pipeline, pipeline.HasFailed() ? ConcernedBy(last.plan->plan, last.values) : QString());
    if (commits) {
      m_inTransaction = m_isBegun = false;
    }
  } catch (const automation::Error&) {
    const bool isUnknown = commits && !m_handle->IsAlive();
    outcomes.back().failure =
        isUnknown ? std::make_exception_ptr(OutcomeUnknown(m_handle->Target())) : std::current_exception();
  }
  return outcomes;
}

// The outcome of the next statement, as far as it came.
StatementOutcome PostgresSession::Receive(PostgresPipeline& pipeline, const std::shared_ptr<CachedPlan>& plan) {
  StatementOutcome outcome;
  outcome.plan = plan;
  std::deque<PostgresResult> rows;
  pipeline.ReadRowByRow();
  while (PostgresResult result = pipeline.HasFailed() ? nullptr : pipeline.Next()) {
    if (PQresultStatus(result.get()) == PGRES_SINGLE_TUPLE) {
      rows.push_back(std::move(result));
    } else {
      outcome.affected = QByteArray(PQcmdTuples(result.get())).toLongLong();
    }
  }
  pipeline.Pass(m_inTransaction ? 1 : 0);
  const Effect& effect = plan->plan.effect;
  if (effect.makesKey && !rows.empty()) {
    outcome.newKey = QByteArray(PQgetvalue(rows.front().get(), 0, 0)).toLongLong();
  }
  if (plan->plan.returnsRows) {
    outcome.rows = std::make_unique<PostgresRows>(*this, std::move(rows));
  } else if (outcome.affected > 0 && !pipeline.HasFailed()) {
    m_written.insert(effect.writtenTable);
  }
  return outcome;
}

// A key that a statement brought along may be beyond those that the server would give next.
void PostgresSession::CountOnFrom(const Table& table) {
  if (table.columns.front().type != ColumnType::Key) {
    return;
  }
  m_givenKeys.insert(&table);
  if (!m_inTransaction) {
    CountOn();
  }
}

void PostgresSession::CountOn() {
  for (const Table* table : m_givenKeys) {
    const QByteArray name = PostgresTarget::Instance().Name(table->name).toUtf8();
    const QByteArray key = PostgresTarget::Instance().Name(table->columns.front().name).toUtf8();
    m_handle->Run("SELECT setval(s, greatest(pg_sequence_last_value(s::regclass), max(" + key + "))) FROM " + name +
                  ", pg_get_serial_sequence('" + name + "', '" + table->columns.front().name.toLower().toUtf8() +
                  "') AS s WHERE " + key + " > 0 GROUP BY s");
  }
  m_givenKeys.clear();
}

void PostgresSession::Begin() {
  BufferRows();
  m_written.clear();
  m_inTransaction = true;
  m_isBegun = m_isLost = false;
}

void PostgresSession::BeginSnapshot() {
  Begin();
  InTransaction().Run("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ, READ ONLY");
}

// The mode excludes writers and another such holder, and nobody who reads.
void PostgresSession::HoldWrites(const std::vector<const Table*>& tables) {
  QByteArrayList names;
  for (const Table* table : tables) {
    names += PostgresTarget::Instance().Name(table->name).toUtf8();
  }
  InTransaction().Run("LOCK TABLE " + names.join(", ") + " IN SHARE ROW EXCLUSIVE MODE");
}

void PostgresSession::Commit() {
  BufferRows();
  if (m_isBegun) {
    try {
      CountOn();
      PostgresPipeline pipeline(*m_handle);
      m_hasCommands ? pipeline.AddPrepared(commit) : pipeline.Add(commit);
      pipeline.Send(NoticeOf(m_written));
      pipeline.Finish();
      if (pipeline.HasFailed()) {
        throw ServerError(pipeline.Failure(), m_handle->Target());
      }
    } catch (const automation::Error& error) {
      const bool isCut = !m_handle->IsAlive();
      m_inTransaction = m_isBegun = false;
      m_isLost = true;
      throw isCut ? OutcomeUnknown(m_handle->Target()) : error;
    }
  }
  m_inTransaction = m_isBegun = false;
  if (m_onUse) {
    m_onUse();
  }
}

void PostgresSession::RollBack() {
  BufferRows();
  m_givenKeys.clear();
  const bool isBegun = m_isBegun;
  m_inTransaction = m_isBegun = false;
  if (isBegun) {
    m_handle->Run("ROLLBACK");
  }
}

bool PostgresSession::HasLostTransaction() const {
  return m_isLost;
}

}  // namespace database
