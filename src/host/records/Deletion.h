#pragma once

#include "host/records/ComponentBridge.h"
#include "host/records/NodeCatalog.h"
#include "host/records/RecordReferences.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace host {

/// A record that the user asked to delete.
struct DeletionTarget {
  int id = 0;
  QString name;
};

/// A record that stays, and why.
struct KeptRecord {
  QString name;
  QString reason;
};

/// What a deletion would do.
struct DeletionPlan {
  QList<DeletionTarget> going;
  QList<KeptRecord> staying;
  QList<RowCount> dependents;  ///< Rows that are marked along with those that go.
};

/// What became of the records of a deletion, in the order asked for.
struct DeletionResult {
  QStringList deleted;
  QList<int> notes;  ///< Of the deleted ones, for DeletionLog::Recover.
  QList<KeptRecord> kept;
  QStringList untouched;  ///< Those that a cancelled deletion did not reach.
};

/// Called with the number of records done: by PlanDeletion before each one, by DeleteRecords before each batch, of
/// which the first has one record and each further one twice as many. False ends the work there.
using GoOn = std::function<bool(int)>;

/// Finds out which of the records can be deleted: not those that others refer to or somebody is modifying, nor an
/// administrator or the signed-in user. Nothing, when it was cancelled. Errors of the database leave it.
std::optional<DeletionPlan> PlanDeletion(ComponentBridge& bridge, const Node& node,
                                         const QList<DeletionTarget>& targets, const GoOn& goOn);

/// Deletes the records through the component, each under its lock and with a note in the DeletionLog, and finds out
/// from the database what became of it. Those of a batch are one transaction, which begins with the write lock: what is
/// used, held or deleted since the plan was made stays, with its reason. A box of the component rolls the batch back
/// before it shows; then, and after an error, the batch is repeated record by record. A record that fails by itself is
/// kept with the error's text as the reason, and the next one follows. Needs the session's OfficeConnection.
DeletionResult DeleteRecords(ComponentBridge& bridge, const Node& node, const QList<DeletionTarget>& targets,
                             const GoOn& goOn);

}  // namespace host
