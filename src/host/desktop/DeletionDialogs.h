#pragma once

#include "host/records/Deletion.h"
#include "host/records/DeletionLog.h"

class QWidget;

namespace host {

/// The deletion of one record or many, as the user sees it: what can go is found out first, one question names what
/// will go and what stays and why, and the work shows its progress, which can be cancelled between two records. A
/// further box comes only for records that stayed although the question had named them as going.
/// Nothing when nothing was to be deleted or the user did not want it. Errors of the database leave it.
std::optional<DeletionResult> DeleteAsTheUserSays(QWidget* parent, ComponentBridge& bridge, const Node& node,
                                                  const QList<DeletionTarget>& targets);

/// Says in a box which records could not be recovered and why; nothing where all were.
void ShowRefusedRecoveries(QWidget* parent, const QString& title, const QList<Recovery>& recoveries);

/// The result in one line: "Registros eliminados: 3. Conservados: 1."
QString DeletionHeadline(const DeletionResult& result);
/// "Registros recuperados: 3. Siguen eliminados: 1."
QString RecoveryHeadline(const QList<Recovery>& recoveries);

}  // namespace host
