#pragma once

#include "framework/Desktop.h"
#include "framework/Form.h"
#include "framework/HostServices.h"
#include "framework/InputDisabled.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Error.h"
#include "platform/contract/cConstAccion.h"

#include <QTableView>

#include <concepts>
#include <memory>
#include <optional>
#include <variant>

class QAbstractButton;
class QComboBox;
class QLineEdit;

namespace framework {

class FocusWatch;

/// How a dialog tells of an error of its load or unload.
struct ErrorBox {
  int stringId;  ///< A message of the dialog's own: this string, the error's number, ": ", its description.
};
struct ErrorReport {  ///< The host's VerError.
  QString procedure = QStringLiteral("Form Load");
  QString entity = {};         ///< The dialog's name where it is empty.
  bool freshServices = false;  ///< Through a services object made for the report, not through the request's.
};
struct ErrorLetOut {};  ///< The error leaves the call that showed the dialog.

/// What Cancel leaves in `IDAux`.
enum class CancelAnswer {
  Zero,            ///< 0 always
  ZeroUnderNuevo,  ///< 0 under the action `Nuevo`
  Nothing,         ///< what was there
};

/// What distinguishes one maintenance dialog from another in their common life.
struct FormCard {
  QString name;       ///< Class name, also the name under which the dialog locks and reports.
  QString lock = {};  ///< Key column of the record lock; empty for a dialog that takes none.
  int prompt = 0;     ///< String number of the close prompt; 0 for a dialog that tracks no changes and never asks.
  std::variant<ErrorReport, ErrorBox, ErrorLetOut> errors = {};
  CancelAnswer cancel = CancelAnswer::Zero;
  /// Procedure under whose name errors of Validate and Write are trapped; empty where they are let out, or trapped by
  /// the dialog itself.
  QString accept = {};
};

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
  /// The control received the focus, from another control of the form or with the form.
  void OnEnter(QWidget* control, const std::function<void()>& handler);
  /// The control lost the focus to another one of the form.
  void OnLeave(QWidget* control, const std::function<void()>& handler);
  /// Another item of the list was selected, by the user or by the program; an emptied list selects none.
  void OnChosen(QComboBox* combo, const std::function<void()>& handler);
  /// A postcode box and a list of provinces that suggest each other through the host when they are left. Errors are
  /// told as the card says, under the name "SeleccionarProvinciaCP".
  void CouplePostcode(QLineEdit* postcode, QComboBox* province);

  // The request.

  bool IsAdd() const;  ///< `Agregar` or `Nuevo`
  bool IsModify() const;
  bool IsNuevo() const;  ///< an addition on behalf of another dialog
  qint32 Id() const { return objApi().IDSeleccionado(); }
  const QString& Name() const { return m_card.name; }

  /// Asks the host for the lock of the record `Id()`. When another user holds it, Accept, where `Buttons` was told of
  /// one, and `more` are handed to the host to be disabled. What was locked is released at the unload, whatever
  /// `IDSeleccionado` says by then.
  void LockRecord(const QObjectList& more = {});

  // The database: the shared connection. Errors pass through.

  adodb::Connection& Connection() const { return objApi().congestion(); }
  template <typename... Values>
  std::unique_ptr<adodb::Recordset> Execute(std::type_identity_t<adodb::Statement<Values...>> statement,
                                            const Values&... values) const {
    return Connection().Execute(statement.Text(values...));
  }
  /// The field of the first row; Null when there is none.
  template <typename... Values>
  QVariant LookUp(QStringView field, std::type_identity_t<adodb::Statement<Values...>> statement,
                  const Values&... values) const {
    return FirstField(statement.Text(values...), field);
  }
  /// Hands the identifier of the record that was created back to the caller, in `IDAux`: as it is given, or the field
  /// of the first row, 0 when there is none.
  void HandBack(qint32 id);
  void HandBack(QStringView field, adodb::Statement<> statement);
  /// Empties the list and fills it, one item per row; selects the item with the identifier `id`, or none.
  template <typename... Values>
  void FillCombo(QComboBox* combo, QStringView textField, QStringView idField, qint32 id,
                 std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) const {
    FillComboFrom(
        combo, [textField](adodb::Recordset& row) { return Text(row.Field(textField)); }, idField, id,
        statement.Text(values...));
  }
  /// The same with texts that are put together from a row.
  using ItemText = std::function<QString(adodb::Recordset& row)>;
  template <typename... Values>
  void FillCombo(QComboBox* combo, const ItemText& text, QStringView idField, qint32 id,
                 std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) const {
    FillComboFrom(combo, text, idField, id, statement.Text(values...));
  }

  // Values.

  /// The text of a value, Null as the empty one.
  static QString Text(const QVariant& value);
  /// The identifier in a column that may be empty; Null as 0.
  static qint32 IdOrZero(const QVariant& value);
  /// A yes or no in a column that may be empty; Null as no.
  static bool IsTrue(const QVariant& value);
  static QString LoadResString(int id);

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
  FocusWatch* Watch(QWidget* control);
  QVariant FirstField(const QString& statement, QStringView field) const;
  void FillComboFrom(QComboBox* combo, const ItemText& text, QStringView idField, qint32 id,
                     const QString& statement) const;
  void LoadAsTheRequestSays();
  void ValidateAndWrite();
  bool LeaveFields();
  void CancelAndClose();
  void ReleaseRecord();
  void Tell(const automation::Error& error, const QString& procedure);
  QString WidthsKey() const;

  const FormCard m_card;
  QPointer<QObject> m_accept;
  QPointer<QObject> m_yes;
  QPointer<QTableView> m_grid;
  std::optional<InputDisabled> m_writing;
  std::optional<qint32> m_lockedKey;
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
