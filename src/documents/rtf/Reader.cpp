#include "documents/rtf/Reader.h"

#include <QTextDocument>
#include <QTextOption>

#include <algorithm>

namespace rtf {

namespace {

QString NameOf(std::string_view name) {
  constexpr qsizetype longest = 32;
  return QString::fromLatin1(name.data(), std::min(static_cast<qsizetype>(name.size()), longest));
}

bool IsBorder(std::string_view name) {
  return name.find("brdr") != std::string_view::npos || name == "box";
}

bool IsOfSection(Action action) {
  return action == Action::SectionDefaults || action == Action::CarrySection || action == Action::SectionGroup;
}

/// What holds for more than the text at its place.
bool IsOfDocument(Action action) {
  return action == Action::DefaultTab || action == Action::CarryDocument || IsOfSection(action);
}

/// What means more than its group, and would do it again where the group is written back as it is.
bool Lasts(Action action) {
  return action == Action::Page || action == Action::Section || action == Action::Row || action == Action::NestedRow ||
         action == Action::RowDefaults || action == Action::CarryRow || action == Action::BorderAttribute;
}

constexpr qsizetype mostNames = 200;

// Well under a hundredth of a second.
constexpr int tokensBetweenLooks = 1000;

void Count(QMap<QString, int>& names, std::string_view name) {
  const QString key = NameOf(name);
  if (names.size() < mostNames || names.contains(key)) {
    ++names[key];
  }
}

}  // namespace

std::string_view RtfIn(const QByteArray& content) {
  std::string_view view(content.constData(), static_cast<std::size_t>(content.size()));
  if (view.substr(0, 3) == "\xEF\xBB\xBF") {
    view.remove_prefix(3);
  }
  view.remove_prefix(std::min(view.find_first_not_of(" \t\r\n"), view.size()));
  return view.substr(0, 5) == "{\\rtf" ? view : std::string_view();
}

Reader::Reader(std::string_view input, QTextDocument& document, Source& source, const Limits& limits)
    : m_input(input),
      m_tokenizer(input),
      m_document(document),
      m_source(source),
      m_limits(limits),
      m_builder(document, limits) {
  m_groups.emplace_back();
}

Report Reader::Read() {
  for (int tokens = 1; !m_done; ++tokens) {
    const Token token = m_tokenizer.Next();
    if (token.kind == TokenKind::End) {
      break;
    }
    if (m_places == nullptr) {
      Handle(token);
    } else {
      HandleNoted(token);
    }
    if (m_seams.IsSeam(token.kind == TokenKind::GroupEnd && !m_done)) {
      NoteSeam(token);
    }
    if (tokens % tokensBetweenLooks == 0 && m_limits.goOn && !m_limits.goOn()) {
      Refuse(QStringLiteral("Se ha interrumpido su lectura."));
    }
  }
  if (m_report.outcome != Outcome::Refused) {
    Finish();
  }
  return m_report;
}

void Reader::Handle(const Token& token) {
  switch (token.kind) {
    case TokenKind::GroupStart:
      OpenGroup();
      return;
    case TokenKind::GroupEnd:
      CloseGroup();
      return;
    default:
      break;
  }
  if (Top().openLink != 0) {
    return;
  }
  if (m_skip > 0 && token.kind != TokenKind::Text) {
    --m_skip;
    return;
  }
  switch (token.kind) {
    case TokenKind::Word:
      HandleWord(token);
      break;
    case TokenKind::Symbol:
      if (token.byte == '*') {
        m_starred = true;
        m_destination = token.begin;
        return;
      }
      switch (token.byte) {
        case '\n':
          EndParagraph();
          break;
        case '~':
          AppendCharacter(0x00A0);
          break;
        case '-':
          AppendCharacter(0x00AD);
          break;
        case '_':
          AppendCharacter(0x2011);
          break;
        case '\t':
        case '\\':
        case '{':
        case '}':
          AppendBytes({reinterpret_cast<const char*>(&token.byte), 1});
          break;
        default:
          break;
      }
      break;
    case TokenKind::Hex:
      AppendBytes({reinterpret_cast<const char*>(&token.byte), 1});
      break;
    case TokenKind::Text:
      AppendBytes(SkipFallback(token.text));
      break;
    default:
      break;
  }
  m_starred = false;
}

void Reader::HandleWord(const Token& token) {
  FlushBytes();
  if (!m_starred) {
    m_destination = token.begin;
  }
  const Keyword* keyword = FindKeyword(token.text);
  if (keyword == nullptr) {
    if (m_starred) {
      EnterUnknownDestination(token);
    } else {
      Count(m_report.dropped, token.text);
    }
  } else if (IsDestination(keyword->action)) {
    EnterDestination(*keyword, token);
  } else {
    ApplyWord(*keyword, token);
  }
}

void Reader::ApplyWord(const Keyword& keyword, const Token& token) {
  m_lastingWords += Lasts(keyword.action) ? 1 : 0;
  if (ApplyCharacterWord(Top().character, keyword, token, m_colours)) {
    m_runIsCurrent = false;
    m_codePage = -1;
    m_bodyStarted = m_bodyStarted || keyword.action == Action::Plain;
  } else if (ApplyParagraphWord(Top().paragraph, m_pendingTab, keyword, token, m_colours)) {
    m_bodyStarted = m_bodyStarted || keyword.action == Action::Pard;
  } else if (!ApplyDocumentWord(keyword, token) && !ApplyTextWord(keyword, token)) {
    Count(m_report.dropped, token.text);
  }
  CarryWord(keyword, token);
}

void Reader::CarryWord(const Keyword& keyword, const Token& token) {
  switch (keyword.action) {
    case Action::CarryCharacter:
      Top().border.owner = BorderOwner::Character;
      break;
    case Action::CarryParagraph:
      Top().border.owner = BorderOwner::Paragraph;
      break;
    case Action::CarrySection:
      Top().border.owner = BorderOwner::Section;
      break;
    case Action::CarryRow:
      Top().border.owner = BorderOwner::Row;
      break;
    case Action::Plain:
    case Action::Pard:
    case Action::SectionDefaults:
    case Action::RowDefaults:
      Top().border.owner = BorderOwner::None;
      Top().border.named = static_cast<qsizetype>(token.begin);
      return;
    case Action::CarryDocument:
      Count(m_report.carried, token.text);
      return;
    default:
      return;
  }
  Count(m_report.carried, token.text);
  Top().border.word = keyword.id;
  Top().border.named = static_cast<qsizetype>(token.begin);
  if (!IsBorder(keyword.name)) {
    Top().border.owner = BorderOwner::None;
  }
}

void Reader::AttachBorder(const Keyword& keyword, const Token& token) {
  m_seams.Refer(Top().border.named);
  const CarriedWord word = Carried(keyword, token, m_colours);
  switch (Top().border.owner) {
    case BorderOwner::Character:
      Top().character.carried.Attach(Top().border.word, keyword, word.hasParameter, word.parameter);
      m_runIsCurrent = false;
      break;
    case BorderOwner::Paragraph:
      Top().paragraph.carried.Attach(Top().border.word, keyword, word.hasParameter, word.parameter);
      break;
    case BorderOwner::Section:
      m_section.words.Attach(Top().border.word, keyword, word.hasParameter, word.parameter);
      break;
    case BorderOwner::Row:
      m_rows.AddWord(Top().nestedRowProperties, word);
      break;
    case BorderOwner::None:
      Count(m_report.dropped, token.text);
      break;
  }
}

bool Reader::ApplyDocumentWord(const Keyword& keyword, const Token& token) {
  // The tables are read with these, so that what comes behind the first table is too late.
  const bool inTime = !m_bodyStarted && m_preamble.fontTables.isEmpty();
  if (IsOfDocument(keyword.action) && IsWithinLink(keyword.action)) {
    return false;
  }
  switch (keyword.action) {
    case Action::CharacterSet:
      ChangeDocument(false);
      m_preamble.codePage = inTime ? keyword.value : m_preamble.codePage;
      break;
    case Action::CodePage:
      ChangeDocument(false);
      m_preamble.codePage = inTime && token.parameter > 0 ? token.parameter : m_preamble.codePage;
      break;
    case Action::DefaultFont:
      ChangeDocument(false);
      if (inTime) {
        m_preamble.defaultFont = std::max(token.parameter, 0);
        m_fonts.SetDefault(m_preamble.defaultFont);
      }
      break;
    case Action::DefaultTab:
      ChangeDocument(false);
      m_preamble.defaultTab = std::clamp(token.parameter, 0, largestTwips);
      break;
    case Action::CarryDocument: {
      ChangeDocument(false);
      const CarriedWord word = Carried(keyword, token, m_colours);
      m_preamble.words.Put(keyword, word.hasParameter, word.parameter);
      break;
    }
    case Action::SectionDefaults:
      ChangeDocument(true);
      m_section.words.Clear();
      m_section.defaults = true;
      break;
    case Action::CarrySection:
      ChangeDocument(true);
      m_section.words.Put(keyword, token.hasParameter, token.parameter);
      break;
    case Action::RowDefaults:
      if (!Top().nestedRowProperties) {
        m_rowDefinition = static_cast<qsizetype>(token.begin);
        m_seams.DefineRow();
      }
      m_rows.BeginDefinition(Top().nestedRowProperties, keyword);
      break;
    case Action::CarryRow:
      m_rows.AddWord(Top().nestedRowProperties, Carried(keyword, token, m_colours));
      break;
    case Action::BorderAttribute:
      AttachBorder(keyword, token);
      break;
    case Action::UnicodeSkip:
      Top().unicodeSkip = std::clamp(token.parameter, 0, 16);
      break;
    default:
      return false;
  }
  return true;
}

bool Reader::ApplyTextWord(const Keyword& keyword, const Token& token) {
  switch (keyword.action) {
    case Action::Character:
      AppendCharacter(static_cast<char16_t>(keyword.value));
      break;
    case Action::Unicode:
      if (!token.hasParameter) {
        return false;
      }
      AppendCharacter(static_cast<char16_t>(token.parameter));
      m_skip = Top().unicodeSkip;
      break;
    case Action::Paragraph:
      EndParagraph();
      break;
    case Action::Line:
      AppendCharacter(QChar::LineSeparator);
      break;
    case Action::Page:
      BreakPage(static_cast<qsizetype>(token.begin));
      break;
    case Action::Section:
      EndSection();
      break;
    case Action::Cell:
      EndCell(1);
      break;
    case Action::Row:
      EndRow(1);
      break;
    case Action::NestedCell:
      EndCell(std::max(Top().paragraph.tableLevel, 2));
      break;
    case Action::NestedRow:
      EndRow(std::max(Top().paragraph.tableLevel, 2));
      break;
    case Action::CarryInline:
      Count(m_report.carried, token.text);
      AddPiece('\\' + QByteArray(keyword.name.data(), static_cast<qsizetype>(keyword.name.size())) + ' ');
      break;
    default:
      return false;
  }
  return true;
}

void Reader::OpenGroup() {
  FlushBytes();
  m_skip = 0;
  m_starred = false;
  if (Top().alternatives || Top().openLink != 0) {
    if (!EnterResult()) {
      m_tokenizer.SkipGroup();
    }
    return;
  }
  if (m_groups.size() > deepestGroup) {
    ++m_uncounted;
  } else {
    m_groups.push_back(Group(Top()));
    Top().serial = ++m_groupSerials;
  }
}

void Reader::CloseGroup() {
  FlushBytes();
  m_skip = 0;
  m_starred = false;
  if (m_uncounted > 0) {
    --m_uncounted;
    return;
  }
  const bool isDocument = m_groups.size() <= 2;
  if (isDocument && Top().openLink == 0) {
    // While the group's properties are in force: they are the last paragraph's.
    EndOpenParagraph();
  }
  const Group group = Top();
  m_groups.pop_back();
  m_runIsCurrent = false;
  m_codePage = -1;
  if (group.character.hidden && !Top().character.hidden) {
    FlushHidden();
  }
  if (group.openLink != 0) {
    CloseLink(group);
  }
  if (m_section.link != 0 && !m_section.hasParagraph && !m_builder.HasText()) {
    m_section.link = Top().character.link;
  }
  // What stands behind the document's group is none of its text.
  m_done = m_done || isDocument;
}

void Reader::Finish() {
  FlushBytes();
  while (m_groups.size() > 1) {
    CloseGroup();
  }
  EndOpenParagraph();
  m_builder.Finish();
  FinishSection();
  SetPreamble(m_document, m_preamble);
  QTextOption option = m_document.defaultTextOption();
  option.setTabStopDistance(m_preamble.defaultTab / 15.0);
  m_document.setDefaultTextOption(option);
}

/// What was just read holds for the document or the section, not for its place.
void Reader::ChangeDocument(bool ofSection) {
  m_codePage = -1;
  const bool isEmpty = !m_builder.HasText() && m_hidden.isEmpty() && m_break == 0;
  const bool begins = m_builder.Paragraphs() == 0 && isEmpty;
  // What another section than the first begins with is written with its first paragraph.
  if (!ofSection || m_section.first) {
    m_seams.ChangeDocument(begins);
  } else if (m_section.hasParagraph) {
    m_seams.ChangeSection();
  }
}

/// Where what holds for the document is out of place: a field's result may be written back as it is and would say it
/// again, and a section that began in one is not written without it.
bool Reader::IsWithinLink(Action action) const {
  return m_groups.back().character.link != 0 || (m_section.link != 0 && IsOfSection(action));
}

bool Reader::IsBetweenParts() const {
  const Group& top = m_groups.back();
  return m_groups.size() > 1 && m_uncounted == 0 && !top.alternatives && !top.nestedRowProperties &&
         top.openLink == 0 && top.character.link == 0 && !top.character.hidden && m_skip == 0 &&
         m_pendingTab == TabStop();
}

void Reader::NoteSeam(const Token& token) {
  if (m_done) {
    // In front of the brace that ends the document; a group that is kept from its middle on may have it, too.
    if (token.kind == TokenKind::GroupEnd) {
      m_seams.Place(static_cast<qsizetype>(token.begin), 1, {});
    }
  } else if (IsBetweenParts()) {
    m_seams.Place(static_cast<qsizetype>(m_tokenizer.Position()), Top().serial,
                  {.character = Top().character,
                   .paragraph = Top().paragraph,
                   .numbering = m_numberings[Top().paragraph.numbering].source,
                   .unicodeSkip = Top().unicodeSkip});
  }
}

void Reader::Refuse(const QString& reason) {
  m_report.outcome = Outcome::Refused;
  m_report.reason = reason;
  m_done = true;
}

}  // namespace rtf
