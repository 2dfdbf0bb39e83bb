#pragma once

#include <QList>
#include <QString>
#include <QTextBlockFormat>

class QTextDocument;

namespace rtf {

/// Where in a table a paragraph stands: one entry for each table that it is in, outermost first. Tables show as their
/// cells' paragraphs, one after the other; neighbours with equal entries are paragraphs of one cell.
struct TableLevel {
  int row = 0;         ///< Differs in neighbouring rows.
  int cell = 0;        ///< From 0.
  QString definition;  ///< The row's words from `\trowd`, empty where it has none.

  bool operator==(const TableLevel&) const = default;
};
using TablePath = QList<TableLevel>;

/// Deeper tables count as of this level.
inline constexpr int deepestTable = 8;

/// Keeps a path in a paragraph's format, none for an empty one; the definitions are shared by all paragraphs of a row.
void SetPath(QTextBlockFormat& format, const TablePath& path);
TablePath PathOf(const QTextBlockFormat& format);
/// Moves a document's paragraphs out of the cells that all of them stand in, and into `cell`: tables that are left are
/// nested ones there. An empty path is no cell.
void MoveToCell(QTextDocument& document, const TablePath& cell);

}  // namespace rtf
