#pragma once

#include "host/records/NodeCatalog.h"
#include "platform/adodb/Connection.h"

#include <QList>
#include <QString>

namespace host {

/// A number of rows of one kind: "12 sucursales".
struct RowCount {
  QString one;   ///< "sucursal"
  QString many;  ///< "sucursales"
  int count = 0;

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

/// The node of a deleted record that the record of `node` refers to, nullptr for none.
const Node* DeletedParent(adodb::Connection& connection, const Node& node, int id);

/// "2 sucursales, 1 presentador y 3 cuentas"; empty for an empty list.
QString JoinCounts(const QList<RowCount>& counts);

}  // namespace host
