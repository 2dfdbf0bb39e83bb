#include "host/records/Attention.h"

#include "database/Schema.h"
#include "host/records/RecordReferences.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/contract/cConstNodo.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr cConstNodo numbers;
// Notes that are looked through for the last written records: a person writes some of them again and again.
constexpr int lookedThrough = 300;

// A rule about the records of one node.
struct Rule {
  int nodeId;
  QString one;
  QString many;
  QString condition;
};

const QList<Rule>& Rules() {
  static const QList<Rule> rules = {
      // Others have none.
      {numbers.Provincias(), u"provincia sin prefijo postal"_s, u"provincias sin prefijo postal"_s,
       u"(Provincias.Prefijo IS NULL OR Provincias.Prefijo='') AND EXISTS (SELECT IDPais FROM Paises WHERE "
       "IDPais=Provincias.CodPais AND CodigoISO='ES')"_s},
      {numbers.Emisores(), u"emisor sin cuenta"_s, u"emisores sin cuenta"_s,
       u"NOT EXISTS (SELECT IDEmisor_Cuenta FROM Emisores_Cuentas WHERE CodEmisor=Emisores.IDEmisor AND "
       "Emisores_Cuentas.Eliminado=0)"_s},
  };
  return rules;
}

// Empty for a table without such columns.
QString TooLong(const QString& table) {
  QStringList conditions;
  for (const database::Column& column : database::Schema::Current().FindTable(table)->columns) {
    if (column.type == database::ColumnType::Text) {
      conditions.append(u"LEN(%1.%2)>%3"_s.arg(table, column.name).arg(column.length));
    }
  }
  return conditions.join(u" OR "_s);
}

QList<int> LiveIds(adodb::Connection& connection, const Node& node, const QString& condition) {
  QList<int> ids;
  const auto rows = connection.Execute(
      u"SELECT %1 FROM %2 WHERE %2.Eliminado=0 AND (%3) ORDER BY %1"_s.arg(node.key, node.table, condition));
  for (; !rows->AtEnd(); rows->MoveNext()) {
    ids.append(automation::CLng(rows->Field(0)));
  }
  return ids;
}

}  // namespace

QList<Concern> FindConcerns(adodb::Connection& connection, const std::vector<Node>& nodes) {
  QList<Concern> concerns;
  const auto add = [&](const Node& node, const QString& one, const QString& many, const QString& condition) {
    const QList<int> ids = condition.isEmpty() ? QList<int>() : LiveIds(connection, node, condition);
    if (!ids.isEmpty()) {
      concerns.append({RowCount{one, many, static_cast<int>(ids.size())}.Text(), node.id, ids});
    }
  };
  for (const Rule& rule : Rules()) {
    const auto node = std::ranges::find(nodes, rule.nodeId, &Node::id);
    if (node != nodes.end()) {
      add(*node, rule.one, rule.many, rule.condition);
    }
  }
  for (const Node& node : nodes) {
    if (!node.marksDeleted) {
      continue;
    }
    const QString where = u" («%1»)"_s.arg(node.title);
    add(node, u"registro que nombra otro ya eliminado"_s + where,
        u"registros que nombran otros ya eliminados"_s + where, NamesADeleted(node));
    add(node, u"registro con un texto demasiado largo"_s + where, u"registros con textos demasiado largos"_s + where,
        TooLong(node.table));
  }
  return concerns;
}

int CountOldLocks(adodb::Connection& connection, const QDateTime& before) {
  const auto rows = adodb::Execute(
      connection,
      u"SELECT COUNT(*) AS Total FROM BloqueoRegistros WHERE Desde IS NOT NULL AND Desde<>'' AND Desde<'{}'",
      before.toUTC().toString(Qt::ISODate));
  return automation::CLng(rows->Field(0));
}

QList<Change> LastWritten(adodb::Connection& connection, const std::vector<Node>& nodes, qsizetype most) {
  QStringList tables;
  for (const Node& node : nodes) {
    tables.append(node.table);
  }
  QList<Change> changes;
  QSet<std::pair<QString, qint64>> seen;
  for (const Change& change : NewestChanges(connection, tables, lookedThrough)) {
    const std::pair record(change.table, change.key);
    if (changes.size() < most && !seen.contains(record)) {
      seen.insert(record);
      changes.append(change);
    }
  }
  return changes;
}

std::optional<QDateTime> NewestCopy(const QString& databaseFile) {
  const QFileInfo file(databaseFile);
  const QFileInfoList copies = QDir(file.dir().filePath(u"copias"_s))
                                   .entryInfoList({file.completeBaseName() + u"-*.db"_s}, QDir::Files, QDir::Time);
  return copies.isEmpty() ? std::nullopt : std::optional(copies.constFirst().lastModified());
}

}  // namespace host
