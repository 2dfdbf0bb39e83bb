#pragma once

#include <QList>

class QTextEdit;

namespace letters {

/// Full justification and tab stops of a rich-text control. Positions count characters, a paragraph's end as one.
/// Without state.
class cRichTextJustify {
 public:
  /// Justifies the left-aligned paragraphs of a range; centred and right-aligned ones stay. Afterwards nothing is
  /// selected, and the caret is at the letter's start.
  void Justify(QTextEdit& hwndr, qint16 intStart, qint16 intEnd) const;

  /// Gives the paragraphs of a range the tab stops `lngArrTabs`, in twips from the line's start, at most 32; `rwidth`
  /// is not used. Afterwards nothing is selected, and the caret is at the letter's start. Raises 9 (subscript out of
  /// range) for an array without entries or with more.
  void Settabs(QTextEdit& hwndr, const QList<qint32>& lngArrTabs, qint32 rwidth, qint32 lngstart, qint32 lngEnd) const;
};

}  // namespace letters
