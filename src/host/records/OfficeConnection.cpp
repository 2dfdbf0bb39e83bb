#include "host/records/OfficeConnection.h"

#include "database/Presence.h"
#include "database/WriteHold.h"
#include "database/WrittenRecord.h"
#include "host/records/ChangeNote.h"
#include "host/records/ProcessIdentity.h"
#include "host/records/Session.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

#include <QScopeGuard>
#include <QStringList>
#include <QUuid>

using namespace Qt::StringLiterals;

using automation::Error;

namespace host {

namespace {

// The host's own tables, which tell of the office's.
bool IsOwn(const QString& table) {
  static const QStringList own{u"BloqueoRegistros"_s,
                               u"Eliminaciones"_s,
                               u"EliminacionesRegistros"_s,
                               u"Cambios"_s,
                               u"Ajustes"_s,
                               u"Selecciones"_s,
                               u"SeleccionesPersonas"_s,
                               u"ImpresorasCalibracion"_s,
                               u"EtiquetasImpresion"_s,
                               u"Claves"_s};
  return own.contains(table);
}

// A statement that can't be read is refused by the engine, in its words.
std::optional<database::WrittenRecord> Written(const QString& statement) {
  try {
    return database::WrittenBy(statement);
  } catch (const Error&) {
    return std::nullopt;
  }
}

}  // namespace

struct OfficeConnection::Noted {
  std::unique_ptr<adodb::Recordset> rows;
  std::optional<Change> change;
  std::optional<WrittenRow> row;
};

OfficeConnection::OfficeConnection(std::unique_ptr<adodb::Connection> engine, Session& session)
    : m_engine(std::move(engine)), m_session(session), m_program(QUuid::createUuid().toString(QUuid::WithoutBraces)) {
  database::OnNewPresence(
      *m_engine, [this](int before, int now) { return m_session.lockMemory.CarryOver(*m_engine, before, now); });
}

OfficeConnection::~OfficeConnection() = default;

void OfficeConnection::ReleaseLater(const QString& keyColumn, int key) {
  m_waitingLocks.append({keyColumn, key});
}

void OfficeConnection::ReleaseWaiting(const QString& wantedColumn, int wantedKey) {
  m_waitingLocks.removeAll({wantedColumn, wantedKey});
  m_waitingLocks.removeIf([this](const std::pair<QString, int>& lock) {
    try {
      RecordLocks(*this, m_session.userId, m_session.userName, &m_session.lockMemory).Release(lock.first, lock.second);
      return true;
    } catch (const Error&) {
      return false;
    }
  });
}

int OfficeConnection::State() const {
  if (m_batch == Batch::None) {
    return m_engine->State();
  }
  return m_looksOpen ? adodb::StateOpen : adodb::StateClosed;
}

void OfficeConnection::Open() {
  Open({}, {}, {}, -1);
}

void OfficeConnection::Open(const QString& connectionString, const QString& user, const QString& password,
                            int options) {
  if (m_batch == Batch::None || m_looksOpen) {
    m_engine->Open(connectionString, user, password, options);
  }
  m_looksOpen = true;
}

void OfficeConnection::Close() {
  if (m_batch == Batch::None) {
    Forget();
    m_engine->Close();
    return;
  }
  CheckLooksOpen();
  if (m_inTransaction) {
    RollBackBatch();
  }
  m_inTransaction = false;
  m_looksOpen = false;
}

void OfficeConnection::CheckLooksOpen() const {
  if (m_batch != Batch::None && !m_looksOpen) {
    throw Error(adodb::ObjectClosed, u"La conexión está cerrada."_s);
  }
}

void OfficeConnection::CheckBatch() const {
  CheckLooksOpen();
  if (m_batch == Batch::RolledBack) {
    throw Error(adodb::TransactionLost, u"La operación se ha deshecho entera. Vuelva a intentarlo."_s);
  }
}

std::unique_ptr<adodb::Recordset> OfficeConnection::Execute(const QString& statement) {
  CheckLooksOpen();
  const std::optional<database::WrittenRecord> written = Written(statement);
  if (written) {
    CheckBatch();
  }
  if (!written || IsOwn(written->table)) {
    std::unique_ptr<adodb::Recordset> rows = m_engine->Execute(statement);
    m_affected = m_engine->RecordsAffected();
    return rows;
  }
  RequireMayWrite();
  if (!m_inTransaction && m_batch != Batch::Running) {
    return ExecuteAlone(statement, *written);
  }
  Noted noted = RunNoted(statement, *written);
  Note(noted, database::Announcement::End::Open);
  return std::move(noted.rows);
}

void OfficeConnection::RequireMayWrite() const {
  m_session.LookAtRights(*m_engine);
  if (m_session.isViewer) {
    throw Error(adodb::DatabaseReadOnly, u"Su usuario solo puede consultar. No se ha guardado nada."_s);
  }
}

std::unique_ptr<adodb::Recordset> OfficeConnection::ExecuteAlone(const QString& statement,
                                                                 const database::WrittenRecord& written) {
  for (bool isAgain = false;; isAgain = true) {
    adodb::Transaction around(*m_engine);
    const auto forget = qScopeGuard([this] { Forget(); });
    Noted noted;
    try {
      noted = RunNoted(statement, written);
    } catch (const Error& error) {
      if (isAgain || error.Number() != adodb::TransactionLost) {
        throw;
      }
      continue;
    }
    Note(noted, database::Announcement::End::Commit);
    around.Commit();
    Committed();
    return std::move(noted.rows);
  }
}

OfficeConnection::Noted OfficeConnection::RunNoted(const QString& statement, const database::WrittenRecord& written) {
  m_session.lockMemory.RequireNoneLost();
  const database::Announcement course(*m_engine, NotedCourse(statement, written));
  ChangeNote note(*m_engine, written);
  m_affected = 0;
  Noted noted;
  noted.rows = m_engine->Execute(statement);
  m_affected = m_engine->RecordsAffected();
  noted.change = note.After(m_affected);
  if (m_affected > 0) {
    noted.row = WrittenRow{written.table, note.Key()};
  }
  return noted;
}

void OfficeConnection::Note(const Noted& noted, database::Announcement::End end) {
  if (noted.change) {
    Change change = *noted.change;
    change.moment = QDateTime::currentDateTimeUtc();
    change.userId = m_session.userId;
    change.userName = m_session.userName;
    change.machine = CurrentProcess().machine;
    change.program = m_program;
    const QString statement = NoteStatement(change);
    const database::Announcement last(*m_engine, {statement}, end);
    m_engine->Execute(statement);
  }
  if (noted.row) {
    m_pending.append(*noted.row);
  }
}

void OfficeConnection::Committed() {
  for (WriteWatch* watch : m_watches) {
    watch->Add(m_pending);
  }
  m_pending.clear();
}

void OfficeConnection::Forget() {
  m_inTransaction = false;
  m_pending.clear();
}

void OfficeConnection::BeginTrans() {
  CheckBatch();
  if (m_batch == Batch::None) {
    m_engine->BeginTrans();
  } else if (m_inTransaction) {
    throw Error(adodb::TransactionActive, u"Ya hay una transacción en curso."_s);
  }
  m_inTransaction = true;
}

void OfficeConnection::CheckInTransaction() const {
  CheckBatch();
  if (m_batch == Batch::Running && !m_inTransaction) {
    throw Error(adodb::NoTransaction, u"No hay ninguna transacción en curso."_s);
  }
}

// A commit that fails leaves the transaction open, for its roll-back.
void OfficeConnection::CommitTrans() {
  CheckInTransaction();
  if (m_batch == Batch::None) {
    m_engine->CommitTrans();
    Committed();
  }
  m_inTransaction = false;
}

void OfficeConnection::RollbackTrans() {
  CheckInTransaction();
  if (m_batch == Batch::None) {
    Forget();
    m_engine->RollbackTrans();
    return;
  }
  m_inTransaction = false;
  RollBackBatch();
}

void OfficeConnection::BeginBatch(const QStringList& tables) {
  if (m_engine->State() == adodb::StateClosed) {
    m_engine->Open();
  }
  m_engine->BeginTrans();
  try {
    database::HoldWrites(*m_engine, tables);
  } catch (const Error&) {
    m_engine->RollbackTrans();
    throw;
  }
  m_batch = Batch::Running;
  m_looksOpen = true;
}

void OfficeConnection::CommitBatch() {
  m_looksOpen = true;
  CheckBatch();
  m_engine->CommitTrans();
  m_batch = Batch::None;
  Committed();
}

void OfficeConnection::RollBackBatch() {
  if (m_batch != Batch::Running) {
    return;
  }
  m_batch = Batch::RolledBack;
  m_pending.clear();
  try {
    m_engine->RollbackTrans();
  } catch (const Error&) {
    // Then the engine has undone it.
    return;
  }
}

void OfficeConnection::EndBatch() {
  RollBackBatch();
  m_batch = Batch::None;
  Forget();
}

}  // namespace host
