#include "documents/rtf/Seams.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace rtf {

size_t qHash(const ReadingState& state, size_t seed) {
  return qHashMulti(seed, state.character, state.paragraph, state.numbering, state.unicodeSkip);
}

void SeamRecorder::EndPart(bool inTable) {
  if (inTable && std::exchange(m_inTable, inTable)) {
    // Not before its row ends.
    m_seams.at.last().state = -1;
    m_placed = false;
    m_rowHasCells = true;
    return;
  }
  if (!inTable) {
    ReferFromRow();
  }
  m_inTable = inTable;
  m_rowHasCells = inTable;
  m_seams.at.append(Seam{});
  m_placed = !inTable;
  ++m_partsOfToken;
}

void SeamRecorder::EndRow() {
  if (std::exchange(m_isRedefined, false)) {
    m_row.reset();
  }
  ReferFromRow();
  m_placed = std::exchange(m_rowHasCells, false) || m_placed;
}

void SeamRecorder::ReferFromRow() {
  if (m_row) {
    m_references.append(*std::exchange(m_row, std::nullopt));
  }
}

void SeamRecorder::Refer(qsizetype offset) {
  const Reference reference{offset, m_seams.at.size() - 1};
  if (offset < m_lastPlaced && (m_references.isEmpty() || m_references.last() != reference)) {
    m_references.append(reference);
  }
}

void SeamRecorder::BeginTable(qsizetype definition) {
  if (definition < m_lastPlaced) {
    m_row = Reference{definition, m_seams.at.size() - 1};
    m_isRedefined = false;
  }
}

void SeamRecorder::ChangeDocument(bool begins) {
  if (begins) {
    // The letter can't be written on from in front of it.
    m_seams.at.last().state = -1;
    m_placed = true;
    return;
  }
  const qsizetype part = m_seams.at.size() - 1;
  m_seams.bound.insert(part);
  if (m_inTable) {
    // Its next row may still come.
    m_seams.bound.insert(part - 1);
  }
}

void SeamRecorder::ChangeSection() {
  m_seams.bound.insert(m_sectionPart);
  ChangeDocument(false);
}

void SeamRecorder::GoOn() {
  const qsizetype part = m_seams.at.size() - 1;
  if (part == 0 || !m_seams.at.last().IsClean()) {
    return;
  }
  m_seams.at.last().state = -1;
  m_placed = true;
  if (m_seams.bound.contains(part)) {
    m_seams.bound.insert(part - 1);
  }
}

bool SeamRecorder::IsSeam(bool closesGroup) {
  // A token that ended several parts left no places between them.
  const bool isOne = std::exchange(m_partsOfToken, 0) <= 1;
  const bool isPlaced = std::exchange(m_placed, false);
  m_isBehindSeam = isOne && (isPlaced || (closesGroup && m_isBehindSeam));
  return m_isBehindSeam;
}

void SeamRecorder::Place(qsizetype offset, int group, const ReadingState& state) {
  const bool same = !m_seams.states.isEmpty() && m_seams.states.last() == state;
  int number = static_cast<int>(m_seams.states.size()) - 1;
  if (!same) {
    const auto known = m_states.constFind(state);
    number = known != m_states.constEnd() ? *known : number + 1;
    if (known == m_states.constEnd()) {
      m_states.insert(state, number);
      m_seams.states.append(state);
    }
  }
  m_seams.at.last() = {offset, group, number};
  m_lastPlaced = offset;
}

Seams SeamRecorder::Take(qsizetype before) {
  ReferFromRow();
  std::sort(m_references.begin(), m_references.end(),
            [](const Reference& a, const Reference& b) { return a.last < b.last; });
  qsizetype referred = std::numeric_limits<qsizetype>::max();
  for (qsizetype i = m_seams.at.size() - 1; i >= 0; --i) {
    for (; !m_references.isEmpty() && m_references.last().last >= i; m_references.removeLast()) {
      referred = std::min(referred, m_references.last().offset);
    }
    Seam& seam = m_seams.at[i];
    if (referred < seam.offset) {
      seam.state = -1;
    }
    seam.offset += before;
  }
  m_seams.fontsEnd += m_seams.fontsEnd < 0 ? 0 : before;
  m_seams.coloursEnd += m_seams.coloursEnd < 0 ? 0 : before;
  m_seams.lastTable += m_seams.lastTable < 0 ? 0 : before;
  return std::move(m_seams);
}

}  // namespace rtf
