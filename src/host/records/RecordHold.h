#pragma once

#include "host/records/ChangeLog.h"
#include "host/records/ComponentBridge.h"
#include "host/records/DeletedRecord.h"
#include "host/records/RecordLocks.h"

#include <optional>

namespace host {

/// A record for the time of its dialog. It is locked before it is looked at, so that nobody deletes it between the
/// look and the dialog, and unlocked at the end, where the dialog has not done so itself. Nothing is locked in a
/// session that is read-only.
class RecordHold {
 public:
  /// Borrows the bridge and the node. Errors of the database leave it.
  RecordHold(ComponentBridge& bridge, const Node& node, int id);
  RecordHold(const RecordHold&) = delete;
  RecordHold& operator=(const RecordHold&) = delete;
  ~RecordHold();

  /// Nothing for a live record.
  const std::optional<DeletedRecord>& Deleted() const { return m_deleted; }
  /// Who else holds the record; nothing when it is held here.
  const std::optional<LockHolder>& Holder() const { return m_holder; }
  /// The note of whoever took the lock since; nothing where it was not held here, or still is, or was let go here.
  std::optional<Change> LockReleased() const;

 private:
  ComponentBridge& m_bridge;
  const Node& m_node;
  int m_id;
  bool m_locks = false;  ///< The session could write when this began.
  qint64 m_newest = 0;   ///< The newest note when the lock was taken.
  std::optional<LockHolder> m_holder;
  std::optional<DeletedRecord> m_deleted;
};

}  // namespace host
