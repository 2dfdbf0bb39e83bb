#pragma once

#include "host/paper/PlainLetters.h"

#include <QFont>
#include <QFontMetricsF>
#include <QStringList>
#include <QStringView>

#include <array>

namespace host {

/// How wide texts of a font are, in the units of its pixel size and as designed, so that it is the same on every
/// device. Plain texts are added up from a table: a list of a hundred thousand rows is measured before anybody waits.
class TextMeasure {
 public:
  /// The font has a pixel size and no kerning.
  explicit TextMeasure(const QFont& font);

  /// Of a text in one line; a control character counts as a blank.
  double Width(QStringView text) const;
  /// The text in lines of that width at most: parted at blanks, and within a word that is longer. The last of `most`
  /// lines ends in an ellipsis where there is more. At least one.
  QStringList Lines(const QString& text, double width, int most) const;

 private:
  qsizetype FittingLength(QStringView text, double width) const;

  QFontMetricsF m_metrics;
  std::array<double, plainLetters> m_plain = {};
};

}  // namespace host
