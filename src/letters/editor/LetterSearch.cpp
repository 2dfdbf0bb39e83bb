#include "letters/editor/LetterSearch.h"

#include <QTextDocument>

namespace letters {

QTextCursor FindText(const QTextCursor& cursor, const QString& text) {
  const QTextDocument* letter = cursor.document();
  if (!cursor.hasSelection()) {
    return letter->find(text, 0);
  }
  const QTextCursor found = letter->find(text, cursor.selectionStart());
  return !found.isNull() && found.selectionEnd() <= cursor.selectionEnd() ? found : QTextCursor();
}

QTextCursor FindNextText(const QTextCursor& cursor, const QString& text) {
  const QTextDocument* letter = cursor.document();
  const QTextCursor found = letter->find(text, cursor.selectionEnd());
  return found.isNull() ? letter->find(text, 0) : found;
}

}  // namespace letters
