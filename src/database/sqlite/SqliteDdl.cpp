#include "database/sqlite/SqliteDdl.h"

#include "database/dialect/ExpressionWriter.h"

namespace database {

namespace {

QString TypeText(const Column& column) {
  switch (column.type) {
    case ColumnType::Key:
      return QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT");
    case ColumnType::Text:
    case ColumnType::LongText:
      return QStringLiteral("TEXT COLLATE %1").arg(engine::collation);
    case ColumnType::Decimal:
    case ColumnType::Money:
      return QStringLiteral("REAL");
    default:
      return QStringLiteral("INTEGER");
  }
}

QString Definition(const Column& column) {
  QString sql = QuotedName(column.name) + u' ' + TypeText(column);
  if (column.type == ColumnType::Key) {
    return sql;
  }
  if (column.required) {
    sql += QStringLiteral(" NOT NULL");
  }
  if (!column.defaultValue.isEmpty()) {
    sql += QStringLiteral(" DEFAULT ") + column.defaultValue;
  }
  if (column.type == ColumnType::Boolean) {
    sql += QStringLiteral(" CHECK (%1 IN (-1, 0))").arg(QuotedName(column.name));
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
  return QStringLiteral("CREATE TABLE %1 (%2) STRICT")
      .arg(QuotedName(table.name), definitions.join(QStringLiteral(", ")))
      .toUtf8();
}

QByteArray CreateIndex(const Table& table, const Index& index) {
  QStringList names;
  for (const QString& column : index.columns) {
    names += QuotedName(column);
  }
  return QStringLiteral("CREATE %1INDEX %2 ON %3 (%4)%5")
      .arg(index.unique ? QStringLiteral("UNIQUE ") : QString(), QuotedName(index.name), QuotedName(table.name),
           names.join(QStringLiteral(", ")),
           index.liveOnly ? QStringLiteral(" WHERE %1 = 0").arg(QuotedName(u"Eliminado")) : QString())
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
        statements +=
            QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(QuotedName(table.name), Definition(column)).toUtf8();
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
