#include "host/records/DeletedRecord.h"

#include "host/records/ChangeLog.h"
#include "host/records/MomentText.h"
#include "host/records/RecordReader.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

std::optional<DeletedRecord> FromDeletionLog(adodb::Connection& connection, const Node& node, int id) {
  const auto row = adodb::Execute(
      connection,
      u"SELECT Eliminaciones.IDEliminacion, Eliminaciones.Nombre, Eliminaciones.Usuario, Eliminaciones.Fecha FROM "
      u"Eliminaciones, EliminacionesRegistros WHERE EliminacionesRegistros.codEliminacion=Eliminaciones.IDEliminacion "
      u"AND Eliminaciones.Nodo={} AND EliminacionesRegistros.Tabla='{}' AND EliminacionesRegistros.ValorID={} ORDER BY "
      u"Eliminaciones.IDEliminacion DESC",
      node.id, node.table, id);
  if (row->AtEnd()) {
    return std::nullopt;
  }
  return DeletedRecord{.name = automation::Text(row->Field(1)).simplified(),
                       .user = automation::Text(row->Field(2)),
                       .moment = QDateTime::fromString(automation::Text(row->Field(3)), Qt::ISODate),
                       .note = automation::CLng(row->Field(0))};
}

DeletedRecord FromChangeLog(adodb::Connection& connection, const Node& node, int id) {
  const std::optional<Change> last = LastChangeOf(connection, node.table, id);
  return last && last->kind == ChangeKind::Deleted
             ? DeletedRecord{.name = last->name, .user = last->userName, .moment = last->moment}
             : DeletedRecord{};
}

}  // namespace

QString DeletedRecord::Sentence(const QString& known) const {
  const QString& shown = name.isEmpty() ? known : name;
  if (user.isEmpty() || !moment.isValid()) {
    return shown.isEmpty() ? u"El registro está eliminado."_s : u"«%1» está eliminado."_s.arg(shown);
  }
  return u"%1 ha eliminado %2 %3."_s.arg(user, shown.isEmpty() ? u"el registro"_s : u"«%1»"_s.arg(shown),
                                         DayAndTime(moment));
}

std::optional<DeletedRecord> FindDeleted(adodb::Connection& connection, const Node& node, int id) {
  if (!IsDeleted(connection, node, id)) {
    return std::nullopt;
  }
  const std::optional<DeletedRecord> noted = FromDeletionLog(connection, node, id);
  return noted ? noted : FromChangeLog(connection, node, id);
}

}  // namespace host
