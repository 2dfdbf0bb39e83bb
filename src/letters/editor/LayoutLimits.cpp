#include "letters/editor/LayoutLimits.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace letters {

namespace {

// Sixteen pages of text. At each of the limits a megabyte of such paragraphs is laid out in less than two seconds.
constexpr int mostCharacters = 50'000;
constexpr int mostRuns = 1'000;
constexpr int longestWord = 10'000;
constexpr int mostMarks = 100;

bool MayEndALine(char32_t code) {
  constexpr char32_t firstOfChinese = 0x2E80;
  constexpr char32_t lastOfBasicPlane = 0xFFFF;
  const bool holdsTogether = code == QChar::Nbsp || code == 0x2007 || code == 0x202F;
  return (QChar::isSpace(code) && !holdsTogether) ||
         (code >= firstOfChinese && code <= lastOfBasicPlane && QChar::category(code) == QChar::Letter_Other);
}

void AddCharacters(ParagraphWeight& weight, const QString& text) {
  int word = 0;
  int marks = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    char32_t code = text[i].unicode();
    if (QChar::isHighSurrogate(code) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      code = QChar::surrogateToUcs4(text[i], text[i + 1]);
      ++i;
    }
    word = MayEndALine(code) ? 0 : word + 1;
    marks = QChar::isMark(code) ? marks + 1 : 0;
    weight.word = std::max(weight.word, word);
    weight.marks = std::max(weight.marks, marks);
  }
}

ParagraphWeight Heavier(const ParagraphWeight& a, const ParagraphWeight& b) {
  return {std::max(a.characters, b.characters), std::max(a.runs, b.runs), std::max(a.word, b.word),
          std::max(a.marks, b.marks)};
}

}  // namespace

ParagraphWeight ParagraphWeight::operator+(const ParagraphWeight& other) const {
  return {characters + other.characters, runs + other.runs, word + other.word, marks + other.marks};
}

bool ParagraphWeight::IsLight() const {
  return characters <= mostCharacters && runs <= mostRuns && word <= longestWord && marks <= mostMarks;
}

ParagraphWeight WeightOf(const QTextBlock& paragraph) {
  ParagraphWeight weight{.characters = paragraph.length()};
  for (auto at = paragraph.begin(); !at.atEnd(); ++at) {
    ++weight.runs;
  }
  AddCharacters(weight, paragraph.text());
  return weight;
}

ParagraphWeight HeaviestOf(const QTextDocument& document) {
  ParagraphWeight heaviest;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    // What is shorter than every limit needs no closer look.
    heaviest = Heavier(heaviest,
                       block.length() <= mostMarks ? ParagraphWeight{.characters = block.length()} : WeightOf(block));
  }
  return heaviest;
}

}  // namespace letters
