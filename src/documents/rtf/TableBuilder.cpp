#include "documents/rtf/TableBuilder.h"

#include "documents/rtf/CellFormat.h"

#include <QTextTable>

#include <algorithm>
#include <utility>

namespace rtf {

namespace {

/// Where the run of paragraphs with the same value ends.
template <typename Value>
int EndOfRun(int first, int last, const Value& value) {
  int end = first + 1;
  while (end < last && value(end) == value(first)) {
    ++end;
  }
  return end;
}

}  // namespace

TableBuilder::TableBuilder(const QList<Paragraph>& paragraphs, QTextCursor& cursor, Put put)
    : m_paragraphs(paragraphs), m_cursor(cursor), m_put(std::move(put)) {}

bool TableBuilder::CanHold(const Limits& limits) {
  m_levels = limits.tableLevels;
  m_mostCells = limits.tableCells;
  const auto breaks = [](const Paragraph& paragraph) {
    return paragraph.beginsSection || paragraph.format.hasProperty(QTextFormat::PageBreakPolicy);
  };
  const bool isProperty = BreakKind(m_paragraphs.first().format.intProperty(BreakProperty)) == BreakKind::Property;
  if (isProperty || std::any_of(m_paragraphs.begin() + 1, m_paragraphs.end(), breaks)) {
    return false;
  }
  return ReadRows(0, static_cast<int>(m_paragraphs.size()), 0, m_rows);
}

bool TableBuilder::ReadRows(int first, int last, int level, std::vector<Row>& rows) {
  if (level >= m_levels) {
    return false;
  }
  for (int end = first; first < last; first = end) {
    end = EndOfRun(first, last, [&](int i) { return m_paragraphs[i].path[level].row; });
    const QString& definition = m_paragraphs[first].path[level].definition;
    Row& row = rows.emplace_back(Row{definition, ShapeOf(definition), {}});
    if (row.shape == nullptr || !ReadCells(first, end, level, row) ||
        static_cast<qsizetype>(row.cells.size()) != row.shape->cells.size()) {
      return false;
    }
  }
  return true;
}

bool TableBuilder::ReadCells(int first, int last, int level, Row& row) {
  for (int end = first; first < last; first = end) {
    end = EndOfRun(first, last, [&](int i) { return m_paragraphs[i].path[level].cell; });
    const bool isNext = m_paragraphs[first].path[level].cell == static_cast<int>(row.cells.size()) &&
                        m_paragraphs[first].path[level].definition == row.definition;
    if (!isNext || m_paragraphs[end - 1].path.size() != level + 1 ||
        !ReadParts(first, end, level, row.cells.emplace_back())) {
      return false;
    }
  }
  return true;
}

bool TableBuilder::ReadParts(int first, int last, int level, Cell& cell) {
  for (int end = first; first < last; first = end) {
    Part& part = cell.parts.emplace_back();
    if (m_paragraphs[first].path.size() == level + 1) {
      part.paragraph = first;
      end = first + 1;
      continue;
    }
    end = EndOfRun(first, last, [&](int i) { return m_paragraphs[i].path.size() > level + 1; });
    if (!ReadRows(first, end, level + 1, part.rows)) {
      return false;
    }
  }
  return true;
}

std::shared_ptr<const RowShape> TableBuilder::ShapeOf(const QString& definition) {
  const auto known = m_shapes.constFind(definition);
  if (known != m_shapes.constEnd()) {
    return *known;
  }
  const std::optional<RowShape> shape = rtf::ShapeOf(definition);
  return *m_shapes.insert(definition, shape ? std::make_shared<const RowShape>(*shape) : nullptr);
}

void TableBuilder::Build() {
  InsertRows(m_rows);
}

void TableBuilder::InsertRows(const std::vector<Row>& rows) {
  QList<GridRow> shapes;
  for (const Row& row : rows) {
    GridRow& shape = shapes.emplaceBack(GridRow{row.shape.get(), {}});
    for (const Cell& cell : row.cells) {
      shape.isEmpty.append(IsEmpty(cell));
    }
  }
  const QTextCharFormat& mark = FirstMarkOf(rows);
  for (const Grid& grid : GridsOf(shapes, m_mostCells)) {
    InsertGrid(grid, rows.data() + grid.firstRow);
    // The joint behind it.
    m_cursor.setBlockFormat({});
    m_cursor.setBlockCharFormat(mark);
  }
}

void TableBuilder::InsertGrid(const Grid& grid, const Row* rows) {
  QTextTable* table = m_cursor.insertTable(grid.rows, static_cast<int>(grid.edges.size()) - 1,
                                           TableFormat(grid, rows->shape->alignment));
  for (const GridCell& cell : grid.cells) {
    if (cell.rows > 1 || cell.columns > 1) {
      table->mergeCells(cell.place.row, cell.column, cell.rows, cell.columns);
    }
  }
  for (const GridCell& cell : grid.cells) {
    FillCell(table->cellAt(cell.place.row, cell.column), cell, rows);
  }
  m_cursor.setPosition(table->lastPosition() + 1);
}

void TableBuilder::FillCell(QTextTableCell cell, const GridCell& place, const Row* rows) {
  const Row& row = rows[place.place.row];
  const Cell& content = row.cells[place.place.cell];
  CellLook look{.definition = row.definition,
                .number = place.place.cell,
                .shape = row.shape->cells[place.place.cell],
                .empty = EmptyCellsOf(place, rows)};
  if (!place.covered.isEmpty()) {
    // The outer lines of what is put together.
    const GridCell::Place& end = place.covered.last();
    const CellShape& last = rows[end.row].shape->cells[end.cell];
    look.shape.borders[Right] = last.borders[Right];
    look.shape.borders[Bottom] = last.borders[Bottom];
  }
  cell.setFormat(CellFormat(MarkOf(content), look));
  m_cursor.setPosition(cell.firstPosition());
  bool isNew = false;
  for (const Part& part : content.parts) {
    if (part.paragraph >= 0) {
      m_put(m_paragraphs[part.paragraph], isNew);
    } else {
      if (isNew) {
        m_cursor.insertBlock({}, FirstMarkOf(part.rows));
      }
      InsertRows(part.rows);
    }
    isNew = true;
  }
}

/// The mark of what a cell begins with; in front of a table that is a joint's, which has the cell's own.
const QTextCharFormat& TableBuilder::MarkOf(const Cell& cell) const {
  const int first = cell.parts.front().paragraph;
  return m_paragraphs[first >= 0 ? first : cell.parts.back().paragraph].mark;
}

const QTextCharFormat& TableBuilder::FirstMarkOf(const std::vector<Row>& rows) const {
  return MarkOf(rows.front().cells.front());
}

bool TableBuilder::IsEmpty(const Cell& cell) const {
  const int only = cell.parts.size() == 1 ? cell.parts.front().paragraph : -1;
  return only >= 0 && m_paragraphs[only].text.isEmpty() && !m_paragraphs[only].item &&
         !m_paragraphs[only].beginsSection;
}

EmptyCells TableBuilder::EmptyCellsOf(const GridCell& place, const Row* rows) const {
  EmptyCells cells;
  for (const GridCell::Place& covered : place.covered) {
    const Paragraph& paragraph = m_paragraphs[rows[covered.row].cells[covered.cell].parts.front().paragraph];
    cells.append({.row = covered.row - place.place.row,
                  .cell = covered.cell,
                  .format = paragraph.format,
                  .mark = paragraph.mark});
  }
  return cells;
}

}  // namespace rtf
