#pragma once

#include "documents/rtf/Styles.h"
#include "documents/rtf/TextEncoder.h"
#include "documents/rtf/WriterTables.h"

namespace rtf {

/// Writes the words that lead from one style to another.
class StyleWriter {
 public:
  StyleWriter(RtfText& text, WriterTables& tables) : m_text(text), m_tables(tables) {}

  /// From what is in force to `style`; the link in it is not looked at. `\plain` only where a carried word, or a
  /// font, can't be undone otherwise.
  void Characters(const CharacterStyle& style);
  /// The words of a paragraph's style behind its `\pard`.
  void Paragraph(const ParagraphStyle& style);
  /// Carried words, colours as the numbers of the table.
  void Words(const QList<CarriedWord>& words);

  /// `\plain`.
  void Reset();
  const CharacterStyle& Current() const { return m_current; }
  /// What the end of a group brings back.
  void Restore(const CharacterStyle& style) { m_current = style; }

 private:
  void Toggle(const char* word, bool on);
  void Underline(const CharacterStyle& style);
  void Vertical(const CharacterStyle& style);
  void Background(const CharacterStyle& style);
  void CarriedCharacters(const CharacterStyle& style);

  RtfText& m_text;
  WriterTables& m_tables;
  CharacterStyle m_current;
};

}  // namespace rtf
