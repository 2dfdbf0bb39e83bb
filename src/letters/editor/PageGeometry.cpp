#include "letters/editor/PageGeometry.h"

#include <algorithm>
#include <cmath>

namespace letters {

namespace {

constexpr double twipsPerInch = 1440;
constexpr Twips besideGround{115};
constexpr Twips aboveGround{10};

}  // namespace

Page PlacePage(const Margins& margins, const Paper& paper) {
  return {FromCentimetres(margins.left), FromCentimetres(margins.top), TextWidth(margins, paper),
          std::max(Twips(), FromCentimetres(documents::InCentimetres(paper.height) - margins.bottom))};
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
