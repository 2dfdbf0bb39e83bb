#include "platform/automation/Conversion.h"

#include "platform/automation/Error.h"

#include <QObject>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace automation {

namespace {

constexpr qsizetype longestNumber = 400;

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

// The whole part of a Spanish number: digits, or digits grouped by three with points. Returns the characters
// taken, 0 when the points don't group by three; a whole part may also be empty (",5").
bool ReadWholePart(QStringView text, qsizetype& position, QByteArray& digits, bool& grouped) {
  qsizetype sinceGroup = 0;
  grouped = false;
  for (; position < text.size(); ++position) {
    const QChar c = text[position];
    if (IsDigit(c)) {
      digits.append(static_cast<char>(c.unicode()));
      ++sinceGroup;
    } else if (c == u'.') {
      if (grouped ? sinceGroup != 3 : (sinceGroup < 1 || sinceGroup > 3)) {
        return false;
      }
      grouped = true;
      sinceGroup = 0;
    } else {
      break;
    }
  }
  return !grouped || sinceGroup == 3;
}

// "E5", "e-12" behind a number.
bool ReadExponent(QStringView text, qsizetype& position, QByteArray& result) {
  result.append('e');
  ++position;
  if (position < text.size() && (text[position] == u'-' || text[position] == u'+')) {
    result.append(static_cast<char>(text[position].unicode()));
    ++position;
  }
  const qsizetype first = position;
  while (position < text.size() && IsDigit(text[position])) {
    result.append(static_cast<char>(text[position].unicode()));
    ++position;
  }
  return position > first && position - first <= 3;
}

bool IsFloating(int typeId) {
  return typeId == QMetaType::Double || typeId == QMetaType::Float;
}

bool IsWholeNumber(int typeId) {
  switch (typeId) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
      return true;
    default:
      return false;
  }
}

double RoundedWithin(const QVariant& value, double lowest, double highest) {
  const double rounded = RoundHalfEven(CDbl(value));
  if (!(rounded >= lowest && rounded <= highest)) {
    throw Error(Overflow);
  }
  return rounded;
}

template <typename Whole>
Whole ToWhole(const QVariant& value) {
  return static_cast<Whole>(
      RoundedWithin(value, std::numeric_limits<Whole>::lowest(), std::numeric_limits<Whole>::max()));
}

// A number in at most fifteen significant digits, as a sign, digits and the position of the decimal point.
struct DecimalDigits {
  bool negative = false;
  QByteArray digits;
  qsizetype point = 0;
};

DecimalDigits Digits(const QVariant& value) {
  DecimalDigits result;
  if (value.metaType() == QMetaType::fromType<Currency>()) {
    const qint64 scaled = value.value<Currency>().Scaled();
    result.negative = scaled < 0;
    result.digits = QByteArray::number(scaled);
    if (result.negative) {
      result.digits.remove(0, 1);
    }
    result.point = result.digits.size() - 4;
  } else {
    const double number = CDbl(value);
    result.negative = std::signbit(number);
    const QByteArray scientific = QByteArray::number(std::fabs(number), 'e', 14);
    const qsizetype e = scientific.indexOf('e');
    result.digits = scientific.left(e).replace(".", "");
    result.point = scientific.mid(e + 1).toInt() + 1;
  }
  if (result.point < 0) {
    result.digits.prepend(QByteArray(-result.point, '0'));
    result.point = 0;
  }
  return result;
}

// Cuts to `decimals` digits behind the point, halves away from zero.
void RoundDigits(DecimalDigits& number, qsizetype decimals) {
  const qsizetype kept = number.point + decimals;
  if (number.digits.size() <= kept) {
    number.digits.append(QByteArray(kept - number.digits.size(), '0'));
    return;
  }
  bool carry = number.digits[kept] >= '5';
  number.digits.truncate(kept);
  for (qsizetype i = kept - 1; carry && i >= 0; --i) {
    carry = number.digits[i] == '9';
    number.digits[i] = carry ? '0' : static_cast<char>(number.digits[i] + 1);
  }
  if (carry) {
    number.digits.prepend('1');
    ++number.point;
  }
}

