#include "documents/people/MissingSigns.h"

#include <QGlyphRun>
#include <QTextLayout>

#include <algorithm>

namespace documents {

namespace {

// What every font of the west has, so that usual names cost nothing.
constexpr char32_t lastUsual = 0x24F;

bool HasGlyph(const QString& sign) {
  QTextLayout layout(sign);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const QList<QGlyphRun> runs = layout.glyphRuns();
  return std::ranges::none_of(runs, [](const QGlyphRun& run) { return run.glyphIndexes().contains(0); });
}

// Marks and what only joins or turns signs have no picture of their own.
bool IsShown(char32_t sign) {
  return QChar::isPrint(sign) && !QChar::isMark(sign) && QChar::category(sign) != QChar::Other_Format;
}

}  // namespace

QString SignsWithoutFont(const QString& text) {
  QString missing;
  for (const char32_t sign : text.toUcs4()) {
    const QString one = QString::fromUcs4(&sign, 1);
    if (sign > lastUsual && IsShown(sign) && !missing.contains(one) && !HasGlyph(one)) {
      missing += one;
    }
  }
  return missing;
}

}  // namespace documents
