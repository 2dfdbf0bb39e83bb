#pragma once

#include "documents/rtf/Keywords.h"

#include <QList>
#include <QString>

namespace rtf {

struct Token;

/// A control word that is carried through the document unseen, with its parameter. The parameter of a word that names
/// a colour is the colour (0xRRGGBB, or automaticColour), not its number.
struct CarriedWord {
  std::uint16_t head = 0;  ///< The word that it belongs to (a border's width to the border), or itself.
  std::uint16_t word = 0;
  bool hasParameter = false;
  int parameter = 0;

  bool operator==(const CarriedWord&) const = default;
};

size_t qHash(const CarriedWord& word, size_t seed = 0);

/// The carried words that are in force: each once, the last one counts, in the order of the keyword table. Cheap to
/// copy.
class WordList {
 public:
  bool IsEmpty() const { return m_words.isEmpty(); }
  bool Contains(std::string_view name) const;
  const QList<CarriedWord>& Words() const { return m_words; }

  /// A word of its own; what belonged to an earlier one of the same name goes with it.
  void Put(const Keyword& keyword, bool hasParameter, int parameter);
  /// A word that belongs to `head`; nothing where the list lacks that.
  void Attach(std::uint16_t head, const Keyword& keyword, bool hasParameter, int parameter);
  /// A word as another list had it, behind all others.
  void Append(const CarriedWord& word) { m_words.append(word); }
  void Clear() { m_words.clear(); }

  bool operator==(const WordList&) const = default;
  friend size_t qHash(const WordList& list, size_t seed = 0) {
    return qHashRange(list.m_words.begin(), list.m_words.end(), seed);
  }

 private:
  QList<CarriedWord> m_words;
};

/// Words as a text and back ("\keepn\brdrb\brdrw15"), colours as their values. What is no such text gives no words.
QString ToText(const QList<CarriedWord>& words);
QList<CarriedWord> WordsFromText(QStringView text);

}  // namespace rtf
