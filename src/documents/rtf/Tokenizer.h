#pragma once

#include <cstddef>
#include <string_view>

namespace rtf {

enum class TokenKind {
  GroupStart,
  GroupEnd,
  Word,    ///< `text` is the name; `parameter` when `hasParameter`
  Symbol,  ///< backslash and `byte`, which is no letter; a backslash before a line end has '\n'
  Hex,     ///< `\'hh`, its value in `byte`
  Text,    ///< `text`, never empty; raw tabs and bytes from 0x80 are part of it
  Binary,  ///< the bytes behind `\binN` in `text`
  End,
};

struct Token {
  TokenKind kind = TokenKind::End;
  std::string_view text = {};
  int parameter = 0;
  bool hasParameter = false;
  unsigned char byte = 0;
  /// False when the input ends inside the token (an announced `\bin`, a lone backslash): such bytes must not be
  /// written in front of others.
  bool complete = true;
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// Cuts RTF into tokens without copying; the input must outlive them. Never fails: line ends and NUL bytes are passed
/// over, parameters saturate at the range of int, a bad `\'` escape is dropped and what follows it kept, `\bin` takes
/// no more bytes than there are.
/// Source: Rich Text Format Specification 1.9.1, "RTF Syntax" and "Conventions of an RTF Reader".
class Tokenizer {
 public:
  explicit Tokenizer(std::string_view input) : m_input(input) {}

  Token Next();

  struct Contents {
    std::size_t end = 0;      ///< The offset of the closing brace, or of the end of the last complete token.
    std::size_t missing = 0;  ///< Closing braces that the input lacks.
  };
  /// Passes over the rest of the group that is open at this point, its end included.
  Contents SkipGroup();
  std::size_t Position() const { return m_position; }

 private:
  Token ReadControl();
  void ReadParameter(Token& token);
  void ReadBinary(Token& token);
  Token ReadHex(Token token);

  std::string_view m_input;
  std::size_t m_position = 0;
};

}  // namespace rtf
