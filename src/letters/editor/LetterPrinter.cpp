#include "letters/editor/LetterPrinter.h"

#include "documents/letter/LetterPainter.h"

#include <QPainter>
#include <QPrinter>

using documents::LetterPainter;
using documents::Margins;
using documents::Paper;

namespace letters {

namespace {

void Print(const LetterPainter& letter, QPrinter& printer) {
  const int pages = letter.PageCount();
  if (pages == 0) {
    return;
  }
  printer.setFullPage(true);
  QPainter painter(&printer);
  painter.setRenderHint(QPainter::LosslessImageRendering);
  const double dotsPerHalfPoint = double(printer.resolution()) / documents::halfPointsPerInch;
  painter.scale(dotsPerHalfPoint, dotsPerHalfPoint);
  for (int page = 0; painter.isActive() && page < pages; ++page) {
    if (page > 0 && !printer.newPage()) {
      break;
    }
    letter.Paint(painter, page);
  }
}

}  // namespace

void PrintLetter(const QTextDocument& letter, const Margins& margins, QPrinter& printer, const Paper& paper) {
  Print(LetterPainter(letter, margins, paper), printer);
}

void PrintSelection(const QTextCursor& selection, const Margins& margins, QPrinter& printer, const Paper& paper) {
  Print(LetterPainter(selection, margins, paper), printer);
}

}  // namespace letters
