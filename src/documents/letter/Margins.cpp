#include "documents/letter/Margins.h"

#include "platform/automation/Conversion.h"

#include <algorithm>

namespace documents {

namespace {

constexpr double twipsPerCentimetre = 567;
// A margin of any size may be typed; a window's coordinates end earlier than a number.
constexpr double furthest = 1'000'000;

}  // namespace

Twips FromCentimetres(double length) {
  const double twips = std::clamp(length * twipsPerCentimetre, -furthest, furthest);
  return {static_cast<int>(automation::RoundHalfEven(twips))};
}

Twips TextWidth(const Margins& margins, const Paper& paper) {
  return std::max(Twips(), FromCentimetres(InCentimetres(paper.width) - (margins.right + margins.left)));
}

Twips TextHeight(const Margins& margins, const Paper& paper) {
  return std::max(Twips(), FromCentimetres(InCentimetres(paper.height) - margins.top - margins.bottom));
}

}  // namespace documents
