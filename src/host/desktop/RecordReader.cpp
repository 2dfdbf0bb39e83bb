#include "host/desktop/RecordReader.h"

#include "platform/adodb/Statement.h"
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

QString RecordName(adodb::Connection& connection, const Node& node, int id) {
  // The list of one record: its statement begins with the key and ends in the order.
  const QString key = node.list.section(u',', 0, 0).mid(QStringView(u"SELECT ").size());
  const qsizetype order = node.list.indexOf(u" ORDER BY "_s);
  const QString condition = node.list.contains(u" WHERE "_s) ? u" AND "_s : u" WHERE "_s;
  const auto rows = adodb::Execute(connection, u"{}{}{}={}", adodb::Verbatim{node.list.left(order)},
                                   adodb::Verbatim{condition}, adodb::Verbatim{key}, id);
  if (rows->AtEnd()) {
    return {};
  }
  QList<QVariant> values;
  for (int column = 1; column <= node.columns.size(); ++column) {
    values.append(rows->Field(column));
  }
  RecordData record(node.columns);
  record.Append(id, values);
  QStringList name;
  for (int column = 0; column < node.nameColumns; ++column) {
    name.append(record.Display(0, column));
  }
  return name.join(u' ').simplified();
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
