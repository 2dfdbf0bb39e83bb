#pragma once

#include "host/records/NodeCatalog.h"
#include "platform/adodb/Connection.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace host {

/// A number of rows of one kind: "12 sucursales".
struct RowCount {
  QString one;   ///< "sucursal"
  QString many;  ///< "sucursales"
  int count = 0;
  int nodeId = 0;  ///< The node that lists them; 0 for none.

  QString Text() const;
};

/// The live rows that a deletion of these records marks as deleted along with them; kinds without rows are left
/// out. Empty for a node whose records have none of their own.
QList<RowCount> CountDependents(adodb::Connection& connection, int nodeId, const QList<int>& ids);

/// A row by its table and key.
struct RowKey {
  QString table;
  QString key;  ///< The key column.
  int id = 0;
};

/// The same rows one by one.
QList<RowKey> DependentRows(adodb::Connection& connection, int nodeId, int id);
/// The tables that such rows can be of, without an `id`.
QList<RowKey> DependentTables(int nodeId);

/// The live rows that refer to the record and so keep it from being deleted; kinds without rows are left out.
/// `velumar` is the kind of installation: there dioceses don't keep a province.
QList<RowCount> CountUses(adodb::Connection& connection, int nodeId, int id, bool velumar);

/// Whether CountUses knows of any use of such records.
bool HasUses(int nodeId);
/// How many rows CountUses counts, of the records that are used at all: those whose keys meet the condition ("=3"), all
/// without one.
QHash<int, int> UsesOf(adodb::Connection& connection, int nodeId, const QString& condition, bool velumar);
/// Whether a row of that table can make those numbers others.
bool UsesDependOn(int nodeId, const QString& table);

/// The node's table, and those whose rows CountDependents and CountUses count.
QStringList TablesAround(const Node& node);

/// A record that another one refers to.
struct ParentRecord {
  const Node* node = nullptr;
  int id = 0;
};

/// A deleted record that the row refers to; nothing where all that it refers to is live, or the row is not there.
std::optional<ParentRecord> DeletedParent(adodb::Connection& connection, const RowKey& row);

/// The condition on rows of the node's table that they refer to a record that is deleted, or not there; empty for a
/// node whose records refer to none.
QString NamesADeleted(const Node& node);

/// Whether records of the node refer to records of the table.
bool RefersTo(const Node& node, const QString& table);
/// The records of `node` that refer to the row of that table and key: what shows the other's name in a list.
QList<int> ReferringIds(adodb::Connection& connection, const Node& node, const QString& table, qint64 key);

/// "2 sucursales, 1 presentador y 3 cuentas"; empty for an empty list.
QString JoinCounts(const QList<RowCount>& counts);

}  // namespace host
