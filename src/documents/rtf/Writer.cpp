#include "documents/rtf/Writer.h"

#include "documents/rtf/CellFormat.h"
#include "documents/rtf/CharacterFormat.h"
#include "documents/rtf/Joint.h"
#include "documents/rtf/ParagraphFormat.h"
#include "documents/rtf/Source.h"

#include <QTextFragment>
#include <QTextFrame>
#include <QTextList>

#include <algorithm>
#include <utility>

namespace rtf {

namespace {

/// A hyperlink that has no field of its own yet.
Link HyperlinkTo(const QString& target) {
  QString escaped = target;
  escaped.replace(u'\\', QStringLiteral("\\\\"));
  escaped.remove(u'"');
  RtfText head;
  head.Raw("\\field{\\*\\fldinst{HYPERLINK \"");
  head.Text(escaped, 0);
  head.Raw("\"}}");
  return {.serial = 0, .isObject = false, .head = Piece(head.Bytes()), .target = target};
}

/// The next paragraph that is written, and the one before; none at the end.
QTextBlock Following(const QTextBlock& block) {
  QTextBlock next = block.next();
  while (next.isValid() && IsJoint(next)) {
    next = next.next();
  }
  return next;
}

QTextBlock Preceding(const QTextBlock& block) {
  QTextBlock previous = block.previous();
  while (previous.isValid() && IsJoint(previous)) {
    previous = previous.previous();
  }
  return previous;
}

Font SymbolFont() {
  return {.family = QStringLiteral("nil"), .charset = 2, .codePage = symbolCodePage, .name = QStringLiteral("Symbol")};
}

}  // namespace

Writer::Writer(const QTextDocument& document)
    : m_document(document),
      m_preamble(PreambleOf(document)),
      m_tables(*m_preamble.data, Source::Find(document)),
      m_styles(m_text, m_tables),
      m_rows(document) {}

QByteArray Writer::Write() {
  m_text.Bytes().reserve(m_document.characterCount() * 2);
  m_text.Word("\\pard");
  m_styles.Reset();
  for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
    if (!IsJoint(block)) {
      WriteBlock(block);
    }
  }
  CloseLinks(0);
  return Enclosed(m_text.Bytes());
}

QByteArray Writer::WriteParagraph(const QTextBlock& block) {
  if (IsJoint(block)) {
    return {};
  }
  m_text = {};
  BeginAt(block);
  WriteBlock(block);
  CloseLinks(0);
  return m_text.Bytes();
}

void Writer::WritePart(const QTextBlock& first, const QTextBlock& last, const ReadingState& before) {
  m_text = {};
  if (before.unicodeSkip != 1) {
    m_text.Word("\\uc", 1);
  }
  BeginAt(first);
  for (QTextBlock block = first; block.isValid() && block != last.next(); block = block.next()) {
    if (!IsJoint(block)) {
      WriteBlock(block);
    }
  }
  CloseLinks(0);
}

/// As if nothing were known of what is in front of it but where that stands.
void Writer::BeginAt(const QTextBlock& block) {
  m_text.Word("\\pard");
  m_styles.Reset();
  m_inForce = {};
  // They may have changed since, and be gone.
  m_lists.clear();
  const QTextBlock previous = Preceding(block);
  m_path = previous.isValid() ? PathOf(previous) : TablePath();
}

void Writer::TakeUpParagraph(const ReadingState& state) {
  ParagraphStyle style = state.paragraph;
  style.tableLevel = style.Level();
  style.inTable = false;
  style.numbering = 0;
  ListState list;
  list.group = state.numbering.toLatin1();
  if (int number = std::exchange(style.listNumber, noList); number != noList) {
    list.words = "\\ls" + QByteArray::number(number);
  }
  if (int level = std::exchange(style.listLevel, 0); level != 0 || !list.words.isEmpty()) {
    list.words += "\\ilvl" + QByteArray::number(level);
  }
  Paragraph(style, list.group.isEmpty() && list.words.isEmpty() ? nullptr : &list, false);
}

void Writer::TakeUpCharacters(const ReadingState& state) {
  m_styles.Characters(state.character);
}

QByteArray Writer::EndPart(const ReadingState& state) {
  if (state.unicodeSkip != 1) {
    m_text.Word("\\uc", state.unicodeSkip);
  }
  m_text.Raw("\r\n");
  return m_text.Bytes();
}

QByteArray Writer::Enclosed(const QByteArray& text) {
  return Header() + text + "}\r\n";
}

