#include "database/dialect/Functions.h"

namespace database {

namespace {

using Result = Function::Result;

constexpr Function functions[] = {
    {u"UCASE", 1, 1, u"kel_upper(%1)", Result::Text, true},
    {u"UPPER", 1, 1, u"kel_upper(%1)", Result::Text, true},
    {u"LCASE", 1, 1, u"kel_lower(%1)", Result::Text, true},
    {u"LOWER", 1, 1, u"kel_lower(%1)", Result::Text, true},
    {u"TRIM", 1, 1, u"trim(%1)", Result::Text},
    {u"LTRIM", 1, 1, u"ltrim(%1)", Result::Text},
    {u"RTRIM", 1, 1, u"rtrim(%1)", Result::Text},
    {u"LEN", 1, 1, u"length(%1)", Result::Number},
    {u"LEFT", 2, 2, u"substr(%1, 1, %2)", Result::Text},
    {u"MID", 2, 2, u"substr(%1, %2)", Result::Text},
    {u"MID", 3, 3, u"substr(%1, %2, %3)", Result::Text},
    {u"ABS", 1, 1, u"abs(%1)", Result::SameAsFirst},
    {u"ROUND", 1, 2, u"round(%*)", Result::Number},
    {u"NZ", 2, 2, u"coalesce(%1, %2)", Result::SameAsFirst},
    {u"COALESCE", 2, -1, u"coalesce(%*)", Result::SameAsFirst},
    {u"IIF", 3, 3, u"CASE WHEN %1 THEN %2 ELSE %3 END", Result::SameAsSecond},
    {u"COUNT", 1, 1, u"count(%1)", Result::Number, false, true},
    {u"SUM", 1, 1, u"sum(%1)", Result::SameAsFirst, false, true},
    {u"AVG", 1, 1, u"avg(%1)", Result::Number, false, true},
    {u"MIN", 1, 1, u"min(%1)", Result::SameAsFirst, false, true},
    {u"MAX", 1, 1, u"max(%1)", Result::SameAsFirst, false, true},
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
