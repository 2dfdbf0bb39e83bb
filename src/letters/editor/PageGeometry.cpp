#include "letters/editor/PageGeometry.h"

#include "platform/automation/Conversion.h"

#include <algorithm>
#include <cmath>

namespace letters {

namespace {

constexpr double twipsPerCentimetre = 567;
constexpr double twipsPerInch = 1440;
// A margin of any size may be typed; a window's coordinates end earlier than a number.
constexpr double furthest = 1'000'000;

constexpr Twips besideGround{115};
constexpr Twips aboveGround{10};

}  // namespace

Twips FromCentimetres(double length) {
  const double twips = std::clamp(length * twipsPerCentimetre, -furthest, furthest);
  return {static_cast<int>(automation::RoundHalfEven(twips))};
}

Page PlacePage(const Margins& margins) {
  return {FromCentimetres(margins.left), FromCentimetres(margins.top), TextWidth(margins),
          std::max(Twips(), FromCentimetres(paperHeight - margins.bottom))};
}

Twips TextWidth(const Margins& margins) {
  return std::max(Twips(), FromCentimetres(paperWidth - (margins.right + margins.left)));
}

Page WithLeftEdgeMoved(Page page, Twips width) {
  page.left = page.left + page.width - width;
  page.width = width;
  return page;
}

Twips ScrollRange(Twips page, Twips origin, Twips seen) {
  return std::max(Twips(), page + 2 * origin - seen);
}

int Scale::Pixels(Twips length) const {
  return static_cast<int>(std::lround(length.count * pixelsPerTwip));
}

Twips Scale::FromPixels(int pixels) const {
  return {static_cast<int>(std::lround(pixels / pixelsPerTwip))};
}

Scale ScreenScale(int dotsPerInch, double zoom) {
  return {dotsPerInch * zoom / twipsPerInch};
}

Ground PlaceGround(Twips clientWidth, Twips clientHeight, Twips toolBarBottom) {
  const Twips top = toolBarBottom + aboveGround;
  return {top, std::max(Twips(), clientWidth - besideGround), std::max(Twips(), clientHeight - top - roomBelowGround)};
}

}  // namespace letters
