#pragma once

#include "host/paper/PlainLetters.h"

#include <QFont>
#include <QList>
#include <QPointF>
#include <QStringView>

#include <array>

class QPainter;

namespace host {

/// Glyphs, and where each begins on its baseline.
struct PlacedGlyphs {
  QList<quint32> indexes;
  QList<QPointF> positions;
};

/// The glyphs of a font's plain letters: what a page says in them is painted at one go and without shaping, as it would
/// be text by text. For any thread.
class GlyphTable {
 public:
  /// The font has no kerning, and a letter spacing in its own units or none.
  explicit GlyphTable(const QFont& font);

  /// False, and nothing is added, where some letter is not plain or is missing in the font.
  bool Add(QStringView text, QPointF baseline, PlacedGlyphs& glyphs) const;
  /// In the painter's pen and font, which is the table's.
  static void Paint(QPainter& painter, const PlacedGlyphs& glyphs);

 private:
  std::array<quint32, plainLetters> m_glyphs = {};  ///< Zero: not to be painted so.
  std::array<double, plainLetters> m_advances = {};
};

}  // namespace host
