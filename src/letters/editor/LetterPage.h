#pragma once

#include "documents/letter/LetterStrips.h"
#include "letters/editor/PageGeometry.h"

#include <QFrame>

#include <memory>

class QScrollBar;

namespace letters {

class LetterEdit;

/// The grey ground `picFondo` with the letter as a page on it and the two scroll bars that move the page. The paper is
/// white in every theme, since the colours of letters are meant for it. Headers and footers show in grey in the
/// margins, once: they are printed on each page and can't be edited here.
///
/// Measures are twips; the page is as high as its text, and never lower than the paper leaves it.
class LetterPage : public QFrame {
  Q_OBJECT

 public:
  explicit LetterPage(QWidget* parent);

  LetterEdit* Letter() const { return m_letter; }
  const documents::Paper& Paper() const { return m_paper; }
  const Margins& CurrentMargins() const { return m_margins; }

  /// Places the page of a letter that was loaded; it becomes the place that the scroll bars count from.
  void Place(const Margins& margins);
  /// The left margin was changed: the right edge of the page stays.
  void SetLeftMargin(const Margins& margins);
  void SetRightMargin(const Margins& margins);
  /// Puts the scroll bars to the ground's edges and gives them their ranges.
  void Fit();
  /// Scrolls so that the caret is seen.
  void ShowCaret();

  /// 1.0 is the size of the print.
  double Zoom() const { return m_zoom; }
  void ZoomBy(int steps);

 Q_SIGNALS:
  void ZoomChanged();
  void MarginsChanged();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  Scale ZoomedScale() const;
  void SetWidth(Twips width, const Margins& margins);
  void OnHeightChanged(Twips height);
  void PutLetter();
  void MoveSideways();
  void MoveUpAndDown();
  QRect PaperRect() const;
  void ShowStrips();
  void PaintStrips(QPainter& painter) const;

  LetterEdit* m_letter;
  QScrollBar* m_horizontal;
  QScrollBar* m_vertical;
  std::unique_ptr<documents::LetterStrips> m_strips;
  documents::Paper m_paper = documents::UsualPaper();
  Margins m_margins;
  Page m_page;
  Page m_origin;
  // The horizontal bar goes at least so far, while the window is as large as the load made it.
  Twips m_leastRange;
  double m_zoom = 1.0;
};

}  // namespace letters
