#include "letters/editor/LetterPrinter.h"

#include "letters/editor/HalfPoints.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPrinter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <memory>

namespace letters {

namespace {

void PaintPage(QPainter& painter, const QTextDocument& paper, int page, QPointF corner) {
  const QSizeF size = paper.pageSize();
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette.setColor(QPalette::Text, Qt::black);
  // Sideways there is the margin for what leans over.
  context.clip = QRectF(-corner.x(), page * size.height(), size.width() + 2 * corner.x(), size.height());
  painter.save();
  painter.translate(corner.x(), corner.y() - page * size.height());
  painter.setClipRect(context.clip);
  // A line that begins where the page ends is the next page's.
  context.clip.setBottom(context.clip.bottom() - 1);
  paper.documentLayout()->draw(&painter, context);
  painter.restore();
}

// `paper` belongs to the printing: it is laid out for its pages.
void Print(QTextDocument& paper, const QTextDocument& letter, const Margins& margins, QPrinter& printer) {
  const QSizeF size(ToHalfPoints(TextWidth(margins)),
                    ToHalfPoints(FromCentimetres(paperHeight - margins.top - margins.bottom)));
  if (size.isEmpty()) {
    return;
  }
  HalfPointDevice device;
  paper.setDefaultFont(letter.defaultFont());
  paper.setDocumentMargin(0);
  paper.setUseDesignMetrics(true);
  paper.setResourceProvider(letter.resourceProvider());
  paper.documentLayout()->setPaintDevice(&device);
  QTextOption option = paper.defaultTextOption();
  option.setTabStopDistance(letter.defaultTextOption().tabStopDistance());
  paper.setDefaultTextOption(option);
  paper.setPageSize(size);
  printer.setFullPage(true);
  QPainter painter(&printer);
  painter.setRenderHint(QPainter::LosslessImageRendering);
  const double dotsPerHalfPoint = double(printer.resolution()) / halfPointsPerInch;
  painter.scale(dotsPerHalfPoint, dotsPerHalfPoint);
  const QPointF corner(ToHalfPoints(FromCentimetres(margins.left)), ToHalfPoints(FromCentimetres(margins.top)));
  for (int page = 0; painter.isActive() && page < paper.pageCount(); ++page) {
    if (page > 0 && !printer.newPage()) {
      break;
    }
    PaintPage(painter, paper, page, corner);
  }
  paper.documentLayout()->setPaintDevice(nullptr);
}

}  // namespace

void PrintLetter(const QTextDocument& letter, const Margins& margins, QPrinter& printer) {
  const std::unique_ptr<QTextDocument> paper(letter.clone());
  Print(*paper, letter, margins, printer);
}

void PrintSelection(const QTextCursor& selection, const Margins& margins, QPrinter& printer) {
  QTextDocument paper;
  QTextCursor(&paper).insertFragment(selection.selection());
  Print(paper, *selection.document(), margins, printer);
}

}  // namespace letters