QByteArray Writer::Header() {
  const PreambleData& preamble = *m_preamble.data;
  RtfText header;
  header.Raw("{\\rtf1");
  switch (preamble.codePage) {
    case 10000:
      header.Word("\\mac");
      break;
    case 437:
      header.Word("\\pc");
      break;
    case 850:
      header.Word("\\pca");
      break;
    default:
      header.Word("\\ansi\\ansicpg", preamble.codePage);
  }
  if (m_tables.NamesDefaultFont()) {
    header.Word("\\deff", preamble.defaultFont);
  }
  const QList<CarriedWord>& words = preamble.words.Words();
  StyleWriter(header, m_tables).Words(words);
  if (preamble.defaultTab != 720) {
    header.Word("\\deftab", preamble.defaultTab);
  }
  RtfText section;
  if (preamble.sectionDefaults) {
    section.Word("\\sectd");
  }
  StyleWriter(section, m_tables).Words(preamble.sectionWords.Words());
  header.Raw(m_tables.FontGroups());
  header.Raw("\r\n");
  header.Raw(m_tables.ColourGroups());
  header.Raw("\r\n");
  header.Raw(preamble.listTables);
  header.Raw(preamble.groups);
  header.Raw("\\uc1");
  header.Raw(section.Bytes());
  header.Raw(preamble.sectionGroups);
  header.Raw("\r\n");
  return header.Bytes();
}

void Writer::WriteBlock(const QTextBlock& block) {
  const TablePath path = PathOf(block);
  const ParagraphStyle& style = StyleOf(block, path.size());
  const Beginning beginning = BeginningOf(block);
  ListState* list = ListOf(block);
  const bool isFirst = !Preceding(block).isValid();
  const bool beginsSection = beginning.hasSection && !isFirst;
  const bool goesOn = !isFirst && !beginsSection && path == m_path;
  if (beginsSection) {
    BeginSection(beginning.format);
  }
  BeginRows(path);
  Paragraph(style, list, true);
  bool pageBegun = false;
  if (beginning.pageBreak && beginning.pageBreak != BreakKind::Property) {
    const bool isWritten = (beginning.pageBreak == BreakKind::Within && goesOn) ||
                           (beginning.pageBreak == BreakKind::Section && beginsSection);
    pageBegun = beginning.pageBreak != BreakKind::Section || !beginsSection;
    if (!isWritten) {
      m_text.Word("\\page");
    }
  }
  for (auto at = block.begin(); !at.atEnd(); ++at) {
    const QTextFragment fragment = at.fragment();
    Run(FormatOf(fragment.charFormatIndex(), fragment.charFormat()), fragment.text());
  }
  Mark(FormatOf(block.charFormatIndex(), block.charFormat()));
  Paragraph(style, list, false);
  EndBlock(block, pageBegun);
}

void Writer::Mark(const RunFormat& mark) {
  EnterLinks(mark.links);
  m_styles.Characters(mark.style);
}

void Writer::BeginSection(const QTextBlockFormat& format) {
  const QString words = format.stringProperty(SectionWordsProperty);
  const QByteArray groups = format.property(SectionProperty).value<Piece>().Bytes();
  if (!words.isEmpty() || !groups.isEmpty()) {
    // Within a field they would be none of the section's; a link that was made over its start goes on as another one.
    CloseLinks(0);
  }
  m_styles.Words(WordsFromText(words));
  m_text.Raw(groups);
}

/// The definitions of the rows that the paragraph is the first of, and cells in front of it that are gone. Nested
/// rows are defined at their end.
void Writer::BeginRows(const TablePath& path) {
  for (qsizetype i = 0; i < path.size(); ++i) {
    const bool same = i < m_path.size() && m_path[i].row == path[i].row && m_path[i].definition == path[i].definition &&
                      m_path[i].cell <= path[i].cell && m_path.first(i) == path.first(i);
    if (same) {
      continue;
    }
    if (i == 0) {
      m_styles.Words(WordsFromText(path[i].definition));
    }
    for (int cell = 0; cell < path[i].cell; ++cell) {
      WriteEmptyCell(path[i], cell, static_cast<int>(i) + 1);
      m_text.Raw("\r\n");
    }
  }
  m_path = path;
}

/// A cell that has no paragraph of its own: part of another, or gone.
void Writer::WriteEmptyCell(const TableLevel& row, int number, int level) {
  static const EmptyCells none;
  const EmptyCells& cells = row.empty == nullptr ? none : *row.empty;
  const auto known =
      std::find_if(cells.begin(), cells.end(), [number](const EmptyCell& cell) { return cell.cell == number; });
  const bool isKnown = known != cells.end();
  ParagraphStyle style;
  if (isKnown) {
    style = FromBlockFormat(known->format, nullptr, m_document.indentWidth());
  }
  style.tableLevel = level;
  Paragraph(style, nullptr, false);
  if (isKnown) {
    Mark(TakenApart(known->mark));
  }
  m_text.Word(level > 1 ? "\\nestcell" : "\\cell");
}

