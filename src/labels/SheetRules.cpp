#include "labels/SheetRules.h"

#include "platform/automation/Error.h"

#include <algorithm>
#include <limits>

using automation::CCur;
using automation::CInt;
using automation::Currency;
using documents::SheetNumber;
using namespace Qt::StringLiterals;

namespace labels {

namespace {

// A whole number in an amount's ten-thousandths.
constexpr qint64 one = 10000;

bool IsTooShort(const QString& length, SheetNumber number) {
  return automation::RoundHalfEven(automation::CDbl(length)) < documents::BoundsOf(number).min;
}

}  // namespace

std::optional<Currency> BoundedNumber(const QString& text) {
  const QString read = u'0' + text;
  if (!automation::IsNumeric(read)) {
    return std::nullopt;
  }
  try {
    return CCur(read);
  } catch (const automation::Error&) {
    return Currency::FromScaled(std::numeric_limits<qint64>::max());
  }
}

bool IsAbove(const QString& text, int bound) {
  const std::optional<Currency> number = BoundedNumber(text);
  return number && number->Scaled() > bound * one;
}

bool IsCount(const QString& text) {
  return text.isEmpty() || (automation::IsNumeric(text) && !IsAbove(text, std::numeric_limits<qint16>::max()));
}

std::optional<QString> BoundFor(const QString& text, documents::Limits limits) {
  const std::optional<Currency> number = BoundedNumber(text);
  if (number && number->Scaled() > limits.max * one) {
    return QString::number(limits.max);
  }
  if (number && number->Scaled() < limits.min * one) {
    return QString::number(limits.min);
  }
  return std::nullopt;
}

bool ExceedsTotal(const QString& perRow, const QString& totals) {
  const std::optional<Currency> inARow = BoundedNumber(perRow);
  const std::optional<Currency> inAll = BoundedNumber(totals);
  return !perRow.isEmpty() && !totals.isEmpty() && inARow && inAll && inARow->Scaled() > inAll->Scaled();
}

QString RowCount(const QString& totals, const QString& perRow) {
  if (totals.isEmpty() || perRow.isEmpty()) {
    return {};
  }
  const int inAll = CInt(totals);
  const int inARow = CInt(perRow);
  if (inARow == 0) {
    return u"0"_s;
  }
  return QString::number(inAll / inARow + (inAll % inARow != 0 ? 1 : 0));
}

QString StoredNumber(const QString& text) {
  return automation::CStr(QVariant::fromValue(CCur(u'0' + text)));
}

std::optional<SheetRefusal> RefusalOf(const SheetTexts& texts) {
  const auto isEmptyBox = [](const QString& text) { return text.isEmpty() || text == u" "; };
  const auto isEmptyCaption = [](const QString& text) { return text.isEmpty(); };
  if (std::ranges::any_of(texts.boxes, isEmptyBox) || std::ranges::any_of(texts.captions, isEmptyCaption)) {
    return SheetRefusal{.firstString = 10018};
  }
  if (CInt(texts.totals) <= 0) {
    return SheetRefusal{10019, 10020, SheetBox::Totals};
  }
  if (CInt(texts.perRow) == 0) {
    return SheetRefusal{10019, 10021, SheetBox::PerRow};
  }
  if (CInt(texts.rows) > documents::mostRows) {
    return SheetRefusal{10019, 10022, SheetBox::Totals};
  }
  if (IsTooShort(texts.width, SheetNumber::Width)) {
    return SheetRefusal{10023, 10024, SheetBox::Width};
  }
  if (IsTooShort(texts.height, SheetNumber::Height)) {
    // Intended: the texts of the height's message don't belong together.
    return SheetRefusal{10026, 10027, SheetBox::Height};
  }
  return std::nullopt;
}

}  // namespace labels
