#pragma once

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace framework {

/// Makes the window that is active now active again at its end, for work that shows a window over it. Window managers
/// do that by themselves; without one (a bare display server, a kiosk, the offscreen platform) no window would be
/// active, and no control would learn that it is entered or left.
class ReturnToWindow {
 public:
  ReturnToWindow() : m_window(QApplication::activeWindow()) {}
  ReturnToWindow(const ReturnToWindow&) = delete;
  ReturnToWindow& operator=(const ReturnToWindow&) = delete;
  ~ReturnToWindow() {
    if (m_window && m_window->isVisible() && !m_window->isActiveWindow()) {
      m_window->activateWindow();
    }
  }

 private:
  QPointer<QWidget> m_window;
};

}  // namespace framework
