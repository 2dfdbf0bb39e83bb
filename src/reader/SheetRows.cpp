#include "reader/SheetRows.h"

namespace reader {

namespace {

constexpr qint64 mostFilled = 5'000'000;
constexpr qint64 mostRows = 1'100'000;

}  // namespace

void SheetRows::BeginSheet(QByteArrayView name) {
  m_frames->Table(name, noCount, {});
  m_row.clear();
  m_emptyCells = m_emptyRows = m_rows = 0;
}

bool SheetRows::AddCells(qint64 times, Cell kind, QByteArrayView value) {
  if (times < 0) {
    return false;
  }
  if (kind == Cell::None) {
    m_emptyCells = qMin(m_emptyCells + times, qint64(mostColumns) + 1);
    return true;
  }
  m_filled += times;
  if (m_filled > mostFilled || m_row.size() + m_emptyCells + times > mostColumns) {
    return false;
  }
  m_row.insert(m_row.size(), m_emptyCells, {Cell::None, {}});
  m_row.insert(m_row.size(), times, {kind, value.toByteArray()});
  m_emptyCells = 0;
  return true;
}

bool SheetRows::EndRow(qint64 times) {
  m_emptyCells = 0;
  if (times < 0) {
    return false;
  }
  if (m_row.isEmpty()) {
    m_emptyRows = qMin(m_emptyRows + times, mostRows + 1);
    return true;
  }
  m_filled += (times - 1) * m_row.size();
  if (m_filled > mostFilled || m_rows + m_emptyRows + times > mostRows) {
    return false;
  }
  for (; m_emptyRows > 0; --m_emptyRows, ++m_rows) {
    m_frames->EndRow();
  }
  for (qint64 i = 0; i < times; ++i, ++m_rows) {
    for (const Waiting& cell : std::as_const(m_row)) {
      m_frames->AddCell(cell.kind, cell.value);
    }
    m_frames->EndRow();
  }
  m_row.clear();
  return true;
}

void SheetRows::EndSheet() {
  m_frames->EndTable();
}

}  // namespace reader
