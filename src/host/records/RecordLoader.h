#pragma once

#include "host/records/NodeCatalog.h"
#include "host/records/RecordData.h"
#include "platform/adodb/Connection.h"
#include "platform/automation/Error.h"

#include <QObject>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

namespace host {

/// Reads the lists on a thread of its own, over one connection of its own, so that a long list or a busy database never
/// holds the window up.
class RecordLoader : public QObject {
  Q_OBJECT

 public:
  /// Makes a closed connection; called once, on the loader's thread. Between two readings the connection is closed.
  using MakeConnection = std::function<std::unique_ptr<adodb::Connection>()>;

  explicit RecordLoader(MakeConnection makeConnection, QObject* parent = nullptr);
  /// Ends the reading in progress, which a busy database holds up for as long as the connection waits for it.
  ~RecordLoader() override;

  /// Reads the node's records and sorts them by a column. Loaded or Failed follows; of several readings only the last
  /// one's result arrives.
  void Load(const Node& node, int sortColumn);
  bool IsLoading() const { return m_loading; }

 Q_SIGNALS:
  /// The receiver may take the records away.
  void Loaded(host::SortedRecords& records);
  void Failed(const automation::Error& error);

 private:
  void Run(const Node& node, int sortColumn, int ticket);

  MakeConnection m_makeConnection;
  QThread m_thread;
  QObject* m_worker;
  std::unique_ptr<adodb::Connection> m_connection;  ///< The worker's, from its first reading on.
  std::atomic<int> m_ticket = 0;                    ///< Of the last reading that was asked for.
  bool m_loading = false;
};

}  // namespace host
