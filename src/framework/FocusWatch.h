#pragma once

#include <QObject>

class QWidget;

namespace framework {

/// Tells when a control is entered, after the control's own handling, and when it is left for another control of its
/// window; a menu or another window that comes up counts for neither. Belongs to the control.
///
/// A window that is not active gives its controls no events: what was entered stays so, and is told to be left when
/// another control of the window receives the focus, or by LeaveAll. Each entering is followed by one leaving.
class FocusWatch : public QObject {
  Q_OBJECT

 public:
  explicit FocusWatch(QWidget* control);

  bool eventFilter(QObject* watched, QEvent* event) override;

  /// Tells the control of `form` that is entered that it is left, unless it is `except`: for a form whose focus moves
  /// by code, whether it is active or not.
  static void LeaveAll(const QWidget& form, const QObject* except = nullptr);

 Q_SIGNALS:
  void Entered();
  void Left();

 private:
  void Enter();
  void Leave();

  bool m_inside = false;
};

}  // namespace framework
