#include "documents/letter/SmallCapitals.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

namespace documents {

namespace {

using Ranges = QList<QTextLayout::FormatRange>;

constexpr double share = 0.8;
constexpr int manyCharacters = 10'000;

// Sizes are whole half-points, as all that is laid out.
QTextCharFormat SmallFormat(const QTextCharFormat& run, const QTextDocument& letter) {
  const double points = run.fontPointSize() > 0 ? run.fontPointSize() : letter.defaultFont().pointSizeF();
  QTextCharFormat format;
  format.setFontCapitalization(QFont::AllUppercase);
  format.setFontPointSize(qMax(1, qRound(points * share * 2)) / 2.0);
  return format;
}

void AddRun(Ranges& ranges, const QString& text, int start, int end, const QTextCharFormat& format) {
  for (int i = start; i < end; ++i) {
    if (!text[i].isLower()) {
      continue;
    }
    if (!ranges.isEmpty() && ranges.last().start + ranges.last().length == i && ranges.last().format == format) {
      ++ranges.last().length;
    } else {
      ranges.append({.start = i, .length = 1, .format = format});
    }
  }
}

Ranges RangesOf(const QTextBlock& block) {
  Ranges ranges;
  for (auto at = block.begin(); !at.atEnd(); ++at) {
    const QTextFragment run = at.fragment();
    if (const QTextCharFormat format = run.charFormat(); format.fontCapitalization() == QFont::SmallCaps) {
      const int start = run.position() - block.position();
      AddRun(ranges, block.text(), start, start + run.length(), SmallFormat(format, *block.document()));
    }
  }
  return ranges;
}

// Few letters have any; their formats are fewer than their paragraphs.
bool HasSmallCapitals(const QTextDocument& letter) {
  const QList<QTextFormat> formats = letter.allFormats();
  return std::any_of(formats.begin(), formats.end(), [](const QTextFormat& format) {
    return format.intProperty(QTextFormat::FontCapitalization) == QFont::SmallCaps;
  });
}

}  // namespace

void ShowSmallCapitals(QTextDocument& letter, int from, int length) {
  if (length > manyCharacters && !HasSmallCapitals(letter)) {
    return;
  }
  for (QTextBlock block = letter.findBlock(from); block.isValid() && block.position() <= from + length;
       block = block.next()) {
    if (const Ranges ranges = RangesOf(block); ranges != block.layout()->formats()) {
      block.layout()->setFormats(ranges);
      letter.markContentsDirty(block.position(), block.length());
    }
  }
}

}  // namespace documents
