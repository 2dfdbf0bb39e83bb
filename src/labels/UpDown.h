#pragma once

#include "documents/labels/Sheet.h"

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace labels {

/// The two small buttons beside a box of a number. They step through the whole numbers from `Min` to `Max`, as do the
/// arrow keys and the wheel over the box while it has the focus; decimals that were typed stay until then.
class UpDown : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int Min MEMBER m_min)
  Q_PROPERTY(int Max MEMBER m_max)

 public:
  explicit UpDown(QWidget* parent = nullptr);

  /// The box whose text it steps; borrowed.
  void Bind(QLineEdit* box);
  documents::Limits Bounds() const { return {.min = m_min, .max = m_max}; }
  void SetBounds(documents::Limits bounds);
  /// To the next whole number above (1) or below (-1), but not beyond a bound.
  void Step(int direction);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// After each step, also one that a bound stopped.
  void Clicked();

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  QToolButton* MakeButton(Qt::ArrowType arrow, const QString& name, int direction);
  void Press(QToolButton* button, int direction);
  void Turn(QWheelEvent* event);

  QLineEdit* m_box = nullptr;
  int m_min = 0;
  int m_max = 0;
  int m_turned = 0;
};

}  // namespace labels