QString Grouped(QString whole) {
  for (qsizetype i = whole.size() - 3; i > 0; i -= 3) {
    whole.insert(i, u'.');
  }
  return whole;
}

// Where the digits of a pattern begin and end, and how many are wanted on each side of the point.
struct NumberPattern {
  QStringView prefix;
  QStringView suffix;
  qsizetype leastWhole = 0;
  qsizetype leastDecimals = 0;
  qsizetype mostDecimals = 0;
  bool thousands = false;
};

NumberPattern ReadPattern(QStringView pattern) {
  NumberPattern result;
  const auto isPlace = [](QChar c) { return c == u'0' || c == u'#'; };
  const auto isPattern = [&](QChar c) { return isPlace(c) || c == u',' || c == u'.'; };
  qsizetype first = 0;
  while (first < pattern.size() && !isPattern(pattern[first])) {
    ++first;
  }
  qsizetype end = first;
  bool decimals = false;
  for (; end < pattern.size() && isPattern(pattern[end]); ++end) {
    const QChar c = pattern[end];
    if (c == u'.') {
      decimals = true;
    } else if (c == u',') {
      result.thousands = true;
    } else if (decimals) {
      ++result.mostDecimals;
      if (c == u'0') {
        result.leastDecimals = result.mostDecimals;
      }
    } else if (c == u'0') {
      ++result.leastWhole;
    }
  }
  result.prefix = pattern.left(first);
  result.suffix = pattern.mid(end);
  return result;
}

QString TextOfDouble(double value) {
  QString text = QString::number(value, 'g', 15);
  return text.replace(u'.', u',').replace(u'e', u'E');
}

QString TextOfCurrency(Currency value) {
  const bool negative = value.Scaled() < 0;
  const quint64 scaled = negative ? 0 - static_cast<quint64>(value.Scaled()) : static_cast<quint64>(value.Scaled());
  QString decimals = u"%1"_s.arg(scaled % 10000, 4, 10, QLatin1Char('0'));
  while (decimals.endsWith(u'0')) {
    decimals.chop(1);
  }
  return (negative ? u"-"_s : QString()) + QString::number(scaled / 10000) +
         (decimals.isEmpty() ? QString() : u',' + decimals);
}

void ConvertObject(QVariant& value, QMetaType type) {
  QObject* object = nullptr;
  if (value.metaType().flags() & QMetaType::PointerToQObject) {
    object = *static_cast<QObject* const*>(value.constData());
  } else if (value.isValid() && !IsNull(value)) {
    throw Error(TypeMismatch);
  }
  if (object != nullptr && object->metaObject()->inherits(type.metaObject()) == false) {
    throw Error(TypeMismatch);
  }
  value = QVariant(type, &object);
}

}  // namespace

QVariant Null() {
  return QVariant::fromValue(nullptr);
}

bool IsNull(const QVariant& value) {
  return value.metaType().id() == QMetaType::Nullptr;
}

std::optional<QByteArray> SpanishNumber(QStringView text) {
  text = text.trimmed();
  if (text.endsWith(u'€')) {
    text = text.chopped(1).trimmed();
  }
  if (text.isEmpty() || text.size() > longestNumber) {
    return std::nullopt;
  }
  QByteArray sign;
  qsizetype position = 0;
  if (text[0] == u'-' || text[0] == u'+') {
    sign = text[0] == u'-' ? "-" : "";
    ++position;
  }
  QByteArray whole;
  bool grouped = false;
  if (!ReadWholePart(text, position, whole, grouped)) {
    return std::nullopt;
  }
  QByteArray decimals;
  if (position < text.size() && text[position] == u',') {
    ++position;
    while (position < text.size() && IsDigit(text[position])) {
      decimals.append(static_cast<char>(text[position].unicode()));
      ++position;
    }
  }
  if (whole.isEmpty() && decimals.isEmpty()) {
    return std::nullopt;
  }
  QByteArray result = sign + (whole.isEmpty() ? QByteArray("0") : whole);
  if (!decimals.isEmpty()) {
    result += '.' + decimals;
  }
  if (!grouped && position < text.size() && (text[position] == u'E' || text[position] == u'e') &&
      !ReadExponent(text, position, result)) {
    return std::nullopt;
  }
  return position == text.size() ? std::optional(result) : std::nullopt;
}

