#include "host/records/WriteWatch.h"

#include "host/records/OfficeConnection.h"

namespace host {

WriteWatch::WriteWatch(OfficeConnection& connection) : m_connection(connection) {
  m_connection.m_watches.push_back(this);
}

WriteWatch::~WriteWatch() {
  std::erase(m_connection.m_watches, this);
}

void WriteWatch::Add(const QList<WrittenRow>& rows) {
  for (const WrittenRow& row : rows) {
    if (!m_rows.contains(row)) {
      m_rows.append(row);
    }
  }
}

}  // namespace host
