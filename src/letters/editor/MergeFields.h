#pragma once

#include <span>

/// The menu that types markers, the bracketed words of a letter that are replaced with a person's data.
namespace letters {

/// One item of the menu that types markers.
struct FieldItem {
  enum class Kind { Cut, Copy, Paste, Separator, Submenu, Marker };

  Kind kind;
  const char16_t* name;    ///< The item's object name.
  int caption = 0;         ///< String number; a separator has none.
  int marker = 0;          ///< String number of the marker.
  int velumarMarker = 0;   ///< The one that such installations have instead; 0 where it is the same.
  bool inSubmenu = false;  ///< An item of the last submenu above.
};

/// The items in their order.
std::span<const FieldItem> FieldItems();

}  // namespace letters
