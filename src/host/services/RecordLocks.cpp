#include "host/services/RecordLocks.h"

#include "host/services/Statements.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QLocale>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {
namespace {

QString Record(const QString& keyColumn, int key) {
  return u"campoID=%1 AND ValorID=%2"_s.arg(SqlText(keyColumn), QString::number(key));
}

// Each lock has one owner, named by all that identifies it, so that a statement never touches the lock of another.
QString OwnedBy(const LockHolder& holder) {
  return u"codUsuario=%1 AND Equipo=%2 AND Proceso=%3 AND InicioProceso=%4"_s.arg(
      QString::number(holder.userId), SqlText(holder.process.machine), QString::number(holder.process.processId),
      SqlText(holder.process.start));
}

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
  const QString record = Record(keyColumn, key);
  const LockHolder self = Self();
  // A holder may let go, or another may take over, between two of the statements; then the next round decides.
  std::optional<LockHolder> holder;
  for (int round = 0; round < 3; ++round) {
    holder = HolderOf(record);
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
    if (TakeOver(record, *holder)) {
      return std::nullopt;
    }
  }
  return holder ? holder : LockHolder();
}

void RecordLocks::Release(const QString& keyColumn, int key) {
  m_connection.Execute(u"DELETE FROM BloqueoRegistros WHERE %1 AND %2"_s.arg(Record(keyColumn, key), OwnedBy(Self())));
}

std::optional<LockHolder> RecordLocks::HolderOf(const QString& record) const {
  const auto rows = m_connection.Execute(
      u"SELECT codUsuario, Usuario, Equipo, Proceso, InicioProceso, Desde FROM BloqueoRegistros WHERE %1"_s.arg(
          record));
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
    m_connection.Execute(
        u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario, Equipo, "
        "Proceso, InicioProceso, Desde) VALUES ("_s +
        QStringList{QString::number(self.userId), SqlText(keyColumn), QString::number(key), SqlText(self.userName),
                    SqlText(self.process.machine), QString::number(self.process.processId), SqlText(self.process.start),
                    SqlText(Now())}
            .join(u", "_s) +
        u')');
    return true;
  } catch (const automation::Error&) {
    // Every engine has its own number for a row that is there already; that there is one says it.
    if (!HolderOf(Record(keyColumn, key))) {
      throw;
    }
    return false;
  }
}

bool RecordLocks::TakeOver(const QString& record, const LockHolder& ended) const {
  const LockHolder self = Self();
  m_connection.Execute(u"UPDATE BloqueoRegistros SET codUsuario="_s + QString::number(self.userId) + u", Usuario="_s +
                       SqlText(self.userName) + u", Equipo="_s + SqlText(self.process.machine) + u", Proceso="_s +
                       QString::number(self.process.processId) + u", InicioProceso="_s + SqlText(self.process.start) +
                       u", Desde="_s + SqlText(Now()) + u" WHERE "_s + record + u" AND "_s + OwnedBy(ended));
  return m_connection.RecordsAffected() == 1;
}

LockHolder RecordLocks::Self() const {
  return {m_userId, m_userName, CurrentProcess(), {}};
}

}  // namespace host
