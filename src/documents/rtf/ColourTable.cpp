#include "documents/rtf/ColourTable.h"

#include "documents/rtf/Styles.h"
#include "documents/rtf/Tokenizer.h"

#include <algorithm>

namespace rtf {

void ColourTable::Add(std::string_view group) {
  Tokenizer tokenizer(group);
  int colour = automaticColour;
  const auto set = [&colour](int shift, int parameter) {
    const int base = colour == automaticColour ? 0 : colour;
    colour = (base & ~(0xFF << shift)) | (std::clamp(parameter, 0, 255) << shift);
  };
  int depth = 0;
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    if (token.kind == TokenKind::GroupStart) {
      ++depth;
    } else if (token.kind == TokenKind::GroupEnd && --depth == 0) {
      colour = automaticColour;
    } else if (token.kind == TokenKind::Word && token.text == "red") {
      set(16, token.parameter);
    } else if (token.kind == TokenKind::Word && token.text == "green") {
      set(8, token.parameter);
    } else if (token.kind == TokenKind::Word && token.text == "blue") {
      set(0, token.parameter);
    } else if (token.kind == TokenKind::Text) {
      for (auto left = std::count(token.text.begin(), token.text.end(), ';'); left > 0; --left) {
        if (m_colours.size() == mostColours) {
          return;
        }
        m_colours.append(colour);
        colour = automaticColour;
      }
    }
  }
}

int ColourTable::At(int number) const {
  return number >= 0 && number < m_colours.size() ? m_colours[number] : automaticColour;
}

}  // namespace rtf
