#include "moving/HeadedRows.h"

#include <algorithm>

namespace moving {

namespace {

bool IsEmpty(const SourceRow& row) {
  return std::all_of(row.begin(), row.end(),
                     [](const SourceCell& cell) { return cell.kind == Cell::None || cell.text.isEmpty(); });
}

}  // namespace

void HeadedRows::BeginTable(const SourceTable& table) {
  m_sheet = table;
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
  for (const SourceCell& cell : row) {
    m_sheet.columns.append({cell.text, Cell::Text});
  }
  m_waitsForHeadings = false;
  m_listener->BeginTable(m_sheet);
}

void HeadedRows::EndTable(qint64 missing) {
  // A sheet without a single row is none.
  if (!m_waitsForHeadings) {
    m_listener->EndTable(missing);
  }
}

}  // namespace moving
