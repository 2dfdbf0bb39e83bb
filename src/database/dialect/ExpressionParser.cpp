#include "database/dialect/ExpressionParser.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr int deepestNesting = 200;
// A chain such as 1+1+1+... makes a tree as deep as it is long.
constexpr int deepestTree = 500;

ExpressionPtr Make(ExpressionKind kind, QStringView name = {}) {
  auto expression = std::make_unique<Expression>();
  expression->kind = kind;
  expression->name = name;
  return expression;
}

}  // namespace

ExpressionParser::Level::Level(ExpressionParser& parser) : m_depth(parser.m_depth) {
  if (m_depth >= deepestNesting) {
    parser.m_reader.Fail(u"hay demasiados niveles de paréntesis"_s);
  }
  ++m_depth;
}

void ExpressionParser::Append(Expression& expression, ExpressionPtr operand) {
  expression.depth = std::max(expression.depth, operand->depth + 1);
  if (expression.depth > deepestTree) {
    m_reader.Fail(u"la expresión es demasiado larga"_s);
  }
  expression.operands.push_back(std::move(operand));
}

ExpressionPtr ExpressionParser::Join(ExpressionKind kind, QStringView name, ExpressionPtr left, ExpressionPtr right) {
  ExpressionPtr expression = Make(kind, name);
  Append(*expression, std::move(left));
  Append(*expression, std::move(right));
  return expression;
}

// Long chains of OR and AND are kept flat in one node: they are common, and a deep tree would exhaust the engine.
ExpressionPtr ExpressionParser::ParseExpression() {
  const Level level(*this);
  ExpressionPtr first = ParseAnd();
  if (!m_reader.Peek().IsWord(u"OR")) {
    return first;
  }
  ExpressionPtr chain = Make(ExpressionKind::Or);
  Append(*chain, std::move(first));
  while (m_reader.TakeWord(u"OR")) {
    Append(*chain, ParseAnd());
  }
  return chain;
}

ExpressionPtr ExpressionParser::ParseAnd() {
  ExpressionPtr first = ParseNot();
  if (!m_reader.Peek().IsWord(u"AND")) {
    return first;
  }
  ExpressionPtr chain = Make(ExpressionKind::And);
  Append(*chain, std::move(first));
  while (m_reader.TakeWord(u"AND")) {
    Append(*chain, ParseNot());
  }
  return chain;
}

ExpressionPtr ExpressionParser::ParseNot() {
  if (!m_reader.TakeWord(u"NOT")) {
    return ParseComparison();
  }
  const Level level(*this);
  ExpressionPtr expression = Make(ExpressionKind::Not);
  Append(*expression, ParseNot());
  return expression;
}

ExpressionPtr ExpressionParser::ParseComparison() {
  ExpressionPtr left = ParseConcatenation();
  constexpr QStringView operators[] = {u"=", u"<>", u"<=", u">=", u"<", u">"};
  for (;;) {
    bool found = false;
    for (const QStringView symbol : operators) {
      if (m_reader.TakeSymbol(symbol)) {
        left = Join(ExpressionKind::Comparison, symbol, std::move(left), ParseConcatenation());
        found = true;
        break;
      }
    }
    if (!found) {
      return ParsePredicate(std::move(left));
    }
  }
}

// What may stand behind a value: IS [NOT] NULL, [NOT] LIKE, [NOT] IN, [NOT] BETWEEN.
ExpressionPtr ExpressionParser::ParsePredicate(ExpressionPtr left) {
  if (m_reader.TakeWord(u"IS")) {
    ExpressionPtr expression = Make(ExpressionKind::IsNull);
    expression->negated = m_reader.TakeWord(u"NOT");
    m_reader.ExpectWord(u"NULL");
    Append(*expression, std::move(left));
    return expression;
  }
  const bool negated =
      m_reader.Peek().IsWord(u"NOT") &&
      (m_reader.Peek(1).IsWord(u"LIKE") || m_reader.Peek(1).IsWord(u"IN") || m_reader.Peek(1).IsWord(u"BETWEEN")) &&
      m_reader.TakeWord(u"NOT");
  ExpressionPtr expression;
  if (m_reader.TakeWord(u"LIKE")) {
    expression = Join(ExpressionKind::Like, u"LIKE", std::move(left), ParseConcatenation());
  } else if (m_reader.TakeWord(u"IN")) {
    expression = ParseIn(std::move(left));
  } else if (m_reader.TakeWord(u"BETWEEN")) {
    expression = ParseBetween(std::move(left));
  } else {
    return left;
  }
  expression->negated = negated;
  return expression;
}

ExpressionPtr ExpressionParser::ParseIn(ExpressionPtr left) {
  ExpressionPtr expression = Make(ExpressionKind::In);
  Append(*expression, std::move(left));
  m_reader.ExpectSymbol(u"(");
  if (m_reader.Peek().IsWord(u"SELECT")) {
    expression->select = ParseSubquery();
  } else {
    do {
      Append(*expression, ParseListed());
    } while (m_reader.TakeSymbol(u","));
  }
  m_reader.ExpectSymbol(u")");
  return expression;
}