bool IsNumeric(const QVariant& value) {
  const int typeId = value.metaType().id();
  if (!value.isValid() || IsFloating(typeId) || IsWholeNumber(typeId) || typeId == QMetaType::Bool ||
      value.metaType() == QMetaType::fromType<Currency>()) {
    return true;
  }
  return typeId == QMetaType::QString && SpanishNumber(value.toString()).has_value();
}

double CDbl(const QVariant& value) {
  const QMetaType type = value.metaType();
  const int typeId = type.id();
  if (!value.isValid()) {
    return 0;
  }
  if (IsNull(value)) {
    throw Error(InvalidUseOfNull);
  }
  if (typeId == QMetaType::Bool) {
    return value.toBool() ? -1 : 0;
  }
  if (IsFloating(typeId) || IsWholeNumber(typeId)) {
    return value.toDouble();
  }
  if (type == QMetaType::fromType<Currency>()) {
    return value.value<Currency>().ToDouble();
  }
  if (typeId == QMetaType::QString) {
    const std::optional<QByteArray> number = SpanishNumber(value.toString());
    if (number) {
      const double result = number->toDouble();
      if (!std::isfinite(result)) {
        throw Error(Overflow);
      }
      return result;
    }
  }
  throw Error(TypeMismatch);
}

bool CBool(const QVariant& value) {
  if (value.metaType().id() == QMetaType::Bool) {
    return value.toBool();
  }
  if (value.metaType().id() == QMetaType::QString) {
    const QString text = value.toString().trimmed();
    if (text.compare(QLatin1String("verdadero"), Qt::CaseInsensitive) == 0 ||
        text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) {
      return true;
    }
    if (text.compare(QLatin1String("falso"), Qt::CaseInsensitive) == 0 ||
        text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) {
      return false;
    }
  }
  return CDbl(value) != 0;
}

quint8 CByte(const QVariant& value) {
  return ToWhole<quint8>(value);
}

qint16 CInt(const QVariant& value) {
  return ToWhole<qint16>(value);
}

qint32 CLng(const QVariant& value) {
  if (value.metaType().id() == QMetaType::Int) {
    return value.toInt();
  }
  return ToWhole<qint32>(value);
}

Currency CCur(const QVariant& value) {
  if (value.metaType() == QMetaType::fromType<Currency>()) {
    return value.value<Currency>();
  }
  constexpr double limit = 922337203685477.0;
  const double number = CDbl(value);
  if (!(std::fabs(number) <= limit)) {
    throw Error(Overflow);
  }
  DecimalDigits digits = Digits(number);
  const qsizetype kept = digits.point + 4;
  const QByteArray rest = digits.digits.mid(kept);
  qint64 scaled = digits.digits.left(kept).leftJustified(kept, '0').toLongLong();
  const bool half = rest.startsWith('5') && rest.count('0') == rest.size() - 1;
  if (half ? scaled % 2 != 0 : (!rest.isEmpty() && rest[0] >= '5')) {
    ++scaled;
  }
  return Currency::FromScaled(digits.negative ? -scaled : scaled);
}

QString CStr(const QVariant& value) {
  const int typeId = value.metaType().id();
  if (typeId == QMetaType::QString) {
    return value.toString();
  }
  if (!value.isValid()) {
    return {};
  }
  if (IsNull(value)) {
    throw Error(InvalidUseOfNull);
  }
  if (typeId == QMetaType::Bool) {
    return value.toBool() ? u"Verdadero"_s : u"Falso"_s;
  }
  if (IsFloating(typeId)) {
    return TextOfDouble(value.toDouble());
  }
  if (value.metaType() == QMetaType::fromType<Currency>()) {
    return TextOfCurrency(value.value<Currency>());
  }
  if (value.canConvert<QString>()) {
    return value.toString();
  }
  throw Error(TypeMismatch);
}

