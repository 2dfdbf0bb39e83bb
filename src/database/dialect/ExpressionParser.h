#pragma once

#include "database/dialect/Ast.h"
#include "database/dialect/TokenReader.h"

namespace database {

/// Reads expressions, from OR (binds weakest) down to a single value. Raises SyntaxError, also for an expression
/// nested deeper than any program writes, so that a hostile text cannot exhaust the stack.
class ExpressionParser {
 public:
  explicit ExpressionParser(TokenReader& reader) : m_reader(reader) {}
  ExpressionParser(const ExpressionParser&) = delete;
  ExpressionParser& operator=(const ExpressionParser&) = delete;
  virtual ~ExpressionParser() = default;

  ExpressionPtr ParseExpression();

 protected:
  /// A SELECT between parentheses; the statement parser knows how.
  virtual std::unique_ptr<Select> ParseSubquery() = 0;

  /// Counts the levels of nesting while it lives.
  class Level {
   public:
    explicit Level(ExpressionParser& parser);
    ~Level() { --m_depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    int& m_depth;
  };

  TokenReader& m_reader;

 private:
  /// Makes `operand` the last operand of `expression`.
  void Append(Expression& expression, ExpressionPtr operand);
  ExpressionPtr Join(ExpressionKind kind, QStringView name, ExpressionPtr left, ExpressionPtr right);
  ExpressionPtr ParseAnd();
  ExpressionPtr ParseNot();
  ExpressionPtr ParseComparison();
  ExpressionPtr ParsePredicate(ExpressionPtr left);
  ExpressionPtr ParseIn(ExpressionPtr left);
  ExpressionPtr ParseListed();
  ExpressionPtr ParseBetween(ExpressionPtr left);
  ExpressionPtr ParseConcatenation();
  ExpressionPtr ParseSum();
  ExpressionPtr ParseProduct();
  ExpressionPtr ParseSigned();
  ExpressionPtr ParseValue();
  ExpressionPtr ParseParenthesis();
  ExpressionPtr ParseCall();
  ExpressionPtr ParseColumn();

  int m_depth = 0;
};

}  // namespace database
