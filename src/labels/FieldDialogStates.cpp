#include "labels/FieldDialogStates.h"

#include "platform/automation/Error.h"

namespace labels {

void FieldDialogStates::Enter(FieldState state) {
  if (m_state == CannotContinue && state != Closing) {
    return;
  }
  const quint8 previous = m_state;
  m_state = state;
  switch (state) {
    case Loading:
      Load();
      break;
    case Browsing:
      m_steps.ShowList();
      break;
    case Adding:
      m_steps.EditNew();
      break;
    case Modifying:
      if (!m_steps.EditSelected()) {
        m_state = previous;
      }
      break;
    case Deleting:
      if (m_steps.DeleteSelected()) {
        Enter(Browsing);
      } else {
        m_state = previous;
      }
      break;
    case ConfirmingEntry:
      if (Confirm(previous)) {
        Enter(Browsing);
      } else {
        m_state = previous;
      }
      break;
    case AcceptingAll:
      m_steps.HandOver();
      Enter(Closing);
      return;
    case Closing:
      m_steps.Leave();
      return;
    case CannotContinue:
      m_steps.TellThatItCannotContinue();
      break;
  }
  m_steps.Redraw();
}

void FieldDialogStates::Load() {
  try {
    m_steps.Prepare();
  } catch (const automation::Error&) {
    Enter(CannotContinue);
    return;
  }
  Enter(Browsing);
}

bool FieldDialogStates::Confirm(quint8 edited) {
  switch (edited) {
    case Adding:
      return m_steps.StoreNew();
    case Modifying:
      return m_steps.StoreModified();
    default:
      return false;
  }
}

}  // namespace labels
