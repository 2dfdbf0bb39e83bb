#include "host/look/Palettes.h"

#include <initializer_list>

namespace host {

namespace {

struct Colour {
  QPalette::ColorRole role;
  QRgb value;
};

QPalette PaletteOf(QRgb window, QRgb dimmed, std::initializer_list<Colour> colours) {
  QPalette palette{QColor(window)};
  for (const Colour& colour : colours) {
    palette.setColor(colour.role, QColor(colour.value));
  }
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(dimmed));
  }
  return palette;
}

}  // namespace

QPalette LightPalette() {
  return PaletteOf(0xEFF0F2, 0x8A9096,
                   {{QPalette::Window, 0xEFF0F2},
                    {QPalette::WindowText, 0x1E2226},
                    {QPalette::Base, 0xFFFFFF},
                    {QPalette::AlternateBase, 0xF5F7F7},
                    {QPalette::Text, 0x1E2226},
                    {QPalette::PlaceholderText, 0x62686E},
                    {QPalette::Button, 0xF4F5F6},
                    {QPalette::ButtonText, 0x1E2226},
                    {QPalette::ToolTipBase, 0xFFFFFF},
                    {QPalette::ToolTipText, 0x1E2226},
                    {QPalette::Highlight, 0x236B90},
                    {QPalette::HighlightedText, 0xFFFFFF},
                    {QPalette::Link, 0x1A5F9C},
                    {QPalette::LinkVisited, 0x6B4A9C}});
}

QPalette DarkPalette() {
  return PaletteOf(0x2D2D30, 0x8C8C8C,
                   {{QPalette::Window, 0x2D2D30},
                    {QPalette::WindowText, 0xE6E6E6},
                    {QPalette::Base, 0x1E1E1E},
                    {QPalette::AlternateBase, 0x262628},
                    {QPalette::Text, 0xE6E6E6},
                    {QPalette::PlaceholderText, 0xA0A0A0},
                    {QPalette::Button, 0x38383C},
                    {QPalette::ButtonText, 0xE6E6E6},
                    {QPalette::ToolTipBase, 0x1E1E1E},
                    {QPalette::ToolTipText, 0xE6E6E6},
                    {QPalette::Highlight, 0x2F6F8F},
                    {QPalette::HighlightedText, 0xFFFFFF},
                    {QPalette::Link, 0x78B4E6},
                    {QPalette::LinkVisited, 0xB9A3E3}});
}

QPalette StripPalette(StripTone tone) {
  QPalette palette = LightPalette();
  palette.setColor(QPalette::WindowText, Qt::black);
  palette.setColor(QPalette::Window, tone == StripTone::News   ? QColor(0xDD, 0xEA, 0xF5)
                                     : tone == StripTone::Hint ? QColor(0xFF, 0xF0, 0xC4)
                                                               : QColor(0xFF, 0xD8, 0x73));
  return palette;
}

}  // namespace host
