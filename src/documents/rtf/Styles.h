#pragma once

#include "documents/rtf/WordList.h"

#include <QList>

#include <cstdint>

/// Character and paragraph formatting as RTF knows it, between the reader, the writer and Qt's formats. Lengths are
/// twips (1/1440 inch), sizes half-points, as in the control words.
namespace rtf {

enum class UnderlineKind : std::uint8_t {
  None,
  Single,
  Dots,
  Dashes,
  DashDot,
  DashDotDot,
  Wave,
  // Qt shows the rest as a single line or as the nearest of the above; the kind is carried.
  Double,
  Words,
  Thick,
  ThickDots,
  ThickDashes,
  ThickDashDot,
  ThickDashDotDot,
  LongDashes,
  ThickLongDashes,
  HeavyWave,
  DoubleWave,
};

enum class BackgroundKind : std::uint8_t { Highlight, Background, Shading };
enum class VerticalKind : std::uint8_t { Normal, Super, Sub, Raised, Lowered };
enum class Alignment : std::uint8_t { Left, Centre, Right, Justify };
enum class TabKind : std::uint8_t { Left, Centre, Right, Decimal };
enum class TabLeader : std::uint8_t { None, Dots, MiddleDots, Hyphens, Underline, Thick, Equals };

/// No colour of its own: the text's or the paper's.
inline constexpr int automaticColour = -1;

/// Lengths and sizes beyond these are cut down to them.
inline constexpr int largestTwips = 32767;
inline constexpr int largestHalfPoints = 3276;

/// Stands for the number of the default font, whichever that is.
inline constexpr int defaultFont = -1;

/// Stands for no list of the list table: 0 may be one.
inline constexpr int noList = -1;

struct CharacterStyle {
  int font = defaultFont;  ///< A number of the font table.
  int halfPoints = 24;
  int colour = automaticColour;  ///< 0xRRGGBB
  int background = automaticColour;
  int offset = 0;  ///< Half-points up or down, with Raised and Lowered.
  int link = 0;    ///< The innermost field or object whose result this is: an index of the reader's, 0 for none.
  bool bold = false;
  bool italic = false;
  std::uint8_t strike = 0;  ///< Lines.
  UnderlineKind underline = UnderlineKind::None;
  bool caps = false;  ///< What shows where both are on.
  bool smallCaps = false;
  VerticalKind vertical = VerticalKind::Normal;
  BackgroundKind backgroundKind = BackgroundKind::Highlight;
  bool hidden = false;
  bool rightToLeft = false;
  WordList carried;

  bool operator==(const CharacterStyle&) const = default;
};

size_t qHash(const CharacterStyle& style, size_t seed = 0);

struct TabStop {
  int position = 0;  ///< From the column's edge.
  TabKind kind = TabKind::Left;
  TabLeader leader = TabLeader::None;
  bool bar = false;  ///< A line in the paragraph instead of a stop.

  bool operator==(const TabStop&) const = default;
};

struct ParagraphStyle {
  Alignment alignment = Alignment::Left;
  int left = 0;
  int right = 0;
  int first = 0;
  int before = 0;
  int after = 0;
  int lineSpacing = 0;  ///< `\sl`; 0 for the font's own.
  bool lineMultiple = false;
  bool rightToLeft = false;
  bool pageBreakBefore = false;
  bool inTable = false;
  int tableLevel = 0;
  int listNumber = noList;  ///< `\ls`
  int listLevel = 0;
  int numbering = 0;  ///< The `\pn` group in force: an index of the reader's, 0 for none.
  QList<TabStop> tabs;
  WordList carried;

  /// 0 outside tables.
  int Level() const { return tableLevel > 0 ? tableLevel : (inTable ? 1 : 0); }
  bool operator==(const ParagraphStyle&) const = default;
};

size_t qHash(const ParagraphStyle& style, size_t seed = 0);

/// The control word of each kind; empty for none.
const char* WordOf(UnderlineKind kind);
const char* WordOf(BackgroundKind kind);
const char* WordOf(Alignment alignment);
const char* WordOf(TabKind kind);
const char* WordOf(TabLeader leader);

}  // namespace rtf
