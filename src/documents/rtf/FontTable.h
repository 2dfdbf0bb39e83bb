#pragma once

#include <QHash>
#include <QString>

#include <string_view>

namespace rtf {

/// A font as the font table describes it.
struct Font {
  QString family = QStringLiteral("nil");  ///< `\fnil`, `\froman` and so on, without the f.
  int charset = -1;                        ///< `\fcharset`, -1 where it is missing or none.
  int codePage = 0;                        ///< Of bytes in this font; 0 for the document's.
  QString name;

  /// As it is kept in a character format ("swiss,0,Arial"), and back.
  QString Description() const;
  static Font FromDescription(QStringView description);
};

/// What text is shown in that has a font of no table. It is written without one, too.
const Font& NoFont();

/// A name without what can't stand in the table.
QString FontName(QString name);

/// The fonts of `\fonttbl`, by their numbers. Source: Rich Text Format Specification 1.9.1, "Font Table".
class FontTable {
 public:
  /// Fonts beyond this many are left out; text in them shows in the default font.
  static constexpr int mostFonts = 1024;

  /// Adds the fonts of one `{\fonttbl ...}` group; entries between braces of their own or not. `codePage` is the
  /// document's, for names.
  void Add(std::string_view group, int codePage);
  void SetDefault(int number) { m_default = number; }
  int Default() const { return m_default; }

  bool Contains(int number) const { return m_fonts.contains(number); }
  /// The font of a number, or the default one, or else NoFont.
  const Font& At(int number) const;
  const QHash<int, Font>& Fonts() const { return m_fonts; }

 private:
  class Parser;

  QHash<int, Font> m_fonts;
  int m_default = 0;
};

}  // namespace rtf
