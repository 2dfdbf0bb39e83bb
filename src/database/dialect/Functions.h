#pragma once

#include "database/dialect/Fragment.h"

#include <QStringView>

namespace database {

/// A function of the dialect.
struct Function {
  /// Common is the type that all the arguments from `firstAlike` on can take (see CommonType).
  enum class Result { Text, Number, Common };

  QStringView name;
  int fewest;       ///< Arguments.
  int most;         ///< -1 for any number.
  QStringView sql;  ///< The engine's form; %1, %2... are the arguments, %* all of them.
  Result result;
  int firstAlike = 0;
  bool foldsCase = false;  ///< Changes nothing but the case: of no effect in a comparison.
  bool isAggregate = false;
  bool takesNumbers = false;  ///< Texts among the arguments are the numbers that they mean; Booleans count, too.
};

/// The function of that name without regard to case, nullptr for none.
const Function* FindFunction(QStringView name, qsizetype arguments);

/// True when some function has that name, whatever its arguments.
bool IsFunctionName(QStringView name);

/// Names of the functions that every engine provides to the statements written here.
namespace engine {
inline constexpr QStringView upper = u"kel_upper";
inline constexpr QStringView lower = u"kel_lower";
inline constexpr QStringView toText = u"kel_text";
inline constexpr QStringView toNumber = u"kel_number";
inline constexpr QStringView toInteger = u"kel_integer";
inline constexpr QStringView toDecimal = u"kel_decimal";
inline constexpr QStringView toMoney = u"kel_money";
inline constexpr QStringView toBoolean = u"kel_boolean";
inline constexpr QStringView sumMoney = u"kel_sum";  ///< Aggregate: the exact sum of amounts.
inline constexpr QStringView collation = u"kel_es";
}  // namespace engine

}  // namespace database
