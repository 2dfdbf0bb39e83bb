#pragma once

#include <QPointer>
#include <QWidget>

namespace framework {

/// The form takes no input while the object lives; afterwards the focus is where it was.
class InputDisabled {
 public:
  explicit InputDisabled(QWidget* form) : m_form(form), m_focus(form->focusWidget()) { form->setEnabled(false); }
  InputDisabled(const InputDisabled&) = delete;
  InputDisabled& operator=(const InputDisabled&) = delete;
  ~InputDisabled() {
    if (m_form) {
      m_form->setEnabled(true);
    }
    if (m_focus) {
      m_focus->setFocus();
    }
  }

 private:
  QPointer<QWidget> m_form;
  QPointer<QWidget> m_focus;
};

}  // namespace framework
