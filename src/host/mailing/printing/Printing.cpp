#include "host/mailing/printing/Printing.h"

#include "documents/letter/HalfPoints.h"
#include "host/mailing/printing/PrintQueues.h"
#include "platform/automation/Error.h"
#include "platform/files/NewFile.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// A printer takes its paper upright: pages that lie are turned to it.
QTransform Upright(const documents::Paper& paper) {
  constexpr int quarter = 90;
  constexpr double halfPointsPerMicrometre = documents::halfPointsPerInch / 25400.0;
  return paper.width <= paper.height
             ? QTransform()
             : QTransform().translate(double(paper.height) * halfPointsPerMicrometre, 0).rotate(quarter);
}

}  // namespace

int PaintForPrinter(const PrintedWork& work, const PrintWish& wish, QIODevice& file, RunControl& control) {
  control.Begin(work.Count());
  PdfPages sides(file, work.Title(), documents::UsualPaper(), Upright(work.Paper()) * wish.calibration.Correction());
  PrinterPages pages(sides, wish.pages, wish.bothSides);
  for (int part = 0; part < work.Count() && !control.IsCancelled() && !pages.IsBehindRange(); ++part) {
    pages.BeginPart();
    work.Paint(part, pages);
    control.PartDone();
  }
  sides.Finish();
  if (sides.Count() == 0 && !control.IsCancelled()) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"No hay página %1: el envío tiene %2."_s.arg(wish.pages.first).arg(pages.Count()));
  }
  return sides.Count();
}

int Print(const PrintedWork& work, const PrintWish& wish, RunControl& control) {
  RequirePrintQueue(wish.queue);
  files::NewFile file(QDir::temp().filePath(u"kel-impresion.pdf"_s));
  PaintForPrinter(work, wish, file.Device(), control);
  if (control.IsCancelled()) {
    return 0;
  }
  file.RequireWhole();
  // Painting took its time.
  RequirePrintQueue(wish.queue);
  return SendToPrinter(file.Path(), {.queue = wish.queue,
                                     .tray = wish.tray,
                                     .title = work.Title(),
                                     .bothSides = wish.bothSides,
                                     .copies = wish.copies});
}

}  // namespace host
