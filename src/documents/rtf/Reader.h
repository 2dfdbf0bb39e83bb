#pragma once

#include "documents/rtf/ColourTable.h"
#include "documents/rtf/DocumentBuilder.h"
#include "documents/rtf/FontTable.h"
#include "documents/rtf/Numbering.h"
#include "documents/rtf/Preamble.h"
#include "documents/rtf/Report.h"
#include "documents/rtf/RowTracker.h"
#include "documents/rtf/Seams.h"
#include "documents/rtf/Source.h"
#include "documents/rtf/StyleWords.h"
#include "documents/rtf/Styles.h"
#include "documents/rtf/TextPlaces.h"
#include "documents/rtf/Tokenizer.h"

#include <QHash>
#include <QSet>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rtf {

/// The RTF in a letter, behind blanks and the mark of a UTF-8 file; empty where it is none.
std::string_view RtfIn(const QByteArray& content);

/// Reads one RTF text into a document: tokens in, formatting state in the middle, paragraphs out to a DocumentBuilder.
/// Nested groups cost no stack: their state is kept for `deepestGroup` levels, deeper ones are only counted.
class Reader {
 public:
  static constexpr std::size_t deepestGroup = 512;

  /// `input` must outlive the reader. The document's pictures go to `source`.
  Reader(std::string_view input, QTextDocument& document, Source& source, const Limits& limits);

  Report Read();
  /// Has it note in `places` where the text stands, with `before` bytes in front of the input. Before reading.
  void NotePlaces(TextPlaces& places, qsizetype before);
  /// Of what was read, with `before` bytes in front of it.
  Seams TakeSeams(qsizetype before) { return m_seams.Take(before); }

 private:
  enum class BorderOwner { None, Character, Paragraph, Section, Row };
  /// Whose border the attributes to come are.
  struct Border {
    BorderOwner owner = BorderOwner::None;
    std::uint16_t word = 0;
    qsizetype named = 0;  ///< Where the owner was named, or that there is none.
  };
  /// What the groups that are open save and restore.
  struct Group {
    CharacterStyle character;
    ParagraphStyle paragraph;
    int unicodeSkip = 1;
    bool alternatives = false;         ///< `\upr`: of its groups only `\ud` counts.
    bool nestedRowProperties = false;  ///< `\nesttableprops`
    int openLink = 0;                  ///< A field or object of which only the result counts; its index.
    std::size_t contents = 0;          ///< Where the contents of such a group begin.
    int serial = 0;                    ///< In the order of their beginnings, from 1.
    Border border;
  };
  struct LinkNode {
    int parent = 0;
    int depth = 1;
    int serial = 0;  ///< Given when the first text is found in the result.
    bool isObject = false;
    int lastingWords = 0;  ///< Of the letter, in front of it.
    Piece head = {};
    QString name = {};    ///< Of the heads from the outermost link to this one.
    QString target = {};  ///< A hyperlink's address.
  };
  struct NumberingNode {
    Numbering numbering;
    QString source;
  };
  struct SectionState {
    bool first = true;
    bool defaults = false;
    WordList words = {};
    QByteArray groups = {};
    bool hasParagraph = false;
    int link = 0;  ///< The field or object in which it began, if its first text is part of that, too.

    bool IsEmpty() const { return !defaults && words.IsEmpty() && groups.isEmpty(); }
  };

  // Reader.cpp: groups, words, the document's own state.
  void Handle(const Token& token);
  void HandleWord(const Token& token);
  void ApplyWord(const Keyword& keyword, const Token& token);
  bool ApplyDocumentWord(const Keyword& keyword, const Token& token);
  bool ApplyTextWord(const Keyword& keyword, const Token& token);
  void CarryWord(const Keyword& keyword, const Token& token);
  void AttachBorder(const Keyword& keyword, const Token& token);
  void OpenGroup();
  void CloseGroup();
  void Finish();
  void ChangeDocument(bool ofSection);
  bool IsWithinLink(Action action) const;
  bool IsBetweenParts() const;
  void NoteSeam(const Token& token);
  Group& Top() { return m_groups.back(); }

