#include "host/mailing/window/BackgroundReader.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

std::size_t Number(BackgroundReader::Topic topic) {
  return static_cast<std::size_t>(topic);
}

}  // namespace

BackgroundReader::BackgroundReader(DatabaseThread::MakeConnection makeConnection, QObject* parent)
    : QObject(parent), m_thread(std::move(makeConnection)) {}

BackgroundReader::~BackgroundReader() {
  for (std::atomic<int>& ticket : m_tickets) {
    ++ticket;
  }
}

bool BackgroundReader::IsBusy() const {
  return std::ranges::any_of(m_waiting, [](int jobs) { return jobs > 0; });
}

// All of them are answered, the unwanted with nothing: who waits for them is told.
void BackgroundReader::Run(Topic topic, Job job) {
  const auto wanted = [this, topic, ticket = ++m_tickets[Number(topic)]] {
    return topic == Topic::Write || m_tickets[Number(topic)] == ticket;
  };
  ++m_waiting[Number(topic)];
  m_thread.Run([] { return true; },
               [this, topic, wanted, job = std::move(job)](adodb::Connection& connection) -> Done {
                 const Done done = wanted() ? job(connection) : Done();
                 return [this, topic, wanted, done] { Finish(topic, wanted() ? done : Done()); };
               },
               [this, topic, wanted](const automation::Error& error) {
                 Finish(topic, wanted() ? [this, topic, error] { Q_EMIT Failed(topic, error); } : Done());
               });
  Q_EMIT BusyChanged();
}

void BackgroundReader::Finish(Topic topic, const Done& done) {
  --m_waiting[Number(topic)];
  if (done) {
    done();
  }
  Q_EMIT BusyChanged();
}

}  // namespace host
