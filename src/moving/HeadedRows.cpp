#include "moving/HeadedRows.h"

#include "moving/NameMatch.h"
#include "platform/automation/Error.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

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
  m_first.append(row);
  const qsizetype last = m_first.size() - 1;
  const int wished = Wished();
  if (wished > 0 ? m_first.size() == wished : AreHeadings(row)) {
    Begin(last);
  } else if (wished == 0 && m_first.size() == mostRowsAbove) {
    Begin(0);
  }
}

int HeadedRows::Wished() const {
  return m_wished.value(m_sheet.name, m_wished.value(u"*"_s));
}

void HeadedRows::Begin(qsizetype headings) {
  const QList<SourceRow> rows = std::exchange(m_first, {});
  for (const SourceCell& cell : rows[headings]) {
    m_sheet.columns.append({cell.text, Cell::Text});
  }
  m_sheet.above = rows.first(headings);
  m_waitsForHeadings = false;
  m_listener->BeginTable(m_sheet);
  for (qsizetype i = headings + 1; i < rows.size(); ++i) {
    m_listener->Row(rows[i]);
  }
}

void HeadedRows::EndTable(qint64 missing) {
  if (!m_first.isEmpty() && Wished() > 0) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"«%1» no tiene tantas filas como para que los títulos estén en la %2.ª."_s.arg(
                                m_sheet.name, QString::number(Wished())));
  }
  if (!m_first.isEmpty()) {
    Begin(0);
  }
  // A sheet without a single row is none.
  if (!m_waitsForHeadings) {
    m_listener->EndTable(missing);
  }
}

}  // namespace moving
