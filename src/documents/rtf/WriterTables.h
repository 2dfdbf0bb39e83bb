#pragma once

#include "documents/rtf/ColourTable.h"
#include "documents/rtf/FontTable.h"
#include "documents/rtf/Preamble.h"

#include <QHash>
#include <QSet>

namespace rtf {

class Source;

/// The fonts and colours of a document that is written: those that were read keep their numbers, because what is
/// carried byte for byte refers to them; new ones come behind.
class WriterTables {
 public:
  /// `source` has the bytes that are kept, null where there are none; it must outlive the tables.
  explicit WriterTables(const PreambleData& preamble, const Source* source = nullptr);

  /// defaultFont for text that has none.
  int FontNumber(const Font& font);
  /// A number that is not 0, which stands for none where it is a background's.
  int ColourNumber(int colour);
  int AutomaticColourNumber();
  /// The code page of text in that font.
  int CodePage(const Font& font) const { return font.codePage == 0 ? m_codePage : font.codePage; }

  /// Whether there is a default font to name; readers show one of their own where there is none.
  bool NamesDefaultFont() const { return m_namesDefault && (m_defaultFont != 0 || m_numbers.contains(0)); }
  bool HasNewFonts() const { return !m_newFonts.isEmpty(); }
  bool HasNewColours() const { return m_nextColour != m_readColours; }
  QByteArray FontGroups() const;
  QByteArray ColourGroups() const;

 private:
  int AddFont();
  void AddAutomatic();
  int AddColour(int colour);

  const Source* m_source;
  int m_codePage;
  int m_defaultFont;
  QByteArray m_fontGroups;
  QByteArray m_colourGroups;
  QHash<QString, int> m_fonts;
  QSet<int> m_numbers;
  int m_nextFont = 0;
  bool m_bracedFonts = true;
  bool m_openColours = false;
  bool m_namesDefault = true;
  QByteArray m_newFonts;
  QHash<int, int> m_colours;
  int m_automatic = 0;
  int m_nextColour = 0;
  int m_readColours = 0;
  QByteArray m_newColours;
};

}  // namespace rtf
