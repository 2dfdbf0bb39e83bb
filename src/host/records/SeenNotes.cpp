#include "host/records/SeenNotes.h"

#include <algorithm>

namespace host {

namespace {

// Numbers of transactions that were undone never come.
constexpr qint64 mostAwaited = 200;

}  // namespace

qint64 SeenNotes::From() const {
  return m_missing.isEmpty() ? m_newest : *std::ranges::min_element(m_missing) - 1;
}

void SeenNotes::Take(QList<Change>& notes) {
  notes.removeIf([this](const Change& note) { return note.number <= m_newest && !m_missing.contains(note.number); });
  const qint64 newest = notes.isEmpty() ? m_newest : std::max(m_newest, notes.constLast().number);
  for (qint64 number = std::max(m_newest + 1, newest - mostAwaited); number < newest; ++number) {
    m_missing.insert(number);
  }
  for (const Change& note : std::as_const(notes)) {
    m_missing.remove(note.number);
  }
  m_newest = newest;
  m_missing.removeIf([this](qint64 number) { return number < m_newest - mostAwaited; });
}

}  // namespace host
