#include "database/postgres/PostgresTarget.h"

using namespace Qt::StringLiterals;

namespace database {

namespace {

struct OwnForm {
  QStringView name;
  int arguments;  ///< -1 for any number.
  QStringView form;
};

constexpr OwnForm ownForms[] = {
    {u"UCASE", 1, u"kel_upper(%1)"},
    {u"UPPER", 1, u"kel_upper(%1)"},
    {u"LCASE", 1, u"kel_lower(%1)"},
    {u"LOWER", 1, u"kel_lower(%1)"},
    {u"TRIM", 1, u"kel_trim(%1)"},
    {u"LTRIM", 1, u"kel_ltrim(%1)"},
    {u"RTRIM", 1, u"kel_rtrim(%1)"},
    {u"LEN", 1, u"kel_len(%1)"},
    {u"LEFT", 2, u"kel_left(%1, (%2)::int)"},
    {u"MID", 2, u"kel_mid(%1, (%2)::int)"},
    {u"MID", 3, u"kel_mid(%1, (%2)::int, (%3)::int)"},
    {u"ROUND", -1, u"kel_round(%*)"},
};

QStringView ConvertingFunction(Conversion conversion) {
  switch (conversion) {
    case Conversion::Text:
      return u"kel_text";
    case Conversion::Number:
      return u"kel_number";
    case Conversion::Boolean:
      return u"kel_boolean";
    case Conversion::Decimal:
      return u"kel_decimal";
    case Conversion::Money:
      return u"kel_money";
    default:
      return u"kel_integer";
  }
}

bool IsParameter(const SqlText& text) {
  return text.Text().isEmpty();
}

}  // namespace

const PostgresTarget& PostgresTarget::Instance() {
  static const PostgresTarget target;
  return target;
}

// The types are told when the statement is prepared: a whole number would not be found in an index as a fraction.
void PostgresTarget::AppendParameter(QString& sql, std::size_t number, ParameterKind /*kind*/) const {
  sql += u'$' + QString::number(number);
}

QString PostgresTarget::Name(QStringView name) const {
  QString quoted = name.toString().toLower();
  quoted.replace(u'"', u"\"\""_s);
  return u'"' + quoted + u'"';
}

SqlText PostgresTarget::ValueOf(const SqlText& condition) const {
  return SqlText::Filled(u"(-(%1)::int)", {condition});
}

SqlText PostgresTarget::ConditionOf(const Fragment& value) const {
  return SqlText::Filled(u"(%1 <> 0)", {value.sql});
}

SqlText PostgresTarget::Collated(const SqlText& text) const {
  return SqlText::Filled(u"((%1)::bpchar COLLATE kel_es)", {text});
}

// The bars would make texts of another type first, and lose the blanks at the end of the left one.
SqlText PostgresTarget::Joined(const SqlText& first, const SqlText& second) const {
  return SqlText::Filled(u"kel_join(%1, %2)", {first, second});
}

SqlText PostgresTarget::Concatenated(const SqlText& first, const SqlText& second) const {
  return SqlText::Filled(u"concat(%1, %2)", {first, second});
}

// The Spanish collation of columns takes no LIKE; the backslash must mean itself.
SqlText PostgresTarget::Like(const SqlText& text, const SqlText& pattern, bool negated) const {
  const SqlText plain = IsParameter(pattern) ? pattern : SqlText::Filled(u"kel_pattern(%1)", {pattern});
  return SqlText::Filled(u"((%1)::bpchar COLLATE \"es-x-icu\" %2ILIKE (%3) COLLATE \"es-x-icu\" ESCAPE '')",
                         {text, negated ? u"NOT "_s : QString(), plain});
}

SqlText PostgresTarget::Quotient(Division division, const SqlText& first, const SqlText& second) const {
  switch (division) {
    case Division::Whole:
      return SqlText::Filled(u"(%1 / nullif(%2, 0))", {first, second});
    case Division::Remainder:
      return SqlText::Filled(u"mod(%1, nullif(%2, 0))", {first, second});
    default:
      return SqlText::Filled(u"((%1)::float8 / nullif((%2)::float8, 0))", {first, second});
  }
}

// Of the functions of one name a Null takes that of texts.
SqlText PostgresTarget::Converted(const Fragment& value, Conversion conversion) const {
  return SqlText::Filled(u"%1(%2)", {ConvertingFunction(conversion).toString(), value.sql});
}

QStringView PostgresTarget::Form(const Function& function, ValueType /*result*/) const {
  for (const OwnForm& own : ownForms) {
    if (own.name == function.name && (own.arguments < 0 || own.arguments == function.most)) {
      return own.form;
    }
  }
  return function.form;
}

SqlText PostgresTarget::Union(std::span<const SqlText> selects) const {
  return SqlText::Joined(selects, u" UNION ");
}

SqlText PostgresTarget::OrderItem(const SqlText& value, bool descending) const {
  return SqlText::Filled(descending ? u"%1 DESC NULLS LAST" : u"%1 NULLS FIRST", {value});
}

}  // namespace database
