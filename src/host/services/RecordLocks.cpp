#include "host/services/RecordLocks.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QLocale>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {
namespace {

int Number(const QVariant& value) {
  return automation::IsNumeric(value) ? automation::CLng(value) : 0;
}

QString Now() {
  return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

}  // namespace

QString LockHolder::Description() const {
  const QString who = userName.isEmpty() ? u"otro usuario"_s : u"«%1»"_s.arg(userName);
  QString text = u"El registro lo está modificando %1"_s.arg(who);
  if (!process.machine.isEmpty()) {
    text += u" en el equipo «%1»"_s.arg(process.machine);
  }
  if (since.isValid()) {
    const QString moment =
        QLocale(QLocale::Spanish, QLocale::Spain).toString(since.toLocalTime(), u"dd/MM/yyyy HH:mm"_s);
    text += u" desde el %1"_s.arg(moment);
  }
  return text + u'.';
}

RecordLocks::RecordLocks(adodb::Connection& connection, int userId, QString userName)
    : m_connection(connection), m_userId(userId), m_userName(std::move(userName)) {}

std::optional<LockHolder> RecordLocks::Take(const QString& keyColumn, int key) {
  const LockHolder self = Self();
  // A holder may let go, or another may take over, between two of the statements; then the next round decides.
  std::optional<LockHolder> holder;
  for (int round = 0; round < 3; ++round) {
    holder = HolderOf(keyColumn, key);
    if (!holder && Insert(keyColumn, key)) {
      return std::nullopt;
    }
    if (!holder) {
      continue;
    }
    if (holder->userId == self.userId && holder->process == self.process) {
      return std::nullopt;
    }
    if (!HasEnded(holder->process, self.process)) {
      return holder;
    }
    if (TakeOver(keyColumn, key, *holder)) {
      return std::nullopt;
    }
  }
  return holder ? holder : LockHolder();
}

void RecordLocks::Release(const QString& keyColumn, int key) {
  const LockHolder self = Self();
  adodb::Execute(
      m_connection,
      u"DELETE FROM BloqueoRegistros WHERE campoID='{}' AND ValorID={} AND codUsuario={} AND Equipo='{}' AND "
      u"Proceso={} AND InicioProceso='{}'",
      keyColumn, key, self.userId, self.process.machine, self.process.processId, self.process.start);
}

std::optional<LockHolder> RecordLocks::HolderOf(const QString& keyColumn, int key) const {
  const auto rows = adodb::Execute(m_connection,
                                   u"SELECT codUsuario, Usuario, Equipo, Proceso, InicioProceso, Desde FROM "
                                   u"BloqueoRegistros WHERE campoID='{}' AND ValorID={}",
                                   keyColumn, key);
  if (rows->AtEnd()) {
    return std::nullopt;
  }
  LockHolder holder;
  holder.userId = Number(rows->Field(u"codUsuario"));
  holder.userName = automation::Text(rows->Field(u"Usuario"));
  holder.process.machine = automation::Text(rows->Field(u"Equipo"));
  holder.process.processId = Number(rows->Field(u"Proceso"));
  holder.process.start = automation::Text(rows->Field(u"InicioProceso"));
  holder.since = QDateTime::fromString(automation::Text(rows->Field(u"Desde")), Qt::ISODate);
  return holder;
}

bool RecordLocks::Insert(const QString& keyColumn, int key) const {
  const LockHolder self = Self();
  try {
    adodb::Execute(m_connection,
                   u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario, Equipo, Proceso, "
                   u"InicioProceso, Desde) VALUES ({}, '{}', {}, '{}', '{}', {}, '{}', '{}')",
                   self.userId, keyColumn, key, self.userName, self.process.machine, self.process.processId,
                   self.process.start, Now());
    return true;
  } catch (const automation::Error&) {
    // Every engine has its own number for a row that is there already; that there is one says it.
    if (!HolderOf(keyColumn, key)) {
      throw;
    }
    return false;
  }
}

// The old holder is named by all that identifies it, so that only one of several who try at once takes its place.
bool RecordLocks::TakeOver(const QString& keyColumn, int key, const LockHolder& ended) const {
  const LockHolder self = Self();
  adodb::Execute(
      m_connection,
      u"UPDATE BloqueoRegistros SET codUsuario={}, Usuario='{}', Equipo='{}', Proceso={}, InicioProceso='{}', "
      u"Desde='{}' WHERE campoID='{}' AND ValorID={} AND codUsuario={} AND Equipo='{}' AND Proceso={} AND "
      u"InicioProceso='{}'",
      self.userId, self.userName, self.process.machine, self.process.processId, self.process.start, Now(), keyColumn,
      key, ended.userId, ended.process.machine, ended.process.processId, ended.process.start);
  return m_connection.RecordsAffected() == 1;
}

LockHolder RecordLocks::Self() const {
  return {m_userId, m_userName, CurrentProcess(), {}};
}

}  // namespace host
