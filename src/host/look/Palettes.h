#pragma once

#include <QPalette>

namespace host {

/// The program's two palettes. Texts stand out of their grounds 4.5 to 1, lines and the ring 3 to 1 (see Contrast).
QPalette LightPalette();
QPalette DarkPalette();

/// The ground of a strip that tells something beside its words, with what is written on it: the same where the window
/// is dark, so that it stands out.
enum class StripTone { News, Hint, Attention };
QPalette StripPalette(StripTone tone);

}  // namespace host
