#pragma once

#include "documents/letter/LetterPainter.h"
#include "host/mailing/pieces/LabelMailing.h"
#include "host/mailing/pieces/LetterMailing.h"
#include "paper/Pages.h"

#include <QRectF>

#include <memory>

namespace host {

/// How the preview shows what the paper does not have.
struct PreviewLook {
  bool tintsValues = true;      ///< What was filled in has a ground of its own.
  bool showsEnvelope = true;    ///< The window of the envelope.
  bool showsEdges = true;       ///< Of the labels.
  QRectF envelope;              ///< In millimetres from the paper's upper left corner.
  documents::SheetStart start;  ///< Labels of the first sheet that are used up are crossed out.
  int person = 0;               ///< Whose label stands out; 0 for nobody's.
};

/// One letter, as it will be printed.
std::unique_ptr<paper::Pages> PagesOfLetter(const LetterMailing& letters, int letter, const PreviewLook& look);
/// One sheet of labels. Borrows the mailing.
std::unique_ptr<paper::Pages> PagesOfSheet(const LabelMailing& labels, int sheet, const PreviewLook& look);
/// Nothing at all.
std::unique_ptr<paper::Pages> NoPages();

}  // namespace host
