#include "platform/text/FoldForSearch.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace texts {

namespace {

bool IsAscii(const QString& text) {
  return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

QChar SmallAscii(QChar c) {
  return c >= u'A' && c <= u'Z' ? QChar(c.unicode() - u'A' + u'a') : c;
}

QString FoldedPiece(const QString& text) {
  QString folded = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
  folded.removeIf([](QChar c) { return c.isMark(); });
  return folded;
}

// What the letters of Latin alphabets become where that is one character, 0 for the others.
using Letters = std::array<char16_t, 0x250>;

const Letters& LatinLetters() {
  static const Letters letters = [] {
    Letters made = {};
    for (std::size_t c = 0; c < made.size(); ++c) {
      const QString folded = FoldedPiece(QString(QChar(static_cast<char16_t>(c))));
      made[c] = folded.size() == 1 ? folded.front().unicode() : u'\0';
    }
    return made;
  }();
  return letters;
}

char16_t FoldedLetter(QChar c) {
  return c.unicode() < std::tuple_size_v<Letters> ? LatinLetters()[c.unicode()] : u'\0';
}

// The toolkit decomposes a text in place, character by character, and moves what is behind each of them: the time grows
// with the square of the length. Marks are dropped, so that their order across two pieces does not matter.
constexpr qsizetype pieceLength = 64;

qsizetype EndOfPiece(const QString& text, qsizetype from) {
  qsizetype end = from + 1;
  while (end < text.size() && end - from < pieceLength && FoldedLetter(text[end]) == 0) {
    ++end;
  }
  return end < text.size() && text[end].isLowSurrogate() ? end + 1 : end;
}

}  // namespace

QString FoldForSearch(const QString& text) {
  if (IsAscii(text)) {
    QString small(text.size(), Qt::Uninitialized);
    std::transform(text.cbegin(), text.cend(), small.begin(), SmallAscii);
    return small;
  }
  QString folded;
  folded.reserve(text.size());
  for (qsizetype from = 0; from < text.size();) {
    if (const char16_t letter = FoldedLetter(text[from]); letter != 0) {
      folded += QChar(letter);
      ++from;
    } else {
      const qsizetype end = EndOfPiece(text, from);
      folded += FoldedPiece(text.mid(from, end - from));
      from = end;
    }
  }
  return folded;
}

}  // namespace texts
