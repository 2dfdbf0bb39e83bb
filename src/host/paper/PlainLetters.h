#pragma once

#include <cstddef>

namespace host {

/// The letters whose widths and glyphs are kept in tables: Latin ones, and the signs of quotations and prices.
constexpr std::size_t latinLetters = 0x250;
constexpr char16_t firstSign = u'–';
constexpr char16_t lastSign = u'…';
constexpr std::size_t plainLetters = latinLetters + (lastSign - firstSign + 1) + 1;

/// A letter's place in such a table; `plainLetters` for any other.
constexpr std::size_t PlaceOf(char16_t letter) {
  if (letter < latinLetters) {
    return letter;
  }
  if (letter >= firstSign && letter <= lastSign) {
    return latinLetters + (letter - firstSign);
  }
  return letter == u'€' ? plainLetters - 1 : plainLetters;
}

/// The letter of a place below `plainLetters`.
constexpr char16_t LetterAt(std::size_t place) {
  if (place < latinLetters) {
    return static_cast<char16_t>(place);
  }
  return place == plainLetters - 1 ? u'€' : static_cast<char16_t>(firstSign + (place - latinLetters));
}

}  // namespace host
