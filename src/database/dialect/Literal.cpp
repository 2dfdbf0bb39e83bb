#include "database/dialect/Literal.h"

#include "database/Errors.h"
#include "platform/automation/Conversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

using namespace Qt::StringLiterals;

namespace database {

namespace {

constexpr qsizetype mostPlainDigits = 18;
constexpr double moneyScale = 10000.0;
constexpr int moneyDecimals = 4;
// An amount is a number of 64 bits that counts ten-thousandths; this is the largest binary number surely within.
constexpr double largestMoney = 922337203685477.5;

// A run of digits that surely fits 64 bits; false for anything else.
bool ReadDigits(QStringView text, qint64& value) {
  if (text.isEmpty() || text.size() > mostPlainDigits) {
    return false;
  }
  value = 0;
  for (const QChar c : text) {
    if (c < u'0' || c > u'9') {
      return false;
    }
    value = value * 10 + (c.unicode() - u'0');
  }
  return true;
}

double ReadDouble(QByteArrayView digits, QStringView written, const QString& column) {
  double value = 0;
  const auto [end, error] = std::from_chars(digits.begin(), digits.end(), value);
  if (error == std::errc::result_out_of_range) {
    throw NumberTooBig(written, column);
  }
  if (error != std::errc() || end != digits.end()) {
    throw NotANumber(written, column);
  }
  return value;
}

EngineValue ToInteger(double value, QStringView written, const QString& column) {
  const double rounded = automation::RoundHalfEven(value);
  if (!(rounded >= std::numeric_limits<qint32>::min() && rounded <= std::numeric_limits<qint32>::max())) {
    throw NumberTooBig(written, column);
  }
  return EngineValue::Whole(static_cast<qint64>(rounded));
}

// The product with the scale may miss a half by the last bit; such a value is taken for the half that it means.
EngineValue ToMoney(double value, QStringView written, const QString& column) {
  constexpr double lastBits = 1e-15;
  if (!(std::fabs(value) <= largestMoney)) {
    throw NumberTooBig(written, column);
  }
  double scaled = value * moneyScale;
  const double nearestHalf = std::nearbyint(scaled * 2) / 2;
  if (std::fabs(nearestHalf - scaled) < std::fabs(scaled) * lastBits) {
    scaled = nearestHalf;
  }
  return EngineValue::Amount(static_cast<qint64>(std::nearbyint(scaled)));
}

// What the decimals behind the fourth do to an amount: halves go to the even neighbour.
bool RoundsUp(std::string_view rest, qint64 scaled) {
  if (rest.empty() || rest.front() != '5') {
    return !rest.empty() && rest.front() > '5';
  }
  return rest.find_first_not_of('0', 1) != std::string_view::npos || scaled % 2 != 0;
}

/// The digits of a number, and how many of them stand in front of its point.
struct PlainNumber {
  std::string digits;
  std::ptrdiff_t point = 0;
};

// An exponent moves the point, no further than counts for an amount.
PlainNumber ReadPlain(std::string_view number) {
  constexpr std::ptrdiff_t farAway = 100;
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  PlainNumber plain{std::string(number.substr(0, mark))};
  plain.point = static_cast<std::ptrdiff_t>(std::min(plain.digits.find('.'), mark));
  std::erase(plain.digits, '.');
  if (mark < number.size()) {
    const std::string_view exponent = number.substr(number.find_first_not_of('+', mark + 1));
    const std::ptrdiff_t most = std::ssize(plain.digits) + farAway;
    std::ptrdiff_t moved = exponent.starts_with('-') ? -most : most;
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), moved);
    plain.point += std::clamp(moved, -most, most);
  }
  return plain;
}

// The amount is exact up to its limits.
EngineValue ToMoney(QByteArrayView number, QStringView written, const QString& column) {
  const bool negative = number.startsWith('-');
  PlainNumber plain =
      ReadPlain(std::string_view(number.data(), static_cast<std::size_t>(number.size())).substr(negative ? 1 : 0));
  const std::ptrdiff_t missing = std::max<std::ptrdiff_t>(1 - plain.point - moneyDecimals, 0);
  plain.digits.insert(0, static_cast<std::size_t>(missing), '0');
  const auto kept = static_cast<std::size_t>(plain.point + moneyDecimals + missing);
  plain.digits.resize(std::max(plain.digits.size(), kept), '0');
  qint64 scaled = 0;
  const auto [end, error] = std::from_chars(plain.digits.data(), plain.digits.data() + kept, scaled);
  const bool up = error == std::errc() && RoundsUp(std::string_view(plain.digits).substr(kept), scaled);
  if (error != std::errc() || __builtin_add_overflow(scaled, up ? 1 : 0, &scaled)) {
    throw NumberTooBig(written, column);
  }
  return EngineValue::Amount(negative ? -scaled : scaled);
}

EngineValue Converted(double value, Conversion conversion, QStringView written, const QString& column) {
  switch (conversion) {
    case Conversion::Integer:
      return ToInteger(value, written, column);
    case Conversion::Money:
      return ToMoney(value, written, column);
    case Conversion::Boolean:
      return EngineValue::Whole(value != 0 ? -1 : 0);
    default:
      return EngineValue::Fraction(value);
  }
}

EngineValue Converted(qint64 value, Conversion conversion, QStringView written, const QString& column) {
  switch (conversion) {
    case Conversion::Integer:
      if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max()) {
        throw NumberTooBig(written, column);
      }
      return EngineValue::Whole(value);
    case Conversion::Boolean:
      return EngineValue::Whole(value != 0 ? -1 : 0);
    case Conversion::Decimal:
      return EngineValue::Fraction(static_cast<double>(value));
    case Conversion::Money:
      return ToMoney(QByteArrayView(QByteArray::number(value)), written, column);
    default:
      return EngineValue::Whole(value);
  }
}