void Writer::EndBlock(const QTextBlock& block, bool pageBegun) {
  const QTextBlock next = Following(block);
  const TablePath& path = m_path;
  const TablePath nextPath = next.isValid() ? PathOf(next) : TablePath();
  const Beginning following = next.isValid() ? BeginningOf(next) : Beginning();
  const bool staysInCell = nextPath.size() >= path.size() && nextPath.first(path.size()) == path;
  if (!path.isEmpty() && !(next.isValid() && staysInCell)) {
    EndCells(path, nextPath);
    if (following.hasSection) {
      m_text.Word("\\sect");
    }
  } else if (following.hasSection) {
    // The end of a section ends a paragraph that has something; an empty one needs its own.
    if (block.length() == 1 && !pageBegun && Preceding(block).isValid()) {
      m_text.Word("\\par");
    }
    m_text.Word("\\sect");
  } else {
    const bool goesOn = following.pageBreak == BreakKind::Within && nextPath == path;
    m_text.Word(goesOn ? "\\page" : "\\par");
  }
  m_text.Raw("\r\n");
}

void Writer::EndCells(const TablePath& path, const TablePath& next) {
  for (qsizetype i = path.size() - 1; i >= 0; --i) {
    if (i < next.size() && path.first(i + 1) == next.first(i + 1)) {
      return;
    }
    if (i == path.size() - 1) {
      m_text.Word(i == 0 ? "\\cell" : "\\nestcell");
    }
    const bool sameRow = i < next.size() && path.first(i) == next.first(i) && next[i].row == path[i].row &&
                         next[i].definition == path[i].definition && next[i].cell > path[i].cell;
    const int last = sameRow ? next[i].cell : path[i].cells;
    for (int cell = path[i].cell + 1; cell < last; ++cell) {
      m_text.Raw("\r\n");
      WriteEmptyCell(path[i], cell, static_cast<int>(i) + 1);
    }
    if (sameRow) {
      return;
    }
    EndRow(path[i], i > 0);
  }
}

void Writer::EndRow(const TableLevel& row, bool nested) {
  if (!nested) {
    m_text.Word("\\row");
    return;
  }
  m_text.Raw("{\\*\\nesttableprops");
  m_styles.Words(WordsFromText(row.definition));
  m_text.Word("\\nestrow");
  m_text.Raw("}{\\nonesttables\\par}");
}

void Writer::Paragraph(const ParagraphStyle& style, ListState* list, bool withMark) {
  const QByteArray source = list == nullptr ? QByteArray() : list->group + list->words;
  const bool same = m_inForce.style == style && m_inForce.list == source;
  if (!same) {
    m_text.Word("\\pard");
  }
  if (withMark && list != nullptr) {
    ItemMark(*list);
  }
  if (same) {
    return;
  }
  m_inForce = {style, source};
  if (list != nullptr) {
    m_text.Raw(list->group);
  }
  if (list != nullptr && !list->words.isEmpty()) {
    // In front of the indents: for some readers it brings the list's own.
    m_text.Word(list->words.constData());
  }
  m_styles.Paragraph(style);
}

/// The mark as text, for readers that don't number themselves.
void Writer::ItemMark(ListState& list) {
  m_text.OpenGroup();
  m_text.Word(list.words.isEmpty() ? "\\pntext" : "\\listtext");
  if (list.bullet.isEmpty()) {
    const Numbering& numbering = list.numbering;
    m_text.Text(numbering.before + NumberText(numbering.kind, list.next++) + numbering.after, 0);
  } else {
    m_text.Raw(list.bullet);
  }
  m_text.Word("\\tab");
  m_text.CloseGroup();
}

void Writer::Run(const RunFormat& format, const QString& text) {
  EnterLinks(format.links);
  m_styles.Characters(format.style);
  if (format.object.isEmpty() && !text.contains(QChar::ObjectReplacementCharacter)) {
    m_text.Text(text, format.codePage);
    return;
  }
  const QStringList parts = text.split(QChar::ObjectReplacementCharacter);
  for (qsizetype i = 0; i < parts.size(); ++i) {
    if (i > 0) {
      m_text.Raw(format.object);
    }
    m_text.Text(parts[i], format.codePage);
  }
}

void Writer::EnterLinks(const Links& links) {
  qsizetype kept = 0;
  while (kept < m_links.size() && kept < links.size() && m_links[kept].link == links[kept]) {
    ++kept;
  }
  CloseLinks(kept);
  for (qsizetype i = kept; i < links.size(); ++i) {
    m_links.append({links[i], m_styles.Current(), m_inForce});
    m_text.OpenGroup();
    m_text.Raw(links[i].head.Bytes());
    m_text.OpenGroup();
    m_text.Word(links[i].isObject ? "\\result" : "\\fldrslt");
  }
}

