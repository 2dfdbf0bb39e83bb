#include "host/desktop/RecordReader.h"

#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

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
  const auto rows = adodb::Execute(connection, u"SELECT MAX({}) AS Maximo FROM {}", adodb::Verbatim{node.key},
                                   adodb::Verbatim{node.table});
  const QVariant highest = rows->AtEnd() ? QVariant() : rows->Field(0);
  return automation::IsNull(highest) ? 0 : automation::CLng(highest);
}

bool IsDeleted(adodb::Connection& connection, const Node& node, int id) {
  const auto rows = adodb::Execute(connection, u"SELECT Eliminado FROM {} WHERE {}={}", adodb::Verbatim{node.table},
                                   adodb::Verbatim{node.key}, id);
  return rows->AtEnd() || automation::CBool(rows->Field(0));
}

}  // namespace host
