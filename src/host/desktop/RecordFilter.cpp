#include "host/desktop/RecordFilter.h"

#include <algorithm>
#include <iterator>

namespace host {

namespace {

bool IsAscii(const QString& text) {
  return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

// The toolkit decomposes a text in place, character by character, and moves what is behind each of them: the time grows
// with the square of the length. Marks are dropped, so that their order across two pieces does not matter.
constexpr qsizetype pieceLength = 64;

qsizetype EndOfPiece(const QString& text, qsizetype from) {
  const qsizetype end = std::min(from + pieceLength, text.size());
  return end < text.size() && text[end].isLowSurrogate() ? end + 1 : end;
}

}  // namespace

QString FoldForSearch(const QString& text) {
  if (IsAscii(text)) {
    return text.toLower();
  }
  QString folded;
  folded.reserve(text.size());
  for (qsizetype from = 0; from < text.size();) {
    const qsizetype end = EndOfPiece(text, from);
    const QString piece = text.mid(from, end - from).normalized(QString::NormalizationForm_KD).toCaseFolded();
    std::copy_if(piece.cbegin(), piece.cend(), std::back_inserter(folded), [](QChar c) { return !c.isMark(); });
    from = end;
  }
  return folded;
}

RecordFilter::RecordFilter(const QString& typed) : m_words(FoldForSearch(typed).simplified().split(u' ')) {
  m_words.removeAll(QString());
}

bool RecordFilter::Accepts(QStringView folded) const {
  return std::all_of(m_words.cbegin(), m_words.cend(), [folded](const QString& word) { return folded.contains(word); });
}

}  // namespace host
