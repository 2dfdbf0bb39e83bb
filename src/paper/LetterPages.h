#pragma once

#include "documents/letter/LetterPainter.h"
#include "paper/Pages.h"

namespace paper {

/// A letter on its paper. Has a copy of its own, as its painter.
class LetterPages : public Pages {
 public:
  LetterPages(const QTextDocument& letter, const documents::Margins& margins,
              const documents::Paper& sheet = documents::UsualPaper());
  /// The same for what is selected of a letter.
  LetterPages(const QTextCursor& selection, const documents::Margins& margins,
              const documents::Paper& sheet = documents::UsualPaper());

  int Count() const override { return m_letter.PageCount(); }
  const documents::Paper& Sheet() const override { return m_sheet; }
  void Paint(QPainter& painter, int page) const override { m_letter.Paint(painter, page); }
  /// What will not be on paper as the letter has it: sentences for the user.
  QStringList Problems() const { return m_letter.Problems(); }

 private:
  documents::LetterPainter m_letter;
  documents::Paper m_sheet;
};

}  // namespace paper
