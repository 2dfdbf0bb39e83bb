#pragma once

#include <QObject>

class QWidget;

namespace framework {

/// Tells when a control receives the focus, after the control's own handling, and when it loses it to another control
/// of the window (a menu or another window that comes up doesn't count). Belongs to the control.
class FocusWatch : public QObject {
  Q_OBJECT

 public:
  explicit FocusWatch(QWidget* control);

  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Entered();
  void Left();

 private:
  bool m_inside = false;
};

}  // namespace framework
