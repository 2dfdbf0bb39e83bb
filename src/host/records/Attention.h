#pragma once

#include "host/records/ChangeLog.h"
#include "host/records/NodeCatalog.h"
#include "platform/adodb/Connection.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>
#include <vector>

namespace host {

/// Records that somebody should look at.
struct Concern {
  QString text;    ///< "3 provincias sin prefijo postal"
  int nodeId = 0;  ///< The list that has them.
  QList<int> ids;
};

/// What the lists of these nodes have that wants mending: Spanish provinces without a prefix, issuers without an
/// account, live records that name a deleted one, texts longer than their columns. Looks at every record. Errors of
/// the connection leave this function and the others.
QList<Concern> FindConcerns(adodb::Connection& connection, const std::vector<Node>& nodes);

/// How many records have been locked since before that moment (UTC).
int CountOldLocks(adodb::Connection& connection, const QDateTime& before);

/// The records of these nodes that were written last, the newest first, at most `most`: the last note of each.
QList<Change> LastWritten(adodb::Connection& connection, const std::vector<Node>& nodes, qsizetype most);

/// When the newest of the copies was made that stand beside the database's file; nothing for none.
std::optional<QDateTime> NewestCopy(const QString& databaseFile);

}  // namespace host
