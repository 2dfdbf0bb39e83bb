#include "documents/rtf/NamedNumbers.h"

#include "documents/rtf/Keywords.h"
#include "documents/rtf/Tokenizer.h"

namespace rtf {

NamedNumbers NamedNumbers::Of(const QByteArray& letter) {
  NamedNumbers numbers;
  if (!letter.isEmpty()) {
    // The default font, where nothing is said of it.
    numbers.fonts.insert(0);
  }
  Tokenizer tokenizer({letter.constData(), static_cast<std::size_t>(letter.size())});
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    if (token.kind != TokenKind::Word || !token.hasParameter) {
      continue;
    }
    const Keyword* keyword = FindKeyword(token.text);
    const Action action = keyword == nullptr ? Action::Dropped : keyword->action;
    if (action == Action::Font || action == Action::DefaultFont || token.text == "af" || token.text == "pnf") {
      numbers.fonts.insert(token.parameter);
    } else if (action == Action::Colour || action == Action::Background || (keyword != nullptr && keyword->colour)) {
      numbers.colours.insert(token.parameter);
    }
  }
  return numbers;
}

}  // namespace rtf