QString Text(const QVariant& value) {
  if (value.metaType().id() == QMetaType::QString) {
    return *static_cast<const QString*>(value.constData());
  }
  return IsNull(value) ? QString() : CStr(value);
}

double Val(QStringView text) {
  QByteArray number;
  bool point = false;
  for (const QChar c : text) {
    if (c.isSpace()) {
      continue;
    }
    if (IsDigit(c)) {
      number.append(static_cast<char>(c.unicode()));
    } else if (c == u'.' && !point) {
      point = true;
      number.append('.');
    } else if ((c == u'-' || c == u'+') && number.isEmpty()) {
      number.append(static_cast<char>(c.unicode()));
    } else {
      break;
    }
    if (number.size() > longestNumber) {
      throw Error(Overflow);
    }
  }
  const double value = number.toDouble();
  if (!std::isfinite(value)) {
    throw Error(Overflow);
  }
  return value;
}

double RoundHalfEven(double value) {
  const double floor = std::floor(value);
  const double fraction = value - floor;
  if (fraction != 0.5) {
    return std::round(value);
  }
  return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1.0;
}

QString Format(const QVariant& value, QStringView pattern) {
  const NumberPattern places = ReadPattern(pattern);
  DecimalDigits number = Digits(value);
  RoundDigits(number, places.mostDecimals);

  QString whole = QString::fromLatin1(number.digits.left(number.point));
  while (whole.size() > 1 && whole.startsWith(u'0')) {
    whole.remove(0, 1);
  }
  if (whole == u'0') {
    whole.clear();
  }
  whole = whole.rightJustified(places.leastWhole, u'0');
  QString decimals = QString::fromLatin1(number.digits.mid(number.point, places.mostDecimals));
  while (decimals.size() > places.leastDecimals && decimals.endsWith(u'0')) {
    decimals.chop(1);
  }
  const bool zero = number.digits.count('0') == number.digits.size();
  return (number.negative && !zero ? u"-"_s : QString()) + places.prefix.toString() +
         (places.thousands ? Grouped(whole) : whole) + (decimals.isEmpty() ? QString() : u',' + decimals) +
         places.suffix.toString();
}

void ConvertTo(QVariant& value, QMetaType type) {
  if (value.metaType() == type) {
    return;
  }
  switch (type.id()) {
    case QMetaType::Bool:
      value = CBool(value);
      return;
    case QMetaType::UChar:
      value = QVariant::fromValue(CByte(value));
      return;
    case QMetaType::Short:
      value = QVariant::fromValue(CInt(value));
      return;
    case QMetaType::UShort:
      value = QVariant::fromValue(ToWhole<quint16>(value));
      return;
    case QMetaType::Int:
      value = CLng(value);
      return;
    case QMetaType::UInt:
      value = ToWhole<quint32>(value);
      return;
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
      value = static_cast<qint64>(RoundedWithin(value, -9007199254740992.0, 9007199254740992.0));
      break;
    case QMetaType::Double:
      value = CDbl(value);
      return;
    case QMetaType::Float:
      value = static_cast<float>(CDbl(value));
      return;
    case QMetaType::QString:
      value = CStr(value);
      return;
    default:
      break;
  }
  if (type == QMetaType::fromType<Currency>()) {
    value = QVariant::fromValue(CCur(value));
  } else if (type.flags() & QMetaType::PointerToQObject) {
    ConvertObject(value, type);
  } else if (type.flags() & QMetaType::IsPointer && (!value.isValid() || IsNull(value))) {
    void* nothing = nullptr;
    value = QVariant(type, &nothing);
  } else if (!value.canConvert(type) || !value.convert(type)) {
    throw Error(TypeMismatch);
  }
}

}  // namespace automation
