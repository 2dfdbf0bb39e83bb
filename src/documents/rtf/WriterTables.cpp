#include "documents/rtf/WriterTables.h"

#include "documents/rtf/CodePages.h"
#include "documents/rtf/Source.h"
#include "documents/rtf/Styles.h"
#include "documents/rtf/TextEncoder.h"
#include "documents/rtf/Tokenizer.h"

#include <algorithm>

namespace rtf {

namespace {

std::string_view View(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// Whether the last colour lacks its semicolon, so that another would become part of it, or make it one.
bool EndsInsideEntry(const QByteArray& groups) {
  const QByteArray open = groups.chopped(1);
  Tokenizer tokenizer(View(open));
  bool inside = false;
  int depth = 0;
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    if (token.kind == TokenKind::GroupStart) {
      ++depth;
    } else if (token.kind == TokenKind::GroupEnd) {
      --depth;
      inside = inside && depth != 0;
    } else if (token.kind == TokenKind::Word) {
      inside = inside || token.text == "red" || token.text == "green" || token.text == "blue";
    } else if (token.kind == TokenKind::Text && token.text.find(';') != std::string_view::npos) {
      inside = false;
    }
  }
  return inside;
}

/// Whether the last font stands between braces of its own; readers take the form of a table's first fonts for all.
bool EndsBraced(const QByteArray& groups) {
  Tokenizer tokenizer(View(groups));
  bool braced = true;
  int depth = 0;
  for (Token token = tokenizer.Next(); token.kind != TokenKind::End; token = tokenizer.Next()) {
    if (token.kind == TokenKind::GroupStart) {
      ++depth;
      braced = true;
    } else if (token.kind == TokenKind::GroupEnd) {
      --depth;
    } else if (token.kind == TokenKind::Text && depth == 1) {
      braced = braced && token.text.find(';') == std::string_view::npos;
    }
  }
  return braced;
}

QByteArray Extended(const QByteArray& groups, const QByteArray& entries) {
  return entries.isEmpty() ? groups : groups.chopped(1) + entries + '}';
}

}  // namespace

WriterTables::WriterTables(const PreambleData& preamble, const Source* source)
    : m_source(source),
      m_codePage(preamble.codePage),
      m_defaultFont(preamble.defaultFont),
      m_fontGroups(preamble.fontTables),
      m_colourGroups(preamble.colourTables) {
  FontTable fonts;
  fonts.Add(View(m_fontGroups), m_codePage);
  QList<int> numbers = fonts.Fonts().keys();
  std::sort(numbers.begin(), numbers.end());
  for (const int number : numbers) {
    const QString description = fonts.At(number).Description();
    if (!m_fonts.contains(description)) {
      m_fonts.insert(description, number);
    }
    m_numbers.insert(number);
  }
  if (numbers.isEmpty()) {
    m_fontGroups = "{\\fonttbl}";
  }
  m_bracedFonts = EndsBraced(m_fontGroups);
  ColourTable colours;
  if (m_colourGroups.isEmpty()) {
    m_colourGroups = "{\\colortbl ;}";
  }
  colours.Add(View(m_colourGroups));
  m_nextColour = static_cast<int>(colours.Colours().size());
  m_automatic = m_nextColour == 0 || colours.At(0) == automaticColour ? 0 : -1;
  for (int number = 1; number < m_nextColour; ++number) {
    const int colour = colours.At(number);
    if (colour == automaticColour && m_automatic < 0) {
      m_automatic = number;
    } else if (!m_colours.contains(colour)) {
      m_colours.insert(colour, number);
    }
  }
  m_openColours = EndsInsideEntry(m_colourGroups);
  if (m_nextColour == 0) {
    m_newColours = ";";
    m_nextColour = 1;
  }
  m_readColours = m_nextColour;
}

int WriterTables::FontNumber(const Font& font) {
  const QString description = font.Description();
  const auto known = m_fonts.constFind(description);
  if (known != m_fonts.constEnd()) {
    return *known;
  }
  if (description == NoFont().Description() && !m_numbers.contains(m_defaultFont)) {
    m_numbers.insert(m_defaultFont);
    if (!m_numbers.contains(0) || m_defaultFont == 0) {
      m_numbers.insert(0);
      m_namesDefault = false;
    }
    m_fonts.insert(description, defaultFont);
    return defaultFont;
  }
  const int number = AddFont();
  m_fonts.insert(description, number);
  RtfText entry;
  if (m_bracedFonts) {
    entry.OpenGroup();
  }
  entry.Word("\\f", number);
  entry.Word(QByteArray("\\f" + font.family.toLatin1()).constData());
  if (font.charset >= 0) {
    entry.Word("\\fcharset", font.charset);
  }
  if (const int page = CodePageOfCharset(font.charset); font.codePage != page) {
    entry.Word("\\cpg", font.codePage);
  }
  entry.Text(FontName(font.name), 0);
  entry.Raw(m_bracedFonts ? ";}" : ";");
  m_newFonts += entry.Bytes();
  return number;
}

/// A number that means nothing in what is kept.
int WriterTables::AddFont() {
  const auto isTaken = [this](int number) {
    return m_numbers.contains(number) || (m_source != nullptr && m_source->Numbers().fonts.contains(number));
  };
  int number = m_numbers.isEmpty() ? m_defaultFont : m_nextFont;
  while (isTaken(number)) {
    number = m_nextFont++;
  }
  m_numbers.insert(number);
  return number;
}

int WriterTables::ColourNumber(int colour) {
  const auto known = m_colours.constFind(colour);
  return known != m_colours.constEnd() ? *known : AddColour(colour);
}

int WriterTables::AutomaticColourNumber() {
  if (m_automatic < 0) {
    AddAutomatic();
  }
  return m_automatic;
}

void WriterTables::AddAutomatic() {
  m_newColours += ';';
  m_automatic = m_automatic < 0 ? m_nextColour : m_automatic;
  ++m_nextColour;
}

int WriterTables::AddColour(int colour) {
  while (m_source != nullptr && m_source->Numbers().colours.contains(m_nextColour)) {
    // It stays the automatic colour.
    AddAutomatic();
  }
  m_newColours += "\\red" + QByteArray::number((colour >> 16) & 0xFF) + "\\green" +
                  QByteArray::number((colour >> 8) & 0xFF) + "\\blue" + QByteArray::number(colour & 0xFF) + ';';
  m_colours.insert(colour, m_nextColour);
  return m_nextColour++;
}

/// A damaged table may hide what is added to it; then the new fonts are a table of their own.
QByteArray WriterTables::FontGroups() const {
  if (m_newFonts.isEmpty()) {
    return m_fontGroups;
  }
  const QByteArray extended = Extended(m_fontGroups, m_newFonts);
  FontTable fonts;
  fonts.SetDefault(m_defaultFont);
  fonts.Add(View(extended), m_codePage);
  const bool complete = std::all_of(m_fonts.keyValueBegin(), m_fonts.keyValueEnd(), [&](const auto& font) {
    return fonts.At(font.second).Description() == font.first;
  });
  return complete ? extended : m_fontGroups + "{\\fonttbl" + m_newFonts + '}';
}

QByteArray WriterTables::ColourGroups() const {
  const bool isOpen = m_openColours && !m_newColours.isEmpty();
  return isOpen ? m_colourGroups + "{\\colortbl" + m_newColours + '}' : Extended(m_colourGroups, m_newColours);
}

}  // namespace rtf
