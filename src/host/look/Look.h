#pragma once

namespace host {

/// How the program looks to a user of this machine.
struct Look {
  enum class Colours { AsDesktop, Light, Dark };

  static constexpr int smallestText = 100;
  static constexpr int largestText = 200;

  Colours colours = Colours::AsDesktop;
  int textPercent = smallestText;  ///< Size of the texts, of the desktop's; between the two numbers.

  bool operator==(const Look&) const = default;
};

/// From the user's settings; a value that makes no sense is taken as the usual one.
Look StoredLook();
void StoreLook(const Look& look);

/// Gives the application style, palette, icons and texts; needs it to exist. May be called again.
void UseLook(const Look& look);

}  // namespace host
