#include "documents/rtf/StyleWords.h"

#include <algorithm>

namespace rtf {

namespace {

bool IsOn(const Token& token) {
  return !token.hasParameter || token.parameter != 0;
}

int Length(const Token& token) {
  return std::clamp(token.parameter, -largestTwips, largestTwips);
}

void SetVertical(CharacterStyle& style, VerticalKind kind) {
  style.vertical = kind;
  style.offset = 0;
}

void SetOffset(CharacterStyle& style, VerticalKind kind, const Token& token) {
  // Six half-points where the word does not say.
  const int offset = token.hasParameter ? std::clamp(token.parameter, 0, largestHalfPoints) : 6;
  style.vertical = offset == 0 ? VerticalKind::Normal : kind;
  style.offset = offset;
}

CharacterStyle WithLink(int link) {
  CharacterStyle style;
  style.link = link;
  return style;
}

void Carry(CharacterStyle& style, const Keyword& keyword, const CarriedWord& word) {
  style.carried.Put(keyword, word.hasParameter, word.parameter);
}

template <typename Kind>
Kind Toggled(const Keyword& keyword, const Token& token) {
  return IsOn(token) ? Kind(keyword.value) : Kind{};
}

// `\strike0` does not end a double line, nor `\striked0` a single one.
void SetStrike(CharacterStyle& style, const Keyword& keyword, const Token& token) {
  if (IsOn(token) || style.strike == keyword.value) {
    style.strike = Toggled<std::uint8_t>(keyword, token);
  }
}

void AddTab(ParagraphStyle& style, TabStop& pending, const Token& token, bool bar) {
  pending.position = Length(token);
  pending.bar = bar;
  if (style.tabs.size() < mostTabs && !style.tabs.contains(pending)) {
    style.tabs.append(pending);
  }
  pending = {};
}

}  // namespace

bool ApplyCharacterWord(CharacterStyle& style, const Keyword& keyword, const Token& token, const ColourTable& colours) {
  switch (keyword.action) {
    case Action::Plain:
      style = WithLink(style.link);
      break;
    case Action::Font:
      style.font = token.parameter;
      break;
    case Action::FontSize:
      style.halfPoints = token.hasParameter ? std::clamp(token.parameter, 1, largestHalfPoints) : 24;
      break;
    case Action::Bold:
      style.bold = IsOn(token);
      break;
    case Action::Italic:
      style.italic = IsOn(token);
      break;
    case Action::Underline:
      style.underline = Toggled<UnderlineKind>(keyword, token);
      break;
    case Action::UnderlineNone:
      style.underline = UnderlineKind::None;
      break;
    case Action::Strike:
      SetStrike(style, keyword, token);
      break;
    case Action::Caps:
      style.caps = IsOn(token);
      break;
    case Action::SmallCaps:
      style.smallCaps = IsOn(token);
      break;
    case Action::Super:
      SetVertical(style, IsOn(token) ? VerticalKind::Super : VerticalKind::Normal);
      break;
    case Action::Sub:
      SetVertical(style, IsOn(token) ? VerticalKind::Sub : VerticalKind::Normal);
      break;
    case Action::NoSuperSub:
      SetVertical(style, VerticalKind::Normal);
      break;
    case Action::Raise:
      SetOffset(style, VerticalKind::Raised, token);
      break;
    case Action::Lower:
      SetOffset(style, VerticalKind::Lowered, token);
      break;
    case Action::Colour:
      style.colour = colours.At(token.parameter);
      break;
    case Action::Background:
      // `\highlight0` and `\cb0` are no background, whatever the table's first entry is.
      style.background = token.parameter == 0 ? automaticColour : colours.At(token.parameter);
      style.backgroundKind = style.background == automaticColour ? BackgroundKind{} : BackgroundKind(keyword.value);
      break;
    case Action::Hidden:
      style.hidden = IsOn(token);
      break;
    case Action::RunDirection:
      style.rightToLeft = keyword.value == 1;
      break;
    case Action::CarryCharacter:
      Carry(style, keyword, Carried(keyword, token, colours));
      break;
    default:
      return false;
  }
  return true;
}

bool ApplyParagraphWord(ParagraphStyle& style, TabStop& pendingTab, const Keyword& keyword, const Token& token,
                        const ColourTable& colours) {
  switch (keyword.action) {
    case Action::Pard:
      style = {};
      pendingTab = {};
      break;
    case Action::Align:
      style.alignment = Alignment(keyword.value);
      break;
    case Action::LeftIndent:
      style.left = Length(token);
      break;
    case Action::RightIndent:
      style.right = Length(token);
      break;
    case Action::FirstIndent:
      style.first = Length(token);
      break;
    case Action::SpaceBefore:
      style.before = Length(token);
      break;
    case Action::SpaceAfter:
      style.after = Length(token);
      break;
    case Action::LineSpacing:
      style.lineSpacing = Length(token);
      break;
    case Action::LineMultiple:
      style.lineMultiple = IsOn(token);
      break;
    case Action::TabKind:
      pendingTab.kind = TabKind(keyword.value);
      break;
    case Action::TabLeader:
      pendingTab.leader = TabLeader(keyword.value);
      break;
    case Action::TabStop:
    case Action::BarTab:
      AddTab(style, pendingTab, token, keyword.action == Action::BarTab);
      break;
    case Action::InTable:
      style.inTable = IsOn(token);
      break;
    case Action::TableLevel:
      style.tableLevel = std::max(token.parameter, 0);
      style.inTable = style.tableLevel > 0;
      break;
    case Action::PageBreakBefore:
      style.pageBreakBefore = IsOn(token);
      break;
    case Action::Direction:
      style.rightToLeft = keyword.value == 1;
      break;
    case Action::ListNumber:
      style.listNumber = std::max(token.parameter, 0);
      break;
    case Action::ListLevel:
      style.listLevel = std::clamp(token.parameter, 0, 8);
      break;
    case Action::CarryParagraph: {
      const CarriedWord word = Carried(keyword, token, colours);
      style.carried.Put(keyword, word.hasParameter, word.parameter);
      break;
    }
    default:
      return false;
  }
  return true;
}

CarriedWord Carried(const Keyword& keyword, const Token& token, const ColourTable& colours) {
  const int parameter = keyword.colour ? colours.At(token.parameter) : token.parameter;
  return {keyword.id, keyword.id, token.hasParameter, token.hasParameter ? parameter : 0};
}

}  // namespace rtf
