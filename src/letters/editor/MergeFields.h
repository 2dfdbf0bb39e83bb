#pragma once

#include <QString>
#include <QStringList>

#include <span>

/// The bracketed words of a letter that the host replaces with a person's data when it prints the letter.
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

/// Every marker that some installation has, each once.
QStringList KnownMarkers();

/// The bracketed words of a text that are none of `known`, each once, in their order. A bracket that is not closed in
/// its paragraph begins no word.
QStringList UnknownMarkers(const QString& text, const QStringList& known);

}  // namespace letters
