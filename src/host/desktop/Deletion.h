#pragma once

#include "host/desktop/ComponentBridge.h"
#include "host/desktop/NodeCatalog.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace host {

/// A record that the user asked to delete.
struct DeletionTarget {
  int id = 0;
  QString name;
};

/// A record that is still there, and why.
struct KeptRecord {
  QString name;
  QString reason;
};

/// What became of the records of a deletion, in the order asked for.
struct DeletionResult {
  QStringList deleted;
  QList<KeptRecord> kept;
  QStringList untouched;  ///< Those that a cancelled deletion did not reach.
};

/// Deletes the records one by one through the component and finds out from the database what became of each. A
/// record that fails is kept with the error's text as the reason, and the next one follows. `goOn` is called with
/// the number of records done before each record, and false ends the deletion there.
DeletionResult DeleteRecords(ComponentBridge& bridge, const Node& node, const QList<DeletionTarget>& targets,
                             const std::function<bool(int)>& goOn);

}  // namespace host
