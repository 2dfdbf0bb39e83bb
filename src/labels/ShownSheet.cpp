#include "labels/ShownSheet.h"

#include "labels/SheetRules.h"

#include <algorithm>

using automation::Currency;
using documents::Micrometres;
using documents::Sheet;
using namespace Qt::StringLiterals;

namespace labels {

namespace {

QString Centimetres(Micrometres length) {
  return automation::CStr(QVariant::fromValue(Currency::FromScaled(length)));
}

QString Excess(const QString& direction, Micrometres used, Micrometres available) {
  return u"a lo %1 hacen falta %2 cm y hay %3 cm"_s.arg(direction, Centimetres(used), Centimetres(available));
}

}  // namespace

std::optional<Sheet> ReadSheet(const SheetBoxTexts& texts) {
  documents::SheetNumbers numbers;
  std::ranges::transform(texts, numbers.begin(),
                         [](const QString& text) { return text.isEmpty() ? std::nullopt : BoundedNumber(text); });
  return documents::MakeSheet(numbers);
}

QString FitText(const std::optional<Sheet>& sheet, const documents::Paper& paper) {
  if (!sheet) {
    return u"La hoja se dibuja cuando están todas las medidas."_s;
  }
  if (Fits(*sheet, paper)) {
    return u"La hoja cabe en un %1."_s.arg(paper.name);
  }
  QStringList excesses;
  if (UsedWidth(*sheet) > paper.width) {
    excesses.append(Excess(u"ancho"_s, UsedWidth(*sheet), paper.width));
  }
  if (UsedHeight(*sheet) > paper.height) {
    excesses.append(Excess(u"alto"_s, UsedHeight(*sheet), paper.height));
  }
  return u"La hoja no cabe en un %1: %2."_s.arg(paper.name, excesses.join(u"; "_s));
}

}  // namespace labels
