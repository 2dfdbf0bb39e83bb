#include "moving/KeptFacts.h"

namespace moving {

void KeptFacts::Append(const RowFacts& facts) {
  m_referencesOfRow = std::size_t(facts.references.size());
  m_matchesOfRow = std::size_t(facts.match.size());
  m_rows.push_back({facts.key, facts.content, m_text.size(), facts.isLive, facts.isRefused});
  m_references.insert(m_references.end(), facts.references.begin(), facts.references.end());
  for (const QString& match : facts.match) {
    m_lengths.push_back(int(match.size()));
    m_text += match;
  }
}

RowFacts KeptFacts::At(std::size_t row) const {
  const Row& kept = m_rows[row];
  RowFacts facts{.key = kept.key,
                 .content = kept.content,
                 .references = {},
                 .match = {},
                 .isLive = kept.isLive,
                 .isRefused = kept.isRefused};
  for (std::size_t i = 0; i < m_referencesOfRow; ++i) {
    facts.references.append(m_references[row * m_referencesOfRow + i]);
  }
  qsizetype begin = kept.text;
  for (std::size_t i = 0; i < m_matchesOfRow; ++i) {
    const int length = m_lengths[row * m_matchesOfRow + i];
    facts.match.append(m_text.mid(begin, length));
    begin += length;
  }
  return facts;
}

}  // namespace moving
