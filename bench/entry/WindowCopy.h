#pragma once

#include <QDialog>

#include <memory>

namespace bench {

/// A bare window beside a dialog: the same layouts, the same controls as plain widgets of Qt, with the same captions,
/// sizes, menus, items of lists and rows of grids, and nothing of what the dialog's program does with them. What a
/// class of the program's own paints stays empty.
class WindowCopy {
 public:
  /// Reads a dialog that is shown.
  explicit WindowCopy(const QDialog& original);
  ~WindowCopy();

  /// Makes the window, ready to be shown.
  std::unique_ptr<QDialog> Make() const;

  struct Control;

 private:
  std::unique_ptr<Control> m_window;
  QSize m_size;
  Qt::WindowStates m_state;
};

}  // namespace bench
