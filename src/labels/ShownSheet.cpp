#include "labels/SheetLayout.h"

#include "labels/SheetRules.h"
#include "platform/automation/Conversion.h"

#include <algorithm>

using automation::Currency;
using namespace Qt::StringLiterals;

namespace labels {

namespace {

constexpr qint64 one = 10000;

// A count or a measure (cm) beyond it is not drawn: no bound of a box lets it through.
constexpr int largestDrawn = 1000;

std::optional<int> ReadCount(const QString& text) {
  const std::optional<Currency> number = text.isEmpty() ? std::nullopt : BoundedNumber(text);
  if (!number || number->Scaled() < one || number->Scaled() > largestDrawn * one) {
    return std::nullopt;
  }
  return static_cast<int>(number->Scaled() / one);
}

Micrometres End(Micrometres first, Micrometres size, Micrometres gap, int count) {
  return first + count * size + (count - 1) * gap;
}

int Columns(const SheetMeasures& sheet) {
  return std::min(sheet.perRow, sheet.totals);
}

int Rows(const SheetMeasures& sheet) {
  return (sheet.totals + sheet.perRow - 1) / sheet.perRow;
}

QString Centimetres(Micrometres length) {
  return automation::CStr(QVariant::fromValue(Currency::FromScaled(length)));
}

QString Excess(const QString& direction, Micrometres used, Micrometres available) {
  return u"a lo %1 hacen falta %2 cm y hay %3 cm"_s.arg(direction, Centimetres(used), Centimetres(available));
}

}  // namespace

std::optional<SheetMeasures> ReadSheet(const QString& totals, const QString& perRow,
                                       const std::array<QString, MeasureBoxes>& measures) {
  const std::optional<int> inAll = ReadCount(totals);
  const std::optional<int> inARow = ReadCount(perRow);
  if (!inAll || !inARow) {
    return std::nullopt;
  }
  SheetMeasures sheet{.totals = *inAll, .perRow = *inARow};
  for (std::size_t box = 0; box < measures.size(); ++box) {
    const std::optional<Currency> number = measures[box].isEmpty() ? std::nullopt : BoundedNumber(measures[box]);
    if (!number || number->Scaled() > largestDrawn * one) {
      return std::nullopt;
    }
    sheet.measures[box] = number->Scaled();
  }
  return sheet;
}

std::vector<QRectF> LabelRectangles(const SheetMeasures& sheet) {
  const auto& [width, height, horizontalGap, verticalGap, left, top] = sheet.measures;
  std::vector<QRectF> labels;
  labels.reserve(static_cast<std::size_t>(sheet.totals));
  for (int i = 0; i < sheet.totals; ++i) {
    const Micrometres x = left + (i % sheet.perRow) * (width + horizontalGap);
    const Micrometres y = top + (i / sheet.perRow) * (height + verticalGap);
    labels.emplace_back(QPointF(double(x), double(y)), QSizeF(double(width), double(height)));
  }
  return labels;
}

Micrometres UsedWidth(const SheetMeasures& sheet) {
  return End(sheet.measures[Left], sheet.measures[Width], sheet.measures[HorizontalGap], Columns(sheet));
}

Micrometres UsedHeight(const SheetMeasures& sheet) {
  return End(sheet.measures[Top], sheet.measures[Height], sheet.measures[VerticalGap], Rows(sheet));
}

bool FitsPage(const SheetMeasures& sheet) {
  return UsedWidth(sheet) <= pageWidth && UsedHeight(sheet) <= pageHeight;
}

QString FitText(const std::optional<SheetMeasures>& sheet) {
  if (!sheet) {
    return u"La hoja se dibuja cuando están todas las medidas."_s;
  }
  if (FitsPage(*sheet)) {
    return u"La hoja cabe en un A4."_s;
  }
  QStringList excesses;
  if (UsedWidth(*sheet) > pageWidth) {
    excesses.append(Excess(u"ancho"_s, UsedWidth(*sheet), pageWidth));
  }
  if (UsedHeight(*sheet) > pageHeight) {
    excesses.append(Excess(u"alto"_s, UsedHeight(*sheet), pageHeight));
  }
  return u"La hoja no cabe en un A4: "_s + excesses.join(u"; "_s) + u"."_s;
}

}  // namespace labels
