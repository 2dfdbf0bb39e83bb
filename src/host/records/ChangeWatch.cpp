#include "host/records/ChangeWatch.h"

#include "database/ChangeClock.h"
#include "database/Database.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// More are read anew with their list.
constexpr int mostNotes = 1000;

// Differs when a lock was taken or released, but for one that came and went.
QString LockMark(adodb::Connection& connection) {
  const auto row =
      adodb::Execute(connection, u"SELECT COUNT(*) AS Cuantos, MAX(IDBloqueoRegistro) AS Ultimo FROM BloqueoRegistros");
  return automation::Text(row->Field(0)) + u'/' + automation::Text(row->Field(1));
}

}  // namespace

ChangeWatch::ChangeWatch(QString connectionString, qint64 newest, QObject* parent)
    : QObject(parent), m_connectionString(std::move(connectionString)), m_worker(new QObject), m_newest(newest) {
  m_worker->moveToThread(&m_thread);
  // On its own thread, where the clock's session belongs.
  connect(
      &m_thread, &QThread::finished, m_worker,
      [this] {
        m_clock.reset();
        delete m_worker;
      },
      Qt::DirectConnection);
  m_thread.start();
}

ChangeWatch::~ChangeWatch() {
  m_thread.quit();
  m_thread.wait();
}

void ChangeWatch::Look() {
  if (!m_looking) {
    m_looking = true;
    QMetaObject::invokeMethod(m_worker, [this] { Run(); });
  }
}

void ChangeWatch::Run() {
  SeenChanges seen;
  try {
    seen = Read();
  } catch (const std::exception&) {
    // A database that can't be read now is no news here; who needs it will say so.
    m_clock.reset();
  }
  QMetaObject::invokeMethod(this, [this, seen] {
    m_looking = false;
    if (seen.isUnknown || !seen.notes.isEmpty()) {
      Q_EMIT Seen(seen);
    }
  });
}

SeenChanges ChangeWatch::Read() {
  if (!m_clock) {
    m_clock = std::make_unique<database::ChangeClock>(m_connectionString);
  }
  m_mustRead = m_clock->HasMoved() || m_mustRead;
  if (!m_mustRead) {
    return {};
  }
  const std::unique_ptr<adodb::Connection> connection = database::CreateConnection(m_connectionString);
  connection->Open();
  SeenChanges seen{.notes = ChangesAfter(*connection, m_newest, mostNotes)};
  const QString locks = LockMark(*connection);
  seen.mayBeLocks = std::exchange(m_locks, locks) != locks;
  if (seen.notes.size() == mostNotes) {
    seen.notes.clear();
    seen.isUnknown = true;
    m_newest = NewestChange(*connection);
  } else if (!seen.notes.isEmpty()) {
    m_newest = seen.notes.constLast().number;
  } else {
    // The first look always finds the clock moved.
    seen.isUnknown = !m_isFirst;
  }
  m_isFirst = false;
  m_mustRead = false;
  return seen;
}

}  // namespace host
