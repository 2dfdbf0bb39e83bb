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

// So often the clock is asked after the file has moved: a commit on a slow disk is seen later than its beginning.
constexpr int asksAfterMovement = 10;

// Differs when a lock was taken or released, but for one that came and went.
QString LockMark(adodb::Connection& connection) {
  const auto row =
      adodb::Execute(connection, u"SELECT COUNT(*) AS Cuantos, MAX(IDBloqueoRegistro) AS Ultimo FROM BloqueoRegistros");
  return automation::Text(row->Field(0)) + u'/' + automation::Text(row->Field(1));
}

}  // namespace

ChangeWatch::ChangeWatch(QString connectionString, qint64 newest, bool byClock, QObject* parent)
    : QObject(parent),
      m_connectionString(std::move(connectionString)),
      m_byClock(byClock),
      m_worker(new QObject),
      m_trace(m_connectionString),
      m_seen(newest) {
  m_worker->moveToThread(&m_thread);
  // On its own thread, where the sessions belong.
  connect(
      &m_thread, &QThread::finished, m_worker,
      [this] {
        m_clock.reset();
        m_connection.reset();
        delete m_worker;
      },
      Qt::DirectConnection);
  m_thread.start();
}

ChangeWatch::~ChangeWatch() {
  m_thread.quit();
  m_thread.wait();
}

bool ChangeWatch::Look() {
  if (m_looking) {
    return false;
  }
  m_looking = !m_byClock || MustAsk();
  if (m_looking) {
    QMetaObject::invokeMethod(m_worker, [this] { Run(); });
  }
  return true;
}

bool ChangeWatch::MustAsk() {
  m_asksLeft = m_trace.HasMoved() ? asksAfterMovement : m_asksLeft - 1;
  return m_asksLeft > 0;
}

void ChangeWatch::Run() {
  SeenChanges seen;
  bool hasFailed = false;
  try {
    seen = Read();
  } catch (const std::exception&) {
    // A database that can't be read now is no news here; who needs it will say so.
    hasFailed = true;
    m_clock.reset();
    m_connection.reset();
  }
  QMetaObject::invokeMethod(this, [this, seen, hasFailed] {
    m_looking = false;
    m_asksLeft = hasFailed ? asksAfterMovement : m_asksLeft;
    if (seen.isUnknown || !seen.notes.isEmpty()) {
      Q_EMIT Seen(seen);
    }
  });
}

bool ChangeWatch::HasMoved() {
  if (!m_clock) {
    m_clock = std::make_unique<database::ChangeClock>(m_connectionString);
  }
  return m_clock->HasMoved();
}

SeenChanges ChangeWatch::Read() {
  m_mustRead = !m_byClock || HasMoved() || m_mustRead;
  if (!m_mustRead) {
    return {};
  }
  if (!m_connection) {
    m_connection = database::CreateConnection(m_connectionString);
  }
  m_connection->Open();
  SeenChanges seen{.notes = ChangesAfter(*m_connection, m_seen.From(), mostNotes + 1)};
  seen.isUnknown = seen.notes.size() > mostNotes;
  m_seen.Take(seen.notes);
  if (seen.isUnknown) {
    seen.notes.clear();
    m_seen = SeenNotes(NewestChange(*m_connection));
  }
  if (m_byClock) {
    const QString locks = LockMark(*m_connection);
    seen.mayBeLocks = std::exchange(m_locks, locks) != locks;
    // The first look always finds the clock moved.
    seen.isUnknown = seen.isUnknown || (seen.notes.isEmpty() && !m_isFirst);
  }
  m_connection->Close();
  m_isFirst = false;
  m_mustRead = false;
  return seen;
}

}  // namespace host
