#pragma once

#include "letters/rtf/Report.h"

#include <QTextEdit>

#include <memory>

namespace letters {

class ZoomedScreen;

/// The letter: a rich-text box whose clipboard speaks RTF, laid out by the measures of the paper, so that its lines are
/// those that the printer makes, at any zoom. It has no scroll bars of its own: whoever shows it gives it the height of
/// its text and moves it.
class LetterEdit : public QTextEdit {
  Q_OBJECT

 public:
  explicit LetterEdit(QWidget* parent = nullptr);
  ~LetterEdit() override;

  /// Shows a letter as it is stored. A refused one leaves an empty letter.
  rtf::Report Load(const QString& content);
  /// An empty letter in that font.
  void Start(const QFont& font);
  /// The letter as it is stored: what was loaded, to the character, while it is unchanged.
  QString Content() const;

  /// 1.0 shows the letter as large as it is printed. No measure of the letter changes.
  void SetZoom(double zoom);
  /// The height that Page Up and Page Down go, in pixels.
  void SetPageStep(int pixels) { m_pageStep = pixels; }

  /// Types a text at the caret with its format, in place of the selection, as one step of undo.
  void TypeText(const QString& text);
  /// Replaces the whole letter, as one step of undo.
  rtf::Report ReplaceAll(const QByteArray& content);

 Q_SIGNALS:
  /// The right button was released over the letter, or the menu key pressed; a place of the screen.
  void MenuWanted(const QPoint& at);
  /// The wheel turned with Ctrl held: steps inward are positive.
  void ZoomWanted(int steps);
  /// The text became this high, in pixels.
  void HeightChanged(int pixels);
  /// What was pasted was refused; why, for the user.
  void PasteRefused(const QString& reason);
  /// Beside the signals of the text: it got the focus, or lost it.
  void FocusChanged(bool hasFocus);

 protected:
  QMimeData* createMimeDataFromSelection() const override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void Show(QTextDocument* document);
  void BreakParagraph(QKeyEvent* event);
  void MoveByPage(QKeyEvent* event);
  void LeaveByTab(bool forward);
  void PasteText(const QString& text);

  std::unique_ptr<ZoomedScreen> m_screen;
  int m_pageStep = 0;
  int m_wheel = 0;
};

}  // namespace letters
