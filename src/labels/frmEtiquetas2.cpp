#include "framework/ControlSetup.h"
#include "framework/GridKeys.h"
#include "framework/KeyFilter.h"
#include "framework/ListHelper.h"
#include "framework/MaintenanceForm.h"
#include "labels/FieldDialogStates.h"
#include "labels/FieldEditing.h"
#include "labels/FieldEntries.h"
#include "labels/FieldModel.h"
#include "platform/automation/Conversion.h"
#include "ui_frmEtiquetas2.h"

#include <QSignalBlocker>

#include <algorithm>

using adodb::StatementText;
using namespace framework;
using namespace Qt::StringLiterals;

namespace labels {
namespace {

// What fits the column together with the mark of a free text.
constexpr int longestText = 254;

const FormCard card{.name = u"frmEtiquetas2"_s, .prompt = 11100, .cancel = CancelAnswer::Nothing};

template <int Most>
bool IsDigitUpTo(QChar c) {
  return c >= u'1' && c <= QChar(u'0' + Most);
}

// Brackets are the marks of a field's name.
bool IsNoBracket(QChar c) {
  return c != u'[' && c != u']';
}

/// Chooses the fields and free texts of a label. It works on a list of its own; the caller's is replaced only when the
/// whole list is accepted.
class frmEtiquetas2 final : public FormOn<Ui::frmEtiquetas2>, private FieldSteps {
 public:
  explicit frmEtiquetas2(FieldCollection& fields) : FormOn(card), m_fields(fields) {}

  quint8 Accion() const { return m_states.Accion(); }

 private:
  void Connect() override {
    m_list.Clear();
    m_model = new FieldModel(m_list, ui.msgCampos);
    ui.msgCampos->setModel(m_model);
    SetColumnCharacters(*ui.msgCampos, {60, 8, 8});
    ui.shpCampos->Show(&m_list);
    ConnectStates();
    On(ui.msgCampos->selectionModel(), &QItemSelectionModel::selectionChanged, [this] { Redraw(); });
    On(ui.optCampos_0, &QRadioButton::toggled, [this] { EnableKind(); });
    OnChosen(ui.cboCampos_0, [this] { RellenarComboCampos(); });
    constexpr KeyFilter::Options oneDigit = KeyFilter::BeepOnRefusal | KeyFilter::ClearWhenFull;
    new KeyFilter(ui.txtCampos_0, IsDigitUpTo<mostLines>, 1, oneDigit);
    new KeyFilter(ui.txtCampos_1, IsDigitUpTo<mostPositions>, 1, oneDigit);
    new KeyFilter(ui.txtCampos_2, IsNoBracket, longestText, KeyFilter::BeepOnRefusal);
    for (QLineEdit* box : {ui.txtCampos_0, ui.txtCampos_1, ui.txtCampos_2}) {
      OnEnter(box, [this, box] { SeleccionarTexto(box); });
    }
    // Intended: this confirms the entry that is being edited and hands nothing over.
    YesPresses(ui.cmdCampos_5);
  }

  void ConnectStates() {
    const auto enters = [this](QPushButton* button, FieldState state) {
      On(button, &QPushButton::clicked, [this, state] { m_states.Enter(state); });
    };
    enters(ui.cmdCampos_0, FieldState::AcceptingAll);
    enters(ui.cmdCampos_1, FieldState::Closing);
    enters(ui.cmdCampos_2, FieldState::Adding);
    enters(ui.cmdCampos_3, FieldState::Modifying);
    enters(ui.cmdCampos_4, FieldState::Deleting);
    enters(ui.cmdCampos_5, FieldState::ConfirmingEntry);
    enters(ui.cmdCampos_6, FieldState::Browsing);
    auto* keys = new GridKeys(ui.msgCampos);
    On(keys, &GridKeys::Add, [this] { m_states.Enter(FieldState::Adding); });
    On(keys, &GridKeys::Modify, [this] { m_states.Enter(FieldState::Modifying); });
    On(keys, &GridKeys::Delete, [this] { m_states.Enter(FieldState::Deleting); });
  }

  bool LoadRecord() override {
    m_states.Enter(FieldState::Loading);
    return Accion() != FieldState::CannotContinue;
  }

  void OnActivate() override { Redraw(); }

  void OnUnload() override {
    if (!ErrorCarga()) {
      AnchosColumnasGrid(&HostServices::SalvarAnchos);
    }
    FormOn::OnUnload();
  }

  // What entering a state does.

