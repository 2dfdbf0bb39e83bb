#pragma once

#include <cstdint>
#include <string_view>

namespace rtf {

/// What the reader does with a control word. `Keyword::value` says more where noted.
enum class Action : std::uint8_t {
  // Character formatting.
  Plain,
  Font,
  FontSize,
  Bold,
  Italic,
  Underline,  ///< value: an UnderlineKind
  UnderlineNone,
  Strike,  ///< value: 1 or 2 lines
  Caps,
  SmallCaps,
  Super,
  Sub,
  NoSuperSub,
  Raise,
  Lower,
  Colour,
  Background,  ///< value: a BackgroundKind
  Hidden,
  RunDirection,  ///< value: 1 for right to left
  CarryCharacter,
  // Paragraph formatting.
  Pard,
  Align,  ///< value: an Alignment
  LeftIndent,
  RightIndent,
  FirstIndent,
  SpaceBefore,
  SpaceAfter,
  LineSpacing,
  LineMultiple,
  TabStop,
  TabKind,    ///< value: a TabKind
  TabLeader,  ///< value: a TabLeader
  BarTab,
  InTable,
  TableLevel,
  PageBreakBefore,
  Direction,  ///< value: 1 for right to left
  ListNumber,
  ListLevel,
  CarryParagraph,
  // Tables, sections, the document.
  RowDefaults,
  CarryRow,
  BorderAttribute,  ///< belongs to the border that was named last
  SectionDefaults,
  CarrySection,
  CarryDocument,
  CharacterSet,  ///< value: the code page
  CodePage,
  DefaultFont,
  DefaultTab,
  // Text.
  Character,  ///< value: a code point
  Unicode,
  UnicodeSkip,
  Paragraph,
  Line,
  Page,
  Section,
  Cell,
  Row,
  NestedCell,
  NestedRow,
  CarryInline,  ///< stands for text that the reader can't make (a page number): a piece at its place
  Dropped,
  // Destinations.
  Document,
  FontTable,
  ColourTable,
  ListTable,
  ListOverrides,
  DocumentGroup,
  SectionGroup,
  InlineGroup,
  Picture,
  ShapePicture,
  FallbackPicture,
  Field,
  Object,
  Result,  ///< of a field or an object
  Numbering,
  Alternatives,  ///< `\upr`
  UnicodeAlternative,
  NestedRowProperties,
  DroppedGroup,
};

struct Keyword {
  std::string_view name;
  Action action = Action::Dropped;
  int value = 0;
  /// Position in the table of all keywords: the order in which carried words are written.
  std::uint16_t id = 0;
  /// The parameter is a number of the colour table.
  bool colour = false;
};

/// The keyword of that name, null for one that the table does not have.
const Keyword* FindKeyword(std::string_view name);
const Keyword& KeywordOf(std::uint16_t id);

bool IsDestination(Action action);

}  // namespace rtf