void Writer::CloseLinks(qsizetype kept) {
  while (m_links.size() > kept) {
    m_text.Raw("}}");
    const OpenLink closed = m_links.takeLast();
    m_styles.Restore(closed.characters);
    m_inForce = closed.paragraph;
  }
}

const Writer::RunFormat& Writer::FormatOf(int index, const QTextCharFormat& format) {
  const auto known = m_formats.find(index);
  return known != m_formats.end() ? known->second : m_formats.emplace(index, TakenApart(format)).first->second;
}

Writer::RunFormat Writer::TakenApart(const QTextCharFormat& format) {
  RunFormat run;
  Font font;
  run.style = FromCharacterFormat(WithoutCell(format), m_document.defaultFont(), font);
  run.style.font = m_tables.FontNumber(font);
  run.codePage = m_tables.CodePage(font);
  run.links = format.property(LinkProperty).value<Links>();
  const QString target = format.isAnchor() ? format.anchorHref() : QString();
  const QString known = run.links.isEmpty() ? QString() : run.links.last().target;
  if (target != known) {
    if (!known.isEmpty()) {
      run.links.removeLast();
    }
    if (!target.isEmpty() && run.links.size() < deepestLink) {
      run.links.append(HyperlinkTo(target));
    }
  }
  if (format.hasProperty(PieceProperty)) {
    run.object = format.property(PieceProperty).value<Piece>().Bytes();
  } else if (format.isImageFormat()) {
    run.object = PictureOf(format);
  }
  return run;
}

const ParagraphStyle& Writer::StyleOf(const QTextBlock& block, qsizetype level) {
  const auto [place, isNew] = m_styleOf[level].try_emplace(block.blockFormatIndex());
  ParagraphStyle& style = place->second;
  if (isNew) {
    const QTextList* list = block.textList();
    const QTextListFormat listFormat = list == nullptr ? QTextListFormat() : list->format();
    style = FromBlockFormat(block.blockFormat(), list == nullptr ? nullptr : &listFormat, m_document.indentWidth());
    style.tableLevel = static_cast<int>(level);
  }
  return style;
}

/// In a real table; within its cells, in rows that no table holds.
TablePath Writer::PathOf(const QTextBlock& block) {
  TablePath path = m_rows.PathOf(block);
  if (const QTextBlockFormat format = block.blockFormat(); format.hasProperty(TableProperty)) {
    path += rtf::PathOf(format);
  }
  return path.size() <= deepestTable ? path : path.first(deepestTable);
}

Writer::Beginning Writer::BeginningOf(const QTextBlock& block) {
  const auto of = [](const QTextBlock& start) {
    Beginning beginning{.format = start.blockFormat(), .pageBreak = {}, .hasSection = false};
    beginning.hasSection = beginning.format.hasProperty(SectionWordsProperty);
    if ((beginning.format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) != 0) {
      // A break that was set in the editor is one at the paragraph's start.
      const int kind = beginning.format.intProperty(BreakProperty);
      beginning.pageBreak = kind == 0 ? BreakKind::AtStart : BreakKind(kind);
    }
    return beginning;
  };
  // Of the joints in front of it: there are more of them where a table begins with another one.
  const Beginning own = of(block);
  Beginning beginning = own;
  for (QTextBlock joint = block.previous(); !beginning.pageBreak && !beginning.hasSection; joint = joint.previous()) {
    if (!joint.isValid() || !IsJoint(joint)) {
      return own;
    }
    beginning = of(joint);
  }
  return beginning;
}

Writer::ListState* Writer::ListOf(const QTextBlock& block) {
  const QTextList* list = block.textList();
  if (list == nullptr) {
    return nullptr;
  }
  const auto known = m_lists.find(list);
  if (known != m_lists.end()) {
    return &*known;
  }
  const QTextListFormat format = list->format();
  ListState state;
  state.numbering = NumberingOf(format);
  const bool bullet = state.numbering.kind == Numbering::Kind::Bullet;
  if (format.hasProperty(ListStartProperty)) {
    state.numbering.start = format.intProperty(ListStartProperty);
  }
  state.next = state.numbering.start + list->itemNumber(block);
  const int symbols = bullet ? m_tables.FontNumber(SymbolFont()) : -1;
  if (bullet) {
    state.bullet = "\\f" + QByteArray::number(symbols) + "\\'b7";
    state.numbering.before = QChar(0xB7);
    state.numbering.after.clear();
  }
  const QByteArray source = format.stringProperty(ListSourceProperty).toLatin1();
  const bool isAsRead = !source.isEmpty() && format.intProperty(ListStyleProperty) == int(format.style());
  if (!isAsRead) {
    state.group = NumberingGroup(state.numbering, symbols);
  } else if (IsOfListTable(format)) {
    state.words = source;
  } else {
    state.group = source;
  }
  return &*m_lists.insert(list, state);
}

}  // namespace rtf
