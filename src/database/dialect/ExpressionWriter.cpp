#include "database/dialect/ExpressionWriter.h"

#include "database/Errors.h"

#include <span>
#include <utility>

using namespace Qt::StringLiterals;

namespace database {

namespace {

Fragment Predicate(SqlText sql) {
  Fragment fragment;
  fragment.sql = std::move(sql);
  fragment.type = ValueType::Boolean;
  fragment.isPredicate = true;
  return fragment;
}

Fragment NumberExpression(SqlText sql, ValueType type = ValueType::Number) {
  Fragment fragment;
  fragment.sql = std::move(sql);
  fragment.type = type;
  return fragment;
}

// A literal as a parameter; `column` is for error texts.
SqlText Bind(Expression::SignedLiteral literal, Conversion conversion, const Column* column = nullptr,
             ParameterKind textKind = ParameterKind::Text) {
  const bool isText =
      conversion == Conversion::Text || (conversion == Conversion::Verbatim && literal.token->kind == TokenKind::Text);
  return SqlText::Parameter(
      {literal.token->literal, literal.negated, conversion, isText ? textKind : ParameterKind::Number, column});
}

bool IsLiteral(const Expression& expression) {
  return expression.AsLiteral().token != nullptr;
}

bool IsTextLiteral(const Expression& expression) {
  return expression.kind == ExpressionKind::Literal && expression.token.kind == TokenKind::Text;
}

// Text compares without regard to case, so a change of case on either side has no effect; without it an index
// can serve the comparison.
const Expression& WithoutCaseFolding(const Expression& expression) {
  const Expression* inner = &expression;
  while (inner->kind == ExpressionKind::Call && inner->operands.size() == 1) {
    const Function* function = FindFunction(inner->name, 1);
    if (function == nullptr || !function->foldsCase) {
      break;
    }
    inner = inner->operands.front().get();
  }
  return *inner;
}

Conversion ConversionBeside(ValueType type) {
  switch (type) {
    case ValueType::Text:
      return Conversion::Text;
    case ValueType::Unknown:
      return Conversion::Verbatim;
    default:
      return Conversion::Number;
  }
}

// The terms of a long chain as a balanced tree, whose depth an engine takes.
SqlText Balanced(std::span<const SqlText> terms, QStringView word) {
  if (terms.size() == 1) {
    return terms.front();
  }
  const std::size_t half = terms.size() / 2;
  return SqlText::Filled(u"(%1 %2 %3)",
                         {Balanced(terms.first(half), word), word.toString(), Balanced(terms.subspan(half), word)});
}

SqlText PerhapsNot(bool negated, const QString& word) {
  return negated ? u"NOT "_s + word : word;
}

}  // namespace

Fragment ExpressionWriter::TextExpression(const SqlText& sql) const {
  Fragment fragment;
  fragment.sql = m_target.Collated(sql);
  fragment.type = ValueType::Text;
  fragment.isCollated = true;
  return fragment;
}

SqlText ExpressionWriter::WriteCondition(const Expression& expression, const Scope& scope) {
  Fragment fragment = Write(expression, scope);
  return fragment.isPredicate ? std::move(fragment.sql) : m_target.ConditionOf(fragment);
}

Fragment ExpressionWriter::WriteValue(const Expression& expression, const Scope& scope) {
  Fragment fragment = Write(expression, scope);
  if (fragment.isPredicate) {
    fragment.sql = m_target.ValueOf(fragment.sql);
    fragment.isPredicate = false;
  }
  return fragment;
}

SqlText ExpressionWriter::WriteStored(const Expression& expression, const Column& column, const Scope& scope) {
  if (const auto literal = expression.AsLiteral(); literal.token != nullptr) {
    return Bind(literal, ConversionFor(column.type), &column);
  }
  if (expression.kind == ExpressionKind::Constant) {
    return WriteConstant(expression).sql;
  }
  return WriteStored(WriteValue(expression, scope), column);
}

SqlText ExpressionWriter::WriteStored(const Fragment& value, const Column& column) const {
  const bool sameKind = value.column != nullptr && ConversionFor(value.column->type) == ConversionFor(column.type);
  const bool bothText = value.type == ValueType::Text && !IsNumericType(column.type);
  return sameKind || bothText ? value.sql : m_target.Converted(value, ConversionFor(column.type));
}

Fragment ExpressionWriter::Write(const Expression& expression, const Scope& scope) {
  switch (expression.kind) {
    case ExpressionKind::Literal:
      return WriteLiteral(expression);
    case ExpressionKind::Constant:
      return WriteConstant(expression);
    case ExpressionKind::ColumnName: {
      const Scope::Found found = scope.Resolve(expression.qualifier, expression.name);
      return WriteColumn(*found.source, *found.column);
    }
    case ExpressionKind::Negation:
      return WriteNegation(expression, scope);
    case ExpressionKind::Arithmetic:
      return WriteArithmetic(expression, scope);
    case ExpressionKind::Concatenation:
      return WriteConcatenation(expression, scope);
    case ExpressionKind::Comparison:
      return WriteComparison(expression, scope);
    case ExpressionKind::Like:
      return WriteLike(expression, scope);
    case ExpressionKind::In:
      return WriteIn(expression, scope);
    case ExpressionKind::Between:
      return WriteBetween(expression, scope);
    case ExpressionKind::IsNull:
      return Predicate(SqlText::Filled(u"(%1 IS %2)", {WriteValue(*expression.operands.front(), scope).sql,
                                                       PerhapsNot(expression.negated, u"NULL"_s)}));
    case ExpressionKind::And:
      return WriteChain(expression, u"AND", scope);
    case ExpressionKind::Or:
      return WriteChain(expression, u"OR", scope);
    case ExpressionKind::Not:
      return Predicate(SqlText::Filled(u"(NOT %1)", {WriteCondition(*expression.operands.front(), scope)}));
    case ExpressionKind::Call:
      return WriteCall(expression, scope);
    case ExpressionKind::Query:
      return WriteSubquery(*expression.select, scope);
    case ExpressionKind::Exists:
      return Predicate(SqlText::Filled(u"EXISTS %1", {WriteSubquery(*expression.select, scope).sql}));
  }
  Q_UNREACHABLE();
}

Fragment ExpressionWriter::WriteConstant(const Expression& expression) const {
  Fragment fragment;
  if (expression.name == u"NULL") {
    fragment.sql = u"NULL"_s;
    return fragment;
  }
  fragment.sql = expression.name == u"TRUE" ? u"-1"_s : u"0"_s;
  fragment.type = ValueType::Boolean;
  return fragment;
}

Fragment ExpressionWriter::WriteLiteral(const Expression& expression) const {
  return NumberExpression(Bind(expression.AsLiteral(), Conversion::Verbatim),
                          IsTextLiteral(expression) ? ValueType::Text : ValueType::Number);
}

Fragment ExpressionWriter::WriteColumn(const Scope::Source& source, const Column& column) const {
  Fragment fragment;
  fragment.sql = m_target.Name(source.name) + u'.' + m_target.Name(column.name);
  fragment.column = &column;
  fragment.type = ValueTypeOf(column.type);
  fragment.isCollated = fragment.type == ValueType::Text;
  return fragment;
}

Fragment ExpressionWriter::WriteNegation(const Expression& expression, const Scope& scope) {
  if (const auto literal = expression.AsLiteral(); literal.token != nullptr) {
    return NumberExpression(Bind(literal, Conversion::Number));
  }
  const Fragment operand = WriteNumber(*expression.operands.front(), scope);
  return NumberExpression(SqlText::Filled(u"(- %1)", {operand.sql}),
                          operand.type == ValueType::Money ? ValueType::Money : ValueType::Number);
}

// An operand of arithmetic: a text in it is the number that it means.
Fragment ExpressionWriter::WriteNumber(const Expression& expression, const Scope& scope) {
  if (const auto literal = expression.AsLiteral(); literal.token != nullptr) {
    return NumberExpression(Bind(literal, Conversion::Number));
  }
  Fragment fragment = WriteValue(expression, scope);
  if (fragment.type == ValueType::Text || fragment.type == ValueType::Unknown) {
    return NumberExpression(m_target.Converted(fragment, Conversion::Number));
  }
  return fragment;
}

// Whether a plus joins texts or adds numbers must be known before its operands are written.
ValueType ExpressionWriter::TypeOf(const Expression& expression, const Scope& scope) const {
  switch (expression.kind) {
    case ExpressionKind::Literal:
      return IsTextLiteral(expression) ? ValueType::Text : ValueType::Number;
    case ExpressionKind::ColumnName:
      return ValueTypeOf(scope.Resolve(expression.qualifier, expression.name).column->type);
    case ExpressionKind::Concatenation:
      return ValueType::Text;
    case ExpressionKind::Call:
      return TypeOfCall(expression, scope);
    case ExpressionKind::Constant:
      return expression.name == u"NULL" ? ValueType::Unknown : ValueType::Boolean;
    case ExpressionKind::Arithmetic: {
      const bool joinsTexts = expression.name == u"+" && TypeOf(*expression.operands[0], scope) == ValueType::Text &&
                              TypeOf(*expression.operands[1], scope) == ValueType::Text;
      return joinsTexts ? ValueType::Text : ValueType::Number;
    }
    default:
      return ValueType::Number;
  }
}

ValueType ExpressionWriter::TypeOfCall(const Expression& expression, const Scope& scope) const {
  const Function* function = FindFunction(expression.name, std::ssize(expression.operands));
  if (function == nullptr || function->takesNumbers || function->result == Function::Result::Number) {
    return ValueType::Number;
  }
  ValueType type = ValueType::Unknown;
  for (std::size_t i = static_cast<std::size_t>(function->firstAlike); i < expression.operands.size(); ++i) {
    type = CommonType(type, TypeOf(*expression.operands[i], scope));
  }
  return function->result == Function::Result::Text ? ValueType::Text : type;
}

Fragment ExpressionWriter::WriteArithmetic(const Expression& expression, const Scope& scope) {
  const QStringView symbol = expression.name;
  const Expression& first = *expression.operands[0];
  const Expression& second = *expression.operands[1];
  if (TypeOf(expression, scope) == ValueType::Text) {
    return TextExpression(m_target.Joined(WriteValue(first, scope).sql, WriteValue(second, scope).sql));
  }
  const Fragment left = WriteNumber(first, scope);
  const Fragment right = WriteNumber(second, scope);
  if (symbol == u"/") {
    return NumberExpression(m_target.Quotient(Target::Division::Decimal, left.sql, right.sql));
  }
  if (symbol == u"\\" || symbol == u"MOD") {
    const Target::Division division = symbol == u"MOD" ? Target::Division::Remainder : Target::Division::Whole;
    return NumberExpression(m_target.Quotient(division, m_target.Converted(left, Conversion::Integer),
                                              m_target.Converted(right, Conversion::Integer)));
  }
  const bool isMoney = left.type == ValueType::Money || right.type == ValueType::Money;
  return NumberExpression(SqlText::Filled(u"(%1 %2 %3)", {left.sql, symbol.toString(), right.sql}),
                          isMoney ? ValueType::Money : ValueType::Number);
}

SqlText ExpressionWriter::WriteText(const Expression& expression, const Scope& scope, ParameterKind kind) {
  if (const auto literal = expression.AsLiteral(); literal.token != nullptr) {
    return Bind(literal, Conversion::Text, nullptr, kind);
  }
  const Fragment fragment = WriteValue(expression, scope);
  return fragment.type == ValueType::Text ? fragment.sql : m_target.Converted(fragment, Conversion::Text);
}

Fragment ExpressionWriter::WriteConcatenation(const Expression& expression, const Scope& scope) {
  return TextExpression(
      m_target.Concatenated(WriteText(*expression.operands[0], scope), WriteText(*expression.operands[1], scope)));
}

// The side of a comparison that decides how the others are written.
Fragment ExpressionWriter::WriteComparable(const Expression& expression, const Scope& scope) {
  Fragment fragment = WriteValue(expression, scope);
  return fragment.type == ValueType::Text && !fragment.isCollated ? TextExpression(fragment.sql) : fragment;
}

// One side of a comparison whose other side is written already.
SqlText ExpressionWriter::WriteCompared(const Expression& expression, const Fragment& other, const Scope& scope) {
  if (const auto literal = expression.AsLiteral(); literal.token != nullptr) {
    return Bind(literal, ConversionBeside(other.type), other.column);
  }
  const Fragment fragment = WriteValue(expression, scope);
  const bool needsCollation = fragment.type == ValueType::Text && !fragment.isCollated && !other.isCollated;
  return needsCollation ? m_target.Collated(fragment.sql) : fragment.sql;
}

Fragment ExpressionWriter::WriteComparison(const Expression& expression, const Scope& scope) {
  const Expression& first = WithoutCaseFolding(*expression.operands[0]);
  const Expression& second = WithoutCaseFolding(*expression.operands[1]);
  const bool firstIsLiteral = IsLiteral(first) && !IsLiteral(second);
  const Fragment written = WriteComparable(firstIsLiteral ? second : first, scope);
  const SqlText compared = WriteCompared(firstIsLiteral ? first : second, written, scope);
  const SqlText symbol = expression.name.toString();
  return Predicate(firstIsLiteral ? SqlText::Filled(u"(%1 %2 %3)", {compared, symbol, written.sql})
                                  : SqlText::Filled(u"(%1 %2 %3)", {written.sql, symbol, compared}));
}

Fragment ExpressionWriter::WriteLike(const Expression& expression, const Scope& scope) {
  const SqlText text = WriteText(WithoutCaseFolding(*expression.operands[0]), scope);
  const SqlText pattern = WriteText(WithoutCaseFolding(*expression.operands[1]), scope, ParameterKind::Pattern);
  return Predicate(m_target.Like(text, pattern, expression.negated));
}

Fragment ExpressionWriter::WriteIn(const Expression& expression, const Scope& scope) {
  const Fragment left = WriteComparable(WithoutCaseFolding(*expression.operands.front()), scope);
  SqlText sql = SqlText::Filled(u"(%1 %2 ", {left.sql, PerhapsNot(expression.negated, u"IN"_s)});
  if (expression.select != nullptr) {
    sql += WriteSubquery(*expression.select, scope).sql;
  } else {
    for (std::size_t i = 1; i < expression.operands.size(); ++i) {
      sql += i == 1 ? u"(" : u",";
      sql += WriteCompared(*expression.operands[i], left, scope);
    }
    sql += u")";
  }
  sql += u")";
  return Predicate(std::move(sql));
}

Fragment ExpressionWriter::WriteBetween(const Expression& expression, const Scope& scope) {
  const Fragment value = WriteComparable(WithoutCaseFolding(*expression.operands[0]), scope);
  return Predicate(SqlText::Filled(u"(%1 %2 %3 AND %4)", {value.sql, PerhapsNot(expression.negated, u"BETWEEN"_s),
                                                          WriteCompared(*expression.operands[1], value, scope),
                                                          WriteCompared(*expression.operands[2], value, scope)}));
}

Fragment ExpressionWriter::WriteChain(const Expression& expression, QStringView word, const Scope& scope) {
  std::vector<SqlText> terms;
  for (const ExpressionPtr& operand : expression.operands) {
    terms.push_back(WriteCondition(*operand, scope));
  }
  return Predicate(Balanced(terms, word));
}

void ExpressionWriter::FailCall(const Expression& call) const {
  const qsizetype position = call.name.data() - m_statement.data();
  throw SyntaxErrorAt(
      IsFunctionName(call.name) ? u"la función no lleva ese número de argumentos"_s : u"no se conoce la función"_s,
      m_statement, position);
}

Fragment ExpressionWriter::WriteCall(const Expression& expression, const Scope& scope) {
  if (expression.star) {
    if (expression.name.compare(u"COUNT", Qt::CaseInsensitive) != 0) {
      FailCall(expression);
    }
    return NumberExpression(u"count(*)"_s);
  }
  const Function* function = FindFunction(expression.name, std::ssize(expression.operands));
  if (function == nullptr || (expression.distinct && !function->isAggregate)) {
    FailCall(expression);
  }
  return FinishCall(*function, expression, WriteArguments(*function, expression, scope));
}

std::vector<Fragment> ExpressionWriter::WriteArguments(const Function& function, const Expression& call,
                                                       const Scope& scope) {
  std::vector<Fragment> arguments;
  for (const ExpressionPtr& operand : call.operands) {
    if (std::ssize(arguments) < function.firstAlike) {
      arguments.push_back(Predicate(WriteCondition(*operand, scope)));
    } else if (function.takesText && arguments.empty()) {
      arguments.push_back(NumberExpression(WriteText(*operand, scope), ValueType::Text));
    } else {
      arguments.push_back(function.takesNumbers ? WriteNumber(*operand, scope) : WriteValue(*operand, scope));
    }
  }
  return arguments;
}

Fragment ExpressionWriter::FinishCall(const Function& function, const Expression& call,
                                      std::vector<Fragment> arguments) const {
  ValueType type = function.result == Function::Result::Text ? ValueType::Text : ValueType::Number;
  if (function.result == Function::Result::Common) {
    const std::span<Fragment> alike = std::span(arguments).subspan(static_cast<std::size_t>(function.firstAlike));
    type = ValueType::Unknown;
    for (const Fragment& argument : alike) {
      type = CommonType(type, argument.type);
    }
    for (Fragment& argument : alike) {
      if (type == ValueType::Text && argument.type != ValueType::Text) {
        argument.sql = m_target.Converted(argument, Conversion::Text);
      }
    }
  }
  if ((function.isAggregate || function.takesNumbers) && type == ValueType::Boolean) {
    type = ValueType::Number;
  }
  std::vector<SqlText> all;
  for (Fragment& argument : arguments) {
    all.push_back(std::move(argument.sql));
  }
  if (call.distinct) {
    all.front() = SqlText::Filled(u"DISTINCT %1", {all.front()});
  }
  SqlText sql = SqlText::Filled(m_target.Form(function, type), all);
  return type == ValueType::Text ? TextExpression(sql) : NumberExpression(std::move(sql), type);
}

}  // namespace database
