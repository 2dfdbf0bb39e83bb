#pragma once

class QPainter;
class QPainterPath;
class QTextDocument;

namespace documents {

/// Rows that are to stay on one page (`\trkeep`, or because they got room), and fit on one, begin on the next page
/// where they would go on there: room is left under the row above them. At most fifty rows, since each lays the letter
/// out again. For a copy that is laid out in pages.
void KeepRows(QTextDocument& copy);

/// Text that is not at its cell's top, and would be cut by the end of a page or covered by a repeated row, goes there.
/// For such a copy.
void UncutCells(QTextDocument& copy);

/// What Qt paints of tables under their last row on a page and is no part of it: nothing may be painted there.
QPainterPath TableStubs(const QTextDocument& letter, int page);

/// Paints the lines with which tables end at a page's foot and begin again at its head: Qt leaves them open there. In
/// the coordinates of a document that is laid out in pages for a HalfPointDevice; pages count from 0.
void PaintTableBreaks(QPainter& painter, const QTextDocument& letter, int page);

}  // namespace documents
