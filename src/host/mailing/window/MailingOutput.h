#pragma once

#include "host/mailing/pieces/LabelMailing.h"
#include "host/mailing/pieces/LetterMailing.h"
#include "host/mailing/printing/Printing.h"
#include "host/mailing/window/MailingRun.h"

namespace host {

/// What becomes of a mailing.
struct OutputOrder {
  enum class Kind { Pdf, PdfPerPerson, RtfPerPerson, Printer };

  Kind kind = Kind::Pdf;
  QString target;           ///< A file, or a folder.
  PrintWish printing;       ///< For a printer; its calibration is looked up.
  QList<std::size_t> seen;  ///< The fingerprints of what the user saw.
  QStringList accepted;     ///< The faults that the user left as they are.
};

// Read everything anew and write it; for any thread. Raise what reading and writing raise, and 5 where nobody is left
// to write to or a fault has come that nobody accepted.

RunResult MakeLetters(const QString& connectionString, const LetterWish& wish, int userId, const OutputOrder& order,
                      RunControl& control);
RunResult MakeLabels(const QString& connectionString, const LabelWish& wish, int userId, const OutputOrder& order,
                     RunControl& control);

/// Prints with the calibration that the database keeps for the printer, for any thread.
RunResult PrintCalibrated(const PrintedWork& work, const QString& connectionString, PrintWish wish,
                          RunControl& control);

/// How many letters or labels differ between two readings: new ones, changed ones and those that are gone.
int DifferingPieces(QList<std::size_t> before, QList<std::size_t> now);

}  // namespace host
