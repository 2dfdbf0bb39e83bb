#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QTextBlock>

#include <optional>
#include <utility>

namespace rtf {

/// Bytes in place of `length` others; an insertion where that is 0.
struct Splice {
  qsizetype offset = 0;
  qsizetype length = 0;
  QByteArray bytes;
};

/// Puts them into `bytes`, whose places are those of all of them. They do not overlap; at one offset they stand in
/// their order.
QByteArray Spliced(const QByteArray& bytes, QList<Splice> splices);

/// Where the characters of a letter stand in its bytes, so that text which is typed or deleted within a run can be
/// written there, while everything else keeps its bytes. The reader notes them where it is asked to.
class TextPlaces {
 public:
  /// Neighbouring characters of a paragraph, and the bytes that stand for them.
  struct Place {
    qsizetype start = 0;  ///< In the paragraph's text.
    qsizetype length = 0;
    qsizetype begin = 0;  ///< In the bytes.
    qsizetype end = 0;
    int codePage = 0;  ///< Of the font there.
    int unicodeSkip = 1;
    bool isPlain = false;  ///< A byte for each character.
    bool joins = false;    ///< Text may follow as it is, which behind a control word it may not.
  };
  /// Characters of a block that others stand for now.
  struct Change {
    int block = 0;
    qsizetype from = 0;
    qsizetype to = 0;
    QString text;
    /// The text has the format of the character behind it and not of the one before it, as at the start of a run.
    bool beginsRun = false;
  };

  /// `bytes` are what is read, and must outlive this object.
  explicit TextPlaces(const QByteArray& bytes) : m_bytes(bytes) {}

  /// `paragraph` is its number in the order of reading.
  void Add(int paragraph, const Place& place) { m_places[paragraph].append(place); }
  /// The bytes up to `end` belong to the character that was added last; `isWhole` if they are the last of it.
  void Extend(int paragraph, qsizetype end, bool isWhole);
  /// The letter's first text, which comes next, ends what stands in front of all text: words and groups behind it mean
  /// other things there.
  void StartBody() { m_startsBody = true; }
  /// What ends the paragraph begins there.
  void EndParagraph(int paragraph, const Place& end) { m_ends.insert(paragraph, end); }
  void PutInto(int paragraph, const QTextBlock& block) { m_blocks.append({paragraph, block}); }
  /// The document is complete.
  void Finish();

  /// How the bytes say the change; none where the places of its characters are not known.
  std::optional<QList<Splice>> SplicesFor(const Change& change) const;

 private:
  std::optional<Splice> Insertion(const QList<Place>& places, int paragraph, const Change& change) const;
  bool Remove(const QList<Place>& places, int paragraph, const Change& change, QList<Splice>& splices) const;
  bool Separates(qsizetype offset) const;
  bool IsBehindStar(qsizetype offset) const;

  const QByteArray& m_bytes;
  QHash<int, QList<Place>> m_places;
  QHash<int, Place> m_ends;
  QList<std::pair<int, QTextBlock>> m_blocks;
  QHash<int, int> m_paragraphs;  ///< By block.
  bool m_startsBody = false;
};

}  // namespace rtf
