#pragma once

#include "host/records/NodeCatalog.h"
#include "platform/adodb/Connection.h"

#include <QHash>
#include <QVariant>

namespace host {

/// The node with the columns behind its own that a list shows only to who wants them: how often a record is used, as
/// its deletion counts it, and when it was written last, as the change log knows. They are empty unless they are read.
Node WithOptionalColumns(const Node& node, bool readsUses, bool readsLastChange);

/// What stands in such columns.
class OptionalValues {
 public:
  /// Reads what the node says that is read, of the records whose keys meet the condition ("=3", " IN (1,2)"), of all
  /// without one. Errors of the database leave it.
  OptionalValues(adodb::Connection& connection, const Node& node, const QString& condition);

  /// Of a column that the node does not have by itself.
  QVariant Value(const ListColumn& column, int id) const;

 private:
  bool m_hasUses;
  QHash<int, int> m_uses;
  QHash<int, QString> m_lastChanges;
};

}  // namespace host
