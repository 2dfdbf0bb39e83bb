#include "documents/rtf/TextPlaces.h"

#include "documents/rtf/TextEncoder.h"

#include <algorithm>

namespace rtf {

namespace {

using Place = TextPlaces::Place;

const Place* At(const QList<Place>& places, qsizetype character) {
  auto behind = std::upper_bound(places.begin(), places.end(), character,
                                 [](qsizetype at, const Place& place) { return at < place.start; });
  if (behind == places.begin()) {
    return nullptr;
  }
  const Place& place = *--behind;
  return character < place.start + place.length ? &place : nullptr;
}

/// The bytes for text, in a group where it might run into what is around it.
QByteArray Encoded(const QString& text, const Place& place, bool joins) {
  RtfText plain;
  plain.Text(text, place.codePage);
  const bool needsSkip = place.unicodeSkip != 1 && plain.Bytes().contains("\\u");
  if (joins && !needsSkip) {
    const bool endsInWord = text.endsWith(u'\t') || text.endsWith(QChar::LineSeparator);
    return endsInWord ? plain.Bytes() + ' ' : plain.Bytes();
  }
  RtfText group;
  group.OpenGroup();
  if (needsSkip) {
    group.Word("\\uc", 1);
  }
  group.Text(text, place.codePage);
  group.CloseGroup();
  return group.Bytes();
}

/// Whether the byte could be part of a control word in front of it.
bool IsOfWord(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') || byte == '-';
}

}  // namespace

QByteArray Spliced(const QByteArray& bytes, QList<Splice> splices) {
  std::stable_sort(splices.begin(), splices.end(),
                   [](const Splice& a, const Splice& b) { return a.offset < b.offset; });
  QByteArray result;
  qsizetype done = 0;
  for (const Splice& splice : splices) {
    result += QByteArrayView(bytes).sliced(done, splice.offset - done);
    result += splice.bytes;
    done = splice.offset + splice.length;
  }
  return result + bytes.sliced(done);
}

void TextPlaces::Extend(int paragraph, qsizetype end, bool isWhole) {
  Place& last = m_places[paragraph].last();
  last.end = end;
  last.joins = isWhole;
}

void TextPlaces::Finish() {
  for (const auto& [paragraph, block] : m_blocks) {
    m_paragraphs.insert(block.blockNumber(), paragraph);
  }
  m_blocks.clear();
}

/// Whether what is put there can't be taken for a part of what is in front of it.
bool TextPlaces::Separates(qsizetype offset) const {
  return offset > 0 && QByteArrayView(" {}\r\n").contains(m_bytes[offset - 1]);
}

/// Whether nothing stands between it and a star but what is no text.
bool TextPlaces::IsBehindStar(qsizetype offset) const {
  const auto isNone = [](char byte) { return static_cast<unsigned char>(byte) <= ' '; };
  const QByteArrayView before = QByteArrayView(m_bytes).first(offset);
  const auto end = std::find_if_not(before.rbegin(), before.rend(), isNone).base();
  return before.first(end - before.begin()).endsWith("\\*");
}

std::optional<Splice> TextPlaces::Insertion(const QList<Place>& places, int paragraph, const Change& change) const {
  if (places.isEmpty()) {
    const auto end = m_ends.constFind(paragraph);
    return end == m_ends.constEnd()
               ? std::nullopt
               : std::optional(Splice{end->begin, 0, Encoded(change.text, *end, Separates(end->begin))});
  }
  const Place* place = At(places, change.beginsRun ? change.from : change.from - 1);
  if (place == nullptr) {
    return std::nullopt;
  }
  if (change.beginsRun) {
    return change.from == place->start
               ? std::optional(Splice{place->begin, 0, Encoded(change.text, *place, Separates(place->begin))})
               : std::nullopt;
  }
  if (change.from == place->start + place->length) {
    return Splice{place->end, 0, Encoded(change.text, *place, place->joins)};
  }
  return place->isPlain
             ? std::optional(Splice{place->begin + change.from - place->start, 0, Encoded(change.text, *place, true)})
             : std::nullopt;
}

bool TextPlaces::Remove(const QList<Place>& places, int paragraph, const Change& change, QList<Splice>& splices) const {
  const qsizetype first = splices.size();
  for (qsizetype at = change.from; at < change.to;) {
    const Place* place = At(places, at);
    if (place == nullptr) {
      return false;
    }
    const qsizetype end = std::min(change.to, place->start + place->length);
    const bool isWhole = at == place->start && end == place->start + place->length;
    const bool startsBody = m_startsBody && paragraph == 0 && place == places.begin();
    if (isWhole ? startsBody : !place->isPlain) {
      return false;
    }
    const qsizetype begin = isWhole ? place->begin : place->begin + at - place->start;
    const qsizetype length = isWhole ? place->end - begin : end - at;
    if (splices.size() > first && splices.last().offset + splices.last().length == begin) {
      splices.last().length += length;
    } else {
      const Place* before = At(places, at - 1);
      const bool joins = before != nullptr && before->joins && before->end >= begin;
      splices.append({begin, length, joins || Separates(begin) ? QByteArray() : QByteArray("{}")});
    }
    at = end;
  }
  return true;
}

std::optional<QList<Splice>> TextPlaces::SplicesFor(const Change& change) const {
  const auto paragraph = m_paragraphs.constFind(change.block);
  if (paragraph == m_paragraphs.constEnd()) {
    return std::nullopt;
  }
  const QList<Place> places = m_places.value(*paragraph);
  QList<Splice> splices;
  if (!change.text.isEmpty()) {
    const std::optional<Splice> insertion = Insertion(places, *paragraph, change);
    if (!insertion) {
      return std::nullopt;
    }
    splices.append(*insertion);
  }
  if (!Remove(places, *paragraph, change, splices)) {
    return std::nullopt;
  }
  for (Splice& splice : splices) {
    const qsizetype end = splice.offset + splice.length;
    const bool isNeeded = end < m_bytes.size() && (IsOfWord(m_bytes[end]) || m_bytes[end] == ' ');
    if (splice.bytes == "{}" && !isNeeded) {
      splice.bytes.clear();
    }
    if (splice.bytes.isEmpty() && IsBehindStar(splice.offset)) {
      // A word that comes to stand there would begin a group.
      splice.bytes = "{}";
    }
  }
  return splices;
}

}  // namespace rtf
