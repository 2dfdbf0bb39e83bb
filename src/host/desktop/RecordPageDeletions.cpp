#include "host/desktop/DeletionDialogs.h"
#include "host/desktop/RecordList.h"
#include "host/desktop/RecordPage.h"
#include "host/records/DeletedRecord.h"
#include "host/services/ErrorBox.h"
#include "platform/automation/Error.h"
#include "ui_RecordPage.h"

using namespace Qt::StringLiterals;

// Deletions, and undoing them.
namespace host {

void RecordPage::Delete() {
  const QList<DeletionTarget> targets = SelectedTargets();
  if (m_node == nullptr || !m_node->canDelete || targets.isEmpty()) {
    return;
  }
  try {
    DeleteTargets(targets);
  } catch (const automation::Error& error) {
    ShowError(this, m_title, u"No se ha podido eliminar."_s, error);
    Refresh();
  }
}

void RecordPage::DeleteTargets(const QList<DeletionTarget>& targets) {
  // Otherwise each of the records would fail with the same long text.
  ComponentBridge::CheckComponent();
  const std::optional<DeletionResult> result = DeleteAsTheUserSays(this, m_bridge, *m_node, targets);
  if (!result || m_bridge.IsEnding()) {
    return;
  }
  if (!result->notes.isEmpty()) {
    m_deletions.append(result->notes);
  }
  Q_EMIT NewsChanged(DeletionHeadline(*result));
  QList<int> ids;
  for (const DeletionTarget& target : targets) {
    ids.append(target.id);
  }
  ShowChanged(ids);
}

void RecordPage::UndoDelete() {
  if (!m_deletions.isEmpty()) {
    RecoverAndShow(m_deletions.takeLast());
  }
}

void RecordPage::RecoverAndShow(const QList<int>& notes) {
  const QList<Recovery> recoveries = Recover(notes);
  QList<int> ids;
  for (const Recovery& recovery : recoveries) {
    ids.append(recovery.id);
  }
  if (ids.isEmpty()) {
    return;
  }
  // The user may be at another list.
  const int node = recoveries.constFirst().nodeId;
  if (m_node != nullptr && node == m_node->id) {
    ShowChanged(ids, ids);
  } else {
    ShowRecords(node, ids);
  }
}

void RecordPage::RecoverRecord(const Node& node, int id) {
  if (m_readOnly || m_bridge.Session().readOnly) {
    return;
  }
  try {
    const std::optional<DeletedRecord> deleted = FindDeleted(m_bridge.OpenConnection(), node, id);
    if (!deleted) {
      ShowRecords(node.id, {id});
    } else if (deleted->note != 0) {
      RecoverAndShow({deleted->note});
    } else {
      Q_EMIT NewsChanged(u"No se sabe qué se eliminó con ese registro: no se puede recuperar."_s);
    }
  } catch (const automation::Error& error) {
    ShowError(this, m_title, u"No se ha podido recuperar."_s, error);
  }
}

void RecordPage::RecoverSelected() {
  if (m_node != nullptr && m_node->canRecover) {
    const QList<int> notes = m_ui->recordList->SelectedIds();
    Recover(notes);
    ShowChanged(notes);
  }
}

QList<Recovery> RecordPage::Recover(const QList<int>& notes) {
  QList<Recovery> recoveries;
  try {
    m_bridge.OpenConnection();
    DeletionLog log(m_bridge.Session());
    for (const int note : notes) {
      recoveries.append(log.Recover(note));
    }
  } catch (const automation::Error& error) {
    ShowError(this, m_title, u"No se ha podido recuperar."_s, error);
  }
  Q_EMIT NewsChanged(RecoveryHeadline(recoveries));
  ShowRefusedRecoveries(this, m_title, recoveries);
  return recoveries;
}

}  // namespace host
