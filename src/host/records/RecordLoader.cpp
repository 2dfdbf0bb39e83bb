#include "host/records/RecordLoader.h"

#include "host/records/RecordReader.h"

#include <QScopeGuard>

#include <optional>

namespace host {

RecordLoader::RecordLoader(MakeConnection makeConnection, QObject* parent)
    : QObject(parent), m_makeConnection(std::move(makeConnection)), m_worker(new QObject) {
  m_worker->moveToThread(&m_thread);
  connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
  m_thread.start();
}

RecordLoader::~RecordLoader() {
  ++m_ticket;
  m_thread.quit();
  m_thread.wait();
}

void RecordLoader::Load(const Node& node, int sortColumn) {
  m_loading = true;
  QMetaObject::invokeMethod(m_worker,
                            [this, &node, sortColumn, ticket = ++m_ticket] { Run(node, sortColumn, ticket); });
}

void RecordLoader::Run(const Node& node, int sortColumn, int ticket) {
  const auto wanted = [this, ticket] { return m_ticket == ticket; };
  std::shared_ptr<SortedRecords> records;
  std::optional<automation::Error> error;
  if (!wanted()) {
    return;
  }
  try {
    if (!m_connection) {
      m_connection = m_makeConnection();
    }
    m_connection->Open();
    const auto close = qScopeGuard([this] { m_connection->Close(); });
    RecordData read = ReadRecords(*m_connection, node, wanted);
    if (wanted()) {
      records = std::make_shared<SortedRecords>(std::move(read), sortColumn);
    }
  } catch (const std::exception&) {
    error = automation::CurrentError();
  }
  QMetaObject::invokeMethod(this, [this, wanted, records, error] {
    if (!wanted()) {
      return;
    }
    m_loading = false;
    if (error) {
      Q_EMIT Failed(*error);
    } else {
      Q_EMIT Loaded(*records);
    }
  });
}

}  // namespace host
