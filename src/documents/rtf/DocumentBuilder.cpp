#include "documents/rtf/DocumentBuilder.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

namespace rtf {

DocumentBuilder::DocumentBuilder(QTextDocument& document) : m_document(document) {
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
  if (!m_runs.isEmpty() && m_runs.last().start == m_text.size()) {
    m_runs.removeLast();
  }
  m_runs.append({m_text.size(), format, false});
}

void DocumentBuilder::AddObject(const QTextCharFormat& format) {
  BeginRun(format);
  m_runs.last().object = true;
  m_text += QChar::ObjectReplacementCharacter;
}

QTextCharFormat* DocumentBuilder::LastObject() {
  const bool isObject = !m_runs.isEmpty() && m_runs.last().object && m_runs.last().start + 1 == m_text.size();
  return isObject ? &m_runs.last().format : nullptr;
}

void DocumentBuilder::EndParagraph(const QTextBlockFormat& format, const QTextCharFormat& mark, const ListItem* item) {
  OpenList* open = item == nullptr ? nullptr : &ListFor(*item);
  QTextBlockFormat shown = format;
  if (open != nullptr && open->list != nullptr) {
    shown.setObjectIndex(open->list->objectIndex());
  }
  if (m_paragraphs == 0) {
    m_cursor.setBlockFormat(shown);
    m_cursor.setBlockCharFormat(mark);
  } else {
    m_cursor.insertBlock(shown, mark);
  }
  ++m_paragraphs;
  if (open != nullptr) {
    AddToList(*open, *item);
  } else {
    m_currentSource.clear();
    m_current = {};
  }
  InsertRuns();
}

void DocumentBuilder::InsertRuns() {
  RepairSurrogates();
  for (qsizetype i = 0; i < m_runs.size(); ++i) {
    const Run& run = m_runs[i];
    const qsizetype end = i + 1 < m_runs.size() ? m_runs[i + 1].start : m_text.size();
    if (end > run.start) {
      m_cursor.insertText(m_text.mid(run.start, end - run.start), run.format);
    }
  }
  m_runs.clear();
  m_text.resize(0);
}

void DocumentBuilder::RepairSurrogates() {
  for (qsizetype i = 0; i < m_text.size(); ++i) {
    if (!m_text[i].isSurrogate()) {
      continue;
    }
    if (m_text[i].isHighSurrogate() && i + 1 < m_text.size() && m_text[i + 1].isLowSurrogate()) {
      ++i;
    } else {
      m_text[i] = QChar::ReplacementCharacter;
    }
  }
}

DocumentBuilder::OpenList& DocumentBuilder::ListFor(const ListItem& item) {
  if (!item.resumes && m_currentSource != item.source) {
    m_current = {};
  }
  OpenList& open = item.resumes ? m_resumable[item.source] : m_current;
  m_currentSource = item.resumes ? QString() : item.source;
  if (open.items == longestList) {
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

void DocumentBuilder::ChangeFormats(int first, const std::function<void(QTextBlockFormat&)>& change) {
  for (QTextBlock block = m_document.findBlockByNumber(first); block.isValid(); block = block.next()) {
    QTextBlockFormat format = block.blockFormat();
    change(format);
    QTextCursor(block).setBlockFormat(format);
  }
}

void DocumentBuilder::ChangeFormat(int paragraph, const std::function<void(QTextBlockFormat&)>& change) {
  const QTextBlock block = m_document.findBlockByNumber(paragraph);
  QTextBlockFormat format = block.blockFormat();
  change(format);
  QTextCursor(block).setBlockFormat(format);
}

}  // namespace rtf
