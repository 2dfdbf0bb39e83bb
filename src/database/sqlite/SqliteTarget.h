#pragma once

#include "database/dialect/Target.h"

namespace database {

/// Names of the functions and of the collation that this engine's statements use; SqliteFunctions and SpanishCollation
/// provide them.
namespace sqlite {
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
}  // namespace sqlite

/// `"name"`, quotes inside doubled.
QString QuotedName(QStringView name);

/// How statements for SQLite are written.
class SqliteTarget : public Target {
 public:
  static const SqliteTarget& Instance();

  void AppendParameter(QString& sql, std::size_t number, ParameterKind kind) const override;
  bool NumbersParameters() const override { return false; }
  QString Name(QStringView name) const override;
  SqlText ValueOf(const SqlText& condition) const override;
  SqlText ConditionOf(const Fragment& value) const override;
  SqlText Collated(const SqlText& text) const override;
  SqlText Joined(const SqlText& first, const SqlText& second) const override;
  SqlText Concatenated(const SqlText& first, const SqlText& second) const override;
  SqlText Like(const SqlText& text, const SqlText& pattern, bool negated) const override;
  SqlText Quotient(Division division, const SqlText& first, const SqlText& second) const override;
  SqlText Converted(const Fragment& value, Conversion conversion) const override;
  QStringView Form(const Function& function, ValueType result) const override;
  SqlText Union(std::span<const SqlText> selects) const override;
  SqlText OrderItem(const SqlText& value, bool descending) const override;
  bool KeepsKeyOrder() const override { return true; }
};

}  // namespace database
