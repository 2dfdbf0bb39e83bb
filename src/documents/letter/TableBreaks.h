#pragma once

class QPainter;
class QTextDocument;

namespace documents {

/// Paints the lines with which tables end at a page's foot and begin again at its head: Qt leaves them open there. In
/// the coordinates of a document that is laid out in pages for a HalfPointDevice; pages count from 0.
void PaintTableBreaks(QPainter& painter, const QTextDocument& letter, int page);

}  // namespace documents
