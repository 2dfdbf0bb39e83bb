#include "moving/KeptFacts.h"

namespace moving {

void KeptFacts::Append(const RowFacts& facts) {
  m_referencesOfRow = std::size_t(facts.references.size());
  m_textsOfRow = std::size_t(facts.match.size()) + 1;
  m_rows.push_back({.key = facts.key,
                    .content = facts.content,
                    .text = m_text.size(),
                    .isLive = facts.isLive,
                    .isGranted = facts.isGranted,
                    .isRefused = facts.isRefused,
                    .isSkipped = facts.isSkipped});
  m_references.insert(m_references.end(), facts.references.begin(), facts.references.end());
  for (const QString& text : facts.match) {
    AppendText(text);
  }
  AppendText(facts.alike);
}

void KeptFacts::AppendText(const QString& text) {
  m_lengths.push_back(int(text.size()));
  m_text += text;
}

RowFacts KeptFacts::At(std::size_t row) const {
  const Row& kept = m_rows[row];
  RowFacts facts{.key = kept.key,
                 .content = kept.content,
                 .references = {},
                 .match = {},
                 .alike = {},
                 .isLive = kept.isLive,
                 .isGranted = kept.isGranted,
                 .isRefused = kept.isRefused,
                 .isSkipped = kept.isSkipped};
  facts.references.reserve(qsizetype(m_referencesOfRow));
  for (std::size_t i = 0; i < m_referencesOfRow; ++i) {
    facts.references.append(m_references[row * m_referencesOfRow + i]);
  }
  facts.match.reserve(qsizetype(m_textsOfRow));
  qsizetype begin = kept.text;
  for (std::size_t i = 0; i < m_textsOfRow; ++i) {
    const int length = m_lengths[row * m_textsOfRow + i];
    facts.match.append(m_text.mid(begin, length));
    begin += length;
  }
  facts.alike = facts.match.takeLast();
  return facts;
}

}  // namespace moving
