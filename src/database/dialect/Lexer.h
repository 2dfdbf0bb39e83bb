#pragma once

#include "database/dialect/Token.h"

#include <string>
#include <vector>

namespace database {

/// Cuts a statement of the dialect into tokens and lifts its literals out.
///
/// A number ends at the first character that cannot continue it, so a keyword may be glued to it (`=35GROUP BY`,
/// `5AND`, `5.ORDER`); an E belongs to it only before a digit or a sign and a digit. Texts stand between single
/// or double quotes, the quote itself doubled inside. Names are letters, digits and underscores of any script, or
/// anything between brackets.
///
/// The object keeps its memory from one statement to the next, because every statement passes here.
class Lexer {
 public:
  /// Cuts `statement`, which must outlive the tokens. Raises SyntaxError for a text or a bracket that never ends
  /// and for a character that the dialect does not have.
  void Read(QStringView statement);

  /// The tokens, End the last.
  const std::vector<Token>& Tokens() const { return m_tokens; }
  /// Literal tokens in order.
  const std::vector<Token>& Literals() const { return m_literals; }
  /// The statement with every literal replaced by a mark of its kind: equal for statements that differ only in
  /// the values written into them.
  const std::u16string& Shape() const { return m_shape; }

 private:
  void ReadToken();
  bool FollowsName() const;
  void ReadWord();
  void ReadNumber();
  void ReadText(QChar quote);
  void ReadBracketName();
  void ReadSymbol();
  void Add(TokenKind kind, qsizetype first, qsizetype last);
  void AddLiteral(TokenKind kind, qsizetype first, qsizetype last, char16_t mark);
  QChar At(qsizetype position) const { return position < m_text.size() ? m_text[position] : QChar(); }

  QStringView m_text;
  qsizetype m_position = 0;
  qsizetype m_copied = 0;
  std::vector<Token> m_tokens;
  std::vector<Token> m_literals;
  std::u16string m_shape;
};

}  // namespace database
