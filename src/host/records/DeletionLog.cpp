#include "host/records/DeletionLog.h"

#include "host/records/OpenConnection.h"
#include "host/records/RecordReader.h"
#include "host/records/RecordReferences.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

using adodb::Execute;
using adodb::Verbatim;

namespace host {

namespace {

constexpr qsizetype longestName = 200;

void Drop(adodb::Connection& connection, int note) {
  Execute(connection, u"DELETE FROM EliminacionesRegistros WHERE codEliminacion={}", note);
  Execute(connection, u"DELETE FROM Eliminaciones WHERE IDEliminacion={}", note);
}

void MakeLive(adodb::Connection& connection, const Node& node, int note) {
  for (const RowKey& table : QList<RowKey>{{node.table, node.key}} + DependentTables(node.id)) {
    const auto rows =
        Execute(connection, u"SELECT ValorID FROM EliminacionesRegistros WHERE codEliminacion={} AND Tabla='{}'", note,
                table.table);
    for (; !rows->AtEnd(); rows->MoveNext()) {
      Execute(connection, u"UPDATE {} SET Eliminado=0 WHERE {}={} AND Eliminado<>0", Verbatim{table.table},
              Verbatim{table.key}, automation::CLng(rows->Field(0)));
    }
  }
}

// A live record that has the value that only one may have.
QString Rival(adodb::Connection& connection, const Node& node, int id) {
  if (node.unique.isEmpty()) {
    return {};
  }
  const auto rival = Execute(connection,
                             u"SELECT Otro.{0} FROM {1} AS Otro, {1} AS Este WHERE Este.{0}={3} AND Otro.{0}<>{3} AND "
                             u"Otro.Eliminado=0 AND Otro.{2}=Este.{2}",
                             Verbatim{node.key}, Verbatim{node.table}, Verbatim{node.unique}, id);
  return rival->AtEnd() ? QString() : RecordName(connection, node, automation::CLng(rival->Field(0)));
}

// Why the record must stay deleted; empty for nothing.
QString Obstacle(adodb::Connection& connection, const Node& node, int id) {
  const auto row =
      Execute(connection, u"SELECT Eliminado FROM {1} WHERE {0}={2}", Verbatim{node.key}, Verbatim{node.table}, id);
  if (row->AtEnd()) {
    return u"el registro ya no está en la base de datos"_s;
  }
  if (!automation::CBool(row->Field(0))) {
    return u"el registro no está eliminado"_s;
  }
  if (const QString rival = Rival(connection, node, id); !rival.isEmpty()) {
    return u"ya hay otro registro con el mismo %1: «%2»"_s.arg(node.columns.constFirst().title.toLower(), rival);
  }
  const std::optional<ParentRecord> parent = DeletedParent(connection, {node.table, node.key, id});
  return parent ? u"depende de otro registro eliminado: recupere antes %1"_s.arg(parent->node->record) : QString();
}

}  // namespace

int DeletionLog::Note(const Node& node, int id, const QString& name) {
  adodb::Connection& connection = Opened(m_session.connection);
  adodb::Transaction transaction(connection);
  Execute(
      connection,
      u"INSERT INTO Eliminaciones (Nodo, Clase, Nombre, codUsuario, Usuario, Fecha) VALUES ({}, '{}', '{}', {}, '{}', "
      u"'{}')",
      node.id, node.title, name.left(longestName), m_session.userId, m_session.userName,
      QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
  const auto newest = Execute(connection, u"SELECT MAX(IDEliminacion) AS Nota FROM Eliminaciones");
  const int note = automation::CLng(newest->Field(0));
  for (const RowKey& row : QList<RowKey>{{node.table, node.key, id}} + DependentRows(connection, node.id, id)) {
    Execute(connection, u"INSERT INTO EliminacionesRegistros (codEliminacion, Tabla, ValorID) VALUES ({}, '{}', {})",
            note, row.table, row.id);
  }
  transaction.Commit();
  return note;
}

void DeletionLog::Forget(int note) {
  adodb::Connection& connection = Opened(m_session.connection);
  adodb::Transaction transaction(connection);
  Drop(connection, note);
  transaction.Commit();
}

Recovery DeletionLog::Recover(int note) {
  adodb::Connection& connection = Opened(m_session.connection);
  Recovery recovery;
  adodb::Transaction transaction(connection);
  const auto noted = Execute(connection, u"SELECT Nodo, Nombre FROM Eliminaciones WHERE IDEliminacion={}", note);
  if (noted->AtEnd()) {
    recovery.refusal = u"otro usuario lo ha recuperado ya"_s;
    return recovery;
  }
  recovery.nodeId = automation::CLng(noted->Field(0));
  recovery.name = automation::Text(noted->Field(1));
  const Node* node = FindNode(recovery.nodeId);
  if (node == nullptr) {
    recovery.refusal = u"esta versión del programa no conoce esa clase de registro"_s;
    return recovery;
  }
  const auto record =
      Execute(connection, u"SELECT ValorID FROM EliminacionesRegistros WHERE codEliminacion={} AND Tabla='{}'", note,
              node->table);
  recovery.id = record->AtEnd() ? 0 : automation::CLng(record->Field(0));
  recovery.refusal = Obstacle(connection, *node, recovery.id);
  if (recovery.refusal.isEmpty()) {
    MakeLive(connection, *node, note);
    Drop(connection, note);
    transaction.Commit();
  }
  return recovery;
}

}  // namespace host
