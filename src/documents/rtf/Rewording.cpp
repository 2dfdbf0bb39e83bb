#include "documents/rtf/Rewording.h"

#include "documents/rtf/Reader.h"

#include <QTextBlock>
#include <QTextFragment>

#include <algorithm>

namespace rtf {

namespace {

using Change = TextPlaces::Change;

// What reading takes goes by the text, except for pictures: so much, some four hundred pages, makes saving less than
// a tenth of a second longer.
constexpr int mostCharactersToRead = 1'000'000;
constexpr qsizetype longestToRead = 16 * 1024 * 1024;

bool IsReadQuickly(const QTextDocument& document, const QByteArray& original) {
  return document.characterCount() <= mostCharactersToRead && original.size() <= longestToRead;
}

/// What changed of a run that begins at `start` of its block; `before` and `now` are its texts.
Change ChangeOf(int block, int start, const QString& before, const QString& now) {
  const auto [from, fromNow] = std::mismatch(before.begin(), before.end(), now.begin(), now.end());
  const auto same = std::mismatch(before.rbegin(), std::make_reverse_iterator(from), now.rbegin(),
                                  std::make_reverse_iterator(fromNow));
  const qsizetype at = from - before.begin();
  const qsizetype behind = same.first - before.rbegin();
  return {.block = block,
          .from = start + at,
          .to = start + before.size() - behind,
          .text = now.sliced(at, now.size() - behind - at),
          .beginsRun = at == 0};
}

/// Whether text of that format is what is typed into the empty paragraph.
bool IsOfMark(QTextCharFormat format, QTextCharFormat mark) {
  for (QTextCharFormat* each : {&format, &mark}) {
    each->clearProperty(QTextFormat::ObjectIndex);
    each->clearProperty(QTextFormat::ObjectType);
  }
  return format == mark;
}

/// Adds what changed of a paragraph; false where that is more than the text of its runs.
bool AddChanges(const QTextBlock& before, const QTextBlock& now, QList<Change>& changes) {
  auto at = now.begin();
  if (before.begin().atEnd() && !at.atEnd()) {
    const QTextFragment only = at.fragment();
    changes.append({.block = before.blockNumber(), .from = 0, .to = 0, .text = only.text(), .beginsRun = true});
    return (++at).atEnd() && IsOfMark(only.charFormat(), now.charFormat());
  }
  auto old = before.begin();
  for (; !old.atEnd() && !at.atEnd(); ++old, ++at) {
    const QString text = old.fragment().text();
    if (text != at.fragment().text()) {
      changes.append(
          ChangeOf(before.blockNumber(), old.fragment().position() - before.position(), text, at.fragment().text()));
    }
  }
  return old.atEnd() && at.atEnd();
}

}  // namespace

Rewording::Rewording(const QTextDocument& document, const QByteArray& original)
    : m_places(original), m_document(document) {
  m_original.setUndoRedoEnabled(false);
  m_original.setDefaultFont(document.defaultFont());
  if (const std::string_view input = RtfIn(original); !input.empty() && IsReadQuickly(document, original)) {
    Reader reader(input, m_original, Source::Of(m_original), {});
    reader.NotePlaces(m_places, original.size() - static_cast<qsizetype>(input.size()));
    reader.Read();
  }
  m_places.Finish();
  m_frames.emplace(document);
  m_originalFrames.emplace(m_original);
}

std::optional<QList<Change>> Rewording::ChangesOf(const Part& read, const Part& now) const {
  if (read.last - read.first != now.last - now.first || read.last >= m_original.blockCount()) {
    return std::nullopt;
  }
  QList<Change> changes;
  PartDigest digest(*m_frames, *m_originalFrames);
  qsizetype characters = 0;
  QTextBlock before = m_original.findBlockByNumber(read.first);
  for (QTextBlock block = m_document.findBlockByNumber(now.first); block.blockNumber() <= now.last && block.isValid();
       block = block.next(), before = before.next()) {
    if (!AddChanges(before, block, changes)) {
      return std::nullopt;
    }
    digest.Add(block, before);
    characters += before.length() - 1;
  }
  for (const Change& change : std::as_const(changes)) {
    characters -= 2 * (change.to - change.from);
  }
  return characters < 0 || digest.Take() != read.digest ? std::nullopt : std::optional(changes);
}

std::optional<QList<Splice>> Rewording::SplicesFor(const Part& read, const Part& now) const {
  const std::optional<QList<Change>> changes = ChangesOf(read, now);
  if (!changes) {
    return std::nullopt;
  }
  QList<Splice> splices;
  for (const Change& change : *changes) {
    const std::optional<QList<Splice>> some = m_places.SplicesFor(change);
    if (!some) {
      return std::nullopt;
    }
    splices += *some;
  }
  return splices;
}

}  // namespace rtf
