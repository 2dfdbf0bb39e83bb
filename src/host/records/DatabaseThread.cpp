#include "host/records/DatabaseThread.h"

namespace host {

DatabaseThread::DatabaseThread(MakeConnection makeConnection, QObject* parent)
    : QObject(parent), m_makeConnection(std::move(makeConnection)), m_worker(new QObject) {
  m_worker->moveToThread(&m_thread);
  connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
  m_thread.start();
}

DatabaseThread::~DatabaseThread() {
  // The connection ends in the thread that opened it.
  QMetaObject::invokeMethod(m_worker, [this] {
    m_connection.reset();
    m_thread.quit();
  });
  m_thread.wait();
}

void DatabaseThread::Run(const Wanted& wanted, const Work& work, const Failure& failed) {
  QMetaObject::invokeMethod(m_worker, [this, wanted, work, failed] { Do(wanted, work, failed); });
}

void DatabaseThread::Do(const Wanted& wanted, const Work& work, const Failure& failed) {
  if (!wanted()) {
    return;
  }
  const Answer answer = Try(work, failed);
  QMetaObject::invokeMethod(this, [wanted, answer] {
    if (wanted()) {
      answer();
    }
  });
}

DatabaseThread::Answer DatabaseThread::Try(const Work& work, const Failure& failed) {
  try {
    if (!m_connection) {
      m_connection = m_makeConnection();
    }
    if (m_connection->State() == adodb::StateClosed) {
      m_connection->Open();
    }
    Answer answer = work(*m_connection);
    m_connection->Close();
    return answer;
  } catch (const std::exception&) {
    const automation::Error error = automation::CurrentError();
    // The next piece begins anew.
    m_connection.reset();
    return [failed, error] { failed(error); };
  }
}

}  // namespace host