// Lists may be long, and mostly hold plain values: what could stand behind one is not looked for.
ExpressionPtr ExpressionParser::ParseListed() {
  const bool isLiteral = m_reader.Peek().literal >= 0;
  const Token& next = m_reader.Peek(1);
  return isLiteral && (next.IsSymbol(u",") || next.IsSymbol(u")")) ? ParseValue() : ParseExpression();
}

ExpressionPtr ExpressionParser::ParseBetween(ExpressionPtr left) {
  ExpressionPtr expression = Make(ExpressionKind::Between);
  Append(*expression, std::move(left));
  Append(*expression, ParseConcatenation());
  m_reader.ExpectWord(u"AND");
  Append(*expression, ParseConcatenation());
  return expression;
}

ExpressionPtr ExpressionParser::ParseConcatenation() {
  ExpressionPtr left = ParseSum();
  while (m_reader.TakeSymbol(u"&") || m_reader.TakeSymbol(u"||")) {
    left = Join(ExpressionKind::Concatenation, u"&", std::move(left), ParseSum());
  }
  return left;
}

ExpressionPtr ExpressionParser::ParseSum() {
  ExpressionPtr left = ParseProduct();
  for (;;) {
    if (m_reader.TakeSymbol(u"+")) {
      left = Join(ExpressionKind::Arithmetic, u"+", std::move(left), ParseProduct());
    } else if (m_reader.TakeSymbol(u"-")) {
      left = Join(ExpressionKind::Arithmetic, u"-", std::move(left), ParseProduct());
    } else {
      return left;
    }
  }
}

ExpressionPtr ExpressionParser::ParseProduct() {
  ExpressionPtr left = ParseSigned();
  for (;;) {
    QStringView symbol;
    if (m_reader.TakeSymbol(u"*")) {
      symbol = u"*";
    } else if (m_reader.TakeSymbol(u"/")) {
      symbol = u"/";
    } else if (m_reader.TakeSymbol(u"\\")) {
      symbol = u"\\";
    } else if (m_reader.TakeWord(u"MOD")) {
      symbol = u"MOD";
    } else {
      return left;
    }
    left = Join(ExpressionKind::Arithmetic, symbol, std::move(left), ParseSigned());
  }
}

ExpressionPtr ExpressionParser::ParseSigned() {
  if (m_reader.TakeSymbol(u"+")) {
    const Level level(*this);
    return ParseSigned();
  }
  if (!m_reader.TakeSymbol(u"-")) {
    return ParseValue();
  }
  const Level level(*this);
  ExpressionPtr expression = Make(ExpressionKind::Negation);
  Append(*expression, ParseSigned());
  return expression;
}

ExpressionPtr ExpressionParser::ParseValue() {
  const Token& token = m_reader.Peek();
  if (token.kind == TokenKind::Number || token.kind == TokenKind::Text) {
    ExpressionPtr expression = Make(ExpressionKind::Literal);
    expression->token = m_reader.Take();
    return expression;
  }
  for (const QStringView constant : {u"TRUE", u"FALSE", u"NULL"}) {
    if (m_reader.TakeWord(constant)) {
      return Make(ExpressionKind::Constant, constant);
    }
  }
  if (m_reader.TakeSymbol(u"(")) {
    return ParseParenthesis();
  }
  if (m_reader.TakeWord(u"EXISTS")) {
    ExpressionPtr expression = Make(ExpressionKind::Exists);
    m_reader.ExpectSymbol(u"(");
    expression->select = ParseSubquery();
    m_reader.ExpectSymbol(u")");
    return expression;
  }
  if (token.kind == TokenKind::Word && m_reader.Peek(1).IsSymbol(u"(")) {
    return ParseCall();
  }
  return ParseColumn();
}

ExpressionPtr ExpressionParser::ParseParenthesis() {
  ExpressionPtr expression;
  if (m_reader.Peek().IsWord(u"SELECT")) {
    expression = Make(ExpressionKind::Query);
    expression->select = ParseSubquery();
  } else {
    expression = ParseExpression();
  }
  m_reader.ExpectSymbol(u")");
  return expression;
}

ExpressionPtr ExpressionParser::ParseCall() {
  ExpressionPtr expression = Make(ExpressionKind::Call, m_reader.Take().text);
  m_reader.ExpectSymbol(u"(");
  expression->distinct = m_reader.TakeWord(u"DISTINCT");
  if (m_reader.TakeSymbol(u"*")) {
    expression->star = true;
  } else if (!m_reader.Peek().IsSymbol(u")")) {
    do {
      Append(*expression, ParseExpression());
    } while (m_reader.TakeSymbol(u","));
  }
  m_reader.ExpectSymbol(u")");
  return expression;
}

ExpressionPtr ExpressionParser::ParseColumn() {
  ExpressionPtr expression = Make(ExpressionKind::ColumnName, m_reader.ExpectName());
  if (m_reader.TakeSymbol(u".")) {
    expression->qualifier = std::exchange(expression->name, m_reader.ExpectName());
  }
  return expression;
}

}  // namespace database
