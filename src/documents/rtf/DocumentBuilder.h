#pragma once

#include "documents/rtf/Numbering.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/Report.h"
#include "documents/rtf/TablePath.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QTextBlock>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>

#include <functional>
#include <optional>

class QTextDocument;
class QTextList;

namespace rtf {

/// The list that a paragraph is an item of.
struct ListItem {
  Numbering numbering;
  QString source;  ///< `\lsN\ilvlN`, or the `\pn` group; equal sources are one list.
  /// Whether its mark is that of a list's first item, or of another one: then it goes on with the last list of that
  /// source. Unknown: a list ends with its last neighbouring item.
  std::optional<bool> begins = {};
  /// Whether the list goes on behind paragraphs that are not its items.
  bool resumes = false;
};

/// A paragraph with its text, on its way into the document.
struct Paragraph {
  struct Run {
    qsizetype start = 0;
    QTextCharFormat format;
    bool object = false;
  };

  QString text = {};
  QList<Run> runs = {};
  QTextBlockFormat format = {};
  QTextCharFormat mark = {};  ///< The format of its end.
  std::optional<ListItem> item = {};
  TablePath path = {};
  bool beginsSection = false;
  int number = 0;  ///< In the order of reading.
};

/// Builds the document a paragraph at a time, in one edit without undo. Text is gathered with its formats and inserted
/// when its paragraph ends, because the paragraph's format is known only then; the paragraphs of a table wait until it
/// ends, because its rows' definitions may come behind them.
class DocumentBuilder {
 public:
  /// Qt's lists take time in proportion to their length for every item; a longer one is made in parts.
  static constexpr int longestList = 500;

  /// Empties the document; the edit ends with the builder. Tables within too many others stay paragraphs, with all that
  /// is around them.
  DocumentBuilder(QTextDocument& document, const Limits& limits);
  ~DocumentBuilder();
  DocumentBuilder(const DocumentBuilder&) = delete;
  DocumentBuilder& operator=(const DocumentBuilder&) = delete;

  /// Calls `put` with the number of each paragraph that gets a block of its own, and that.
  void OnBlock(std::function<void(int, const QTextBlock&)> put) { m_put = std::move(put); }

  /// The text of the paragraph so far. What is appended to it belongs to the run begun last.
  QString& Text() { return m_paragraph.text; }
  /// The text that follows has that format.
  void BeginRun(const QTextCharFormat& format);
  /// The object character with that format.
  void AddObject(const QTextCharFormat& format);
  bool HasText() const { return !m_paragraph.text.isEmpty(); }
  /// The format of the object that the paragraph ends with so far; null where it ends with something else.
  QTextCharFormat* LastObject();

  /// Ends the paragraph, which has the rest from `end`: all but its text and runs.
  void EndParagraph(const Paragraph& end);
  /// Ends a table that is still waiting.
  void Finish() { EndTable(); }

  int Paragraphs() const { return m_paragraphs; }
  /// Changes the places of waiting paragraphs from `first` (of all paragraphs, counted from 0) to the last one.
  void ChangePlaces(int first, const std::function<void(TablePath&)>& change);
  /// Changes the format of the paragraph that began the last section.
  void ChangeSectionStart(const std::function<void(QTextBlockFormat&)>& change);

 private:
  struct OpenList {
    QTextList* list = nullptr;
    int items = 0;
    int part = 0;
  };

  void EndTable();
  void BeginBlock(const QTextBlockFormat& format, const QTextCharFormat& mark);
  void InsertParagraph(const Paragraph& paragraph);
  void FillBlock(const Paragraph& paragraph, bool isNew);
  void InsertRuns(const Paragraph& paragraph);
  OpenList& ListFor(const ListItem& item);
  void AddToList(OpenList& open, const ListItem& item);

  QTextDocument& m_document;
  std::function<void(int, const QTextBlock&)> m_put;
  Limits m_limits;
  QTextCursor m_cursor;
  bool m_isEmpty = true;
  Paragraph m_paragraph;
  QList<Paragraph> m_waiting;
  int m_paragraphs = 0;
  int m_sectionBlock = -1;
  QHash<QString, OpenList> m_lists;  ///< The last one of each source.
  QString m_currentSource;
  bool m_undo = false;
};

}  // namespace rtf
