#pragma once

#include "documents/rtf/Numbering.h"
#include "documents/rtf/Preamble.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/Seams.h"
#include "documents/rtf/StyleWriter.h"
#include "documents/rtf/TablePath.h"
#include "documents/rtf/TableRows.h"
#include "documents/rtf/WriterTables.h"

#include <QHash>
#include <QTextBlock>
#include <QTextDocument>

#include <optional>
#include <unordered_map>

class QTextList;

namespace rtf {

/// Writes one document: its text with the words between the styles of neighbours, then the tables in front of it. The
/// form is the classic rich edit control's: one group, formatting toggled in place, a line of the file a paragraph.
class Writer {
 public:
  explicit Writer(const QTextDocument& document);

  QByteArray Write();

  /// One paragraph, whatever was written before: written one after the other, all of them are the document's text.
  QByteArray WriteParagraph(const QTextBlock& block);
  /// Some paragraphs in place of others, behind what leaves `before` in force. What is behind them takes up what it
  /// needs of the state that it was read in, and EndPart gives it all.
  void WritePart(const QTextBlock& first, const QTextBlock& last, const ReadingState& before);
  void TakeUpParagraph(const ReadingState& state);
  void TakeUpCharacters(const ReadingState& state);
  QByteArray EndPart(const ReadingState& state);
  const WriterTables& Tables() const { return m_tables; }
  /// Between paragraphs: the document has changed.
  void Forget() { m_rows.Forget(); }
  /// The document around a text that was written by this object.
  QByteArray Enclosed(const QByteArray& text);

 private:
  /// A character format, taken apart once.
  struct RunFormat {
    CharacterStyle style;
    int codePage = 0;
    Links links;
    QByteArray object;  ///< What an object character of this format is written as.
  };
  /// What is in front of a paragraph: a break of the page or section, which may be on the joint before it.
  struct Beginning {
    QTextBlockFormat format;
    std::optional<BreakKind> pageBreak;
    bool hasSection = false;
  };
  struct ListState {
    Numbering numbering;
    QByteArray group;   ///< `\pn`, empty for a list of the list table.
    QByteArray words;   ///< `\lsN\ilvlN`
    QByteArray bullet;  ///< The mark of every item, empty for numbers.
    int next = 1;
  };
  /// What is in force for paragraphs.
  struct InForce {
    ParagraphStyle style;
    QByteArray list;
  };
  struct OpenLink {
    Link link;
    CharacterStyle characters;
    InForce paragraph;
  };

  void BeginAt(const QTextBlock& block);
  void WriteBlock(const QTextBlock& block);
  void BeginSection(const QTextBlockFormat& format);
  void BeginRows(const TablePath& path);
  void WriteEmptyCell(const TableLevel& row, int number, int level);
  void Mark(const RunFormat& mark);
  void EndBlock(const QTextBlock& block, bool pageBegun);
  void EndCells(const TablePath& path, const TablePath& next);
  void EndRow(const TableLevel& row, bool nested);
  void Paragraph(const ParagraphStyle& style, ListState* list, bool withMark);
  void ItemMark(ListState& list);
  void Run(const RunFormat& format, const QString& text);
  void EnterLinks(const Links& links);
  void CloseLinks(qsizetype kept);
  const RunFormat& FormatOf(int index, const QTextCharFormat& format);
  RunFormat TakenApart(const QTextCharFormat& format);
  const ParagraphStyle& StyleOf(const QTextBlock& block, qsizetype level);
  TablePath PathOf(const QTextBlock& block);
  static Beginning BeginningOf(const QTextBlock& block);
  ListState* ListOf(const QTextBlock& block);
  QByteArray PictureOf(const QTextCharFormat& format) const;
  QByteArray Header();

  const QTextDocument& m_document;
  Preamble m_preamble;
  WriterTables m_tables;
  RtfText m_text;
  StyleWriter m_styles;
  InForce m_inForce;
  std::unordered_map<int, RunFormat> m_formats;
  std::unordered_map<int, ParagraphStyle> m_styleOf[deepestTable + 1];  ///< By table level and format.
  TableRows m_rows;
  QHash<const QTextList*, ListState> m_lists;
  QList<OpenLink> m_links;
  TablePath m_path;
};

}  // namespace rtf
