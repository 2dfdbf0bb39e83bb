#pragma once

#include "documents/letter/Margins.h"

/// Where the letter stands on its grey ground, and what the scroll bars have to do, without a window.
namespace letters {

using documents::FromCentimetres;
using documents::Margins;
using documents::Paper;
using documents::TextWidth;
using documents::Twips;

/// The box of the text on the ground; its corner is counted from the ground's corner.
struct Page {
  Twips left;
  Twips top;
  Twips width;
  Twips height;

  bool operator==(const Page&) const = default;
};

/// The page of a letter that was just loaded. The top margin is not taken from its height; that is intended.
Page PlacePage(const Margins& margins, const Paper& paper = documents::UsualPaper());

/// The page with another width and its right edge where it was: its left margin has changed.
Page WithLeftEdgeMoved(Page page, Twips width);

/// How far a scroll bar goes: the page with its distance from the ground's edge on both sides, less what is seen.
Twips ScrollRange(Twips page, Twips origin, Twips seen);

/// How large twips are on a screen.
struct Scale {
  double pixelsPerTwip = 1.0 / 15;

  int Pixels(Twips length) const;
  Twips FromPixels(int pixels) const;
};

/// The scale of a screen with so many dots per inch, for a zoom of 1.0 and others.
Scale ScreenScale(int dotsPerInch, double zoom = 1.0);

/// The ground in the window: below the tool bars, with room for the measures under it.
struct Ground {
  Twips top;
  Twips width;
  Twips height;

  bool operator==(const Ground&) const = default;
};
/// `toolBarBottom` is the bottom of the lowest tool bar that is seen, 0 without any.
Ground PlaceGround(Twips clientWidth, Twips clientHeight, Twips toolBarBottom);

/// The window is never smaller.
inline constexpr Twips leastWindowWidth{7340};
inline constexpr Twips leastWindowHeight{5000};
/// The room under the ground.
inline constexpr Twips roomBelowGround{700};
inline constexpr Twips scrollBarThickness{225};
/// Where the horizontal scroll bar begins.
inline constexpr Twips firstScroll{850};

}  // namespace letters
