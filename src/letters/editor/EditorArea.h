#pragma once

#include <QList>
#include <QWidget>

class QToolBar;

namespace letters {

class LetterPage;

/// The editor's window below its menu bar: the tool bars that are not hidden, the ground with the page, and a strip in
/// the room under it.
class EditorArea : public QWidget {
 public:
  explicit EditorArea(QWidget* parent);

  /// Takes its parts, top down.
  void SetParts(const QList<QToolBar*>& bars, LetterPage* ground, QWidget* strip);
  /// Puts everything to its place, as after a change of the window's size. Nothing while the window is minimised.
  void Arrange();

  QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QList<QToolBar*> m_bars;
  LetterPage* m_ground = nullptr;
  QWidget* m_strip = nullptr;
};

}  // namespace letters
