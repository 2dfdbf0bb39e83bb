#include "host/desktop/RecordReader.h"

#include "platform/automation/Conversion.h"

using namespace Qt::StringLiterals;

namespace host {

RecordData ReadRecords(adodb::Connection& connection, const Node& node) {
  RecordData records(node.columns);
  const int columns = static_cast<int>(node.columns.size());
  QList<QVariant> values(columns);
  for (const auto rows = connection.Execute(node.list); !rows->AtEnd(); rows->MoveNext()) {
    for (int column = 0; column < columns; ++column) {
      values[column] = rows->Field(column + 1);
    }
    records.Append(automation::CLng(rows->Field(0)), values);
  }
  return records;
}

int HighestKey(adodb::Connection& connection, const Node& node) {
  const auto rows = connection.Execute(u"SELECT MAX(%1) AS Maximo FROM %2"_s.arg(node.key, node.table));
  const QVariant highest = rows->AtEnd() ? QVariant() : rows->Field(0);
  return automation::IsNull(highest) ? 0 : automation::CLng(highest);
}

bool IsDeleted(adodb::Connection& connection, const Node& node, int id) {
  const auto rows = connection.Execute(u"SELECT Eliminado FROM %1 WHERE %2=%3"_s.arg(node.table, node.key).arg(id));
  return rows->AtEnd() || automation::CBool(rows->Field(0));
}

}  // namespace host