  void Prepare() override {
    m_lists.emplace();
    AnchosColumnasGrid(&HostServices::CargarAnchos);
    RellenarComboTablas();
    RellenarComboCampos();
    CopyFields(m_fields, m_list);
  }

  void ShowList() override {
    ClearEntry();
    EnableEntry(false);
    m_model->Refresh();
    ui.msgCampos->selectRow(m_current ? m_model->RowOf(m_current) : -1);
  }

  void EditNew() override {
    m_current = SelectedEntry();
    ClearEntry();
    EnableEntry(true);
    ui.cboCampos_0->setFocus();
  }

  bool EditSelected() override {
    if (!DemandSelection()) {
      return false;
    }
    ClearEntry();
    EnableEntry(true);
    if (m_current->UsarCampo) {
      ShowField(*m_current);
    } else {
      ui.optCampos_1->setChecked(true);
      ui.txtCampos_2->setText(m_current->Campo);
    }
    ui.txtCampos_0->setText(QString::number(m_current->Linea));
    ui.txtCampos_1->setText(QString::number(m_current->Orden));
    (m_current->UsarCampo ? static_cast<QWidget*>(ui.cboCampos_0) : ui.txtCampos_2)->setFocus();
    return true;
  }

  bool DeleteSelected() override {
    if (!DemandSelection() || Ask(11108, vbYesNo + vbQuestion) != vbYes) {
      return false;
    }
    const int row = m_model->RowOf(m_current);
    DeleteEntry(m_list, m_current);
    m_model->Refresh();
    m_current = m_model->At(std::min(row, m_model->rowCount() - 1));
    return true;
  }

  bool StoreNew() override {
    if (!IsComplete() || !IsPlaceFree(0)) {
      return false;
    }
    m_current = AddEntry(m_list, Input());
    return true;
  }

  bool StoreModified() override {
    if (!IsComplete() || !IsPlaceFree(m_current->IDElemento)) {
      return false;
    }
    ModifyEntry(*m_current, Input());
    return true;
  }

  void HandOver() override { CopyFields(m_list, m_fields); }

  void Leave() override { Unload(); }

  void TellThatItCannotContinue() override { Ask(11101, vbCritical); }

  void Redraw() override {
    const std::shared_ptr<cCampo> entry = SelectedEntry();
    ui.shpCampos->Redraw(entry ? entry->IDElemento : 0);
  }

  // The entry.

  std::shared_ptr<cCampo> SelectedEntry() const {
    const QModelIndexList rows = ui.msgCampos->selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : m_model->At(rows.first().row());
  }

  // The selected entry becomes the current one; the user is told when there is none.
  bool DemandSelection() {
    const std::shared_ptr<cCampo> entry = SelectedEntry();
    if (!entry) {
      return Refuse(nullptr, 11105, vbExclamation);
    }
    m_current = entry;
    return true;
  }

  void ClearEntry() {
    ui.optCampos_0->setChecked(true);
    ui.cboCampos_0->setCurrentIndex(-1);
    ui.cboCampos_1->clear();
    for (QLineEdit* box : {ui.txtCampos_0, ui.txtCampos_1, ui.txtCampos_2}) {
      box->clear();
    }
  }

  void EnableEntry(bool editing) {
    const bool ends = ui.fraDatos->isEnabled() && !editing;
    ui.fraLista->setDisabled(editing);
    if (ends) {
      // Ready for the next entry; the focus must not fall on the button that accepts the list.
      ui.cmdCampos_2->setFocus();
    }
    ui.fraDatos->setEnabled(editing);
    // The buttons of the list would drop the entry, and share their mnemonics with those of the entry.
    ui.cmdCampos_0->setDisabled(editing);
    ui.cmdCampos_1->setDisabled(editing);
    (editing ? ui.cmdCampos_5 : ui.cmdCampos_0)->setDefault(true);
    EnableKind();
  }

  void EnableKind() {
    const bool isField = ui.optCampos_0->isChecked();
    const QWidgetList ofFields{ui.lblCampos_0, ui.cboCampos_0, ui.lblCampos_1, ui.cboCampos_1};
    for (QWidget* control : ofFields) {
      control->setEnabled(isField);
    }
    ui.lblTexto->setDisabled(isField);
    ui.txtCampos_2->setDisabled(isField);
  }

