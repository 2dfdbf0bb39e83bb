#pragma once

#include <QPalette>

namespace host {

/// The program's two palettes. Texts stand out of their grounds 4.5 to 1, lines and the ring 3 to 1 (see Contrast).
QPalette LightPalette();
QPalette DarkPalette();

}  // namespace host
