#include "documents/rtf/DocumentBuilder.h"

#include "documents/rtf/TableBuilder.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

#include <algorithm>
#include <utility>

namespace rtf {

namespace {

void RepairSurrogates(QString& text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (!text[i].isSurrogate()) {
      continue;
    }
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      ++i;
    } else {
      text[i] = QChar::ReplacementCharacter;
    }
  }
}

QTextBlockFormat TakeBreaks(QTextBlockFormat& format) {
  QTextBlockFormat taken;
  for (const int property : {int(QTextFormat::PageBreakPolicy), int(BreakProperty), int(SectionWordsProperty),
                             int(SectionNameProperty), int(SectionProperty)}) {
    if (format.hasProperty(property)) {
      taken.setProperty(property, format.property(property));
      format.clearProperty(property);
    }
  }
  return taken;
}

}  // namespace

DocumentBuilder::DocumentBuilder(QTextDocument& document, const Limits& limits)
    : m_document(document), m_limits(limits) {
  m_undo = document.isUndoRedoEnabled();
  document.setUndoRedoEnabled(false);
  document.clear();
  m_cursor = QTextCursor(&document);
  m_cursor.beginEditBlock();
}

DocumentBuilder::~DocumentBuilder() {
  m_cursor.endEditBlock();
  m_document.setUndoRedoEnabled(m_undo);
  m_document.setModified(false);
}

void DocumentBuilder::BeginRun(const QTextCharFormat& format) {
  if (!m_paragraph.runs.isEmpty() && m_paragraph.runs.last().start == m_paragraph.text.size()) {
    m_paragraph.runs.removeLast();
  }
  m_paragraph.runs.append({m_paragraph.text.size(), format, false});
}

void DocumentBuilder::AddObject(const QTextCharFormat& format) {
  BeginRun(format);
  m_paragraph.runs.last().object = true;
  m_paragraph.text += QChar::ObjectReplacementCharacter;
}

QTextCharFormat* DocumentBuilder::LastObject() {
  const bool isObject = !m_paragraph.runs.isEmpty() && m_paragraph.runs.last().object &&
                        m_paragraph.runs.last().start + 1 == m_paragraph.text.size();
  return isObject ? &m_paragraph.runs.last().format : nullptr;
}

void DocumentBuilder::EndParagraph(const Paragraph& end) {
  m_paragraph.format = end.format;
  m_paragraph.mark = end.mark;
  m_paragraph.item = end.item;
  m_paragraph.path = end.path;
  m_paragraph.beginsSection = end.beginsSection;
  RepairSurrogates(m_paragraph.text);
  m_paragraph.number = m_paragraphs++;
  const bool goesOn = !m_waiting.isEmpty() && !end.path.isEmpty() &&
                      !(end.beginsSection && m_waiting.last().path.first().row != end.path.first().row);
  if (!goesOn) {
    EndTable();
  }
  if (end.path.isEmpty()) {
    InsertParagraph(m_paragraph);
    m_paragraph.text.resize(0);
  } else {
    m_waiting.append(m_paragraph);
    m_paragraph.text.clear();
  }
  m_paragraph.runs.clear();
}

void DocumentBuilder::EndTable() {
  if (m_waiting.isEmpty()) {
    return;
  }
  QList<Paragraph> paragraphs = std::exchange(m_waiting, {});
  TableBuilder table(paragraphs, m_cursor, [this](const Paragraph& part, bool isNew) { FillBlock(part, isNew); });
  if (!table.CanHold(m_limits)) {
    for (Paragraph& paragraph : paragraphs) {
      SetPath(paragraph.format, paragraph.path);
      InsertParagraph(paragraph);
    }
    return;
  }
  // Breaks in front of a table are the joint's.
  const QTextBlockFormat joint = TakeBreaks(paragraphs.first().format);
  BeginBlock(joint, paragraphs.first().mark);
  if (paragraphs.first().beginsSection) {
    m_sectionBlock = m_cursor.blockNumber();
  }
  table.Build();
  m_currentSource.clear();
}

