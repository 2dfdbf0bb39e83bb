#pragma once

#include "letters/editor/Twips.h"

/// Where the letter stands on its grey ground, and what the scroll bars have to do, without a window.
namespace letters {

/// Margins of the paper, in centimetres.
struct Margins {
  double left = 3.0;
  double right = 3.0;
  double top = 2.5;
  double bottom = 2.5;
};

/// The paper, A4, in centimetres.
inline constexpr double paperWidth = 21.0;
inline constexpr double paperHeight = 29.7;

/// A length in centimetres in twips, halves to the even neighbour; cut to what a screen can have.
Twips FromCentimetres(double length);

/// The box of the text on the ground; its corner is counted from the ground's corner.
struct Page {
  Twips left;
  Twips top;
  Twips width;
  Twips height;

  bool operator==(const Page&) const = default;
};

/// The page of a letter that was just loaded. The top margin is not taken from its height; that is intended.
Page PlacePage(const Margins& margins);

/// What the left and right margins leave of the paper's width, 0 where they leave nothing.
Twips TextWidth(const Margins& margins);

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
