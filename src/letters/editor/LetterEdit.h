#pragma once

#include "documents/letter/HalfPoints.h"
#include "documents/rtf/Report.h"
#include "letters/editor/PageGeometry.h"
#include "letters/editor/UndoSteps.h"

#include <QBasicTimer>
#include <QTextEdit>

#include <functional>
#include <memory>
#include <optional>

namespace letters {

/// The letter: a rich-text box whose clipboard speaks RTF, laid out by the measures of the paper, so that its lines are
/// those that the printer makes, at any zoom. It has no scroll bars of its own: whoever shows it gives it the size of
/// its text and moves it.
///
/// Its document is laid out in half-points; what the base class says of places in the text (cursorRect,
/// cursorForPosition) counts in them.
class LetterEdit : public QTextEdit {
  Q_OBJECT

 public:
  explicit LetterEdit(QWidget* parent = nullptr);
  ~LetterEdit() override;

  /// Shows a letter as it is stored. A refused one leaves an empty letter, and so does one whose reading a termination
  /// signal has ended. One with a paragraph that would block the
  /// window (LayoutLimits) is shown for reading: its plain text, in lines.
  rtf::Report Load(const QString& content);
  bool IsForReading() const { return m_original.has_value(); }
  /// An empty letter in that font.
  void Start(const QFont& font);
  /// The letter as it is stored: what was loaded, to the character, while it is unchanged.
  QString Content() const;

  /// One step of what shows; instead of the base class's own.
  void Undo() { m_steps->Undo(); }
  void Redo() { m_steps->Redo(); }

  /// Breaks the lines at this width.
  void SetTextWidth(Twips width);
  /// How large the letter is painted; no measure of it changes.
  void SetScale(Scale scale);
  /// The height that Page Up and Page Down go.
  void SetPageStep(Twips height) { m_pageStep = height; }
  /// Where the caret is, in pixels.
  QRect CaretRect() const;
  /// What is painted under the text: on a painter as for PaintBeside, for the given part of the letter.
  void SetUnderlay(std::function<void(QPainter& painter, const QRect& part)> paint) { m_underlay = std::move(paint); }
  /// Paints what of tables reaches over the sides of the text, at most `reach` far; the painter's unit is the pixel,
  /// its origin the letter's corner.
  void PaintBeside(QPainter& painter, Twips reach) const;

  /// Types a text at the caret with its format, in place of the selection, as one step of undo.
  void TypeText(const QString& text);
  /// Inserts the picture of a file in place of the selection, no wider than the text. Why it could not, for the user;
  /// empty when it did.
  QString InsertPicture(const QByteArray& file);
  /// Inserts a field that is the number of its page on paper.
  void InsertPageNumber();
  /// Replaces the whole letter, as one step of undo. Refuses what would only be shown for reading.
  rtf::Report ReplaceAll(const QByteArray& content);

 Q_SIGNALS:
  /// The right button was released over the letter, or the menu key pressed; a place of the screen.
  void MenuWanted(const QPoint& at);
  /// The wheel turned with Ctrl held: steps inward are positive.
  void ZoomWanted(int steps);
  /// Something beside the text, which PaintBeside paints, looks otherwise between these heights, in pixels.
  void BesideChanged(int top, int bottom);
  /// The text became this high.
  void HeightChanged(letters::Twips height);
  /// What was pasted was refused; why, for the user.
  void PasteRefused(const QString& reason);
  /// Beside the signals of the text: it got the focus, or lost it.
  void FocusChanged(bool hasFocus);

 protected:
  QMimeData* createMimeDataFromSelection() const override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void Show(QTextDocument* letter);
  void Repaint(const QRectF& halfPoints);
  void Draw(QPainter& painter, const QRectF& clip) const;
  void ShowCaretNow();
  double PixelsPerHalfPoint() const;
  void BreakParagraph();
  void MoveByPage(QKeyEvent* event);
  void LeaveByTab(bool forward);
  void PasteRich(const QByteArray& content);
  void PasteText(const QString& text);
  void PasteImage(const QImage& image);
  int TextTwips() const;

  documents::HalfPointDevice m_device;
  std::unique_ptr<UndoSteps> m_steps;
  std::function<void(QPainter& painter, const QRect& part)> m_underlay;
  /// What is stored, of a letter that is shown for reading.
  std::optional<QString> m_original;
  Scale m_scale;
  Twips m_pageStep;
  int m_wheel = 0;
  QBasicTimer m_blink;
  bool m_caretShows = false;
  /// Where the caret was last.
  int m_caret = 0;
};

}  // namespace letters
