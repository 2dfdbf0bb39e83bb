#include "letters/editor/MarginText.h"

#include "platform/automation/Conversion.h"

#include <cmath>

namespace letters {

namespace {

// A number of single precision has seven digits.
constexpr int singleDigits = 7;

}  // namespace

std::optional<double> ReadMargin(const QString& text) {
  const std::optional<QByteArray> number = automation::SpanishNumber(QString(text).replace(u'.', u','));
  if (!number) {
    return std::nullopt;
  }
  const double margin = number->toDouble();
  return std::isfinite(margin) ? std::optional(margin) : std::nullopt;
}

QString MarginText(double margin) {
  return automation::CStr(margin);
}

std::optional<QString> StoredMargin(const QString& text) {
  const std::optional<double> margin = ReadMargin(text);
  if (!margin || !std::isfinite(static_cast<float>(*margin))) {
    return std::nullopt;
  }
  return QString::number(static_cast<double>(static_cast<float>(*margin)), 'g', singleDigits)
      .toUpper()
      .replace(u'.', u',');
}

}  // namespace letters