  // ReaderPlaces.cpp: where the text stands.
  void HandleNoted(const Token& token);
  void NoteText(const Token& token, qsizetype grown, std::size_t skipped);
  void NoteBytes(const Token& token, std::size_t count);
  void FlushNoted();
  TextPlaces::Place PlaceHere(qsizetype length, std::size_t begin, std::size_t end);

  // ReaderGroups.cpp: destinations, links, pieces.
  void EnterDestination(const Keyword& keyword, const Token& token);
  void EnterUnknownDestination(const Token& token);
  QByteArray Capture();
  void PlaceGroup(const Keyword& keyword, const QByteArray& group);
  void BeginDocumentTable();
  void OpenLink(bool isObject);
  bool EnterResult();
  void CloseLink(const Group& group);
  Links LinksOf(int link);
  void AddPiece(const QByteArray& group);
  void AddPicture(const QByteArray& group);
  void ExtendPicture(const QByteArray& group);

  // ReaderText.cpp: text, paragraphs, formats.
  void AppendBytes(std::string_view bytes);
  void AppendCharacter(char16_t character);
  void FlushBytes();
  QString& HiddenText();
  void FlushHidden();
  void PrepareRun();
  int CodePage();
  const QTextCharFormat& FormatOf(CharacterStyle style);
  QTextBlockFormat BlockFormatOf(const ParagraphStyle& style, bool listItem);
  void EndParagraph();
  void EndOpenParagraph();
  void EndCell(int level);
  void EndRow(int level);
  void EndSection();
  void FinishSection();
  void BreakPage(qsizetype begin);
  bool FindListItem(ListItem& item) const;
  std::string_view SkipFallback(std::string_view bytes);
  void Refuse(const QString& reason);

  std::string_view m_input;
  Tokenizer m_tokenizer;
  QTextDocument& m_document;
  Source& m_source;
  Limits m_limits;
  Report m_report;
  DocumentBuilder m_builder;
  RowTracker m_rows;
  SeamRecorder m_seams;
  int m_groupSerials = 0;
  TablePath m_lastPath;
  PreambleData m_preamble;
  FontTable m_fonts;
  ColourTable m_colours;
  ListTable m_lists;
  QByteArray m_itemMark;  ///< The open paragraph's `\pntext` group.
  std::vector<Group> m_groups;
  std::size_t m_uncounted = 0;  ///< Open groups beyond the deepest.
  bool m_done = false;
  bool m_bodyStarted = false;
  bool m_starred = false;
  qsizetype m_capturedEnd = -1;   ///< Behind the group that was captured last, -1 where it does not end.
  std::size_t m_destination = 0;  ///< Where a destination's word, or the star in front of it, begins.
  int m_skip = 0;                 ///< Characters of a Unicode escape's fallback that are still to come.
  std::vector<LinkNode> m_links{LinkNode{}};
  int m_linkSerials = 0;
  int m_lastingWords = 0;  ///< Words so far that mean more than their group.
  std::vector<NumberingNode> m_numberings{NumberingNode{}};
  TabStop m_pendingTab;
  SectionState m_section;
  int m_break = 0;  ///< The BreakKind of the paragraph to come, 0 for none.
  qsizetype m_breakNamed = 0;
  qsizetype m_rowDefinition = 0;  ///< Where the last one begins.
  std::string m_bytes;            ///< Of a multi-byte code page, until they can be decoded together.
  int m_bytesPage = 0;
  QString m_hidden;
  CharacterStyle m_hiddenStyle;
  QHash<CharacterStyle, QTextCharFormat> m_formats;
  QHash<ParagraphStyle, QTextBlockFormat> m_blockFormats;
  qsizetype m_characterFormats = 0;
  qsizetype m_pieceFormats = 0;
  QSet<size_t> m_tableFormats;
  bool m_runIsCurrent = false;  ///< The builder's last run has the style in force.
  std::optional<CharacterStyle> m_runStyle;
  int m_codePage = -1;  ///< Of the style in force, -1 if that changed.
  TextPlaces* m_places = nullptr;
  qsizetype m_placesBefore = 0;
  bool m_fallbackIsNoted = false;                                 ///< The character that it belongs to has a place.
  std::vector<std::pair<std::size_t, std::size_t>> m_byteRanges;  ///< Of `m_bytes`, one by one.
};

}  // namespace rtf
