#pragma once

class QTextDocument;
class QTextTable;

namespace documents {

/// Qt leaves out the space before a cell's first paragraph and after its last one: they become room around the text.
/// For a copy that is painted, before it is laid out.
void GiveCellsTheirSpace(QTextDocument& copy);

/// Rows that are to be so high at least (`\trrh`) get it; tables of Qt's have rows as high as their text, so room is
/// left around the text of one of the row's cells. A row that is to be exactly so high (a negative `\trrh`) is higher
/// where its text needs it: nothing is cut. For a copy that is painted; it is laid out in that width, in half-points,
/// and without pages where it has such rows.
void GiveRowsTheirHeights(QTextDocument& copy, double width);

/// Whether the row got room.
bool HasRoom(const QTextTable& table, int row);

}  // namespace documents
