#include "host/records/Deletion.h"

#include "host/records/DeletionLog.h"
#include "host/records/OfficeConnection.h"
#include "host/records/RecordReader.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstAccion.h"
#include "platform/contract/cConstNodo.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// The write lock is held for as long as a batch takes, and the user can cancel after each: the first ones are small.
constexpr qsizetype largestBatch = 100;

const QString usedByOthers = u"otros registros lo utilizan"_s;

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
  const Session& session = bridge.Session();
  session.LookAtRights(connection);
  if (session.isViewer || !session.mayDelete) {
    return u"su usuario no puede eliminar registros"_s;
  }
  if (node.id == cConstNodo().Usuarios()) {
    return UserReason(connection, session, id);
  }
  const QList<RowCount> uses = CountUses(connection, node.id, id, session.velumar);
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

// Rolls the batch back as soon as a box of the component is about to show: nobody waits for a person.
class BoxWatch : public QObject {
 public:
  explicit BoxWatch(OfficeConnection& office) : m_office(office) {
    if (QCoreApplication* application = QCoreApplication::instance()) {
      application->installEventFilter(this);
    }
  }

  bool HasShown() const { return m_hasShown; }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Show && object->inherits("QDialog")) {
      m_hasShown = true;
      m_office.RollBackBatch();
    }
    return false;
  }

 private:
  OfficeConnection& m_office;
  bool m_hasShown = false;
};

QString ReasonOfError(const automation::Error& error) {
  return u"error %1: %2"_s.arg(QString::number(error.Number()), error.Description());
}

// What became of a record.
struct Verdict {
  QString reason;  // why it stays, empty when it was deleted
  int note = 0;
};

class Deletion {
 public:
  Deletion(ComponentBridge& bridge, const Node& node, DeletionResult& result)
      : m_bridge(bridge), m_node(node), m_result(result) {}

  // In one transaction, or where that does not come about one by one.
  void Delete(const QList<DeletionTarget>& targets) {
    m_boxed = -1;
    try {
      const QList<Verdict> verdicts = DeleteTogether(targets);
      for (qsizetype i = 0; i < verdicts.size(); ++i) {
        Take(targets[i], verdicts[i]);
      }
      if (m_boxed < 0) {
        return;
      }
    } catch (const automation::Error& error) {
      if (targets.size() == 1) {
        Take(targets.constFirst(), {ReasonOfError(error)});
        return;
      }
    }
    DeleteOneByOne(targets, m_boxed);
  }

 private:
  void Take(const DeletionTarget& target, const Verdict& verdict) {
    if (verdict.reason.isEmpty()) {
      m_result.deleted.append(target.name);
      m_result.notes.append(verdict.note);
    } else {
      m_result.kept.append({target.name, verdict.reason});
    }
  }

  // The one that the component has refused by a box is not asked for again.
  void DeleteOneByOne(const QList<DeletionTarget>& targets, qsizetype refused) {
    for (qsizetype i = 0; i < targets.size(); ++i) {
      if (i == refused) {
        const QString reason = ReasonToStay(m_bridge, m_node, targets[i].id);
        Take(targets[i], {reason.isEmpty() ? usedByOthers : reason});
      } else if (m_bridge.IsEnding()) {
        m_result.untouched.append(targets[i].name);
      } else {
        Delete({targets[i]});
      }
    }
  }

  // Nothing where a box rolled it back.
  QList<Verdict> DeleteTogether(const QList<DeletionTarget>& targets) {
    OfficeConnection& office = *m_bridge.Session().office;
    office.BeginBatch(TablesAround(m_node));
    const auto end = qScopeGuard([&] { office.EndBatch(); });
    const BoxWatch boxes(office);
    QList<Verdict> verdicts;
    for (qsizetype i = 0; i < targets.size(); ++i) {
      try {
        verdicts.append(DeleteLocked(targets[i]));
      } catch (const automation::Error&) {
        // After a box nothing can be done in the batch, whatever it is.
        if (!boxes.HasShown()) {
          throw;
        }
      }
      if (boxes.HasShown()) {
        m_boxed = i;
        return {};
      }
    }
    office.CommitBatch();
    return verdicts;
  }

  Verdict DeleteLocked(const DeletionTarget& target) {
    if (const std::optional<LockHolder> holder = m_bridge.Session().Locks().Take(m_node.key, target.id)) {
      return {InASentence(holder->Description())};
    }
    const auto release = qScopeGuard([&] { m_bridge.ReleaseLock(m_node.key, target.id); });
    if (IsDeleted(m_bridge.OpenConnection(), m_node, target.id)) {
      return {u"ya estaba eliminado"_s};
    }
    // The user was asked some time ago.
    const QString reason = ReasonToStay(m_bridge, m_node, target.id);
    return reason.isEmpty() ? DeleteNoted(target) : Verdict{reason};
  }

  Verdict DeleteNoted(const DeletionTarget& target) {
    DeletionLog log(m_bridge.Session());
    const int note = log.Note(m_node, target.id, target.name);
    CallComponent(m_bridge, m_node, target.id);
    if (IsDeleted(m_bridge.OpenConnection(), m_node, target.id)) {
      return {{}, note};
    }
    log.Forget(note);
    return {usedByOthers};
  }

  ComponentBridge& m_bridge;
  const Node& m_node;
  DeletionResult& m_result;
  qsizetype m_boxed = -1;  // which of the targets had a box
};

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
  Deletion deletion(bridge, node, result);
  qsizetype size = 1;
  for (qsizetype done = 0; done < targets.size(); done += size, size = std::min(2 * size, largestBatch)) {
    if (bridge.IsEnding() || !goOn(static_cast<int>(done))) {
      for (const DeletionTarget& target : targets.mid(done)) {
        result.untouched.append(target.name);
      }
      break;
    }
    deletion.Delete(targets.mid(done, size));
  }
  return result;
}

}  // namespace host