  void ShowField(const cCampo& entry) {
    LocalizarElementoLista(ui.cboCampos_0, entry.codTabla);
    LocalizarElementoLista(ui.cboCampos_1, entry.IDCampo);
    if (ItemData(ui.cboCampos_1) != entry.IDCampo) {
      // The catalogue lost the field; the label keeps it until another one is chosen.
      ui.cboCampos_1->addItem(entry.Campo, entry.IDCampo);
      ui.cboCampos_1->setCurrentIndex(ui.cboCampos_1->count() - 1);
    }
  }

  bool IsComplete() {
    const bool isField = ui.optCampos_0->isChecked();
    QWidget* value = isField ? static_cast<QWidget*>(ui.cboCampos_1) : ui.txtCampos_2;
    if (Input().value.trimmed().isEmpty()) {
      return Refuse(value, 11106, vbExclamation);
    }
    for (QLineEdit* box : {ui.txtCampos_0, ui.txtCampos_1}) {
      if (box->text().isEmpty()) {
        return Refuse(box, 11106, vbExclamation);
      }
    }
    return true;
  }

  bool IsPlaceFree(qint32 except) {
    const EntryInput input = Input();
    return !IsPlaceTaken(m_list, input.line, input.position, except) || Refuse(ui.txtCampos_0, 11107, vbExclamation);
  }

  EntryInput Input() const {
    const bool isField = ui.optCampos_0->isChecked();
    return {.isField = isField,
            .table = ItemData(ui.cboCampos_0),
            .field = ItemData(ui.cboCampos_1),
            .value = isField ? ui.cboCampos_1->currentText() : ui.txtCampos_2->text(),
            .line = static_cast<quint8>(ui.txtCampos_0->text().toUInt()),
            .position = static_cast<quint8>(ui.txtCampos_1->text().toUInt())};
  }

  // Procedures that report their errors under their own names; the dialog stays usable.

  void RellenarComboTablas() {
    const QSignalBlocker quiet(ui.cboCampos_0);
    RellenarComboAPI(ui.cboCampos_0,
                     u"SELECT DISTINCT TipoCamposEtiquetas.codTabla, TipoCamposEtiquetas.NombreTabla "
                     "FROM TipoCamposEtiquetas"_s,
                     u"NombreTabla"_s, u"codTabla"_s);
  }

  void RellenarComboCampos() {
    ui.cboCampos_1->clear();
    RellenarComboAPI(ui.cboCampos_1,
                     StatementText(u"SELECT TipoCamposEtiquetas.IDTipoCampoEtiqueta, TipoCamposEtiquetas.NombreCampo "
                                   u"FROM TipoCamposEtiquetas WHERE TipoCamposEtiquetas.codTabla={}",
                                   ItemData(ui.cboCampos_0)),
                     u"NombreCampo"_s, u"IDTipoCampoEtiqueta"_s);
  }

  void RellenarComboAPI(QComboBox* combo, const QString& statement, const QString& text, const QString& id) {
    Trap(u"RellenarComboAPI"_s, [&] { m_lists->RellenarCombo(combo, statement, text, id); });
  }

  void LocalizarElementoLista(QComboBox* combo, qint32 id) {
    Trap(u"LocalizarElementoLista"_s, [&] { m_lists->LocalizarElementoLista(combo, id); });
  }

  void SeleccionarTexto(QLineEdit* box) {
    Trap(u"SeleccionarTexto"_s, [box] { HostServices::Fresh().SeleccionarTexto(box); });
  }

  void AnchosColumnasGrid(void (HostServices::*service)(QObject*, const QString&, const QString&) const) {
    Trap(u"AnchosColumnasGrid"_s, [&] {
      const QString name = objApi().tituloaplicacion() + u'\\' + objApi().PathNodo() + u"\\msgCampos"_s;
      (HostServices::Fresh().*service)(ui.msgCampos, name, Name());
    });
  }

  FieldCollection& m_fields;
  FieldCollection m_list;
  FieldDialogStates m_states{*this};
  std::optional<ListHelper> m_lists;
  FieldModel* m_model = nullptr;
  // The entry that was chosen last, or is being modified.
  std::shared_ptr<cCampo> m_current;
};

}  // namespace

void EditFields(FieldCollection& fields, QWidget& caller) {
  frmEtiquetas2 dialog(fields);
  {
    const InputDisabled disabled(&caller);
    const Hourglass hourglass;
    dialog.Load();
  }
  if (dialog.Accion() == FieldState::CannotContinue) {
    dialog.Unload();
  } else {
    dialog.ShowModal();
  }
}

}  // namespace labels
