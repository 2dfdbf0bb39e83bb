#include "documents/rtf/TableRows.h"

#include "documents/rtf/WrittenRow.h"

#include <QTextDocument>
#include <QTextTable>

#include <algorithm>

namespace rtf {

namespace {

// More rows than a table has; rows of neighbouring tables have different numbers, too.
constexpr unsigned mostRows = 1 << 14;

}  // namespace

void TableRows::Forget() {
  m_known = false;
  m_tables.clear();
}

void TableRows::FindTables() {
  m_known = true;
  QList<QTextFrame*> frames = m_document.rootFrame()->childFrames();
  while (!frames.isEmpty()) {
    const QTextFrame* frame = frames.takeLast();
    if (const auto* table = qobject_cast<const QTextTable*>(frame)) {
      m_tables.append({.first = table->firstPosition(), .last = table->lastPosition(), .table = table});
    } else {
      frames.append(frame->childFrames());
    }
  }
  std::sort(m_tables.begin(), m_tables.end(), [](const Table& a, const Table& b) { return a.first < b.first; });
}

TablePath TableRows::PathOf(const QTextBlock& block) {
  if (!m_known) {
    FindTables();
  }
  if (m_tables.isEmpty()) {
    return {};
  }
  const auto behind = std::upper_bound(m_tables.begin(), m_tables.end(), block.position(),
                                       [](int position, const Table& table) { return position < table.first; });
  if (behind == m_tables.begin() || block.position() > std::prev(behind)->last) {
    return {};
  }
  Table& table = *std::prev(behind);
  if (table.paths.isEmpty()) {
    table.paths.resize(m_document.findBlock(table.last).blockNumber() -
                       m_document.findBlock(table.first).blockNumber() + 1);
    Collect(table, *table.table, {});
  }
  return table.paths.value(block.blockNumber() - m_document.findBlock(table.first).blockNumber());
}

void TableRows::Collect(Table& into, const QTextTable& table, const TablePath& outer) {
  for (int row = 0; row < table.rows(); ++row) {
    const WrittenRow written = WrittenRowOf(table, row);
    qsizetype next = 0;
    for (int column = 0; column < table.columns(); ++column) {
      const QTextTableCell cell = table.cellAt(row, column);
      if (cell.row() == row && cell.column() == column) {
        const TableLevel level{.row = static_cast<int>(unsigned(table.objectIndex()) * mostRows + unsigned(row)),
                               .cell = written.numbers[next++],
                               .definition = written.definition,
                               .cells = written.cells,
                               .empty = written.empty};
        CollectCell(into, cell, outer + TablePath{level});
      }
    }
  }
}

/// Everything in the cell, but what a table in it has of its own.
void TableRows::CollectCell(Table& into, const QTextTableCell& cell, const TablePath& path) {
  const QTextDocument& document = *cell.firstCursorPosition().document();
  const int start = document.findBlock(into.first).blockNumber();
  const QTextBlock end = document.findBlock(cell.lastPosition()).next();
  for (QTextBlock block = document.findBlock(cell.firstPosition()); block.isValid() && block != end;
       block = block.next()) {
    into.paths[block.blockNumber() - start] = path;
  }
  if (path.size() == deepestTable) {
    return;
  }
  for (auto part = cell.begin(); !part.atEnd(); ++part) {
    if (const auto* inner = qobject_cast<const QTextTable*>(part.currentFrame())) {
      Collect(into, *inner, path);
    }
  }
}

}  // namespace rtf
