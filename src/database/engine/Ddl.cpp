#include "database/engine/Ddl.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

QString Definition(const DdlForms& forms, const Column& column) {
  const QString name = forms.ItsTarget().Name(column.name);
  QString sql = name + u' ' + forms.Type(column);
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
    sql += u" CHECK (%1 IN (-1, 0))"_s.arg(name);
  }
  return sql;
}

QString CreateTable(const DdlForms& forms, const Table& table, int version) {
  QStringList definitions;
  for (const Column& column : table.columns) {
    if (column.since <= version) {
      definitions += Definition(forms, column);
    }
  }
  return u"CREATE TABLE %1 (%2)%3"_s.arg(forms.ItsTarget().Name(table.name), definitions.join(u", "_s),
                                         forms.TableOptions());
}

QString CreateIndex(const DdlForms& forms, const Table& table, const Index& index) {
  const Target& target = forms.ItsTarget();
  const QString rows = index.liveOnly ? u" WHERE %1 = 0"_s.arg(target.Name(u"Eliminado")) : QString();
  return u"CREATE %1INDEX %2 ON %3 %4%5"_s.arg(index.unique ? u"UNIQUE "_s : QString(), target.Name(index.name),
                                               target.Name(table.name), forms.Covered(table, index), rows);
}

}  // namespace

QByteArrayList SchemaStatements(const DdlForms& forms, const Schema& schema, int fromVersion, int toVersion) {
  QByteArrayList statements;
  const auto isNew = [&](int since) { return since > fromVersion && since <= toVersion; };
  for (const Table& table : schema.Tables()) {
    if (isNew(table.since)) {
      statements += CreateTable(forms, table, toVersion).toUtf8();
    }
    for (const Column& column : table.columns) {
      if (!isNew(table.since) && isNew(column.since)) {
        statements +=
            u"ALTER TABLE %1 ADD COLUMN %2"_s.arg(forms.ItsTarget().Name(table.name), Definition(forms, column))
                .toUtf8();
      }
    }
    for (const Index& index : table.indexes) {
      if (isNew(index.since)) {
        statements += CreateIndex(forms, table, index).toUtf8();
      }
    }
  }
  return statements;
}

}  // namespace database
