#pragma once

#include "database/engine/Session.h"

#include <QStringList>

#include <deque>
#include <optional>
#include <vector>

namespace database {

/// The statements that are announced and not yet asked for, the first of them perhaps run already (see
/// database/Announcement.h).
class AnnouncedStatements {
 public:
  void Set(const QStringList& statements, bool commits);

  /// Whether the statement has run already.
  bool HasRun(const QString& statement) const;
  /// Goes on to the statement; false where it is not among them, which changes nothing.
  bool GoTo(const QString& statement);
  /// From the one that was gone to.
  const QStringList& Statements() const { return m_statements; }
  /// Whether the transaction is committed behind the last one.
  bool Commits() const { return m_commits; }
  /// Of the first of them.
  void SetOutcomes(std::vector<StatementOutcome> outcomes);
  /// Of the first one, which has been asked for then; one that failed is still to come. Nothing where it has not run.
  std::optional<StatementOutcome> Take();
  /// The first one has been asked for.
  void Drop() { m_statements.removeFirst(); }

 private:
  QStringList m_statements;
  std::deque<StatementOutcome> m_outcomes;
  bool m_commits = false;
};

}  // namespace database
