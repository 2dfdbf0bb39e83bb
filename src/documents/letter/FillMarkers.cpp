#include "documents/letter/LetterMarkers.h"

#include "documents/markers/ValueText.h"
#include "documents/rtf/Properties.h"
#include "documents/rtf/TablePath.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace documents {

namespace {

struct Span {
  int begin = 0;
  int end = 0;
};

bool EndsLine(QChar c) {
  return c == QChar::LineSeparator || c == QChar::ParagraphSeparator || c.isNonCharacter() || c.isNull();
}

/// The piece between breaks around a position. Looking at the document character by character is slow.
Span LineAround(const QTextDocument& letter, int position) {
  const QTextBlock block = letter.findBlock(position);
  const QString text = block.text();
  qsizetype begin = position - block.position();
  qsizetype end = begin;
  while (begin > 0 && !EndsLine(text[begin - 1])) {
    --begin;
  }
  while (end < text.size() && !EndsLine(text[end])) {
    ++end;
  }
  return {block.position() + static_cast<int>(begin), block.position() + static_cast<int>(end)};
}

void Remove(QTextDocument& letter, Span span) {
  QTextCursor cursor(&letter);
  cursor.setPosition(span.begin);
  cursor.setPosition(span.end, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
}

/// What has no extent and stood inside the marker stands behind the value.
QList<QTextCharFormat> PiecesIn(const QTextDocument& letter, Span marker) {
  QList<QTextCharFormat> pieces;
  QTextCursor cursor(const_cast<QTextDocument*>(&letter));
  for (int at = marker.begin; at < marker.end; ++at) {
    if (letter.characterAt(at) == QChar::ObjectReplacementCharacter) {
      cursor.setPosition(at + 1);
      pieces.append(cursor.charFormat());
    }
  }
  return pieces;
}

void Replace(QTextDocument& letter, Span marker, const QString& value, const QColor& ground) {
  const QList<QTextCharFormat> pieces = PiecesIn(letter, marker);
  int behindBracket = marker.begin + 1;
  while (letter.characterAt(behindBracket) == QChar::ObjectReplacementCharacter) {
    ++behindBracket;
  }
  QTextCursor cursor(&letter);
  cursor.setPosition(behindBracket + 1);
  QTextCharFormat format = cursor.charFormat();
  if (ground.isValid()) {
    format.setBackground(ground);
  }
  cursor.setPosition(marker.begin);
  cursor.setPosition(marker.end, QTextCursor::KeepAnchor);
  cursor.insertText(value, format);
  for (const QTextCharFormat& piece : pieces) {
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), piece);
  }
}

/// Nothing stands at `position` where a marker was: one blank is enough around it, and empty brackets say nothing.
void CloseGap(QTextDocument& letter, int position) {
  const auto before = [&] { return position > 0 ? letter.characterAt(position - 1) : QChar(); };
  const auto behind = [&] { return letter.characterAt(position); };
  if (before() == u'(' && behind() == u')') {
    Remove(letter, {position - 1, position + 1});
    --position;
  }
  const bool isStart = position == 0 || EndsLine(before());
  const bool needsNoBlank = behind() == u' ' || EndsLine(behind()) || QStringView(u".,;:)!?").contains(behind());
  if (before() == u' ' && needsNoBlank) {
    Remove(letter, {position - 1, position});
  } else if (isStart && behind() == u' ') {
    Remove(letter, {position, position + 1});
  }
}

bool HoldsSomething(const QTextDocument& letter, Span line) {
  const QTextBlock block = letter.findBlock(line.begin);
  const QString text = block.text().mid(line.begin - block.position(), line.end - line.begin);
  return std::ranges::any_of(
      text, [](QChar c) { return c.isLetterOrNumber() || c.isSurrogate() || c == QChar::ObjectReplacementCharacter; });
}

bool MayGo(const QTextBlock& block) {
  const QTextBlockFormat format = block.blockFormat();
  const QTextBlock next = block.next();
  const bool endsCell =
      !next.isValid() ||
      block.document()->characterAt(block.position() + block.length() - 1) != QChar::ParagraphSeparator ||
      rtf::PathOf(next.blockFormat()) != rtf::PathOf(format);
  const bool beginsPage = (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) != 0;
  return !endsCell && !beginsPage && !format.hasProperty(rtf::SectionWordsProperty);
}

void RemoveBlock(QTextDocument& letter, const QTextBlock& block) {
  const int position = block.position();
  const bool isFirst = position == 0 || letter.characterAt(position - 1) != QChar::ParagraphSeparator;
  const QTextBlockFormat format = block.next().blockFormat();
  const QTextCharFormat mark = block.next().charFormat();
  Remove(letter, {position, block.next().position()});
  QTextCursor cursor(&letter);
  cursor.setPosition(position);
  cursor.setBlockFormat(format);
  if (!isFirst) {  // There the mark is the cell's or the letter's.
    cursor.setBlockCharFormat(mark);
  }
}

void CloseLine(QTextDocument& letter, int position) {
  const Span line = LineAround(letter, position);
  if (HoldsSomething(letter, line)) {
    return;
  }
  const QTextBlock block = letter.findBlock(position);
  if (letter.characterAt(line.end) == QChar::LineSeparator) {
    Remove(letter, {line.begin, line.end + 1});
  } else if (line.begin > block.position()) {
    Remove(letter, {line.begin - 1, line.end});
  } else if (MayGo(block)) {
    RemoveBlock(letter, block);
  }
}

}  // namespace

void FillMarkers(QTextDocument& letter, const QList<MarkerPlace>& places, const QStringList& values,
                 const QColor& ground) {
  QTextCursor wholeEdit(&letter);
  wholeEdit.beginEditBlock();
  for (qsizetype i = places.size() - 1; i >= 0; --i) {
    const MarkerPlace& place = places[i];
    const int lineBegin = LineAround(letter, place.position).begin;
    QString value = ValueText(values[i]);
    value.replace(u'\n', QChar::LineSeparator);
    Replace(letter, {place.position, place.position + place.length}, value, ground);
    if (value.isEmpty()) {
      CloseGap(letter, place.position);
    }
    // Behind the line's first marker all of them are filled.
    if (i == 0 || places[i - 1].position < lineBegin) {
      CloseLine(letter, lineBegin);
    }
  }
  wholeEdit.endEditBlock();
}

}  // namespace documents
