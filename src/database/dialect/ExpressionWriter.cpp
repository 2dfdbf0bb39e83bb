#include "database/dialect/ExpressionWriter.h"

#include "database/Errors.h"

#include <array>
#include <charconv>
#include <span>

using namespace Qt::StringLiterals;

namespace database {

namespace {

QString Call(QStringView function, const QString& argument) {
  return u"%1(%2)"_s.arg(function, argument);
}

QString Collated(const QString& sql) {
  return u"(%1 COLLATE %2)"_s.arg(sql, engine::collation);
}

Fragment Predicate(QString sql) {
  Fragment fragment;
  fragment.sql = std::move(sql);
  fragment.type = ValueType::Boolean;
  fragment.isPredicate = true;
  return fragment;
}

Fragment TextExpression(const QString& sql) {
  Fragment fragment;
  fragment.sql = Collated(sql);
  fragment.type = ValueType::Text;
  fragment.isCollated = true;
  return fragment;
}

Fragment NumberExpression(QString sql, ValueType type = ValueType::Number) {
  Fragment fragment;
  fragment.sql = std::move(sql);
  fragment.type = type;
  return fragment;
}

// A literal, perhaps with signs in front.
const Token* LiteralOf(const Expression& expression, bool& negated) {
  const Expression* inner = &expression;
  negated = false;
  while (inner->kind == ExpressionKind::Negation) {
    negated = !negated;
    inner = inner->operands.front().get();
  }
  return inner->kind == ExpressionKind::Literal ? &inner->token : nullptr;
}

bool IsLiteral(const Expression& expression) {
  bool negated = false;
  return LiteralOf(expression, negated) != nullptr;
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

QStringView StoringFunction(ColumnType type) {
  switch (ConversionFor(type)) {
    case Conversion::Text:
      return engine::toText;
    case Conversion::Boolean:
      return engine::toBoolean;
    case Conversion::Decimal:
      return engine::toDecimal;
    case Conversion::Money:
      return engine::toMoney;
    default:
      return engine::toInteger;
  }
}

// Fills a function's form; what an argument holds is not looked at again.
QString Filled(QStringView form, const QStringList& arguments) {
  QString sql;
  for (qsizetype i = 0; i < form.size(); ++i) {
    if (form[i] != u'%') {
      sql += form[i];
      continue;
    }
    const QChar which = form[++i];
    sql += which == u'*' ? arguments.join(u", "_s) : arguments[which.digitValue() - 1];
  }
  return sql;
}

// The terms of a long chain as a balanced tree, whose depth the engine takes.
QString Balanced(std::span<const QString> terms, QStringView word) {
  if (terms.size() == 1) {
    return terms.front();
  }
  const std::size_t half = terms.size() / 2;
  return u"(%1 %2 %3)"_s.arg(Balanced(terms.first(half), word), word, Balanced(terms.subspan(half), word));
}

}  // namespace

QString QuotedName(QStringView name) {
  QString quoted = name.toString();
  quoted.replace(u'"', u"\"\""_s);
  return u'"' + quoted + u'"';
}

QString ExpressionWriter::Bind(const Token& literal, bool negated, Conversion conversion, const Column* column) {
  m_plan.bindings.push_back({literal.literal, negated, conversion, column == nullptr ? QString() : column->name});
  std::array<char, 24> text = {'?'};
  const char* end = std::to_chars(text.begin() + 1, text.end(), m_plan.bindings.size()).ptr;
  return QString::fromLatin1(text.data(), end - text.data());
}

QString ExpressionWriter::WriteCondition(const Expression& expression, const Scope& scope) {
  return Write(expression, scope).sql;
}

Fragment ExpressionWriter::WriteValue(const Expression& expression, const Scope& scope) {
  Fragment fragment = Write(expression, scope);
  if (fragment.isPredicate) {
    fragment.sql = u"(-%1)"_s.arg(fragment.sql);
    fragment.isPredicate = false;
  }
  return fragment;
}

QString ExpressionWriter::WriteStored(const Expression& expression, const Column& column, const Scope& scope) {
  bool negated = false;
  if (const Token* literal = LiteralOf(expression, negated)) {
    return Bind(*literal, negated, ConversionFor(column.type), &column);
  }
  if (expression.kind == ExpressionKind::Constant) {
    return WriteConstant(expression).sql;
  }
  return WriteStored(WriteValue(expression, scope), column);
}

QString ExpressionWriter::WriteStored(const Fragment& value, const Column& column) const {
  const bool sameKind = value.column != nullptr && ConversionFor(value.column->type) == ConversionFor(column.type);
  const bool bothText = value.type == ValueType::Text && !IsNumericType(column.type);
  return sameKind || bothText ? value.sql : Call(StoringFunction(column.type), value.sql);
}

Fragment ExpressionWriter::Write(const Expression& expression, const Scope& scope) {
  switch (expression.kind) {
    case ExpressionKind::Literal: {
      Fragment fragment = NumberExpression(Bind(expression.token, false, Conversion::Verbatim));
      fragment.type = IsTextLiteral(expression) ? ValueType::Text : ValueType::Number;
      return fragment;
    }
    case ExpressionKind::Constant:
      return WriteConstant(expression);
    case ExpressionKind::ColumnName:
      return WriteColumn(expression, scope);
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
      return Predicate(u"(%1 IS %2NULL)"_s.arg(WriteValue(*expression.operands.front(), scope).sql,
                                               expression.negated ? u"NOT "_s : QString()));
    case ExpressionKind::And:
      return WriteChain(expression, u"AND", scope);
    case ExpressionKind::Or:
      return WriteChain(expression, u"OR", scope);
    case ExpressionKind::Not:
      return Predicate(u"(NOT %1)"_s.arg(WriteCondition(*expression.operands.front(), scope)));
    case ExpressionKind::Call:
      return WriteCall(expression, scope);
    case ExpressionKind::Query:
      return WriteSubquery(*expression.select, scope);
    case ExpressionKind::Exists:
      return Predicate(u"EXISTS %1"_s.arg(WriteSubquery(*expression.select, scope).sql));
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

Fragment ExpressionWriter::WriteColumn(const Expression& expression, const Scope& scope) {
  const Scope::Found found = scope.Resolve(expression.qualifier, expression.name);
  Fragment fragment;
  fragment.sql = QuotedName(found.source->name) + u'.' + QuotedName(found.column->name);
  fragment.column = found.column;
  fragment.type = ValueTypeOf(found.column->type);
  fragment.isCollated = fragment.type == ValueType::Text;
  return fragment;
}

Fragment ExpressionWriter::WriteNegation(const Expression& expression, const Scope& scope) {
  bool negated = false;
  if (const Token* literal = LiteralOf(expression, negated)) {
    return NumberExpression(Bind(*literal, negated, Conversion::Number));
  }
  const Fragment operand = WriteNumber(*expression.operands.front(), scope);
  return NumberExpression(u"(- %1)"_s.arg(operand.sql),
                          operand.type == ValueType::Money ? ValueType::Money : ValueType::Number);
}

// An operand of arithmetic: a text in it is the number that it means.
Fragment ExpressionWriter::WriteNumber(const Expression& expression, const Scope& scope) {
  bool negated = false;
  if (const Token* literal = LiteralOf(expression, negated)) {
    return NumberExpression(Bind(*literal, negated, Conversion::Number));
  }
  Fragment fragment = WriteValue(expression, scope);
  if (fragment.type == ValueType::Text || (fragment.type == ValueType::Unknown && fragment.sql != u"NULL")) {
    return NumberExpression(Call(engine::toNumber, fragment.sql));
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
    return TextExpression(u"(%1 || %2)"_s.arg(WriteValue(first, scope).sql, WriteValue(second, scope).sql));
  }
  const Fragment left = WriteNumber(first, scope);
  const Fragment right = WriteNumber(second, scope);
  if (symbol == u"/") {
    return NumberExpression(u"(%1 * 1.0 / %2)"_s.arg(left.sql, right.sql));
  }
  if (symbol == u"\\" || symbol == u"MOD") {
    return NumberExpression(u"(%1 %2 %3)"_s.arg(Call(engine::toInteger, left.sql), symbol == u"MOD" ? u"%"_s : u"/"_s,
                                                Call(engine::toInteger, right.sql)));
  }
  const bool isMoney = left.type == ValueType::Money || right.type == ValueType::Money;
  return NumberExpression(u"(%1 %2 %3)"_s.arg(left.sql, symbol, right.sql),
                          isMoney ? ValueType::Money : ValueType::Number);
}

// Null counts as an empty text in a concatenation.
QString ExpressionWriter::WriteText(const Expression& expression, const Scope& scope) {
  bool negated = false;
  if (const Token* literal = LiteralOf(expression, negated)) {
    return Bind(*literal, negated, Conversion::Text);
  }
  const Fragment fragment = WriteValue(expression, scope);
  return fragment.type == ValueType::Text ? fragment.sql : Call(engine::toText, fragment.sql);
}

Fragment ExpressionWriter::WriteConcatenation(const Expression& expression, const Scope& scope) {
  return TextExpression(u"(coalesce(%1, '') || coalesce(%2, ''))"_s.arg(WriteText(*expression.operands[0], scope),
                                                                        WriteText(*expression.operands[1], scope)));
}

// One side of a comparison whose other side is written already.
QString ExpressionWriter::WriteCompared(const Expression& expression, const Fragment& other, const Scope& scope) {
  bool negated = false;
  if (const Token* literal = LiteralOf(expression, negated)) {
    return Bind(*literal, negated, ConversionBeside(other.type), other.column);
  }
  const Fragment fragment = WriteValue(expression, scope);
  const bool needsCollation = fragment.type == ValueType::Text && !fragment.isCollated && !other.isCollated;
  return needsCollation ? Collated(fragment.sql) : fragment.sql;
}

Fragment ExpressionWriter::WriteComparison(const Expression& expression, const Scope& scope) {
  const Expression& first = WithoutCaseFolding(*expression.operands[0]);
  const Expression& second = WithoutCaseFolding(*expression.operands[1]);
  const bool firstIsLiteral = IsLiteral(first) && !IsLiteral(second);
  const Expression& written = firstIsLiteral ? second : first;
  const Expression& compared = firstIsLiteral ? first : second;
  Fragment left = WriteValue(written, scope);
  QString right = WriteCompared(compared, left, scope);
  if (left.type == ValueType::Text && !left.isCollated) {
    left.sql = Collated(left.sql);
  }
  if (firstIsLiteral) {
    std::swap(left.sql, right);
  }
  return Predicate(u"(%1 %2 %3)"_s.arg(left.sql, expression.name, right));
}

Fragment ExpressionWriter::WriteLike(const Expression& expression, const Scope& scope) {
  const QString left = WriteText(WithoutCaseFolding(*expression.operands[0]), scope);
  const QString right = WriteText(WithoutCaseFolding(*expression.operands[1]), scope);
  return Predicate(u"(%1 %2LIKE %3)"_s.arg(left, expression.negated ? u"NOT "_s : QString(), right));
}

Fragment ExpressionWriter::WriteIn(const Expression& expression, const Scope& scope) {
  Fragment left = WriteValue(WithoutCaseFolding(*expression.operands.front()), scope);
  if (left.type == ValueType::Text && !left.isCollated) {
    left.sql = Collated(left.sql);
  }
  QString set;
  if (expression.select != nullptr) {
    set = WriteSubquery(*expression.select, scope).sql;
  } else {
    for (std::size_t i = 1; i < expression.operands.size(); ++i) {
      set += i == 1 ? u'(' : u',';
      set += WriteCompared(*expression.operands[i], left, scope);
    }
    set += u')';
  }
  const QString word = expression.negated ? u"NOT IN"_s : u"IN"_s;
  return Predicate(u"(%1 %2 "_s.arg(left.sql, word) + set + u')');
}

Fragment ExpressionWriter::WriteBetween(const Expression& expression, const Scope& scope) {
  Fragment value = WriteValue(WithoutCaseFolding(*expression.operands[0]), scope);
  if (value.type == ValueType::Text && !value.isCollated) {
    value.sql = Collated(value.sql);
  }
  const QString low = WriteCompared(*expression.operands[1], value, scope);
  const QString high = WriteCompared(*expression.operands[2], value, scope);
  const QString word = expression.negated ? u"NOT BETWEEN"_s : u"BETWEEN"_s;
  return Predicate(u"(%1 %2 %3 AND %4)"_s.arg(value.sql, word, low, high));
}

Fragment ExpressionWriter::WriteChain(const Expression& expression, QStringView word, const Scope& scope) {
  std::vector<QString> terms;
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
  std::vector<Fragment> arguments;
  for (const ExpressionPtr& operand : expression.operands) {
    arguments.push_back(function->takesNumbers ? WriteNumber(*operand, scope) : WriteValue(*operand, scope));
  }
  return FinishCall(*function, expression, std::move(arguments));
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
        argument.sql = Call(engine::toText, argument.sql);
      }
    }
  }
  if ((function.isAggregate || function.takesNumbers) && type == ValueType::Boolean) {
    type = ValueType::Number;
  }
  QStringList all;
  for (const Fragment& argument : arguments) {
    all += argument.sql;
  }
  if (call.distinct) {
    all.first().prepend(u"DISTINCT "_s);
  }
  QString sql;
  if (function.name == u"SUM" && type == ValueType::Money) {
    sql = Call(engine::sumMoney, all.first());
  } else {
    sql = Filled(function.sql, all);
  }
  return type == ValueType::Text ? TextExpression(sql) : NumberExpression(sql, type);
}

}  // namespace database
