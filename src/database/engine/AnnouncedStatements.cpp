#include "database/engine/AnnouncedStatements.h"

#include <iterator>
#include <utility>

namespace database {

void AnnouncedStatements::Set(const QStringList& statements, bool commits) {
  m_statements = statements;
  m_outcomes.clear();
  m_commits = commits;
}

bool AnnouncedStatements::HasRun(const QString& statement) const {
  const qsizetype place = m_statements.indexOf(statement);
  return place >= 0 && static_cast<std::size_t>(place) < m_outcomes.size();
}

bool AnnouncedStatements::GoTo(const QString& statement) {
  const qsizetype place = m_statements.indexOf(statement);
  for (qsizetype i = 0; i < place; ++i) {
    m_statements.removeFirst();
    if (!m_outcomes.empty()) {
      m_outcomes.pop_front();
    }
  }
  return place >= 0;
}

void AnnouncedStatements::SetOutcomes(std::vector<StatementOutcome> outcomes) {
  m_outcomes.assign(std::make_move_iterator(outcomes.begin()), std::make_move_iterator(outcomes.end()));
}

std::optional<StatementOutcome> AnnouncedStatements::Take() {
  if (m_outcomes.empty()) {
    return std::nullopt;
  }
  StatementOutcome outcome = std::move(m_outcomes.front());
  m_outcomes.pop_front();
  if (outcome.failure == nullptr) {
    Drop();
  }
  return outcome;
}

}  // namespace database
