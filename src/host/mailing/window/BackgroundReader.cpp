#include "host/mailing/window/BackgroundReader.h"

#include <algorithm>
#include <optional>

namespace host {

namespace {

std::size_t Number(BackgroundReader::Topic topic) {
  return static_cast<std::size_t>(topic);
}

}  // namespace

BackgroundReader::BackgroundReader(MakeConnection makeConnection, QObject* parent)
    : QObject(parent), m_makeConnection(std::move(makeConnection)), m_worker(new QObject) {
  m_worker->moveToThread(&m_thread);
  connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
  m_thread.start();
}

BackgroundReader::~BackgroundReader() {
  for (std::atomic<int>& ticket : m_tickets) {
    ++ticket;
  }
  // The connection ends in the thread that opened it.
  QMetaObject::invokeMethod(m_worker, [this] { m_connection.reset(); });
  QMetaObject::invokeMethod(m_worker, [this] { m_thread.quit(); });
  m_thread.wait();
}

bool BackgroundReader::IsBusy() const {
  return std::ranges::any_of(m_waiting, [](int jobs) { return jobs > 0; });
}

void BackgroundReader::Run(Topic topic, Job job) {
  const int ticket = ++m_tickets[Number(topic)];
  ++m_waiting[Number(topic)];
  QMetaObject::invokeMethod(m_worker, [this, topic, ticket, job = std::move(job)] { Work(topic, ticket, job); });
  Q_EMIT BusyChanged();
}

adodb::Connection& BackgroundReader::Opened() {
  if (!m_connection) {
    m_connection = m_makeConnection();
  }
  if (m_connection->State() == adodb::StateClosed) {
    m_connection->Open();
  }
  return *m_connection;
}

void BackgroundReader::Work(Topic topic, int ticket, const Job& job) {
  const auto wanted = [this, topic, ticket] { return topic == Topic::Write || m_tickets[Number(topic)] == ticket; };
  Done done;
  std::optional<automation::Error> error;
  if (wanted()) {
    try {
      done = job(Opened());
      m_connection->Close();
    } catch (const std::exception&) {
      error = automation::CurrentError();
      // The next job begins anew.
      m_connection.reset();
    }
  }
  QMetaObject::invokeMethod(this, [this, topic, wanted, done = std::move(done), error] {
    --m_waiting[Number(topic)];
    if (error && wanted()) {
      Q_EMIT Failed(topic, *error);
    } else if (done && wanted()) {
      done();
    }
    Q_EMIT BusyChanged();
  });
}

}  // namespace host
