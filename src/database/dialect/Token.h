#pragma once

#include <QStringView>

namespace database {

enum class TokenKind {
  Word,         ///< A name or a keyword as written.
  BracketName,  ///< A name between brackets; the text is what stands inside.
  Number,       ///< Digits, at most one point, perhaps an exponent.
  Text,         ///< A text literal; the text is what stands between its quotes, quotes inside still doubled.
  Symbol,       ///< An operator or a mark of one or two characters.
  End,
};

/// A piece of a statement. `text` points into the statement, which must outlive the token.
struct Token {
  TokenKind kind = TokenKind::End;
  QStringView text;
  qsizetype position = 0;  ///< Where the token, its quotes included, begins.
  qsizetype end = 0;       ///< Where it ends.
  int literal = -1;        ///< For Number and Text: the how manieth literal of the statement, from 0.

  bool IsSymbol(QStringView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
  bool IsWord(QStringView word) const {
    return kind == TokenKind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
  }
};

/// Neighbours among the tokens of a statement, from `first` to the one before `end`; the same for every statement of
/// one shape.
struct TokenRange {
  std::size_t first = 0;
  std::size_t end = 0;

  bool IsEmpty() const { return first == end; }
};

}  // namespace database
