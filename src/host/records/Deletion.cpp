#include "host/records/Deletion.h"

#include "host/records/DeletionLog.h"
#include "host/records/RecordReader.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString InASentence(QString sentence) {
  return sentence.isEmpty() ? sentence : sentence.replace(0, 1, sentence.at(0).toLower());
}

QString UserReason(adodb::Connection& connection, const Session& session, int id) {
  if (id == session.userId) {
    return u"es el usuario que ha iniciado la sesión"_s;
  }
  const auto user = adodb::Execute(connection, u"SELECT Administrador FROM Usuarios WHERE IDUsuario={}", id);
  const bool administrator = !user->AtEnd() && automation::CBool(user->Field(0));
  return administrator ? u"es un administrador de la aplicación"_s : QString();
}

// Why the record has to stay; empty where it can go. The component, which has the last word, does not say why.
QString ReasonToStay(ComponentBridge& bridge, const Node& node, int id) {
  adodb::Connection& connection = bridge.OpenConnection();
  if (node.id == cConstNodo().Usuarios()) {
    return UserReason(connection, bridge.Session(), id);
  }
  const QList<RowCount> uses = CountUses(connection, node.id, id, bridge.Session().velumar);
  if (uses.isEmpty()) {
    return {};
  }
  const bool isOne = uses.size() == 1 && uses.constFirst().count == 1;
  return (isOne ? u"lo utiliza "_s : u"lo utilizan "_s) + JoinCounts(uses);
}

QString HolderOf(ComponentBridge& bridge, const Node& node, int id) {
  const std::optional<LockHolder> holder = bridge.Session().Locks().HeldByAnother(node.key, id);
  return holder ? InASentence(holder->Description()) : QString();
}

void CallComponent(ComponentBridge& bridge, const Node& node, int id) {
  ComponentRequest request;
  request.node = node.id;
  request.action = cConstAccion().Eliminar();
  request.selectedId = id;
  request.path = node.Path();
  bridge.DeleteRecord(request);
}

// Empty when the record was deleted, otherwise why it was not.
QString DeleteNoted(ComponentBridge& bridge, const Node& node, const DeletionTarget& target, QList<int>& notes) {
  DeletionLog log(bridge.Session());
  const int note = log.Note(node, target.id, target.name);
  try {
    CallComponent(bridge, node, target.id);
    if (IsDeleted(bridge.OpenConnection(), node, target.id)) {
      notes.append(note);
      return {};
    }
  } catch (const automation::Error&) {
    log.Undo(node, note);
    throw;
  }
  log.Forget(note);
  const QString reason = ReasonToStay(bridge, node, target.id);
  return reason.isEmpty() ? u"otros registros lo utilizan"_s : reason;
}

// Nobody can begin to modify the record between the look at its lock and its deletion, for the lock is held meanwhile.
QString DeleteLocked(ComponentBridge& bridge, const Node& node, const DeletionTarget& target, QList<int>& notes) {
  try {
    if (const std::optional<LockHolder> holder = bridge.Session().Locks().Take(node.key, target.id)) {
      return InASentence(holder->Description());
    }
    const auto release = qScopeGuard([&] { bridge.ReleaseLock(node.key, target.id); });
    return DeleteNoted(bridge, node, target, notes);
  } catch (const automation::Error& error) {
    return u"error %1: %2"_s.arg(QString::number(error.Number()), error.Description());
  }
}

}  // namespace

std::optional<DeletionPlan> PlanDeletion(ComponentBridge& bridge, const Node& node,
                                         const QList<DeletionTarget>& targets, const GoOn& goOn) {
  DeletionPlan plan;
  QList<int> going;
  int done = 0;
  for (const DeletionTarget& target : targets) {
    if (bridge.IsEnding() || !goOn(done)) {
      return std::nullopt;
    }
    QString reason = HolderOf(bridge, node, target.id);
    if (reason.isEmpty()) {
      reason = ReasonToStay(bridge, node, target.id);
    }
    if (reason.isEmpty()) {
      plan.going.append(target);
      going.append(target.id);
    } else {
      plan.staying.append({target.name, reason});
    }
    ++done;
  }
  plan.dependents = CountDependents(bridge.OpenConnection(), node.id, going);
  return plan;
}

DeletionResult DeleteRecords(ComponentBridge& bridge, const Node& node, const QList<DeletionTarget>& targets,
                             const GoOn& goOn) {
  DeletionResult result;
  int done = 0;
  for (const DeletionTarget& target : targets) {
    if (!result.untouched.isEmpty() || bridge.IsEnding() || !goOn(done)) {
      result.untouched.append(target.name);
      continue;
    }
    const QString reason = DeleteLocked(bridge, node, target, result.notes);
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
