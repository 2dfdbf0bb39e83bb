#pragma once

#include <QDialog>
#include <QPointer>

#include <exception>
#include <functional>
#include <type_traits>
#include <utility>

class QComboBox;

namespace framework {

/// A dialog with the life of a form: created (its constructor is the initialise event), loaded, shown modally, asked
/// whether it may close, unloaded, destroyed (the terminate event). It can be loaded again after an unload; its
/// controls are then new.
///
/// An error that a handler lets out never crosses the event loop: the form keeps it, is unloaded without a prompt, and
/// ShowModal (or Load) throws it to its caller.
class Form : public QDialog {
  Q_OBJECT

 public:
  /// Why a form is asked to close. The numbers are the classic runtime's.
  enum UnloadMode : int {
    FormControlMenu = 0,  ///< the user: close box or Escape
    FormCode = 1,         ///< the form's own code
    AppWindows = 2,       ///< the session ends
    AppTaskManager = 3,   ///< the program was told to terminate
  };

  /// `name` is the form's class name; it becomes its objectName.
  explicit Form(const QString& name);
  ~Form() override;

  /// Creates the controls and runs the load event. Nothing for a loaded form. Throws what the load lets out; the
  /// form is then unloaded.
  void Load();
  /// Loads the form if it isn't, shows it and returns when it has been unloaded. A form that unloads itself while it
  /// loads, or whose load failed, is not shown. Throws what a handler let out while it was shown, and 400 for a form
  /// that is being shown already.
  void ShowModal();
  /// Unloads the form by its own code: no prompt.
  void Unload();
  /// Asks the form to close. False when the user keeps it open. True for one that isn't loaded.
  bool RequestUnload(UnloadMode mode);
  bool IsLoaded() const { return m_loaded; }
  /// True from the load to the end of ShowModal: the form can't serve a second request.
  bool IsInUse() const { return m_loaded || m_shown; }

  void reject() override;

 protected:
  /// Builds the controls in the empty form; called by each Load.
  virtual void CreateControls() = 0;
  virtual void OnLoad() = 0;
  /// When the form has appeared, and again when a dialog that MaintenanceForm opened for it has gone.
  virtual void OnActivate() {}
  /// Sets `cancel` to keep the form open.
  virtual void OnQueryUnload(bool& cancel, UnloadMode mode);
  /// What it lets out is kept, but the form goes all the same.
  virtual void OnUnload() {}
  /// True for a form that must not be shown after its load.
  virtual bool HasLoadFailed() const { return false; }

  /// Runs a handler of an event; what it lets out ends the form as the class says.
  void Guard(const std::function<void()>& handler);
  /// Connects a signal to a handler under Guard. The handler takes the signal's values or none.
  template <typename Sender, typename Signal, typename Handler>
  void On(Sender* sender, Signal signal, Handler handler) {
    connect(sender, signal, this,
            [this, handler](auto... values) { Guard([&] { CallWithWhatItTakes(handler, values...); }); });
  }

  /// The control received the focus, from another control of the form or with the form.
  void OnEnter(QWidget* control, const std::function<void()>& handler);
  /// The control lost the focus to another one of the form.
  void OnLeave(QWidget* control, const std::function<void()>& handler);
  /// Another item of the list was selected, by the user or by the program; an emptied list selects none.
  void OnChosen(QComboBox* combo, const std::function<void()>& handler);

  /// The window's title, to the letter.
  void SetCaption(QString text);

  /// The form's controls as they are handed to the host: every named widget and menu item, in the order of creation.
  QObjectList Controls() const;

  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  template <typename Handler, typename... Values>
  static void CallWithWhatItTakes(const Handler& handler, const Values&... values) {
    if constexpr (std::is_invocable_v<Handler, Values...>) {
      handler(values...);
    } else {
      handler();
    }
  }

  void DestroyControls();
  void FinishUnload();
  void ChooseSize();
  // False when the handler let an error out; the first one is kept.
  bool KeepError(const std::function<void()>& handler);
  void RethrowKeptError();

  bool m_loaded = false;
  bool m_shown = false;
  bool m_unloading = false;
  bool m_activated = false;
  std::exception_ptr m_error;
};

}  // namespace framework
