#include "moving/HeadedRows.h"

#include "moving/NameMatch.h"

#include <algorithm>
#include <utility>

namespace moving {

namespace {

bool IsEmpty(const SourceRow& row) {
  return std::all_of(row.begin(), row.end(), [](const SourceCell& cell) {
    return cell.kind == Cell::None || (cell.kind == Cell::Text && cell.text.isEmpty());
  });
}

}  // namespace

void HeadedRows::BeginTable(const SourceTable& table) {
  m_sheet = table;
  m_first.clear();
  m_waitsForHeadings = table.columns.isEmpty();
  if (!m_waitsForHeadings) {
    m_listener->BeginTable(table);
  }
}

void HeadedRows::Row(const SourceRow& row) {
  const bool isOfASheet = m_sheet.columns.isEmpty() || !m_sheet.count;
  if (isOfASheet && IsEmpty(row)) {
    return;
  }
  if (!m_waitsForHeadings) {
    return m_listener->Row(row);
  }
  constexpr qsizetype looked = 20;
  m_first.append(row);
  if (AreHeadings(row)) {
    m_first = {row};
    Begin();
  } else if (m_first.size() == looked) {
    Begin();
  }
}

void HeadedRows::Begin() {
  const QList<SourceRow> rows = std::exchange(m_first, {});
  for (const SourceCell& cell : rows.constFirst()) {
    m_sheet.columns.append({cell.text, Cell::Text});
  }
  m_waitsForHeadings = false;
  m_listener->BeginTable(m_sheet);
  for (qsizetype i = 1; i < rows.size(); ++i) {
    m_listener->Row(rows[i]);
  }
}

void HeadedRows::EndTable(qint64 missing) {
  if (!m_first.isEmpty()) {
    Begin();
  }
  // A sheet without a single row is none.
  if (!m_waitsForHeadings) {
    m_listener->EndTable(missing);
  }
}

}  // namespace moving
