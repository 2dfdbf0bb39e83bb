#pragma once

namespace host {

/// Gives the application dark colours, whatever the desktop's.
void UseDarkPalette();

}  // namespace host
