#include "database/Notices.h"

#include "database/engine/EngineBeneath.h"
#include "database/engine/EngineConnection.h"
#include "database/postgres/PostgresSession.h"
#include "platform/automation/Error.h"

#include <QSocketNotifier>
#include <QThread>
#include <QTimer>

#include <utility>

namespace database {

/// The line of a session under watch, or the search for a new one.
class Notices::Line {
 public:
  Line(EngineConnection& engine, PostgresSession& session, Written written)
      : m_engine(engine), m_session(session), m_target(session.Handle().Target()), m_written(std::move(written)) {
    m_pause.setSingleShot(true);
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this] { Look(); });
    m_session.Listen([this](int socket) { Change(socket); }, [this] { ReadSoon(); });
    Watch(m_session.Socket());
  }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;
  ~Line() {
    m_session.Listen({}, {});
    if (m_look != nullptr) {
      m_look->wait();
    }
  }

 private:
  void Watch(int socket);
  void Change(int socket);
  void ReadSoon();
  void Read();
  void Look();
  void Return();

  static constexpr int pause = 500;

  EngineConnection& m_engine;
  PostgresSession& m_session;
  const ConnectionString m_target;
  const Written m_written;
  std::unique_ptr<QSocketNotifier> m_notifier;
  std::unique_ptr<QThread> m_look;
  QTimer m_pause;
  bool m_isToRead = false;
};

void Notices::Line::Watch(int socket) {
  if (m_notifier != nullptr) {
    // It may be the one that is telling.
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater();
  }
  if (socket >= 0) {
    m_notifier = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_pause, [this] { Read(); });
  }
}

// What was told between two lines nobody heard.
void Notices::Line::Change(int socket) {
  Watch(socket);
  if (socket < 0) {
    m_pause.start(pause);
  } else {
    m_pause.stop();
    QMetaObject::invokeMethod(
        &m_pause, [this] { m_written({}); }, Qt::QueuedConnection);
  }
}

// What came along with an answer wakes no notifier.
void Notices::Line::ReadSoon() {
  if (!std::exchange(m_isToRead, true)) {
    QMetaObject::invokeMethod(
        &m_pause, [this] { Read(); }, Qt::QueuedConnection);
  }
}

void Notices::Line::Read() {
  m_isToRead = false;
  const QStringList tables = m_session.TakeNotices();
  if (!m_session.IsAlive()) {
    Change(-1);
  }
  if (!tables.isEmpty()) {
    m_written(tables);
  }
}

// On a thread of its own: where the network is gone an answer is long in coming.
void Notices::Line::Look() {
  if (m_look != nullptr) {
    m_look->wait();
  }
  m_look.reset(QThread::create([this] {
    if (PostgresHandle::IsAnswering(m_target)) {
      QMetaObject::invokeMethod(&m_pause, [this] { Return(); });
    } else {
      QMetaObject::invokeMethod(&m_pause, [this] { m_pause.start(pause); });
    }
  }));
  m_look->start();
}

// A transaction that was cut off is told by its next statement, not from here.
void Notices::Line::Return() {
  try {
    m_engine.Revive();
  } catch (const automation::Error&) {
    // What there is to say of it the next statement says, too.
  }
  if (m_notifier == nullptr) {
    m_pause.start(pause);
  }
}

Notices::Notices(adodb::Connection& connection, Written written) {
  EngineConnection* engine = EngineBeneath(connection);
  auto* session = engine == nullptr ? nullptr : dynamic_cast<PostgresSession*>(&engine->EngineSession());
  if (session != nullptr) {
    m_line = std::make_unique<Line>(*engine, *session, std::move(written));
  }
}

Notices::~Notices() = default;

bool Notices::AreTold() const {
  return m_line != nullptr;
}

}  // namespace database
