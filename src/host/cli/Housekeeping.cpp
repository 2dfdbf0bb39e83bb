#include "host/cli/Housekeeping.h"

#include "database/Database.h"
#include "database/Maintenance.h"
#include "host/records/ChangeLog.h"
#include "host/records/DailyCopies.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace host {

Housekeeping::Housekeeping(const QString& connectionString, Duties duties)
    : m_connectionString(connectionString), m_duties(duties), m_thread(QThread::create([this] {
        Check();
        Copy();
        ForgetOldChanges();
      })) {}

Housekeeping::~Housekeeping() {
  m_thread->requestInterruption();
  m_thread->wait();
}

void Housekeeping::Start() {
  m_thread->start(QThread::IdlePriority);
}

// A damaged file is not copied: it would take the place of the good copies one by one.
void Housekeeping::Check() {
  if (!m_duties.check) {
    return;
  }
  const QStringList faults = database::QuickCheck(m_connectionString);
  if (!faults.isEmpty()) {
    m_duties.copy = false;
    Q_EMIT Noticed(
        u"La última vez el programa no llegó a cerrar la base de datos, y ahora está dañada:\n\n%1\n\nCierre el "
        u"programa "
        "y restaure una copia con la orden «kel-host restaurar COPIA»; «kel-host comprobar» da todos los detalles."_s
            .arg(faults.join(u'\n')));
  }
}

OfficePolicy Housekeeping::Policy() const {
  const auto connection = database::CreateConnection(m_connectionString);
  connection->Open();
  return ReadOfficePolicy(*connection);
}

void Housekeeping::Copy() {
  if (!m_duties.copy) {
    return;
  }
  try {
    MakeDailyCopy(m_connectionString, QDate::currentDate(), Policy().daysOfCopies,
                  [] { return QThread::currentThread()->isInterruptionRequested(); });
  } catch (const automation::Error& error) {
    if (error.Number() != adodb::Stopped) {
      Q_EMIT Noticed(u"No se ha podido hacer la copia diaria de la base de datos. "_s + error.Description());
    }
  }
}

// They tell who did what; nobody needs that for longer. Where it can't be done now the next start does it.
void Housekeeping::ForgetOldChanges() const {
  if (!m_duties.forget || QThread::currentThread()->isInterruptionRequested()) {
    return;
  }
  try {
    const auto connection = database::CreateConnection(m_connectionString);
    connection->Open();
    ForgetChangesBefore(*connection,
                        QDateTime::currentDateTimeUtc().addMonths(-ReadOfficePolicy(*connection).monthsOfLog));
  } catch (const automation::Error&) {
    return;
  }
}

}  // namespace host
