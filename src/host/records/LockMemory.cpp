#include "host/records/LockMemory.h"

#include "host/records/ProcessIdentity.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString lost =
    u"El bloqueo de este registro se perdió: se cortó la conexión con la base de datos y mientras tanto el registro "
    "quedó libre. No se ha guardado nada. Apunte sus cambios, cierre el cuadro y vuelva a abrirlo."_s;

}  // namespace

void LockMemory::Add(const Record& record) {
  if (!m_held.contains(record)) {
    m_held.append(record);
  }
  m_lost.removeAll(record);
}

void LockMemory::Remove(const Record& record) {
  m_held.removeAll(record);
  m_lost.removeAll(record);
}

// The process is named, too: in a database that was restored meanwhile the number may be somebody else's.
QString LockMemory::CarryOver(adodb::Connection& connection, int before, int now) {
  const ProcessIdentity self = CurrentProcess();
  for (const Record& record : std::as_const(m_held)) {
    adodb::Execute(connection,
                   u"UPDATE BloqueoRegistros SET Sesion={} WHERE campoID='{}' AND ValorID={} AND Sesion={} AND "
                   u"Equipo='{}' AND Proceso={} AND InicioProceso='{}'",
                   now, record.first, record.second, before, self.machine, self.processId, self.start);
    if (connection.RecordsAffected() == 0 && !m_lost.contains(record)) {
      m_lost.append(record);
    }
  }
  return m_lost.isEmpty() ? QString() : lost;
}

void LockMemory::RequireNoneLost() const {
  if (!m_lost.isEmpty()) {
    throw automation::Error(adodb::TransactionLost, lost);
  }
}

}  // namespace host
