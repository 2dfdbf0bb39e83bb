#pragma once

#include <QList>

#include <string_view>

namespace rtf {

/// The colours of `\colortbl`, by their numbers. Source: Rich Text Format Specification 1.9.1, "Color Table".
class ColourTable {
 public:
  /// Colours beyond this many are left out and show as automatic ones.
  static constexpr int mostColours = 4096;

  /// Adds the colours of `{\colortbl ...}` groups. An entry without components is the automatic colour.
  void Add(std::string_view group);

  /// 0xRRGGBB, or automaticColour for an entry that says so and for a number that the table does not have.
  int At(int number) const;
  const QList<int>& Colours() const { return m_colours; }

 private:
  QList<int> m_colours;
};

}  // namespace rtf
