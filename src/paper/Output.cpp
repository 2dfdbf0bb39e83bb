#include "paper/Output.h"

#include "documents/letter/HalfPoints.h"
#include "paper/Pages.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace paper {

namespace {

constexpr int pdfResolution = 1200;

// False where the device took not all of them.
bool PaintAll(const Pages& pages, QPagedPaintDevice& device, int resolution) {
  QPainter painter(&device);
  documents::ScaleForPaper(painter, resolution);
  for (int page = 0; page < pages.Count(); ++page) {
    if (!painter.isActive() || (page > 0 && !device.newPage())) {
      return false;
    }
    pages.Paint(painter, page);
  }
  return painter.end();
}

}  // namespace

void Print(const Pages& pages, QPrinter& printer) {
  if (pages.Count() > 0) {
    printer.setFullPage(true);
    PaintAll(pages, printer, printer.resolution());
  }
}

QString SavePdf(const Pages& pages, const QString& file, const QString& title) {
  if (pages.Count() == 0) {
    return u"Los márgenes no dejan sitio para el texto. Redúzcalos e inténtelo de nuevo."_s;
  }
  QSaveFile target(file);
  const auto reason = [&] {
    return u"No se ha podido guardar «%1»: %2. Elija otra carpeta u otro nombre."_s.arg(file, target.errorString());
  };
  if (!target.open(QSaveFile::WriteOnly)) {
    return reason();
  }
  bool painted = false;
  {
    QPdfWriter writer(&target);
    writer.setPageSize(pages.Sheet().PageSize());
    writer.setPageMargins({});
    writer.setResolution(pdfResolution);
    writer.setTitle(title);
    painted = PaintAll(pages, writer, pdfResolution);
  }
  // The last bytes may find no room; a file's end doesn't tell.
  if (!painted || !target.flush()) {
    const QString why = reason();
    target.cancelWriting();
    target.commit();
    return why;
  }
  return target.commit() ? QString() : reason();
}

}  // namespace paper
