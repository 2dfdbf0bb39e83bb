#include "moving/Export.h"

#include "moving/TableRules.h"
#include "moving/TableWriter.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"

#include <QDir>
#include <QFileInfo>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace moving {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

QList<const database::Table*> Wanted(const QString& name) {
  QList<const database::Table*> tables;
  QStringList known;
  for (const TableRule& rule : TableRules()) {
    // Settings are no data.
    if (!rule.settings.isEmpty()) {
      continue;
    }
    known.append(rule.table->name);
    if (name.isEmpty() || rule.table->name.compare(name, Qt::CaseInsensitive) == 0) {
      tables.append(rule.table);
    }
  }
  if (tables.isEmpty()) {
    Refuse(u"No hay ninguna tabla «%1» que se exporte. Las hay: %2."_s.arg(name, known.join(u", "_s)));
  }
  return tables;
}

qint64 WriteTable(const database::Table& table, TableWriter& writer, adodb::Connection& connection,
                  const database::Stop& stop) {
  QStringList headings;
  QStringList columns;
  for (const database::Column& column : table.columns) {
    headings.append(column.name);
    columns.append(u'[' + column.name + u']');
  }
  writer.Begin(table.name, headings);
  const auto rows = adodb::Execute(connection, u"SELECT {} FROM [{}] ORDER BY {}", Verbatim{columns.join(u", ")},
                                   Verbatim{table.name}, Verbatim{columns.front()});
  qint64 count = 0;
  QList<QVariant> row(headings.size());
  for (; !rows->AtEnd(); rows->MoveNext(), ++count) {
    if (stop && stop()) {
      throw automation::Error(adodb::Stopped, u"Se ha cancelado. No se ha escrito nada."_s);
    }
    for (int i = 0; i < row.size(); ++i) {
      row[i] = rows->Field(i);
    }
    writer.Write(row);
  }
  return count;
}

}  // namespace

qint64 Export(const QString& path, const QString& table, adodb::Connection& connection, const database::Stop& stop) {
  const QList<const database::Table*> tables = Wanted(table);
  const bool isFolder = QFileInfo(path).isDir();
  if (!isFolder && tables.size() > 1 && path.endsWith(u".csv"_s, Qt::CaseInsensitive)) {
    Refuse(
        u"En un archivo .csv cabe una sola tabla: diga cuál con «--tabla», o dé el nombre de una carpeta o de un "
        "archivo .ods."_s);
  }
  // All tables are of one moment.
  const adodb::Transaction moment(connection);
  qint64 rows = 0;
  if (isFolder) {
    for (const database::Table* each : tables) {
      const auto writer = MakeTableWriter(QDir(path).filePath(each->name + u".csv"_s), Purpose::Data);
      rows += WriteTable(*each, *writer, connection, stop);
      writer->Finish();
    }
    return rows;
  }
  const auto writer = MakeTableWriter(path, Purpose::Data);
  for (const database::Table* each : tables) {
    rows += WriteTable(*each, *writer, connection, stop);
  }
  writer->Finish();
  return rows;
}

}  // namespace moving
