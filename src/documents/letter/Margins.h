#pragma once

#include "documents/Export.h"
#include "documents/letter/Paper.h"
#include "documents/letter/Twips.h"

namespace documents {

/// Margins of the paper, in centimetres; those of a new letter if nothing else is said.
struct Margins {
  double left = 3.0;
  double right = 3.0;
  double top = 2.5;
  double bottom = 2.5;
};

/// A length in centimetres in twips, halves to the even neighbour; cut to what a screen can have.
KELDOCUMENTOS_EXPORT Twips FromCentimetres(double length);

/// What the left and right margins leave of the paper's width. 0 where they leave nothing, here and below.
KELDOCUMENTOS_EXPORT Twips TextWidth(const Margins& margins, const Paper& paper = UsualPaper());
/// What the other two leave of its height.
KELDOCUMENTOS_EXPORT Twips TextHeight(const Margins& margins, const Paper& paper = UsualPaper());

}  // namespace documents
