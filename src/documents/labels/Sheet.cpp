#include "documents/labels/Sheet.h"

#include "platform/adodb/Recordset.h"
#include "platform/automation/Error.h"

#include <algorithm>

using automation::Currency;

namespace documents {

namespace {

struct Row {
  SheetNumber number;
  const char16_t* column;
  Limits bounds;
};

constexpr std::array rows{
    Row{SheetNumber::Totals, u"NETIQUETASTOTAL", {1, 40}},
    Row{SheetNumber::PerRow, u"NETIQUETASANCHO", {1, 4}},
    Row{SheetNumber::Width, u"ANCHOETIQUETA", {6, 20}},
    Row{SheetNumber::Height, u"ALTOETIQUETA", {2, 29}},
    Row{SheetNumber::HorizontalGap, u"ANCHOSEPARACION", {0, 10}},
    Row{SheetNumber::VerticalGap, u"ALTOSEPARACION", {0, 10}},
    Row{SheetNumber::Left, u"ANCHO1ETIQUETA", {0, 10}},
    Row{SheetNumber::Top, u"ALTO1ETIQUETA", {0, 10}},
};

constexpr bool HasEveryNumberAtItsPlace() {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].number != SheetNumber(i)) {
      return false;
    }
  }
  return rows.size() == sheetNumberCount;
}
static_assert(HasEveryNumberAtItsPlace());

// A whole number in an amount's ten-thousandths.
constexpr qint64 one = 10000;
// A count or a length (cm) beyond it is not drawn.
constexpr int largestDrawn = 1000;

bool CanBeDrawn(const std::optional<Currency>& number, int least) {
  return number && number->Scaled() >= least * one && number->Scaled() <= largestDrawn * one;
}

std::optional<Currency> NumberIn(const QVariant& value) {
  if (!automation::IsNumeric(value)) {
    return std::nullopt;
  }
  try {
    return automation::CCur(value);
  } catch (const automation::Error&) {
    return std::nullopt;
  }
}

Micrometres End(Micrometres first, Micrometres size, Micrometres gap, int count) {
  return first + count * size + (count - 1) * gap;
}

}  // namespace

QString ColumnOf(SheetNumber number) {
  return QStringView(rows[static_cast<std::size_t>(number)].column).toString();
}

Limits BoundsOf(SheetNumber number) {
  return rows[static_cast<std::size_t>(number)].bounds;
}

std::optional<Sheet> MakeSheet(const SheetNumbers& numbers) {
  const auto& [totals, perRow, width, height, horizontalGap, verticalGap, left, top] = numbers;
  const auto isLength = [](const std::optional<Currency>& number) { return CanBeDrawn(number, 0); };
  if (!CanBeDrawn(totals, 1) || !CanBeDrawn(perRow, 1) || !std::all_of(numbers.begin() + 2, numbers.end(), isLength)) {
    return std::nullopt;
  }
  return Sheet{.totals = static_cast<int>(totals->Scaled() / one),
               .perRow = static_cast<int>(perRow->Scaled() / one),
               .width = width->Scaled(),
               .height = height->Scaled(),
               .horizontalGap = horizontalGap->Scaled(),
               .verticalGap = verticalGap->Scaled(),
               .left = left->Scaled(),
               .top = top->Scaled()};
}

std::optional<Sheet> ReadSheet(adodb::Recordset& row) {
  SheetNumbers numbers;
  std::ranges::transform(rows, numbers.begin(), [&](const Row& number) { return NumberIn(row.Field(number.column)); });
  return MakeSheet(numbers);
}

std::vector<QRectF> LabelRectangles(const Sheet& sheet) {
  std::vector<QRectF> labels;
  labels.reserve(static_cast<std::size_t>(sheet.totals));
  for (int i = 0; i < sheet.totals; ++i) {
    const Micrometres x = sheet.left + (i % sheet.perRow) * (sheet.width + sheet.horizontalGap);
    const Micrometres y = sheet.top + (i / sheet.perRow) * (sheet.height + sheet.verticalGap);
    labels.emplace_back(QPointF(double(x), double(y)), QSizeF(double(sheet.width), double(sheet.height)));
  }
  return labels;
}

Micrometres UsedWidth(const Sheet& sheet) {
  return End(sheet.left, sheet.width, sheet.horizontalGap, std::min(sheet.perRow, sheet.totals));
}

Micrometres UsedHeight(const Sheet& sheet) {
  return End(sheet.top, sheet.height, sheet.verticalGap, (sheet.totals + sheet.perRow - 1) / sheet.perRow);
}

bool Fits(const Sheet& sheet, const Paper& paper) {
  return UsedWidth(sheet) <= paper.width && UsedHeight(sheet) <= paper.height;
}

}  // namespace documents
