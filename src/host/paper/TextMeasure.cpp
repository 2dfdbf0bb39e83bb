#include "host/paper/TextMeasure.h"

#include <algorithm>

namespace host {

namespace {

// Metrics of a large size are those of the design, whatever the rounding of a small one.
constexpr int enlarged = 64;

QFont Large(QFont font) {
  font.setPixelSize(font.pixelSize() * enlarged);
  return font;
}

}  // namespace

TextMeasure::TextMeasure(const QFont& font) : m_metrics(Large(font)) {
  for (std::size_t place = ' '; place < m_plain.size(); ++place) {
    m_plain[place] = m_metrics.horizontalAdvance(QChar(LetterAt(place))) / enlarged;
  }
  std::fill_n(m_plain.begin(), ' ', m_plain[' ']);
}

double TextMeasure::Width(QStringView text) const {
  double width = 0;
  for (const QChar each : text) {
    const std::size_t place = PlaceOf(each.unicode());
    if (place >= m_plain.size()) {
      return m_metrics.horizontalAdvance(text.toString()) / enlarged;
    }
    width += m_plain[place];
  }
  return width;
}

// At least one character, so that every text comes to its end.
qsizetype TextMeasure::FittingLength(QStringView text, double width) const {
  qsizetype least = 1;
  qsizetype most = text.size();
  while (least < most) {
    const qsizetype middle = (least + most + 1) / 2;
    if (Width(text.left(middle)) <= width) {
      least = middle;
    } else {
      most = middle - 1;
    }
  }
  const bool partsAPair = least < text.size() && text[least - 1].isHighSurrogate();
  return partsAPair ? std::max<qsizetype>(least - 1, std::min<qsizetype>(2, text.size())) : least;
}

QStringList TextMeasure::Lines(const QString& text, double width, int most) const {
  const QString simple = text.simplified();
  QStringView rest = simple;
  QStringList lines;
  while (!rest.isEmpty() && lines.size() < most) {
    qsizetype length = FittingLength(rest, width);
    if (length < rest.size()) {
      const qsizetype blank = rest.left(length + 1).lastIndexOf(u' ');
      length = blank > 0 ? blank : length;
    }
    lines.append(rest.left(length).toString());
    rest = rest.mid(length).trimmed();
  }
  if (!rest.isEmpty()) {
    QString& last = lines.last();
    last = last.left(FittingLength(last, width - Width(u"…"))) + u'…';
  }
  return lines.isEmpty() ? QStringList(QString()) : lines;
}

}  // namespace host
