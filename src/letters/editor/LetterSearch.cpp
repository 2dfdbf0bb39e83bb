#include "letters/editor/LetterSearch.h"

#include "letters/editor/ParagraphRange.h"

#include <QTextDocument>

namespace letters {

QTextCursor FindText(const QTextCursor& cursor, const QString& text) {
  const QTextDocument* letter = cursor.document();
  if (!cursor.hasSelection()) {
    return letter->find(text, 0);
  }
  const QList<TextRange> ranges = SelectedRanges(cursor);
  for (const TextRange range : ranges) {
    const QTextCursor found = letter->find(text, range.start);
    if (!found.isNull() && found.selectionEnd() <= range.end) {
      return found;
    }
  }
  return {};
}

QTextCursor FindNextText(const QTextCursor& cursor, const QString& text) {
  const QTextDocument* letter = cursor.document();
  const QTextCursor found = letter->find(text, cursor.selectionEnd());
  return found.isNull() ? letter->find(text, 0) : found;
}

bool IsFound(const QTextCursor& cursor, const QString& text) {
  return !text.isEmpty() && cursor.selectedText().compare(text, Qt::CaseInsensitive) == 0;
}

int CountText(const QTextDocument& letter, const QString& text) {
  int count = 0;
  for (QTextCursor found = letter.find(text, 0); !found.isNull(); found = letter.find(text, found)) {
    ++count;
  }
  return count;
}

int ReplaceText(QTextDocument& letter, const QString& text, const QString& other) {
  QTextCursor whole(&letter);
  whole.beginEditBlock();
  int count = 0;
  for (QTextCursor found = letter.find(text, 0); !found.isNull(); found = letter.find(text, found)) {
    found.insertText(other);
    ++count;
  }
  whole.endEditBlock();
  return count;
}

}  // namespace letters
