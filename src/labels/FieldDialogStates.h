#pragma once

#include <QtGlobal>

namespace labels {

/// The states of the field dialog: where it can be, and what its buttons ask for. The numbers are the contract's.
enum FieldState : quint8 {
  Adding = 1,
  Modifying = 2,
  Deleting = 3,
  Loading = 5,
  Browsing = 6,
  AcceptingAll = 7,
  Closing = 8,
  ConfirmingEntry = 9,
  CannotContinue = 255,
};

/// What entering a state does, each as the user sees it.
class FieldSteps {
 public:
  virtual ~FieldSteps() = default;

  /// Prepares the grid and the lists. An error of it ends in CannotContinue.
  virtual void Prepare() = 0;
  /// Puts the entry's controls at rest and shows the list.
  virtual void ShowList() = 0;
  virtual void EditNew() = 0;
  /// False when no entry is selected, and the user was told.
  virtual bool EditSelected() = 0;
  /// False when no entry is selected, or the user thought better of it.
  virtual bool DeleteSelected() = 0;
  /// Puts the entry that is being added or modified into the list. False when the user was told what to correct.
  virtual bool StoreNew() = 0;
  virtual bool StoreModified() = 0;
  virtual void HandOver() = 0;
  virtual void Leave() = 0;
  virtual void TellThatItCannotContinue() = 0;
  virtual void Redraw() = 0;
};

/// The only way in which the field dialog changes its mode.
class FieldDialogStates {
 public:
  explicit FieldDialogStates(FieldSteps& steps) : m_steps(steps) {}

  /// Where the dialog is; 0 before anything was entered.
  quint8 Accion() const { return m_state; }
  /// Goes where the state asked for leads. What can't be done leaves the state as it was. A dialog that can't continue
  /// can only be closed.
  void Enter(FieldState state);

 private:
  void Load();
  // True when the entry that was being edited is in the list.
  bool Confirm(quint8 edited);

  FieldSteps& m_steps;
  quint8 m_state = 0;
};

}  // namespace labels
