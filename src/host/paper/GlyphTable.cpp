#include "host/paper/GlyphTable.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>

#include <algorithm>

namespace host {

namespace {

// Control characters and soft hyphens are for whoever shapes a text.
bool IsPainted(QChar letter) {
  return letter.isPrint() && letter.category() != QChar::Other_Format;
}

}  // namespace

GlyphTable::GlyphTable(const QFont& font) {
  std::array<QChar, plainLetters> letters;
  for (std::size_t place = 0; place < letters.size(); ++place) {
    letters[place] = LetterAt(place);
  }
  const QRawFont raw = QRawFont::fromFont(font);
  std::array<QPointF, plainLetters> advances;
  int count = plainLetters;
  if (!raw.glyphIndexesForChars(letters.data(), plainLetters, m_glyphs.data(), &count) || count != plainLetters ||
      !raw.advancesForGlyphIndexes(m_glyphs.data(), advances.data(), count)) {
    m_glyphs = {};
    return;
  }
  for (std::size_t place = 0; place < letters.size(); ++place) {
    m_advances[place] = advances[place].x() + font.letterSpacing();
    m_glyphs[place] = IsPainted(letters[place]) ? m_glyphs[place] : 0;
  }
}

bool GlyphTable::Add(QStringView text, QPointF baseline, PlacedGlyphs& glyphs) const {
  const bool isPlain = std::ranges::all_of(text, [&](QChar letter) {
    const std::size_t place = PlaceOf(letter.unicode());
    return place < plainLetters && m_glyphs[place] != 0;
  });
  if (!isPlain) {
    return false;
  }
  for (const QChar letter : text) {
    const std::size_t place = PlaceOf(letter.unicode());
    glyphs.indexes.append(m_glyphs[place]);
    glyphs.positions.append(baseline);
    baseline.rx() += m_advances[place];
  }
  return true;
}

// A raw font belongs to the thread that made it, and so do the painter's engines.
void GlyphTable::Paint(QPainter& painter, const PlacedGlyphs& glyphs) {
  QGlyphRun run;
  run.setRawFont(QRawFont::fromFont(painter.font()));
  run.setGlyphIndexes(glyphs.indexes);
  run.setPositions(glyphs.positions);
  painter.drawGlyphRun(QPointF(), run);
}

}  // namespace host
