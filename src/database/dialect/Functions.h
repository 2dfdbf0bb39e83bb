#pragma once

#include "database/dialect/Fragment.h"

#include <QStringView>

namespace database {

/// A function of the dialect.
struct Function {
  /// Common is the type that all the arguments from `firstAlike` on can take (see CommonType).
  enum class Result { Text, Number, Common };

  QStringView name;
  int fewest;  ///< Arguments.
  int most;    ///< -1 for any number.
  /// The usual form of SQL, for engines without another (see Target::Form); %1, %2... are the arguments, %* all of
  /// them.
  QStringView form;
  Result result;
  int firstAlike = 0;      ///< The arguments before are conditions.
  bool foldsCase = false;  ///< Changes nothing but the case: of no effect in a comparison.
  bool isAggregate = false;
  bool takesText = false;     ///< The first argument is a text, whatever it was.
  bool takesNumbers = false;  ///< Texts among the arguments are the numbers that they mean; Booleans count, too.
};

/// The function of that name without regard to case, nullptr for none.
const Function* FindFunction(QStringView name, qsizetype arguments);

/// True when some function has that name, whatever its arguments.
bool IsFunctionName(QStringView name);

}  // namespace database
