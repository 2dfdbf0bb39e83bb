#pragma once

#include "database/dialect/Token.h"

#include <QString>

#include <span>

namespace database {

/// The tokens of a statement, read from the first to the last.
class TokenReader {
 public:
  /// `tokens` ends in End; both arguments outlive the reader.
  TokenReader(std::span<const Token> tokens, QStringView statement) : m_tokens(tokens), m_statement(statement) {}

  const Token& Peek(std::size_t ahead = 0) const;
  const Token& Take();
  /// How many were taken.
  std::size_t Position() const { return m_position; }

  bool TakeWord(QStringView word);
  bool TakeSymbol(QStringView symbol);
  /// Raise SyntaxError when the next token is another.
  void ExpectWord(QStringView word);
  void ExpectSymbol(QStringView symbol);
  /// A name: a word that is no keyword, or anything in brackets.
  QStringView ExpectName();
  bool IsName(std::size_t ahead = 0) const;

  [[noreturn]] void Fail(const QString& problem) const;

 private:
  std::span<const Token> m_tokens;
  QStringView m_statement;
  std::size_t m_position = 0;
};

}  // namespace database
