#include "database/engine/Check.h"

#include "platform/adodb/Statement.h"

#include <optional>

using adodb::Verbatim;
using namespace Qt::StringLiterals;

namespace database {

namespace {

// The rows of a table that a check complains of.
struct Complaint {
  int rows = 0;
  QString first;  ///< The key of the first, "IDPais 5".
};

std::optional<Complaint> RowsWhere(adodb::Connection& connection, const Table& table, const QString& condition) {
  const QString key = table.columns.front().name;
  const auto counted = adodb::Execute(connection, u"SELECT COUNT(*), MIN([{}]) FROM [{}] WHERE {}", Verbatim{key},
                                      Verbatim{table.name}, Verbatim{condition});
  const int rows = counted->Field(0).toInt();
  return rows == 0 ? std::nullopt : std::optional(Complaint{rows, u"%1 %2"_s.arg(key, counted->Field(1).toString())});
}

QString Sentence(const Table& table, const Column& column, const Complaint& complaint, const QString& one,
                 const QString& many) {
  const QString rows = complaint.rows == 1 ? one : u"%1 %2"_s.arg(QString::number(complaint.rows), many);
  return u"%1.%2: %3 (el primero, %4)."_s.arg(table.name, column.name, rows, complaint.first);
}

void CheckReference(adodb::Connection& connection, const Table& table, const Column& column, const Table& target,
                    QStringList& findings) {
  const QString live = table.FindColumn(u"Eliminado") == nullptr ? QString() : u"Eliminado=0 AND "_s;
  const auto lost = RowsWhere(connection, table,
                              u"%1[%2]<>0 AND [%2] NOT IN (SELECT [%3] FROM [%4])"_s.arg(
                                  live, column.name, target.columns.front().name, target.name));
  if (lost) {
    const QString missing = u"a un registro de %1 que no existe"_s.arg(target.name);
    findings += Sentence(table, column, *lost, u"un registro apunta "_s + missing, u"registros apuntan "_s + missing);
  }
}

void CheckLength(adodb::Connection& connection, const Table& table, const Column& column, QStringList& findings) {
  const auto longer = RowsWhere(connection, table, u"LEN([%1])>%2"_s.arg(column.name).arg(column.length));
  if (longer) {
    const QString most = u"más de %1 caracteres"_s.arg(column.length);
    findings += Sentence(table, column, *longer, u"un texto tiene "_s + most, u"textos tienen "_s + most);
  }
}

void CheckTable(adodb::Connection& connection, const Table& table, const QStringList& present, int version,
                Findings& findings) {
  for (const Index& index : table.indexes) {
    if (index.since <= version && !present.contains(index.name, Qt::CaseInsensitive)) {
      findings.indexes += u"Falta el índice «%1» de la tabla %2."_s.arg(index.name, table.name);
    }
  }
  for (const Column& column : table.columns) {
    if (column.since > version) {
      continue;
    }
    const Table* target = Schema::Current().ReferredTable(column);
    if (target != nullptr && present.contains(target->name, Qt::CaseInsensitive)) {
      CheckReference(connection, table, column, *target, findings.references);
    }
    if (column.length > 0) {
      CheckLength(connection, table, column, findings.lengths);
    }
  }
}

}  // namespace

void CheckContents(adodb::Connection& connection, const QStringList& present, int version, Findings& findings) {
  for (const Table& table : Schema::Current().Tables()) {
    if (present.contains(table.name, Qt::CaseInsensitive)) {
      CheckTable(connection, table, present, version, findings);
    } else if (table.since <= version) {
      findings.integrity += u"Falta la tabla %1."_s.arg(table.name);
    }
  }
}

}  // namespace database
