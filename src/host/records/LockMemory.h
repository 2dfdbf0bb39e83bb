#pragma once

#include "platform/adodb/Connection.h"

#include <QList>
#include <QString>

#include <utility>

namespace host {

/// The record locks that a session holds by its presence on a server (see database/Presence.h). After a cut they go
/// over to the new presence. One that somebody else has taken meanwhile is lost: until its dialog gives it up, the
/// session saves nothing.
class LockMemory {
 public:
  using Record = std::pair<QString, int>;  ///< Key column and key.

  void Add(const Record& record);
  void Remove(const Record& record);

  /// Takes the locks over. What is to be said of those that are lost; empty where all are there. Errors of the database
  /// leave it.
  QString CarryOver(adodb::Connection& connection, int before, int now);
  /// Raises TransactionLost while one is lost.
  void RequireNoneLost() const;

 private:
  QList<Record> m_held;
  QList<Record> m_lost;
};

}  // namespace host
