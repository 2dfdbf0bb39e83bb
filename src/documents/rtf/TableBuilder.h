#pragma once

#include "documents/rtf/DocumentBuilder.h"
#include "documents/rtf/Report.h"
#include "documents/rtf/TableGrid.h"

#include <functional>
#include <memory>
#include <vector>

class QTextTable;
class QTextTableCell;

namespace rtf {

/// Makes Qt's tables of the paragraphs of one outermost table, all of them or none: which row a paragraph belongs to
/// would be read otherwise if a part of its table stayed paragraphs.
///
/// Qt shows nothing of an empty paragraph directly before or behind a table. So one stands there always, a joint
/// (IsJoint): the letter's own empty lines stay visible.
class TableBuilder {
 public:
  /// Puts a paragraph where the cursor is, into a new block behind it or into its own, which is empty then and keeps
  /// its mark.
  using Put = std::function<void(const Paragraph& paragraph, bool isNew)>;

  /// `paragraphs`, the cursor, and what `put` needs outlive the builder.
  TableBuilder(const QList<Paragraph>& paragraphs, QTextCursor& cursor, Put put);

  /// Whether tables with so many levels can hold all of it, parted where they have too many cells: rows with as many
  /// cells as they define, breaks of pages and sections in front of all of them only. Asked before Build.
  bool CanHold(const Limits& limits);
  /// Inserts the tables behind the joint where the cursor is, and leaves it in the joint behind them.
  void Build();

 private:
  struct Row;
  /// A paragraph, or a table of its own.
  struct Part {
    int paragraph = -1;
    std::vector<Row> rows;
  };
  struct Cell {
    std::vector<Part> parts;
  };
  struct Row {
    QString definition;
    std::shared_ptr<const RowShape> shape;
    std::vector<Cell> cells;
  };

  bool ReadRows(int first, int last, int level, std::vector<Row>& rows);
  bool ReadCells(int first, int last, int level, Row& row);
  bool ReadParts(int first, int last, int level, Cell& cell);
  std::shared_ptr<const RowShape> ShapeOf(const QString& definition);

  void InsertRows(const std::vector<Row>& rows);
  void InsertGrid(const Grid& grid, const Row* rows);
  void FillCell(QTextTableCell cell, const GridCell& place, const Row* rows);
  const QTextCharFormat& MarkOf(const Cell& cell) const;
  const QTextCharFormat& FirstMarkOf(const std::vector<Row>& rows) const;
  bool IsEmpty(const Cell& cell) const;
  EmptyCells EmptyCellsOf(const GridCell& place, const Row* rows) const;

  const QList<Paragraph>& m_paragraphs;
  QTextCursor& m_cursor;
  Put m_put;
  int m_levels = 0;
  int m_mostCells = 0;
  std::vector<Row> m_rows;
  QHash<QString, std::shared_ptr<const RowShape>> m_shapes;
};

}  // namespace rtf
