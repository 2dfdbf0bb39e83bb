#pragma once

#include "documents/labels/Calibration.h"
#include "host/mailing/output/PrintedWork.h"
#include "host/mailing/output/RunControl.h"
#include "host/mailing/printing/PrinterPages.h"

class QIODevice;

namespace host {

struct PrintWish {
  QString queue;
  QString tray;  ///< Empty for the printer's own choice.
  bool bothSides = false;
  PageRange pages;
  int copies = 1;
  documents::Calibration calibration;  ///< The printer's own; see CalibrationRecords.h.
};

/// Paints what the printer gets, a PDF with the wish's pages and calibration. Returns how many sides that is. Raises 5
/// where the work has none of the pages.
int PaintForPrinter(const PrintedWork& work, const PrintWish& wish, QIODevice& file, RunControl& control);

/// Prints: everything is painted into a private file first, which is the printer's when it is whole. Returns the job's
/// number; 0 where the run was cancelled, and nothing was printed. Raises 5 for a printer that is gone, is stopped or
/// takes nothing, and where no room is left for the file.
int Print(const PrintedWork& work, const PrintWish& wish, RunControl& control);

}  // namespace host
