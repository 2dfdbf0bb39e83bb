#pragma once

#include <QList>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>

#include <memory>

class QTextDocument;

namespace rtf {

/// The paragraph of a cell that is part of another one: empty.
struct EmptyCell {
  int row = 0;   ///< From the row of the cell that shows.
  int cell = 0;  ///< Of its row's definition.
  QTextBlockFormat format;
  QTextCharFormat mark;

  bool operator==(const EmptyCell&) const = default;
};
using EmptyCells = QList<EmptyCell>;

/// Where in a table a paragraph stands: one entry for each table that it is in, outermost first; neighbours with equal
/// entries are paragraphs of one cell. Rows that no table can hold show as their cells' paragraphs, one after the
/// other.
struct TableLevel {
  int row = 0;                                   ///< Differs in neighbouring rows.
  int cell = 0;                                  ///< From 0.
  QString definition;                            ///< The row's words from `\trowd`, empty where it has none.
  int cells = 0;                                 ///< Of the row, 0 where that is not known.
  std::shared_ptr<const EmptyCells> empty = {};  ///< The row's cells that are part of others, by `cell`.

  bool operator==(const TableLevel&) const = default;
};
using TablePath = QList<TableLevel>;

/// Of rows, cells and definitions.
size_t HashOf(const TablePath& path);

/// Deeper tables count as of this level.
inline constexpr int deepestTable = 8;

/// Keeps a path in a paragraph's format, none for an empty one; the definitions are shared by all paragraphs of a row.
void SetPath(QTextBlockFormat& format, const TablePath& path);
TablePath PathOf(const QTextBlockFormat& format);
/// Moves a document's paragraphs out of the cells that all of them stand in, and into `cell`: tables that are left are
/// nested ones there. An empty path is no cell.
void MoveToCell(QTextDocument& document, const TablePath& cell);

}  // namespace rtf

Q_DECLARE_METATYPE(rtf::EmptyCells)
