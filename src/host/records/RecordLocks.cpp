#include "host/records/RecordLocks.h"

#include "database/Presence.h"
#include "host/records/MomentText.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace host {
namespace {

// What data providers raise for a row whose unique values are there already.
constexpr int integrityViolation = -2147217873;

// Each is lost only when others take and release the record between two statements.
constexpr int mostRounds = 50;
// A database that many write to at once may refuse one of them; one that refuses every time has another reason.
constexpr int mostFailures = 3;

const QString columns =
    u"IDBloqueoRegistro, campoID, ValorID, codUsuario, Usuario, Equipo, Proceso, InicioProceso, Sesion, Desde"_s;

int Number(const QVariant& value) {
  return automation::IsNumeric(value) ? automation::CLng(value) : 0;
}

QString Now() {
  return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

LockHolder HolderFrom(adodb::Recordset& row) {
  LockHolder holder;
  holder.number = Number(row.Field(u"IDBloqueoRegistro"));
  holder.keyColumn = automation::Text(row.Field(u"campoID"));
  holder.key = Number(row.Field(u"ValorID"));
  holder.userId = Number(row.Field(u"codUsuario"));
  holder.userName = automation::Text(row.Field(u"Usuario"));
  holder.process.machine = automation::Text(row.Field(u"Equipo"));
  holder.process.processId = Number(row.Field(u"Proceso"));
  holder.process.start = automation::Text(row.Field(u"InicioProceso"));
  holder.presence = Number(row.Field(u"Sesion"));
  holder.since = QDateTime::fromString(automation::Text(row.Field(u"Desde")), Qt::ISODate);
  return holder;
}

bool AreSame(const LockHolder& one, const LockHolder& other) {
  return one.userId == other.userId && one.process == other.process && one.presence == other.presence;
}

}  // namespace

QString LockHolder::Description() const {
  if (!obstacle.isEmpty()) {
    return obstacle;
  }
  QString text = u"Lo está modificando "_s + (userName.isEmpty() ? u"otro usuario"_s : u"«%1»"_s.arg(userName));
  if (!process.machine.isEmpty()) {
    text += u" en «%1»"_s.arg(process.machine);
  }
  if (since.isValid()) {
    text += u" desde "_s + MomentText(since);
  }
  return text;
}

RecordLocks::RecordLocks(adodb::Connection& connection, int userId, QString userName, LockMemory* memory)
    : m_connection(connection), m_userId(userId), m_userName(std::move(userName)), m_memory(memory) {}

std::optional<LockHolder> RecordLocks::Take(const QString& keyColumn, int key) {
  const LockHolder self = Self();
  std::optional<LockHolder> holder = TryToTake(self, keyColumn, key);
  if (!holder && m_memory != nullptr && self.presence != 0) {
    m_memory->Add({keyColumn, key});
  }
  return holder;
}

// On a server a free one is taken without a question before. A file is not locked for writing where somebody else has
// the record.
std::optional<LockHolder> RecordLocks::TryToTake(const LockHolder& self, const QString& keyColumn, int key) const {
  bool mayBeFree = self.presence != 0;
  int failures = 0;
  for (int round = 0; round < mostRounds; ++round) {
    try {
      if (mayBeFree && Insert(self, keyColumn, key)) {
        return std::nullopt;
      }
      const std::optional<LockHolder> holder = HolderOf(keyColumn, key);
      mayBeFree = !holder;
      if (!holder) {
        continue;
      }
      if (AreSame(*holder, self)) {
        return std::nullopt;
      }
      if (!HasEnded(*holder)) {
        return holder;
      }
      if (TakeOver(self, *holder)) {
        return std::nullopt;
      }
    } catch (const automation::Error&) {
      if (++failures == mostFailures) {
        throw;
      }
    }
  }
  return LockHolder{.keyColumn = keyColumn, .key = key};
}

std::optional<LockHolder> RecordLocks::HeldByAnother(const QString& keyColumn, int key) const {
  const std::optional<LockHolder> holder = HolderOf(keyColumn, key);
  return holder && !AreSame(*holder, Self()) && !HasEnded(*holder) ? holder : std::nullopt;
}

bool RecordLocks::HasEnded(const LockHolder& holder) const {
  return holder.presence != 0 ? database::HasEnded(m_connection, holder.presence)
                              : host::HasEnded(holder.process, CurrentProcess());
}

void RecordLocks::Release(const QString& keyColumn, int key) {
  // Where it can't be released now, it ends with its session.
  if (m_memory != nullptr) {
    m_memory->Remove({keyColumn, key});
  }
  for (int failures = 0;;) {
    try {
      const LockHolder self = Self();
      adodb::Execute(
          m_connection,
          u"DELETE FROM BloqueoRegistros WHERE campoID='{}' AND ValorID={} AND codUsuario={} AND Equipo='{}' AND "
          u"Proceso={} AND InicioProceso='{}' AND Sesion={}",
          keyColumn, key, self.userId, self.process.machine, self.process.processId, self.process.start, self.presence);
      return;
    } catch (const automation::Error&) {
      if (++failures == mostFailures) {
        throw;
      }
    }
  }
}

QList<LockHolder> RecordLocks::All() const {
  QList<LockHolder> holders;
  const auto rows = adodb::Execute(m_connection, u"SELECT {} FROM BloqueoRegistros ORDER BY Desde, IDBloqueoRegistro",
                                   adodb::Verbatim{columns});
  for (; !rows->AtEnd(); rows->MoveNext()) {
    holders.append(HolderFrom(*rows));
  }
  return holders;
}

bool RecordLocks::ReleaseOf(const LockHolder& holder) {
  // A lock that was taken over keeps its number, and has another user or process.
  adodb::Execute(
      m_connection,
      u"DELETE FROM BloqueoRegistros WHERE IDBloqueoRegistro={} AND codUsuario={} AND Proceso={} AND Sesion={}",
      holder.number, holder.userId, holder.process.processId, holder.presence);
  return m_connection.RecordsAffected() == 1;
}

std::optional<LockHolder> RecordLocks::HolderOf(const QString& keyColumn, int key) const {
  const auto rows = adodb::Execute(m_connection, u"SELECT {} FROM BloqueoRegistros WHERE campoID='{}' AND ValorID={}",
                                   adodb::Verbatim{columns}, keyColumn, key);
  return rows->AtEnd() ? std::nullopt : std::optional(HolderFrom(*rows));
}

bool RecordLocks::Insert(const LockHolder& self, const QString& keyColumn, int key) const {
  try {
    adodb::Execute(m_connection,
                   u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario, Equipo, Proceso, "
                   u"InicioProceso, Sesion, Desde) VALUES ({}, '{}', {}, '{}', '{}', {}, '{}', {}, '{}')",
                   self.userId, keyColumn, key, self.userName, self.process.machine, self.process.processId,
                   self.process.start, self.presence, Now());
    return true;
  } catch (const automation::Error& error) {
    // Somebody was faster, and may have let go again by now.
    if (error.Number() != integrityViolation) {
      throw;
    }
    return false;
  }
}

// The old holder is named by all that identifies it, so that only one of several who try at once takes its place.
bool RecordLocks::TakeOver(const LockHolder& self, const LockHolder& ended) const {
  adodb::Execute(
      m_connection,
      u"UPDATE BloqueoRegistros SET codUsuario={}, Usuario='{}', Equipo='{}', Proceso={}, InicioProceso='{}', "
      u"Sesion={}, Desde='{}' WHERE campoID='{}' AND ValorID={} AND codUsuario={} AND Equipo='{}' AND Proceso={} AND "
      u"InicioProceso='{}' AND Sesion={}",
      self.userId, self.userName, self.process.machine, self.process.processId, self.process.start, self.presence,
      Now(), ended.keyColumn, ended.key, ended.userId, ended.process.machine, ended.process.processId,
      ended.process.start, ended.presence);
  return m_connection.RecordsAffected() == 1;
}

LockHolder RecordLocks::Self() const {
  return {.userId = m_userId,
          .userName = m_userName,
          .process = CurrentProcess(),
          .presence = database::OwnPresence(m_connection)};
}

}  // namespace host
