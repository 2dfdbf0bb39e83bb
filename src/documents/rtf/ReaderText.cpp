// Text, and what ends it: paragraphs, cells, rows, pages and sections.

#include "documents/rtf/CharacterFormat.h"
#include "documents/rtf/CodePages.h"
#include "documents/rtf/ParagraphFormat.h"
#include "documents/rtf/Reader.h"
#include "documents/rtf/TablePath.h"
#include "documents/rtf/TextEncoder.h"

#include <algorithm>
#include <utility>

namespace rtf {

int Reader::CodePage() {
  if (m_codePage < 0) {
    const int font = Top().character.font;
    const bool known = m_fonts.Contains(font) || m_fonts.Contains(m_fonts.Default());
    const int page = known ? m_fonts.At(font).codePage : 0;
    m_codePage = page == 0 ? m_preamble.codePage : page;
  }
  return m_codePage;
}

std::string_view Reader::SkipFallback(std::string_view bytes) {
  const std::size_t skipped = std::min(static_cast<std::size_t>(m_skip), bytes.size());
  m_skip -= static_cast<int>(skipped);
  return bytes.substr(skipped);
}

void Reader::AppendBytes(std::string_view bytes) {
  if (bytes.empty()) {
    return;
  }
  const int page = CodePage();
  if (IsMultiByte(page)) {
    m_bytesPage = page;
    m_bytes += bytes;
  } else if (Top().character.hidden) {
    Decode(HiddenText(), bytes, page);
  } else {
    PrepareRun();
    Decode(m_builder.Text(), bytes, page);
  }
}

void Reader::FlushBytes() {
  if (m_bytes.empty()) {
    return;
  }
  QString text;
  Decode(text, m_bytes, m_bytesPage);
  m_bytes.clear();
  for (const QChar character : text) {
    AppendCharacter(character.unicode());
  }
}

void Reader::AppendCharacter(char16_t character) {
  FlushBytes();
  switch (character) {
    case QChar::ParagraphSeparator:
      EndParagraph();
      return;
    case 0x0B:
      character = QChar::LineSeparator;
      break;
    case QChar::ObjectReplacementCharacter:
    case 0xFDD0:  // What Qt's documents begin and end frames with.
    case 0xFDD1:
    case 0xFFFE:
    case 0xFFFF:
      character = QChar::ReplacementCharacter;
      break;
    default:
      if (character < 0x20 && character != u'\t') {
        return;
      }
  }
  if (Top().character.hidden) {
    HiddenText() += QChar(character);
  } else {
    PrepareRun();
    m_builder.Text() += QChar(character);
  }
}

void Reader::PrepareRun() {
  if (m_runIsCurrent && m_hidden.isEmpty()) {
    return;
  }
  FlushHidden();
  if (!std::exchange(m_bodyStarted, true) && m_places != nullptr) {
    m_places->StartBody();
  }
  if (!m_builder.HasText() || m_builder.LastObject() != nullptr || m_runStyle != Top().character) {
    m_runStyle = Top().character;
    m_builder.BeginRun(FormatOf(*m_runStyle));
  }
  m_runIsCurrent = true;
}

/// The hidden text so far; what belongs to another field or object begins anew.
QString& Reader::HiddenText() {
  if (m_hiddenStyle.link != Top().character.link) {
    FlushHidden();
  }
  if (m_hidden.isEmpty()) {
    m_hiddenStyle = Top().character;
  }
  m_bodyStarted = true;
  return m_hidden;
}

/// Hidden text is a piece: it does not show and is not lost.
void Reader::FlushHidden() {
  if (m_hidden.isEmpty()) {
    return;
  }
  RtfText text;
  text.OpenGroup();
  text.Word("\\v");
  // Letters of another font among them would be symbols in this one.
  const bool symbols = m_fonts.At(m_hiddenStyle.font).codePage == symbolCodePage;
  text.Text(std::exchange(m_hidden, {}), symbols ? symbolCodePage : 0);
  text.CloseGroup();
  ++m_report.carried[QStringLiteral("v")];
  std::swap(Top().character, m_hiddenStyle);
  AddPiece(text.Bytes());
  std::swap(Top().character, m_hiddenStyle);
}

const QTextCharFormat& Reader::FormatOf(CharacterStyle style) {
  style.hidden = false;
  const auto known = m_formats.constFind(style);
  if (known != m_formats.constEnd()) {
    return *known;
  }
  if (++m_characterFormats > m_limits.formats) {
    Refuse(QStringLiteral("La carta tiene demasiados formatos de letra distintos."));
  }
  QTextCharFormat format = ToCharacterFormat(style, m_fonts.At(style.font));
  if (style.link != 0) {
    const Links links = LinksOf(style.link);
    QString name;
    for (const Link& link : links) {
      name += QString::number(link.serial) + u' ';
    }
    format.setProperty(LinkNameProperty, name + m_links[style.link].name);
    format.setProperty(LinkProperty, QVariant::fromValue(links));
    if (const QString& target = m_links[style.link].target; !target.isEmpty()) {
      format.setAnchor(true);
      format.setAnchorHref(target);
    }
  }
  return *m_formats.insert(style, format);
}

QTextBlockFormat Reader::BlockFormatOf(const ParagraphStyle& style, bool listItem) {
  const auto known = m_blockFormats.constFind(style);
  if (known != m_blockFormats.constEnd()) {
    return *known;
  }
  if (m_blockFormats.size() >= m_limits.formats) {
    Refuse(QStringLiteral("La carta tiene demasiados formatos de párrafo distintos."));
  }
  return *m_blockFormats.insert(style, ToBlockFormat(style, listItem));
}

bool Reader::FindListItem(ListItem& item) const {
  const ParagraphStyle& style = m_groups.back().paragraph;
  if (style.listNumber > 0 || m_lists.Contains(style.listNumber)) {
    item.numbering = m_lists.At(style.listNumber, style.listLevel);
    item.source = QStringLiteral("\\ls%1\\ilvl%2").arg(style.listNumber).arg(style.listLevel);
    item.resumes = true;
  } else {
    const NumberingNode& node = m_numberings[style.numbering];
    item.numbering = node.numbering;
    item.source = node.source;
    item.begins = IsFirstMark({m_itemMark.constData(), static_cast<std::size_t>(m_itemMark.size())}, node.numbering);
  }
  return item.numbering.kind != Numbering::Kind::None;
}

void Reader::EndParagraph() {
  FlushBytes();
  FlushHidden();
  m_bodyStarted = true;
  if (m_builder.Paragraphs() >= m_limits.paragraphs) {
    Refuse(QStringLiteral("La carta tiene más de %1 párrafos.").arg(m_limits.paragraphs));
    return;
  }
  ParagraphStyle style = Top().paragraph;
  ListItem item;
  const bool isItem = FindListItem(item);
  m_itemMark.clear();
  const int level = std::min(style.Level(), deepestTable);
  style.listNumber = noList;
  style.listLevel = style.tableLevel = 0;
  style.numbering = isItem ? 1 : 0;
  style.inTable = false;
  QTextBlockFormat format = BlockFormatOf(style, isItem);
  if (level > 0 && m_lastPath.isEmpty()) {
    m_seams.BeginTable(m_rowDefinition);
  }
  const TablePath path = m_rows.Enter(level, m_builder);
  if (m_break == int(BreakKind::Within) && path != m_lastPath) {
    m_break = int(BreakKind::AtStart);
  }
  if (m_break == int(BreakKind::AtStart)) {
    m_seams.Refer(m_breakNamed);
  }
  m_lastPath = path;
  if (!path.isEmpty()) {
    m_tableFormats.insert(qHashMulti(0, style, HashOf(path)));
    if (m_tableFormats.size() > m_limits.formats) {
      Refuse(QStringLiteral("La carta tiene demasiadas celdas distintas."));
    }
  }
  if (m_break != 0) {
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    format.setProperty(BreakProperty, std::exchange(m_break, 0));
  }
  const bool beginsSection = !m_section.first && !std::exchange(m_section.hasParagraph, true);
  m_builder.EndParagraph({.format = format,
                          .mark = FormatOf(Top().character),
                          .item = isItem ? std::optional(item) : std::nullopt,
                          .path = path,
                          .beginsSection = beginsSection});
  m_seams.EndPart(!path.isEmpty());
  if (beginsSection) {
    m_seams.BeginSection();
  }
  m_runIsCurrent = false;
}

/// The end of the letter ends a paragraph that has something, and makes none.
void Reader::EndOpenParagraph() {
  FlushBytes();
  if (m_builder.HasText() || !m_hidden.isEmpty() || m_break != 0 || m_builder.Paragraphs() == 0) {
    EndParagraph();
  }
}

void Reader::EndCell(int level) {
  ParagraphStyle& style = Top().paragraph;
  const ParagraphStyle before = style;
  style.inTable = true;
  style.tableLevel = level;
  EndParagraph();
  Top().paragraph = before;
  m_rows.EndCell(std::min(level, deepestTable));
}

void Reader::EndRow(int level) {
  FlushBytes();
  if (m_builder.HasText() || !m_hidden.isEmpty()) {
    EndCell(level);
  }
  m_rows.EndRow(std::min(level, deepestTable), Top().nestedRowProperties, m_builder);
  if (level == 1) {
    m_seams.EndRow();
  }
}

void Reader::BreakPage(qsizetype begin) {
  FlushBytes();
  const bool within = m_builder.HasText() || !m_hidden.isEmpty() || m_break != 0;
  if (within) {
    EndParagraph();
  }
  m_break = int(within ? BreakKind::Within : BreakKind::AtStart);
  m_breakNamed = begin;
}

void Reader::EndSection() {
  FlushBytes();
  if (m_builder.HasText() || !m_hidden.isEmpty() || m_break != 0 || m_builder.Paragraphs() == 0) {
    EndParagraph();
  } else {
    m_seams.GoOn();
  }
  FinishSection();
  m_section = {.first = false, .link = Top().character.link};
}

void Reader::FinishSection() {
  if (m_section.first) {
    m_preamble.sectionDefaults = m_section.defaults;
    m_preamble.sectionWords = m_section.words;
    m_preamble.sectionGroups = m_section.groups;
    return;
  }
  if (!m_section.hasParagraph) {
    ++m_report.dropped[QStringLiteral("sect")];
    if (m_done && !m_section.IsEmpty()) {
      m_seams.EndWithSection();
    }
    return;
  }
  const Piece groups(m_section.groups);
  const QString words = (m_section.defaults ? QStringLiteral("\\sectd") : QString()) + ToText(m_section.words.Words());
  const bool newPage = !m_section.words.Contains("sbknone");
  m_builder.ChangeSectionStart([&](QTextBlockFormat& format) {
    format.setProperty(SectionWordsProperty, words);
    format.setProperty(SectionNameProperty, groups.Name());
    format.setProperty(SectionProperty, QVariant::fromValue(groups));
    if (newPage && !format.hasProperty(BreakProperty)) {
      format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
      format.setProperty(BreakProperty, int(BreakKind::Section));
    }
  });
}

}  // namespace rtf
