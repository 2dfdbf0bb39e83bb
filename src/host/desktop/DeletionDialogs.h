#pragma once

#include "host/desktop/Deletion.h"
#include "host/desktop/RecordReferences.h"

class QWidget;

namespace host {

/// Asks whether the records are to be deleted, naming them and the rows that are marked along with them.
bool ConfirmDeletion(QWidget* parent, const QString& title, const Node& node, const QList<DeletionTarget>& targets,
                     const QList<RowCount>& dependents);

/// Deletes behind a progress box that can be cancelled between two records.
DeletionResult DeleteWithProgress(QWidget* parent, const QString& title, ComponentBridge& bridge, const Node& node,
                                  const QList<DeletionTarget>& targets);

/// Says what was deleted and what was kept and why; nothing for a single record that was deleted.
void ShowDeletionSummary(QWidget* parent, const QString& title, const DeletionResult& result);

/// The summary's first line: "Registros eliminados: 3. Conservados: 1."
QString DeletionHeadline(const DeletionResult& result);

}  // namespace host
