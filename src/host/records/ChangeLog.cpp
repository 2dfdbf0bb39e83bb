#include "host/records/ChangeLog.h"

#include "host/records/ChangeNote.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

using adodb::Execute;
using automation::CLng;
using automation::Text;

namespace host {

namespace {

// A list of lists: column, before, after.
QString Written(const QList<ColumnChange>& columns) {
  QJsonArray list;
  for (const ColumnChange& change : columns) {
    list.append(QJsonArray{change.column, change.before, change.after});
  }
  return QString::fromUtf8(QJsonDocument(list).toJson(QJsonDocument::Compact));
}

// A text that somebody spoiled says nothing.
QList<ColumnChange> Columns(const QString& text) {
  QList<ColumnChange> columns;
  const QJsonArray list = QJsonDocument::fromJson(text.toUtf8()).array();
  for (const QJsonValue& entry : list) {
    columns.append({entry[0].toString(), entry[1].toString(), entry[2].toString()});
  }
  return columns;
}

qint64 Number(const QVariant& value) {
  return automation::IsNull(value) ? 0 : value.toLongLong();
}

Change ChangeFrom(adodb::Recordset& row) {
  Change change;
  change.number = Number(row.Field(u"IDCambio"));
  change.moment = QDateTime::fromString(Text(row.Field(u"Fecha")), Qt::ISODate);
  change.userId = CLng(row.Field(u"codUsuario"));
  change.userName = Text(row.Field(u"Usuario"));
  change.machine = Text(row.Field(u"Equipo"));
  change.program = Text(row.Field(u"Programa"));
  change.kind = static_cast<ChangeKind>(CLng(row.Field(u"Clase")));
  change.table = Text(row.Field(u"Tabla"));
  change.key = Number(row.Field(u"ValorID"));
  change.name = Text(row.Field(u"Nombre"));
  change.columns = Columns(Text(row.Field(u"Columnas")));
  change.rows = CLng(row.Field(u"Filas"));
  return change;
}

}  // namespace

QString KindText(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Added:
      return u"Agregado"_s;
    case ChangeKind::Changed:
      return u"Cambiado"_s;
    case ChangeKind::Deleted:
      return u"Eliminado"_s;
    case ChangeKind::Recovered:
      return u"Recuperado"_s;
    case ChangeKind::Several:
      return u"Cambiados varios"_s;
    case ChangeKind::LockReleased:
      return u"Bloqueo soltado"_s;
  }
  return {};
}

QString NoteStatement(const Change& change) {
  return adodb::StatementText(
      u"INSERT INTO Cambios (Fecha, codUsuario, Usuario, Equipo, Programa, Clase, Tabla, ValorID, Nombre, Columnas, "
      u"Filas) VALUES ('{}', {}, '{}', '{}', '{}', {}, '{}', {}, '{}', '{}', {})",
      change.moment.toString(Qt::ISODate), change.userId, change.userName, change.machine, change.program,
      static_cast<int>(change.kind), change.table, change.key, change.name, Written(change.columns), change.rows);
}

qint64 NewestChange(adodb::Connection& connection) {
  return Number(Execute(connection, u"SELECT MAX(IDCambio) AS Ultimo FROM Cambios")->Field(0));
}

QList<Change> ChangesAfter(adodb::Connection& connection, qint64 number, int most) {
  QList<Change> changes;
  const auto rows = Execute(connection, u"SELECT * FROM Cambios WHERE IDCambio>{} ORDER BY IDCambio", number);
  for (; !rows->AtEnd() && changes.size() < most; rows->MoveNext()) {
    changes.append(ChangeFrom(*rows));
  }
  return changes;
}

QList<Change> NewestChanges(adodb::Connection& connection, const QStringList& tables, int most) {
  QList<Change> changes;
  const auto rows =
      Execute(connection,
              u"SELECT TOP {} * FROM Cambios WHERE ValorID<>0 AND Clase<>{} AND Tabla IN ('{}') ORDER BY IDCambio DESC",
              most, static_cast<int>(ChangeKind::LockReleased), adodb::Verbatim{tables.join(u"','"_s)});
  for (; !rows->AtEnd(); rows->MoveNext()) {
    changes.append(ChangeFrom(*rows));
  }
  return changes;
}

std::optional<Change> LastChangeOf(adodb::Connection& connection, const QString& table, qint64 key) {
  const auto rows =
      Execute(connection, u"SELECT * FROM Cambios WHERE Tabla='{}' AND ValorID={} AND Clase<>{} ORDER BY IDCambio DESC",
              table, key, static_cast<int>(ChangeKind::LockReleased));
  return rows->AtEnd() ? std::nullopt : std::optional(ChangeFrom(*rows));
}

QHash<int, QString> LastChanges(adodb::Connection& connection, const QString& table, const QString& condition) {
  const QString wanted = condition.isEmpty() ? u"<>0"_s : condition;
  const auto rows = Execute(connection,
                            u"SELECT ValorID, MAX(Fecha) AS Ultima FROM Cambios WHERE Tabla='{}' AND Clase<>{} AND "
                            u"ValorID{} GROUP BY ValorID",
                            table, static_cast<int>(ChangeKind::LockReleased), adodb::Verbatim{wanted});
  QHash<int, QString> moments;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    moments.insert(automation::CLng(rows->Field(0)), automation::Text(rows->Field(1)));
  }
  return moments;
}

QList<Change> ChangesOf(adodb::Connection& connection, const QString& table, qint64 key, int most) {
  QList<Change> changes;
  const auto rows =
      Execute(connection, u"SELECT * FROM Cambios WHERE Tabla='{}' AND ValorID={} ORDER BY IDCambio DESC", table, key);
  for (; !rows->AtEnd() && changes.size() < most; rows->MoveNext()) {
    changes.append(ChangeFrom(*rows));
  }
  return changes;
}

std::optional<Change> LockReleaseAfter(adodb::Connection& connection, qint64 number, const QString& table, qint64 key) {
  const auto rows =
      Execute(connection,
              u"SELECT * FROM Cambios WHERE Tabla='{}' AND ValorID={} AND Clase={} AND IDCambio>{} ORDER BY IDCambio",
              table, key, static_cast<int>(ChangeKind::LockReleased), number);
  return rows->AtEnd() ? std::nullopt : std::optional(ChangeFrom(*rows));
}

void ForgetChangesBefore(adodb::Connection& connection, const QDateTime& moment) {
  Execute(connection, u"DELETE FROM Cambios WHERE Fecha<'{}'", moment.toUTC().toString(Qt::ISODate));
}

}  // namespace host
