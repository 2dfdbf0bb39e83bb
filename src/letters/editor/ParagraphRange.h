#pragma once

#include <QList>
#include <QTextBlock>
#include <QTextCursor>

#include <concepts>

namespace letters {

/// A stretch of a letter, by positions.
struct TextRange {
  int start;
  int end;
};

/// What is selected: one stretch, or one for each cell where cells are selected, which may stand under each other.
/// Without a selection the caret's place. A paragraph at whose start the selection ends is none of it, but for the
/// letter's last one.
QList<TextRange> SelectedRanges(const QTextCursor& cursor);

/// Calls `work` with every paragraph that a stretch touches.
template <std::invocable<const QTextBlock&> Work>
void ForEachParagraph(const QTextDocument& document, TextRange range, Work work) {
  const QTextBlock last = document.findBlock(range.end);
  for (QTextBlock block = document.findBlock(range.start); block.isValid(); block = block.next()) {
    work(block);
    if (block == last) {
      return;
    }
  }
}

/// Calls `work` with every paragraph that the cursor's selection touches, or that it stands in.
template <std::invocable<const QTextBlock&> Work>
void ForEachParagraph(const QTextCursor& cursor, Work work) {
  const QList<TextRange> ranges = SelectedRanges(cursor);
  for (const TextRange range : ranges) {
    ForEachParagraph(*cursor.document(), range, work);
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
