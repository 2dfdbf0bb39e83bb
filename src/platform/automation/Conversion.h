#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <optional>

/// Value conversions by the classic runtime's rules, always in the Spanish locale whatever the machine's:
/// decimal comma, thousands point, halves rounded to even. Errors: 6 where a value does not fit, 13 where a
/// text is no number, 94 where the value is Null.
namespace automation {

/// The value Null of a column without data. An invalid QVariant is Empty, which is another thing: Empty
/// converts to 0 or "", Null raises 94 everywhere but in Text() and IsNull().
QVariant Null();
bool IsNull(const QVariant& value);

/// A fixed-point amount with four decimals.
class Currency {
 public:
  constexpr Currency() = default;
  /// From ten-thousandths: 12.50 is FromScaled(125000).
  static constexpr Currency FromScaled(qint64 scaled) {
    Currency amount;
    amount.m_scaled = scaled;
    return amount;
  }
  constexpr qint64 Scaled() const { return m_scaled; }
  double ToDouble() const { return static_cast<double>(m_scaled) / 10000.0; }
  bool operator==(const Currency&) const = default;

 private:
  qint64 m_scaled = 0;
};

/// The number that a Spanish text means, as plain ASCII ("-1234.5"), or nothing when it is no number.
/// Taken: blanks around, a sign in front, a decimal comma, thousands points that group by three and stand
/// before the comma, a euro sign behind. An exponent ("1E3") is taken when no thousands point is present.
/// At most 400 characters; a longer text is no number.
std::optional<QByteArray> SpanishNumber(QStringView text);

bool IsNumeric(const QVariant& value);

bool CBool(const QVariant& value);
quint8 CByte(const QVariant& value);
qint16 CInt(const QVariant& value);
qint32 CLng(const QVariant& value);
double CDbl(const QVariant& value);
Currency CCur(const QVariant& value);
QString CStr(const QVariant& value);

/// The text of a value, with Null as the empty text.
QString Text(const QVariant& value);

/// The value of the leading digits of a text, 0 when there are none. The point is the decimal mark here,
/// whatever the locale; blanks are skipped.
double Val(QStringView text);

/// Rounds to a whole number, halves to the even neighbour.
double RoundHalfEven(double value);

/// A number by a pattern of '0' (digit), '#' (optional digit), one ',' in the whole part (thousands) and one
/// '.' (decimal mark); other characters are copied. The result is in the Spanish locale: Format(1234.5,
/// "#,0.#0") is "1.234,50". Halves round away from zero.
QString Format(const QVariant& value, QStringView pattern);

/// Converts `value` in place to `type` by the rules above, as an argument or a property of that type takes it.
/// Types outside them (pointers, lists, enumerations) must match, or have a conversion that Qt knows; an object
/// must be of the class asked for. Raises 13 otherwise.
void ConvertTo(QVariant& value, QMetaType type);

}  // namespace automation

Q_DECLARE_METATYPE(automation::Currency)
