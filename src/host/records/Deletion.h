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

/// Called with the number of records done before each record; false ends the work there.
using GoOn = std::function<bool(int)>;

/// Finds out which of the records can be deleted: not those that others refer to or somebody is modifying, nor an
/// administrator or the signed-in user. Nothing, when it was cancelled. Errors of the database leave it.
std::optional<DeletionPlan> PlanDeletion(ComponentBridge& bridge, const Node& node,
                                         const QList<DeletionTarget>& targets, const GoOn& goOn);

/// Deletes the records one by one through the component, each under its lock and with a note in the DeletionLog, and
/// finds out from the database what became of it. A record that fails is kept with the error's text as the reason, and
/// the next one follows.
DeletionResult DeleteRecords(ComponentBridge& bridge, const Node& node, const QList<DeletionTarget>& targets,
                             const GoOn& goOn);

}  // namespace host
