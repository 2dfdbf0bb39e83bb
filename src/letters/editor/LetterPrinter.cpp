#include "letters/editor/LetterPrinter.h"

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
  paper.documentLayout()->draw(&painter, context);
  painter.restore();
}

// `paper` belongs to the printing: it is laid out for the printer.
void Print(QTextDocument& paper, const QTextDocument& letter, const Margins& margins, QPrinter& printer) {
  const double dotsPerTwip = printer.resolution() / 1440.0;
  const Twips height = FromCentimetres(paperHeight - margins.top - margins.bottom);
  const QSizeF size = QSizeF(TextWidth(margins).count, height.count) * dotsPerTwip;
  if (size.isEmpty()) {
    return;
  }
  printer.setFullPage(true);
  paper.setDocumentMargin(0);
  paper.setUseDesignMetrics(true);
  paper.setResourceProvider(letter.resourceProvider());
  paper.documentLayout()->setPaintDevice(&printer);
  QTextOption option = paper.defaultTextOption();
  option.setTabStopDistance(letter.defaultTextOption().tabStopDistance());
  paper.setDefaultTextOption(option);
  paper.setPageSize(size);
  QPainter painter(&printer);
  const QPointF corner = QPointF(FromCentimetres(margins.left).count, FromCentimetres(margins.top).count) * dotsPerTwip;
  for (int page = 0; painter.isActive() && page < paper.pageCount(); ++page) {
    if (page > 0 && !printer.newPage()) {
      return;
    }
    PaintPage(painter, paper, page, corner);
  }
}

}  // namespace

void PrintLetter(const QTextDocument& letter, const Margins& margins, QPrinter& printer) {
  const std::unique_ptr<QTextDocument> paper(letter.clone());
  Print(*paper, letter, margins, printer);
}

void PrintSelection(const QTextCursor& selection, const Margins& margins, QPrinter& printer) {
  QTextDocument paper;
  paper.setDefaultFont(selection.document()->defaultFont());
  QTextCursor(&paper).insertFragment(selection.selection());
  Print(paper, *selection.document(), margins, printer);
}

}  // namespace letters
