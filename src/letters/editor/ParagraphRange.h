#pragma once

#include <QTextBlock>
#include <QTextCursor>

#include <concepts>

namespace letters {

/// Calls `work` with every paragraph that the cursor's selection touches, or that it stands in.
template <std::invocable<const QTextBlock&> Work>
void ForEachParagraph(const QTextCursor& cursor, Work work) {
  const QTextDocument* document = cursor.document();
  const QTextBlock last = document->findBlock(cursor.selectionEnd());
  for (QTextBlock block = document->findBlock(cursor.selectionStart()); block.isValid(); block = block.next()) {
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
