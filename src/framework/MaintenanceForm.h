#pragma once

#include "framework/CurrentRequest.h"
#include "framework/Database.h"
#include "framework/Desktop.h"
#include "framework/Form.h"
#include "framework/FormCard.h"
#include "framework/InputDisabled.h"
#include "framework/Messages.h"
#include "framework/RecordLock.h"
#include "framework/Values.h"
#include "platform/contract/cConstAccion.h"

#include <QTableView>

#include <concepts>
#include <memory>
#include <optional>

class QAbstractButton;
class QComboBox;
class QLineEdit;

namespace framework {

/// The common life of the dialogs that edit one record. A dialog is its layout and the steps below; the frame does the
/// rest, in this order: captions, icon, grid widths, LoadRecord, memory of the controls' values; on Accept the focus
/// moves there, so that what depends on leaving a field runs, then Validate, then Write with the input disabled, then
/// the form goes; on closing the prompt; at the end the widths, the release of the record lock. A form whose load
/// failed is not shown, and its unload asks the host for nothing.
class MaintenanceForm : public Form {
  Q_OBJECT

 public:
  explicit MaintenanceForm(FormCard card);
  ~MaintenanceForm() override;

  /// True from the first act of the load until it has completed.
  bool ErrorCarga() const { return m_loadFailed; }
  /// The identifier of the record that was created and handed back in `IDAux`, if any.
  std::optional<qint32> Created() const { return m_created; }

 protected:
  // The steps of a dialog.

  /// Connects the controls, each time that they have been made; no host, no database.
  virtual void Connect() = 0;
  /// What a dialog reads about the installation, between its captions and its icon.
  virtual void AskInstallation() {}
  /// Caption and record, by `objApi().Accion()`. False when the dialog refused and has told the user why; what it
  /// throws is told as the card says.
  virtual bool LoadRecord() = 0;
  /// False when the user was told what to correct.
  virtual bool Validate() { return true; }
  /// False when nothing was written and the user was told why; the dialog then stays.
  virtual bool Write() { return true; }

  // For Connect.

  /// Accept and Cancel: a button, or an action of a menu or tool bar. Cancel is marked as a control that serves when
  /// the record is only looked at, by the dynamic property `SirveEnConsulta`; a layout may mark others.
  void Buttons(QObject* accept, QAbstractButton* cancel);
  /// What a Yes to the close prompt presses, where that is not Accept.
  void YesPresses(QObject* control) { m_yes = control; }
  /// The grid whose column widths the host keeps.
  void KeepColumnWidths(QTableView* grid) { m_grid = grid; }
  /// Each box selects its whole text, through the host, when it receives the focus.
  void SelectTextOnFocus(std::convertible_to<QWidget*> auto... boxes) { (SelectTextOnFocusOf(boxes), ...); }
  /// A postcode box and a list of provinces that suggest each other through the host when they are left. Errors are
  /// told as the card says, under the name "SeleccionarProvinciaCP".
  void CouplePostcode(QLineEdit* postcode, QComboBox* province);

  // The record.

  const QString& Name() const { return m_card.name; }

  /// Asks the host for the lock of the record `Id()`. When another user holds it, Accept, where `Buttons` was told of
  /// one, and `more` are handed to the host to be disabled. What was locked is released at the unload, whatever
  /// `IDSeleccionado` says by then.
  void LockRecord(const QObjectList& more = {});
  /// Hands the identifier of the record that was created back to the caller, in `IDAux`: as it is given, or the field
  /// of the first row, 0 when there is none.
  void HandBack(qint32 id);
  void HandBack(QStringView field, adodb::Statement<> statement);

  // Messages. Input that was disabled for writing is enabled before the user is asked anything.

  /// Beep, the string's message, the focus to `control` where one is given. Always false.
  bool Refuse(QWidget* control, int stringId, int style);
  bool Refuse(QWidget* control, const QString& text, int style);
  /// Beep, the string's message, or a text that stands in no table; the answer.
  int Ask(int stringId, int style);
  int Ask(const QString& text, int style);
  /// Runs `work`; false when it let an error out, which was then told as the card says.
  bool Trap(const std::function<void()>& work);
  /// The same, told through the host's VerError under the procedure's name, as reports spell it. The name is read when
  /// the error is told, so that `work` may say in which part of itself it is.
  bool Trap(const QString& procedure, const std::function<void()>& work);
  /// `handler` under Trap, for the signals of controls.
  std::function<void()> Trapped(const QString& procedure, const std::function<void()>& handler);
  /// Trap inside a transaction, which is committed after `work`; an error is reported before the roll-back, which takes
  /// back what was handed back, too.
  bool TrapInTransaction(const QString& procedure, const std::function<void()>& work);

  // Other dialogs, in the middle of this one.

  struct Nested {
    QVariant idAux = 0;  ///< The record that the new one must belong to.
    int action = cConstAccion().Nuevo();
  };
  /// Shows `dialog` and, when it created a record, calls `created` with its identifier; then the host's request is put
  /// back. Errors of the dialog pass through.
  void OpenNested(std::unique_ptr<MaintenanceForm> dialog, const Nested& request,
                  const std::function<void(qint32 id)>& created);
  /// The same for the dialog of a node, through the component's own dispatcher.
  void OpenThroughDispatcher(qint32 node, const std::function<void(qint32 id)>& created);

  /// Accept, as its button does it.
  void AcceptAndClose();

  void OnLoad() final;
  void OnQueryUnload(bool& cancel, UnloadMode mode) override;
  void OnUnload() override;
  bool HasLoadFailed() const override { return m_loadFailed; }

 private:
  void SelectTextOnFocusOf(QWidget* box);
  void LoadAsTheRequestSays();
  void ValidateAndWrite();
  bool LeaveFields();
  void CancelAndClose();
  void Tell(const automation::Error& error, const QString& procedure);
  QString WidthsKey() const;

  const FormCard m_card;
  QPointer<QObject> m_accept;
  QPointer<QObject> m_yes;
  QPointer<QTableView> m_grid;
  std::optional<InputDisabled> m_writing;
  RecordLock m_lock;
  std::optional<qint32> m_created;
  bool m_written = false;
  bool m_loadFailed = false;
};

/// A maintenance dialog over the layout `Layout`, a class that a `.ui` file makes. `Base` is what it shares with the
/// dialogs of its kind.
template <typename Layout, std::derived_from<MaintenanceForm> Base = MaintenanceForm>
class FormOn : public Base {
 protected:
  using Base::Base;
  Layout ui = {};

 private:
  void CreateControls() final {
    ui.setupUi(this);
    this->Connect();
  }
};

}  // namespace framework
