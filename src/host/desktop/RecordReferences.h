#pragma once

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

/// The live rows that refer to the record and so keep it from being deleted; kinds without rows are left out.
QList<RowCount> CountUses(adodb::Connection& connection, int nodeId, int id);

/// "2 sucursales, 1 presentador y 3 cuentas"; empty for an empty list.
QString JoinCounts(const QList<RowCount>& counts);

}  // namespace host
