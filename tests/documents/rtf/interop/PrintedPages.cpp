#include "documents/rtf/interop/PrintedPages.h"

#include "documents/letter/LetterPainter.h"
#include "documents/letter/Paper.h"

#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace interop {

namespace {

constexpr double nearness = 1;

struct Word {
  int page = 0;
  double left = 0;
  double bottom = 0;
  QString text;
};

QList<Word> WordsOf(const QString& pdf) {
  static const QRegularExpression form(
      uR"re((<page )|xMin="([\d.]+)" yMin="[\d.]+" xMax="[\d.]+" yMax="([\d.]+)">([^<]*)<)re"_s);
  constexpr double millimetresPerPoint = 25.4 / 72;
  QProcess program;
  program.start(u"pdftotext"_s, {u"-bbox"_s, pdf, u"-"_s});
  program.waitForFinished();
  QList<Word> words;
  int page = 0;
  for (auto at = form.globalMatch(QString::fromUtf8(program.readAllStandardOutput())); at.hasNext();) {
    const QRegularExpressionMatch match = at.next();
    if (match.hasCaptured(1)) {
      ++page;
      continue;
    }
    words.append({page, match.captured(2).toDouble() * millimetresPerPoint,
                  match.captured(3).toDouble() * millimetresPerPoint, match.captured(4)});
  }
  return words;
}

}  // namespace

QList<Line> LinesOf(const QString& pdf) {
  QList<Word> words = WordsOf(pdf);
  std::ranges::stable_sort(words, {}, [](const Word& word) { return std::tuple(word.page, word.bottom); });
  QList<Line> lines;
  for (qsizetype first = 0; first < words.size();) {
    qsizetype end = first;
    while (end < words.size() && words[end].page == words[first].page &&
           words[end].bottom - words[first].bottom < nearness) {
      ++end;
    }
    QList<Word> line = words.mid(first, end - first);
    std::ranges::stable_sort(line, {}, &Word::left);
    QStringList texts;
    for (const Word& word : line) {
      texts.append(word.text);
    }
    lines.append({line.constFirst().page, line.constFirst().left, words[end - 1].bottom, texts.join(u' ')});
    first = end;
  }
  return lines;
}

void PrintLetter(const QTextDocument& letter, const QString& pdf) {
  QPdfWriter writer(pdf);
  writer.setPageLayout(QPageLayout(documents::UsualPaper().PageSize(), QPageLayout::Portrait, QMarginsF()));
  const documents::LetterPainter pages(letter, documents::Margins());
  QPainter painter(&writer);
  documents::ScaleForPaper(painter, writer.resolution());
  for (int page = 0; page < pages.PageCount(); ++page) {
    if (page > 0) {
      writer.newPage();
    }
    pages.Paint(painter, page);
  }
}

QStringList Differences(const QList<Line>& ours, const QList<Line>& theirs) {
  QStringList differences;
  for (qsizetype i = 0; i < std::max(ours.size(), theirs.size()); ++i) {
    const Line here = ours.value(i);
    const Line there = theirs.value(i);
    const bool isSame = here.page == there.page && here.text == there.text &&
                        std::abs(here.left - there.left) <= nearness &&
                        std::abs(here.bottom - there.bottom) <= nearness;
    if (!isSame) {
      differences.append(u"page %1, %2 %3 '%4' -> page %5, %6 %7 '%8'"_s.arg(here.page)
                             .arg(here.left, 0, 'f', 2)
                             .arg(here.bottom, 0, 'f', 2)
                             .arg(here.text.left(60))
                             .arg(there.page)
                             .arg(there.left, 0, 'f', 2)
                             .arg(there.bottom, 0, 'f', 2)
                             .arg(there.text.left(60)));
    }
  }
  return differences;
}

}  // namespace interop
