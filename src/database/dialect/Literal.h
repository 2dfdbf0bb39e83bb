#pragma once

#include "database/Schema.h"
#include "database/dialect/Token.h"

#include <QString>

#include <string>

namespace database {

/// What becomes of a literal on its way into the engine.
enum class Conversion {
  Verbatim,  ///< A text stays a text, a number a number.
  Text,      ///< A number becomes its Spanish text.
  Number,    ///< A text becomes the number that it means; nothing is rounded.
  Integer,   ///< A whole number of 32 bits, halves to the even neighbour.
  Decimal,
  Money,    ///< Four decimals, halves to the even neighbour.
  Boolean,  ///< -1 for every number but 0.
};

/// The conversion of a value that is stored into a column of that type.
Conversion ConversionFor(ColumnType type);

/// A value as an engine takes it. A text that needs no conversion is not copied: it stays in its token.
struct EngineValue {
  enum class Kind { Integer, Real, Amount, TokenText, OwnText };
  Kind kind = Kind::Integer;
  qint64 integer = 0;  ///< Ten-thousandths for Amount.
  double real = 0;
  QString text;  ///< For OwnText.

  static EngineValue Whole(qint64 value) { return {Kind::Integer, value, 0, {}}; }
  static EngineValue Fraction(double value) { return {Kind::Real, 0, value, {}}; }
  static EngineValue Amount(qint64 scaled) { return {Kind::Amount, scaled, 0, {}}; }
};

/// Converts a literal, `negated` when a minus stands in front. `column` is named in the error's text.
/// Raises 13 for a text that is no number where one is needed, 6 for a number that does not fit.
EngineValue ConvertLiteral(const Token& literal, bool negated, Conversion conversion, const QString& column);

/// The same for a value that the engine computed: Number to Boolean of a number or of a Spanish text.
EngineValue ConvertNumber(double value, Conversion conversion, const QString& column);
EngineValue ConvertText(QStringView text, Conversion conversion, const QString& column);

/// An amount of ten-thousandths as the nearest binary number.
double MoneyToDouble(qint64 scaled);

/// Appends a text literal to `output` as UTF-8: doubled quotes become one, a lone surrogate becomes U+FFFD.
void AppendUtf8(std::string& output, const Token& literal, QStringView statement);
void AppendUtf8(std::string& output, QStringView text);

}  // namespace database
