#include "database/sqlite/SqliteDdl.h"

#include "database/dialect/ExpressionWriter.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

QString TypeText(const Column& column) {
  switch (column.type) {
    case ColumnType::Key:
      return u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    case ColumnType::Text:
    case ColumnType::LongText:
      return u"TEXT COLLATE %1"_s.arg(engine::collation);
    case ColumnType::Decimal:
    case ColumnType::Money:
      return u"REAL"_s;
    default:
      return u"INTEGER"_s;
  }
}

QString Definition(const Column& column) {
  QString sql = QuotedName(column.name) + u' ' + TypeText(column);
  if (column.type == ColumnType::Key) {
    return sql;
  }
  if (column.required) {
    sql += u" NOT NULL"_s;
  }
  if (!column.defaultValue.isEmpty()) {
    sql += u" DEFAULT "_s + column.defaultValue;
  }
  if (column.type == ColumnType::Boolean) {
    sql += u" CHECK (%1 IN (-1, 0))"_s.arg(QuotedName(column.name));
  }
  return sql;
}

QByteArray CreateTable(const Table& table, int version) {
  QStringList definitions;
  for (const Column& column : table.columns) {
    if (column.since <= version) {
      definitions += Definition(column);
    }
  }
  return u"CREATE TABLE %1 (%2) STRICT"_s.arg(QuotedName(table.name), definitions.join(u", "_s)).toUtf8();
}

QByteArray CreateIndex(const Table& table, const Index& index) {
  QStringList names;
  for (const QString& column : index.columns) {
    names += QuotedName(column);
  }
  return u"CREATE %1INDEX %2 ON %3 (%4)%5"_s
      .arg(index.unique ? u"UNIQUE "_s : QString(), QuotedName(index.name), QuotedName(table.name), names.join(u", "_s),
           index.liveOnly ? u" WHERE %1 = 0"_s.arg(QuotedName(u"Eliminado")) : QString())
      .toUtf8();
}

}  // namespace

QByteArrayList SchemaStatements(const Schema& schema, int fromVersion, int toVersion) {
  QByteArrayList statements;
  const auto isNew = [&](int since) { return since > fromVersion && since <= toVersion; };
  for (const Table& table : schema.Tables()) {
    if (isNew(table.since)) {
      statements += CreateTable(table, toVersion);
    }
    for (const Column& column : table.columns) {
      if (!isNew(table.since) && isNew(column.since)) {
        statements += u"ALTER TABLE %1 ADD COLUMN %2"_s.arg(QuotedName(table.name), Definition(column)).toUtf8();
      }
    }
    for (const Index& index : table.indexes) {
      if (isNew(index.since)) {
        statements += CreateIndex(table, index);
      }
    }
  }
  return statements;
}

}  // namespace database
