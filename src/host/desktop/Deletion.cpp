#include "host/desktop/Deletion.h"

#include "host/desktop/RecordReader.h"
#include "host/desktop/RecordReferences.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

// The component does not say why it refused: the database does.
QString ReasonForKeeping(adodb::Connection& connection, const Node& node, int id) {
  if (node.id == cConstNodo().Usuarios()) {
    return u"es un administrador de la aplicación"_s;
  }
  const QString uses = JoinCounts(CountUses(connection, node.id, id));
  return uses.isEmpty() ? u"otros registros lo utilizan"_s : u"lo utilizan "_s + uses;
}

// Empty when the record was deleted, otherwise why it was not.
QString DeleteOne(ComponentBridge& bridge, const Node& node, int id) {
  ComponentRequest request;
  request.node = node.id;
  request.action = cConstAccion().Eliminar();
  request.selectedId = id;
  request.path = node.Path();
  try {
    bridge.DeleteRecord(request);
    adodb::Connection& connection = bridge.OpenConnection();
    return IsDeleted(connection, node, id) ? QString() : ReasonForKeeping(connection, node, id);
  } catch (const automation::Error& error) {
    return u"error %1: %2"_s.arg(QString::number(error.Number()), error.Description());
  }
}

}  // namespace

DeletionResult DeleteRecords(ComponentBridge& bridge, const Node& node, const QList<DeletionTarget>& targets,
                             const std::function<bool(int)>& goOn) {
  DeletionResult result;
  int done = 0;
  for (const DeletionTarget& target : targets) {
    if (!result.untouched.isEmpty() || bridge.IsEnding() || !goOn(done)) {
      result.untouched.append(target.name);
      continue;
    }
    const QString reason = DeleteOne(bridge, node, target.id);
    ++done;
    if (reason.isEmpty()) {
      result.deleted.append(target.name);
    } else {
      result.kept.append({target.name, reason});
    }
  }
  return result;
}

}  // namespace host
