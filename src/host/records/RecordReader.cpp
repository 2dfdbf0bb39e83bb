#include "host/records/RecordReader.h"

#include "host/records/OptionalColumns.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Keys in one statement.
constexpr qsizetype mostKeys = 500;
const QString eliminated = u"Eliminado"_s;

QString Where(const Node& node, const QString& condition = {}) {
  QStringList conditions;
  if (node.marksDeleted) {
    conditions.append(node.table + u".Eliminado=0"_s);
  }
  if (!node.condition.isEmpty()) {
    conditions.append(node.condition);
  }
  if (!condition.isEmpty()) {
    conditions.append(node.table + u'.' + node.key + condition);
  }
  return conditions.isEmpty() ? QString() : u" WHERE "_s + conditions.join(u" AND "_s);
}

QString ListStatement(const Node& node, const QString& condition = {}) {
  return node.select + Where(node, condition) + u" ORDER BY "_s + node.order;
}

// `condition` is one on the key; empty for all records.
void Append(
    RecordData& records, adodb::Connection& connection, const Node& node, const QString& condition,
    const std::function<bool()>& goOn = [] { return true; }) {
  const OptionalValues optional(connection, node, condition);
  const auto columns = static_cast<int>(node.columns.size());
  QList<QVariant> values(columns);
  for (const auto rows = connection.Execute(ListStatement(node, condition)); !rows->AtEnd() && goOn();
       rows->MoveNext()) {
    const int id = automation::CLng(rows->Field(0));
    for (int column = 0; column < columns; ++column) {
      const ListColumn& wanted = node.columns[column];
      values[column] = wanted.IsOptional() ? optional.Value(wanted, id) : rows->Field(column + 1);
    }
    records.Append(id, values);
  }
}

QString AmongKeys(const QStringList& keys) {
  return u" IN ("_s + keys.join(u',') + u')';
}

}  // namespace

QString CountStatement(const Node& node) {
  return u"SELECT %1 AS Nodo, COUNT(*) AS Cuantos FROM "_s.arg(node.id) + node.table + Where(node);
}

QString RecordStatement(const Node& node, int id) {
  return ListStatement(node, AmongKeys({QString::number(id)}));
}

RecordData ReadRecords(adodb::Connection& connection, const Node& node, const std::function<bool()>& goOn) {
  RecordData records(node.columns);
  Append(records, connection, node, {}, goOn);
  return records;
}

RecordData ReadRecords(adodb::Connection& connection, const Node& node) {
  return ReadRecords(connection, node, [] { return true; });
}

RecordData ReadRecords(adodb::Connection& connection, const Node& node, const QList<int>& ids) {
  RecordData records(node.columns);
  for (qsizetype from = 0; from < ids.size(); from += mostKeys) {
    QStringList keys;
    for (const int id : ids.mid(from, mostKeys)) {
      keys.append(QString::number(id));
    }
    Append(records, connection, node, AmongKeys(keys));
  }
  return records;
}

RecordData ReadRecordsAbove(adodb::Connection& connection, const Node& node, int key) {
  RecordData records(node.columns);
  Append(records, connection, node, u'>' + QString::number(key));
  return records;
}

QString RecordName(adodb::Connection& connection, const Node& node, int id) {
  const RecordData records = ReadRecords(connection, node, QList<int>{id});
  QStringList name;
  for (int column = 0; records.Size() > 0 && column < node.nameColumns; ++column) {
    name.append(records.Display(0, column));
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
  const QString& column = node.marksDeleted ? eliminated : node.key;
  const auto rows = adodb::Execute(connection, u"SELECT {} FROM {} WHERE {}={}", adodb::Verbatim{column},
                                   adodb::Verbatim{node.table}, adodb::Verbatim{node.key}, id);
  return rows->AtEnd() || (node.marksDeleted && automation::CBool(rows->Field(0)));
}

}  // namespace host