void DocumentBuilder::BeginBlock(const QTextBlockFormat& format, const QTextCharFormat& mark) {
  if (std::exchange(m_isEmpty, false)) {
    m_cursor.setBlockFormat(format);
    m_cursor.setBlockCharFormat(mark);
  } else {
    m_cursor.insertBlock(format, mark);
  }
}

void DocumentBuilder::InsertParagraph(const Paragraph& paragraph) {
  FillBlock(paragraph, true);
  if (paragraph.beginsSection) {
    m_sectionBlock = m_cursor.blockNumber();
  }
}

void DocumentBuilder::FillBlock(const Paragraph& paragraph, bool isNew) {
  OpenList* open = paragraph.item ? &ListFor(*paragraph.item) : nullptr;
  QTextBlockFormat shown = paragraph.format;
  if (open != nullptr && open->list != nullptr) {
    shown.setObjectIndex(open->list->objectIndex());
  }
  if (isNew) {
    BeginBlock(shown, paragraph.mark);
  } else {
    m_cursor.setBlockFormat(shown);
  }
  if (open != nullptr) {
    AddToList(*open, *paragraph.item);
  } else {
    m_currentSource.clear();
  }
  InsertRuns(paragraph);
  if (m_put) {
    m_put(paragraph.number, m_cursor.block());
  }
}

void DocumentBuilder::InsertRuns(const Paragraph& paragraph) {
  const QList<Paragraph::Run>& runs = paragraph.runs;
  for (qsizetype i = 0; i < runs.size(); ++i) {
    const qsizetype end = i + 1 < runs.size() ? runs[i + 1].start : paragraph.text.size();
    if (end > runs[i].start) {
      m_cursor.insertText(paragraph.text.mid(runs[i].start, end - runs[i].start), runs[i].format);
    }
  }
}

DocumentBuilder::OpenList& DocumentBuilder::ListFor(const ListItem& item) {
  OpenList& open = m_lists[item.source];
  const bool follows = m_currentSource == item.source;
  m_currentSource = item.source;
  const bool isFull = open.items == longestList;
  if (!item.resumes && item.begins.value_or(!follows) && !(follows && isFull)) {
    open = {};
  } else if (isFull) {
    open = {.part = open.part + 1};
  }
  return open;
}

void DocumentBuilder::AddToList(OpenList& open, const ListItem& item) {
  ++open.items;
  if (open.list != nullptr) {
    return;
  }
  QTextListFormat format;
  format.setStyle(ListStyle(item.numbering));
  format.setIndent(0);
  if (item.numbering.kind != Numbering::Kind::Bullet) {
    format.setNumberPrefix(item.numbering.before);
    format.setNumberSuffix(item.numbering.after);
  }
  format.setProperty(ListSourceProperty, item.source);
  format.setProperty(ListStyleProperty, int(format.style()));
  if (item.numbering.start != 1) {
    format.setProperty(ListStartProperty, item.numbering.start);
  }
  if (open.part != 0) {
    format.setProperty(ListPartProperty, open.part);
  }
  open.list = m_cursor.createList(format);
}

void DocumentBuilder::ChangePlaces(int first, const std::function<void(TablePath&)>& change) {
  const qsizetype firstWaiting = m_paragraphs - m_waiting.size();
  for (qsizetype i = std::max<qsizetype>(0, first - firstWaiting); i < m_waiting.size(); ++i) {
    change(m_waiting[i].path);
  }
}

void DocumentBuilder::ChangeSectionStart(const std::function<void(QTextBlockFormat&)>& change) {
  const auto waiting =
      std::find_if(m_waiting.rbegin(), m_waiting.rend(), [](const Paragraph& part) { return part.beginsSection; });
  if (waiting != m_waiting.rend()) {
    change(waiting->format);
    return;
  }
  const QTextBlock block = m_document.findBlockByNumber(m_sectionBlock);
  QTextBlockFormat format = block.blockFormat();
  change(format);
  QTextCursor(block).setBlockFormat(format);
}

}  // namespace rtf
