#pragma once

#include "host/records/NodeCatalog.h"
#include "host/records/Session.h"

#include <QString>

namespace host {

/// A deletion that was to be undone, and what came of it.
struct Recovery {
  int nodeId = 0;  ///< The kind of the record.
  int id = 0;      ///< The record.
  QString name;
  QString refusal;  ///< Why it is still deleted; empty when it is live.
};

/// The host's notes of deletions, in tables of its own (Eliminaciones, EliminacionesRegistros): when, who, and which
/// rows were marked together. The marks themselves are the tables' `Eliminado`.
///
/// A note is made in the transaction of its deletion. Older programs made it before, so that one may be left over whose
/// record is live: such a note is neither listed nor recovered. Errors of the database leave every function.
class DeletionLog {
 public:
  /// Uses the session's connection, opened when it is closed.
  explicit DeletionLog(Session& session) : m_session(session) {}

  /// Notes that the live record and the rows that belong to it are about to be marked. Returns the note's key.
  int Note(const Node& node, int id, const QString& name);
  /// Drops a note whose deletion was refused.
  void Forget(int note);
  /// Makes the rows of a note live again and drops it, all in one transaction; nothing changes where that is refused:
  /// another live record has the same number now, a record that it depends on is deleted, or it is not marked itself.
  Recovery Recover(int note);

 private:
  Session& m_session;
};

}  // namespace host
