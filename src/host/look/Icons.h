#pragma once

namespace host {

/// The icons of tool bars and menus where the desktop has no theme with them, for light or dark grounds; texts stand in
/// their place where these are missing, too.
void UseIcons(bool onDark);

}  // namespace host
