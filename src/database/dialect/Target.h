#pragma once

#include "database/dialect/Fragment.h"
#include "database/dialect/Functions.h"

#include <span>

namespace database {

/// What an engine's statements say otherwise than another's: the writers of expressions and statements know the dialect
/// and ask the target for everything else. Where a piece stands for an expression, it is one already: a name, a
/// parameter, a call, or between parentheses; what is given back must be one, too.
class Target {
 public:
  Target() = default;
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;
  virtual ~Target() = default;

  /// Appends the parameter with that number, from 1 in the order of the text.
  virtual void AppendParameter(QString& sql, std::size_t number, ParameterKind kind) const = 0;
  /// Whether one parameter can stand at several places.
  virtual bool NumbersParameters() const = 0;
  /// The name of a table, a column or an alias, quoted.
  virtual QString Name(QStringView name) const = 0;

  /// A condition as a value of the dialect, -1 or 0.
  virtual SqlText ValueOf(const SqlText& condition) const = 0;
  /// A value of the dialect as a condition.
  virtual SqlText ConditionOf(const Fragment& value) const = 0;

  /// A text expression that compares by Spanish rules.
  virtual SqlText Collated(const SqlText& text) const = 0;
  /// Two texts as one, Null with any.
  virtual SqlText Joined(const SqlText& first, const SqlText& second) const = 0;
  /// Two texts as one, a Null among them as an empty text.
  virtual SqlText Concatenated(const SqlText& first, const SqlText& second) const = 0;
  /// A condition: `%` in the pattern stands for any text, `_` for a character, case does not matter.
  virtual SqlText Like(const SqlText& text, const SqlText& pattern, bool negated) const = 0;

  enum class Division { Decimal, Whole, Remainder };
  /// The first number by the second, Null by 0; for all but Decimal both are whole numbers.
  virtual SqlText Quotient(Division division, const SqlText& first, const SqlText& second) const = 0;
  /// The value as what `conversion` makes of a literal; Null stays.
  virtual SqlText Converted(const Fragment& value, Conversion conversion) const = 0;
  /// The engine's form for a call whose result is of that type: %1, %2... are the arguments, %* all of them. The
  /// function's own form where the engine has no other.
  virtual QStringView Form(const Function& function, ValueType result) const = 0;

  /// The rows of all the selects without duplicates, in any order, the first one as soon as may be.
  virtual SqlText Union(std::span<const SqlText> selects) const = 0;
  /// An item of ORDER BY; Null comes first, descending last.
  virtual SqlText OrderItem(const SqlText& value, bool descending) const = 0;
  /// Whether rows whose order nobody asked for, or that are equal in it, come in the order of their keys, and groups in
  /// that of what they are grouped by, without a word in the statement.
  virtual bool KeepsKeyOrder() const = 0;
};

}  // namespace database
