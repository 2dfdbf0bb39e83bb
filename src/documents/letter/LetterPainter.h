#pragma once

#include "documents/Export.h"
#include "documents/letter/HalfPoints.h"
#include "documents/letter/LetterStrips.h"
#include "documents/letter/Margins.h"

#include <memory>

class QPainter;
class QTextCursor;
class QTextDocument;

namespace documents {

/// A letter laid out for its paper, with its headers and footers, to be painted page by page on whatever there is: a
/// printer, a picture, a window. It has a copy of its own. Lines break where they do in the editor.
class KELDOCUMENTOS_EXPORT LetterPainter {
 public:
  LetterPainter(const QTextDocument& letter, const Margins& margins, const Paper& paper = UsualPaper());
  /// The same for what is selected of a letter.
  LetterPainter(const QTextCursor& selection, const Margins& margins, const Paper& paper = UsualPaper());
  ~LetterPainter();

  /// 0 where the margins leave no room for a text.
  int PageCount() const;
  /// The page, from 0, on which a place of the letter stands; the last one for places that it does not have.
  int PageOf(int position) const;
  /// Paints a page, from 0, on a painter whose unit is the half-point and whose origin is the paper's upper left
  /// corner. The paper's own colour is the caller's.
  void Paint(QPainter& painter, int page) const;
  /// What will not be on paper as the letter has it: sentences for the user.
  QStringList Problems() const { return m_strips == nullptr ? QStringList() : m_strips->Problems(); }

 private:
  void LayOut(const QTextDocument& letter, const Margins& margins, const Paper& paper);
  int PageOfCopy(int position) const;

  HalfPointDevice m_device;
  std::unique_ptr<QTextDocument> m_pages;
  /// Of the copy: what of the letter it lacks.
  QList<int> m_seams;
  /// None for a selection.
  std::unique_ptr<const LetterStrips> m_strips;
  QPointF m_corner;
  double m_paperHeight = 0;
};

}  // namespace documents
