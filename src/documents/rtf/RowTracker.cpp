#include "documents/rtf/RowTracker.h"

#include <algorithm>

namespace rtf {

namespace {

// Neighbouring rows need different numbers, and few different numbers make few different formats.
constexpr int rowNumbers = 16;

}  // namespace

void RowTracker::BeginDefinition(bool nested, const Keyword& keyword) {
  m_definitions[nested] = {.words = {{keyword.id, keyword.id}}, .text = {}, .changed = true};
}

void RowTracker::AddWord(bool nested, const CarriedWord& word) {
  Definition& definition = m_definitions[nested];
  if (!definition.words.isEmpty() && definition.words.size() < mostWords) {
    definition.words.append(word);
    definition.changed = true;
  }
}

const QString& RowTracker::Text(bool nested) {
  Definition& definition = m_definitions[nested];
  if (definition.changed) {
    definition.text = ToText(definition.words);
    definition.changed = false;
  }
  return definition.text;
}

TablePath RowTracker::Enter(int level, const DocumentBuilder& builder) {
  m_open.resize(std::min<qsizetype>(m_open.size(), level));
  while (m_open.size() < level) {
    int& row = m_rows[m_open.size()];
    row = (row + 1) % rowNumbers;
    // A nested row's definition comes behind its cells.
    m_open.append({{.row = row, .definition = m_open.isEmpty() ? Text(false) : QString()}, builder.Paragraphs()});
  }
  TablePath path;
  for (const OpenRow& row : m_open) {
    path.append(row.place);
  }
  return path;
}

void RowTracker::EndCell(int level) {
  if (level <= m_open.size()) {
    ++m_open[level - 1].place.cell;
  }
}

void RowTracker::EndRow(int level, bool nested, DocumentBuilder& builder) {
  if (level > m_open.size()) {
    return;
  }
  m_open.resize(level);
  const OpenRow row = m_open.takeLast();
  const QString& definition = Text(nested && level > 1);
  if (definition == row.place.definition) {
    return;
  }
  builder.ChangePlaces(row.firstParagraph, [&](TablePath& path) {
    if (path.size() >= level) {
      path[level - 1].definition = definition;
    }
  });
}

}  // namespace rtf
