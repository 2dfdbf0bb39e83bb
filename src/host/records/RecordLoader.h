#pragma once

#include "host/records/DatabaseThread.h"
#include "host/records/NodeCatalog.h"
#include "host/records/RecordData.h"

#include <QObject>

namespace host {

/// Reads the lists in the background.
class RecordLoader : public QObject {
  Q_OBJECT

 public:
  /// Borrows the thread.
  explicit RecordLoader(DatabaseThread& thread, QObject* parent = nullptr);

  /// Copies the node, reads its records and sorts them by a column. Loaded or Failed follows; of several readings only
  /// the last one's result arrives.
  void Load(const Node& node, int sortColumn);
  /// Nothing arrives of the reading under way.
  void Withdraw() { m_reading.Withdraw(); }
  bool IsLoading() const { return m_reading.IsUnderWay(); }

 Q_SIGNALS:
  /// The receiver may take the records away.
  void Loaded(host::SortedRecords& records);
  void Failed(const automation::Error& error);

 private:
  Reading<SortedRecords> m_reading;
};

}  // namespace host
