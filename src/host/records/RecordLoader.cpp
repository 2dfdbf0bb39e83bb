#include "host/records/RecordLoader.h"

#include "host/records/RecordReader.h"

namespace host {

RecordLoader::RecordLoader(DatabaseThread& thread, QObject* parent)
    : QObject(parent),
      m_reading(
          thread, [this](SortedRecords& records) { Q_EMIT Loaded(records); },
          [this](const automation::Error& error) { Q_EMIT Failed(error); }) {}

void RecordLoader::Load(const Node& node, int sortColumn) {
  m_reading.Ask([node, sortColumn](adodb::Connection& connection, const DatabaseThread::Wanted& wanted) {
    RecordData read = ReadRecords(connection, node, wanted);
    return wanted() ? SortedRecords(std::move(read), sortColumn) : SortedRecords(RecordData(node.columns));
  });
}

}  // namespace host
