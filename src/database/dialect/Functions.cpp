#include "database/dialect/Functions.h"

namespace database {

namespace {

using Result = Function::Result;

constexpr Function functions[] = {
    {.name = u"UCASE",
     .fewest = 1,
     .most = 1,
     .form = u"upper(%1)",
     .result = Result::Text,
     .foldsCase = true,
     .takesText = true},
    {.name = u"UPPER",
     .fewest = 1,
     .most = 1,
     .form = u"upper(%1)",
     .result = Result::Text,
     .foldsCase = true,
     .takesText = true},
    {.name = u"LCASE",
     .fewest = 1,
     .most = 1,
     .form = u"lower(%1)",
     .result = Result::Text,
     .foldsCase = true,
     .takesText = true},
    {.name = u"LOWER",
     .fewest = 1,
     .most = 1,
     .form = u"lower(%1)",
     .result = Result::Text,
     .foldsCase = true,
     .takesText = true},
    {.name = u"TRIM", .fewest = 1, .most = 1, .form = u"trim(%1)", .result = Result::Text, .takesText = true},
    {.name = u"LTRIM", .fewest = 1, .most = 1, .form = u"ltrim(%1)", .result = Result::Text, .takesText = true},
    {.name = u"RTRIM", .fewest = 1, .most = 1, .form = u"rtrim(%1)", .result = Result::Text, .takesText = true},
    {.name = u"LEN", .fewest = 1, .most = 1, .form = u"length(%1)", .result = Result::Number, .takesText = true},
    {.name = u"LEFT", .fewest = 2, .most = 2, .form = u"substr(%1, 1, %2)", .result = Result::Text, .takesText = true},
    {.name = u"MID", .fewest = 2, .most = 2, .form = u"substr(%1, %2)", .result = Result::Text, .takesText = true},
    {.name = u"MID", .fewest = 3, .most = 3, .form = u"substr(%1, %2, %3)", .result = Result::Text, .takesText = true},
    {.name = u"ABS", .fewest = 1, .most = 1, .form = u"abs(%1)", .result = Result::Common, .takesNumbers = true},
    {.name = u"ROUND", .fewest = 1, .most = 2, .form = u"round(%*)", .result = Result::Number, .takesNumbers = true},
    {.name = u"NZ", .fewest = 2, .most = 2, .form = u"coalesce(%1, %2)", .result = Result::Common},
    {.name = u"COALESCE", .fewest = 2, .most = -1, .form = u"coalesce(%*)", .result = Result::Common},
    {.name = u"IIF",
     .fewest = 3,
     .most = 3,
     .form = u"CASE WHEN %1 THEN %2 ELSE %3 END",
     .result = Result::Common,
     .firstAlike = 1},
    {.name = u"COUNT", .fewest = 1, .most = 1, .form = u"count(%1)", .result = Result::Number, .isAggregate = true},
    {.name = u"SUM",
     .fewest = 1,
     .most = 1,
     .form = u"sum(%1)",
     .result = Result::Common,
     .isAggregate = true,
     .takesNumbers = true},
    {.name = u"AVG",
     .fewest = 1,
     .most = 1,
     .form = u"avg(%1)",
     .result = Result::Number,
     .isAggregate = true,
     .takesNumbers = true},
    {.name = u"MIN", .fewest = 1, .most = 1, .form = u"min(%1)", .result = Result::Common, .isAggregate = true},
    {.name = u"MAX", .fewest = 1, .most = 1, .form = u"max(%1)", .result = Result::Common, .isAggregate = true},
};

}  // namespace

const Function* FindFunction(QStringView name, qsizetype arguments) {
  for (const Function& function : functions) {
    if (name.compare(function.name, Qt::CaseInsensitive) == 0 && arguments >= function.fewest &&
        (function.most < 0 || arguments <= function.most)) {
      return &function;
    }
  }
  return nullptr;
}

bool IsFunctionName(QStringView name) {
  for (const Function& function : functions) {
    if (name.compare(function.name, Qt::CaseInsensitive) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace database
