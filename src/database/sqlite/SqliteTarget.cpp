#include "database/sqlite/SqliteTarget.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

QStringView ConvertingFunction(Conversion conversion) {
  switch (conversion) {
    case Conversion::Text:
      return sqlite::toText;
    case Conversion::Number:
      return sqlite::toNumber;
    case Conversion::Boolean:
      return sqlite::toBoolean;
    case Conversion::Decimal:
      return sqlite::toDecimal;
    case Conversion::Money:
      return sqlite::toMoney;
    default:
      return sqlite::toInteger;
  }
}

}  // namespace

QString QuotedName(QStringView name) {
  QString quoted = name.toString();
  quoted.replace(u'"', u"\"\""_s);
  return u'"' + quoted + u'"';
}

const SqliteTarget& SqliteTarget::Instance() {
  static const SqliteTarget target;
  return target;
}

// Parameters carry no numbers: the engine looks every number up among those before.
void SqliteTarget::AppendParameter(QString& sql, std::size_t /*number*/, ParameterKind /*kind*/) const {
  sql += u'?';
}

QString SqliteTarget::Name(QStringView name) const {
  return QuotedName(name);
}

// The engine's own truth values are 1 and 0.
SqlText SqliteTarget::ValueOf(const SqlText& condition) const {
  return SqlText::Filled(u"(-%1)", {condition});
}

SqlText SqliteTarget::ConditionOf(const Fragment& value) const {
  return value.sql;
}

SqlText SqliteTarget::Collated(const SqlText& text) const {
  return SqlText::Filled(u"(%1 COLLATE %2)", {text, sqlite::collation.toString()});
}

SqlText SqliteTarget::Joined(const SqlText& first, const SqlText& second) const {
  return SqlText::Filled(u"(%1 || %2)", {first, second});
}

SqlText SqliteTarget::Concatenated(const SqlText& first, const SqlText& second) const {
  return SqlText::Filled(u"(coalesce(%1, '') || coalesce(%2, ''))", {first, second});
}

SqlText SqliteTarget::Like(const SqlText& text, const SqlText& pattern, bool negated) const {
  return SqlText::Filled(negated ? u"(%1 NOT LIKE %2)" : u"(%1 LIKE %2)", {text, pattern});
}

SqlText SqliteTarget::Quotient(Division division, const SqlText& first, const SqlText& second) const {
  if (division == Division::Decimal) {
    return SqlText::Filled(u"(%1 * 1.0 / %2)", {first, second});
  }
  return SqlText::Filled(u"(%1 %3 %2)", {first, second, division == Division::Whole ? u"/"_s : u"%"_s});
}

SqlText SqliteTarget::Converted(const Fragment& value, Conversion conversion) const {
  return SqlText::Filled(u"%1(%2)", {ConvertingFunction(conversion).toString(), value.sql});
}

QStringView SqliteTarget::Form(const Function& function, ValueType result) const {
  if (function.name == u"UCASE" || function.name == u"UPPER") {
    return u"kel_upper(%1)";
  }
  if (function.name == u"LCASE" || function.name == u"LOWER") {
    return u"kel_lower(%1)";
  }
  if (function.name == u"SUM" && result == ValueType::Money) {
    return u"kel_sum(%1)";
  }
  return function.form;
}

// A plain union would gather all the rows before the first.
SqlText SqliteTarget::Union(std::span<const SqlText> selects) const {
  return SqlText::Filled(u"SELECT DISTINCT * FROM (%1)", {SqlText::Joined(selects, u" UNION ALL ")});
}

SqlText SqliteTarget::OrderItem(const SqlText& value, bool descending) const {
  return descending ? SqlText::Filled(u"%1 DESC", {value}) : value;
}

}  // namespace database
