#pragma once

#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>
#include <concepts>

namespace letters {

/// Calls `work` with every paragraph of which the cursor's selection has something, or that it stands in. One at whose
/// start the selection ends is none of them, but for the letter's last one.
template <std::invocable<const QTextBlock&> Work>
void ForEachParagraph(const QTextCursor& cursor, Work work) {
  const QTextDocument* document = cursor.document();
  const QTextBlock first = document->findBlock(cursor.selectionStart());
  const int end = cursor.selectionEnd();
  const QTextBlock last =
      document->findBlock(end < document->characterCount() - 1 ? std::max(first.position(), end - 1) : end);
  for (QTextBlock block = first; block.isValid(); block = block.next()) {
    work(block);
    if (block == last) {
      return;
    }
  }
}

/// Changes the formats of those paragraphs, as one step of undo. Formats that stay as they are aren't set.
template <std::invocable<QTextBlockFormat&> Change>
void ChangeParagraphs(QTextCursor cursor, Change change) {
  cursor.beginEditBlock();
  ForEachParagraph(cursor, [&change](const QTextBlock& block) {
    QTextBlockFormat format = block.blockFormat();
    change(format);
    if (format != block.blockFormat()) {
      QTextCursor(block).setBlockFormat(format);
    }
  });
  cursor.endEditBlock();
}

}  // namespace letters