// A text's number. Where decimals are stored, a point that can't separate thousands is the decimal point: "2.5",
// "0.75", but "1.234" is more than a thousand.
std::optional<QByteArray> ReadNumber(QStringView text, Conversion conversion) {
  std::optional<QByteArray> number = automation::SpanishNumber(text);
  const bool takesDecimals = conversion == Conversion::Decimal || conversion == Conversion::Money;
  if (!number && takesDecimals && text.count(u'.') == 1 && !text.contains(u',')) {
    number = automation::SpanishNumber(text.toString().replace(u'.', u','));
  }
  return number;
}

// The words that mean a Boolean where a Boolean is stored.
bool ReadBooleanWord(QStringView text, EngineValue& value) {
  const QStringView word = text.trimmed();
  const auto is = [&](QStringView other) { return word.compare(other, Qt::CaseInsensitive) == 0; };
  if (is(u"verdadero") || is(u"true")) {
    value = EngineValue::Whole(-1);
    return true;
  }
  value = EngineValue::Whole(0);
  return is(u"falso") || is(u"false");
}

EngineValue ConvertDigits(const QByteArray& digits, Conversion conversion, QStringView written, const QString& column) {
  return conversion == Conversion::Money ? ToMoney(QByteArrayView(digits), written, column)
                                         : Converted(ReadDouble(digits, written, column), conversion, written, column);
}

EngineValue ConvertNumberToken(const Token& literal, bool negated, Conversion conversion, const QString& column) {
  qint64 whole = 0;
  if (ReadDigits(literal.text, whole)) {
    return Converted(negated ? -whole : whole, conversion, literal.text, column);
  }
  const QByteArray digits = (negated ? "-" : "") + literal.text.toLatin1();
  return ConvertDigits(digits, conversion, literal.text, column);
}

void AppendCodePoint(std::string& output, char32_t code) {
  if (code < 0x80) {
    output.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    output.push_back(static_cast<char>(0xC0 | (code >> 6)));
    output.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else if (code < 0x10000) {
    output.push_back(static_cast<char>(0xE0 | (code >> 12)));
    output.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    output.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    output.push_back(static_cast<char>(0xF0 | (code >> 18)));
    output.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
    output.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    output.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

// `skipped` is the quote that is doubled inside the text; a null character for none.
void AppendText(std::string& output, QStringView text, char16_t skipped) {
  const char16_t* c = text.utf16();
  const char16_t* const end = c + text.size();
  while (c != end) {
    char32_t code = *c++;
    if (code == skipped && skipped != 0) {
      ++c;
    } else if (code >= 0xD800 && code < 0xE000) {
      const bool paired = code < 0xDC00 && c != end && *c >= 0xDC00 && *c < 0xE000;
      code = paired ? 0x10000 + ((code - 0xD800) << 10) + (*c++ - 0xDC00u) : 0xFFFD;
    }
    AppendCodePoint(output, code);
  }
}

}  // namespace

Conversion ConversionFor(ColumnType type) {
  switch (type) {
    case ColumnType::Text:
    case ColumnType::LongText:
      return Conversion::Text;
    case ColumnType::Boolean:
      return Conversion::Boolean;
    case ColumnType::Decimal:
      return Conversion::Decimal;
    case ColumnType::Money:
      return Conversion::Money;
    default:
      return Conversion::Integer;
  }
}

EngineValue ConvertLiteral(const Token& literal, bool negated, Conversion conversion, const QString& column) {
  const bool isText = literal.kind == TokenKind::Text;
  if (isText && !negated && (conversion == Conversion::Verbatim || conversion == Conversion::Text)) {
    EngineValue value;
    value.kind = EngineValue::Kind::TokenText;
    return value;
  }
  if (isText) {
    EngineValue value = ConvertText(literal.text, conversion, column);
    if (negated && conversion != Conversion::Boolean) {
      value.integer = -value.integer;
      value.real = -value.real;
    }
    return value;
  }
  if (conversion == Conversion::Text) {
    EngineValue value;
    value.kind = EngineValue::Kind::OwnText;
    value.text = (negated ? u"-"_s : QString()) + literal.text.toString().replace(u'.', u',');
    return value;
  }
  return ConvertNumberToken(literal, negated, conversion, column);
}

EngineValue ConvertNumber(double value, Conversion conversion, const QString& column) {
  return Converted(value, conversion, QString::number(value), column);
}

EngineValue ConvertText(QStringView text, Conversion conversion, const QString& column) {
  EngineValue word;
  if (conversion == Conversion::Boolean && ReadBooleanWord(text, word)) {
    return word;
  }
  const std::optional<QByteArray> digits = ReadNumber(text, conversion);
  if (!digits) {
    throw NotANumber(text, column);
  }
  qint64 whole = 0;
  const bool negative = digits->startsWith('-');
  if (ReadDigits(QString::fromLatin1(digits->mid(negative ? 1 : 0)), whole)) {
    return Converted(negative ? -whole : whole, conversion, text, column);
  }
  return ConvertDigits(*digits, conversion, text, column);
}

double MoneyToDouble(qint64 scaled) {
  return static_cast<double>(scaled) / moneyScale;
}

void AppendUtf8(std::string& output, const Token& literal, QStringView statement) {
  AppendText(output, literal.text, statement[literal.position].unicode());
}

void AppendUtf8(std::string& output, QStringView text) {
  AppendText(output, text, 0);
}

}  // namespace database
