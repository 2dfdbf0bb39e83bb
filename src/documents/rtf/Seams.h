#pragma once

#include "documents/rtf/Styles.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace rtf {

/// What is in force at a place of a letter.
struct ReadingState {
  CharacterStyle character;
  ParagraphStyle paragraph;
  QString numbering;  ///< The `\pn` group, empty for none.
  int unicodeSkip = 1;

  bool operator==(const ReadingState&) const = default;
};

size_t qHash(const ReadingState& state, size_t seed = 0);

/// A place between two parts of a letter.
struct Seam {
  qsizetype offset = 0;
  /// The innermost group that is open, numbered in the order of their beginnings.
  int group = 0;
  /// Its number in Seams::states; -1 where the letter can't be written on from here, as within a field.
  int state = -1;

  bool IsClean() const { return state >= 0; }
};

/// Where a letter's bytes may be cut, so that what is written anew stands between what is kept. A part is a paragraph
/// outside tables, or all rows up to the next such paragraph.
struct Seams {
  QList<Seam> at;  ///< In front of each part, and behind the last one.
  QList<ReadingState> states;
  /// Parts whose bytes also say something of the whole document.
  QSet<qsizetype> bound;
  /// Behind the closing brace of the last table of its kind; -1 where there is none, or none that is closed.
  qsizetype fontsEnd = -1;
  qsizetype coloursEnd = -1;
  /// Where the last table of fonts, colours or lists begins: what is in front of it has other numbers.
  qsizetype lastTable = -1;
};

/// Notes the seams of a letter while it is read. The reader says what a token did, then where it ended.
class SeamRecorder {
 public:
  /// What the token did.
  void EndPart(bool inTable);
  void EndRow();
  /// It changed what holds for more than its paragraph; `begins` before the text of the letter.
  void ChangeDocument(bool begins);
  /// The part that was ended last is its section's first one, with which all of the section's words are written.
  void BeginSection() { m_sectionPart = m_seams.at.size() - 2; }
  /// It changed a section that has a part.
  void ChangeSection();
  /// What it means hangs on what stands at `offset`: nothing may be written between them.
  void Refer(qsizetype offset);
  /// A table begins whose first row has the definition there, unless another one comes before that row ends.
  void BeginTable(qsizetype definition);
  void DefineRow() { m_isRedefined = true; }
  /// It ends what the last part's end did not, without text between them.
  void GoOn();
  /// The letter's last words are those of a section that has no part, and the last part has its mark.
  void EndWithSection() { m_seams.bound.insert(m_seams.at.size() - 2); }

  /// Whether the end of the token is a seam. `closesGroup` goes on from one that the token before has left.
  bool IsSeam(bool closesGroup);
  void Place(qsizetype offset, int group, const ReadingState& state);

  void BeginDocumentTable(qsizetype offset) { m_seams.lastTable = offset; }
  void EndFontTable(qsizetype offset) { m_seams.fontsEnd = offset; }
  void EndColourTable(qsizetype offset) { m_seams.coloursEnd = offset; }
  /// What was noted, with `before` bytes in front of it.
  Seams Take(qsizetype before);

 private:
  /// Of something in front of the seam `last` to the one in front of which it stands.
  struct Reference {
    qsizetype offset = 0;
    qsizetype last = 0;

    bool operator==(const Reference&) const = default;
  };

  void ReferFromRow();

  Seams m_seams{.at = {Seam{}}, .states = {}, .bound = {}};
  QHash<ReadingState, int> m_states;
  QList<Reference> m_references;
  std::optional<Reference> m_row;  ///< Of the open row.
  bool m_isRedefined = false;      ///< Once it ends.
  qsizetype m_lastPlaced = 0;
  qsizetype m_sectionPart = -1;
  bool m_inTable = false;
  bool m_rowHasCells = false;  ///< The one that did not end yet.
  bool m_placed = false;
  bool m_isBehindSeam = false;
  int m_partsOfToken = 0;
};

}  // namespace rtf
