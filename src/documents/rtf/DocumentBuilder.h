#pragma once

#include "documents/rtf/Numbering.h"
#include "documents/rtf/Properties.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>

#include <functional>

class QTextDocument;
class QTextList;

namespace rtf {

/// The list that a paragraph is an item of.
struct ListItem {
  Numbering numbering;
  QString source;  ///< `\lsN\ilvlN`, or the `\pn` group; equal sources are one list.
  /// Whether the list goes on behind paragraphs that are not its items.
  bool resumes = false;
};

/// Builds the document a paragraph at a time, in one edit without undo. Text is gathered with its formats and inserted
/// when its paragraph ends, because the paragraph's format is known only then.
class DocumentBuilder {
 public:
  /// Qt's lists take time in proportion to their length for every item; a longer one is made in parts.
  static constexpr int longestList = 500;

  /// Empties the document; the edit ends with the builder.
  explicit DocumentBuilder(QTextDocument& document);
  ~DocumentBuilder();
  DocumentBuilder(const DocumentBuilder&) = delete;
  DocumentBuilder& operator=(const DocumentBuilder&) = delete;

  /// The text of the paragraph so far. What is appended to it belongs to the run begun last.
  QString& Text() { return m_text; }
  /// The text that follows has that format.
  void BeginRun(const QTextCharFormat& format);
  /// The object character with that format.
  void AddObject(const QTextCharFormat& format);
  bool HasText() const { return !m_text.isEmpty(); }
  /// The format of the object that the paragraph ends with so far; null where it ends with something else.
  QTextCharFormat* LastObject();

  /// Inserts the paragraph; `mark` is the format of its end, `item` null for no list.
  void EndParagraph(const QTextBlockFormat& format, const QTextCharFormat& mark, const ListItem* item);

  int Paragraphs() const { return m_paragraphs; }
  /// Changes the formats of paragraphs from `first` (counted from 0) to the last one.
  void ChangeFormats(int first, const std::function<void(QTextBlockFormat&)>& change);
  void ChangeFormat(int paragraph, const std::function<void(QTextBlockFormat&)>& change);

 private:
  struct Run {
    qsizetype start = 0;
    QTextCharFormat format;
    bool object = false;
  };
  struct OpenList {
    QTextList* list = nullptr;
    int items = 0;
    int part = 0;
  };

  void InsertRuns();
  void RepairSurrogates();
  OpenList& ListFor(const ListItem& item);
  void AddToList(OpenList& open, const ListItem& item);

  QTextDocument& m_document;
  QTextCursor m_cursor;
  QString m_text;
  QList<Run> m_runs;
  int m_paragraphs = 0;
  QHash<QString, OpenList> m_resumable;
  OpenList m_current;
  QString m_currentSource;
  bool m_undo = false;
};

}  // namespace rtf
