#pragma once

#include "database/Schema.h"
#include "database/dialect/SqlText.h"

namespace database {

/// What a written expression yields, as far as conversions care.
enum class ValueType { Unknown, Text, Number, Money, Boolean };

constexpr ValueType ValueTypeOf(ColumnType type) {
  switch (type) {
    case ColumnType::Text:
    case ColumnType::LongText:
      return ValueType::Text;
    case ColumnType::Money:
      return ValueType::Money;
    case ColumnType::Boolean:
      return ValueType::Boolean;
    default:
      return ValueType::Number;
  }
}

/// The type that values of both types can take: Null fits any, a text none but texts, a Boolean is a number beside
/// numbers, an amount stays one.
constexpr ValueType CommonType(ValueType first, ValueType second) {
  if (first == second || second == ValueType::Unknown) {
    return first;
  }
  if (first == ValueType::Unknown) {
    return second;
  }
  if (first == ValueType::Text || second == ValueType::Text) {
    return ValueType::Text;
  }
  return first == ValueType::Money || second == ValueType::Money ? ValueType::Money : ValueType::Number;
}

/// An expression written for the engine.
struct Fragment {
  SqlText sql;
  ValueType type = ValueType::Unknown;
  const Column* column = nullptr;  ///< Set for a plain column.
  bool isCollated = false;         ///< A text that brings the Spanish collation along.
  bool isPredicate = false;        ///< A condition, not yet a value of the dialect (-1 or 0).
};

}  // namespace database
