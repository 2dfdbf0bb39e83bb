#include "banking/Dialogs.h"
#include "framework/ControlSetup.h"
#include "framework/KeyFilter.h"
#include "framework/ListHelper.h"
#include "remittances/Dialogs.h"
#include "remittances/NumberedList.h"
#include "remittances/PartyForm.h"
#include "ui_frmPresentador.h"

#include <QSignalBlocker>

using namespace framework;
using namespace Qt::StringLiterals;

namespace remittances {
namespace {

constexpr cConstAccion action;

const FormCard card{
    .name = u"frmPresentador"_s, .lock = u"IDPresentador"_s, .prompt = 13106, .accept = u"cmdAceptar_Click"_s};

/// Adds or edits one presenter of remittances. Its bank and branch are chosen from lists or typed as the bank's number
/// and the branch's code.
class frmPresentador final : public FormOn<Ui::frmPresentador, PartyForm> {
 public:
  frmPresentador() : FormOn(card) {}

 private:
  void Connect() override {
    SelectTextOnFocus(ui.txtNombre, ui.txtNIF, ui.txtSufijo, ui.txtNEntidad, ui.txtNSucursal);
    PadSuffixOnLeave(ui.txtSufijo);
    new KeyFilter(ui.txtNEntidad, IsDigit, 0, KeyFilter::BeepOnRefusal);
    new KeyFilter(ui.txtNSucursal, IsDigit, 0, KeyFilter::BeepOnRefusal);
    OnChosen(ui.cboBancos, Trapped(u"cboBancos_Click"_s, [this] { FollowBank(); }));
    OnChosen(ui.cboSucursales, Trapped(u"cboSucursales_Click"_s, [this] { m_branch->ShowNumber(); }));
    OnLeave(ui.txtNEntidad, Trapped(u"txtNEntidad_LostFocus"_s, [this] { FindBank(); }));
    OnLeave(ui.txtNSucursal, Trapped(u"txtNSucursal_LostFocus"_s, [this] { m_branch->SelectTyped(); }));
    On(ui.cmdNuevoBanco_0, &QToolButton::clicked, Trapped(u"cmdNuevoBanco_Click"_s, [this] { CreateBank(); }));
    On(ui.cmdNuevoBanco_1, &QToolButton::clicked, Trapped(u"cmdNuevoBanco_Click"_s, [this] { CreateBranch(); }));
    Buttons(ui.cmdAceptar, ui.cmdCancelar);
  }

  bool LoadRecord() override {
    m_lists.emplace();
    m_bank.emplace(*m_lists, ui.cboBancos, ui.txtNEntidad, u"IDBanco"_s);
    m_branch.emplace(*m_lists, ui.cboSucursales, ui.txtNSucursal, u"IDSucursal"_s);
    FillBanks({});
    if (IsModify()) {
      SetCaption(LoadResString(13105));
      LoadPresenter();
      LockRecord();
    } else if (IsAdd() && !IsNuevo()) {
      // Intended: on behalf of another dialog the caption stays "Presentador".
      SetCaption(LoadResString(13104));
    }
    return true;
  }

  void LoadPresenter() {
    const auto rs =
        Execute(u"SELECT Nombre,Nif,Sufijo,CodBanco,CodSucursal FROM Presentadores WHERE IDPresentador={}", Id());
    ui.txtNombre->setText(Text(rs->Field(u"Nombre")));
    ui.txtNIF->setText(Text(rs->Field(u"Nif")));
    ui.txtSufijo->setText(Text(rs->Field(u"Sufijo")));
    const qint32 bank = IdOrZero(rs->Field(u"CodBanco"));
    const qint32 branch = IdOrZero(rs->Field(u"CodSucursal"));
    SelectBank(bank);
    m_bank->ShowNumberOf(bank);
    FillBranches(bank, branch);
    m_branch->ShowNumberOf(branch);
  }

  void SelectBank(qint32 bank) {
    const QSignalBlocker quiet(ui.cboBancos);
    m_lists->LocalizarElementoLista(ui.cboBancos, bank);
  }

  // `selected` may be empty, for none.
  void FillBanks(const QVariant& selected) {
    const QSignalBlocker quiet(ui.cboBancos);
    m_lists->rellenarcombobancos(ui.cboBancos, selected);
  }

  void FillBranches(qint32 bank, const QVariant& selected) {
    const QSignalBlocker quiet(ui.cboSucursales);
    if (bank != 0) {
      m_lists->rellenarcombosucursales(ui.cboSucursales, bank, selected);
    } else {
      ui.cboSucursales->clear();
    }
  }

  // Another bank, or none, was chosen in the list.
  void FollowBank() {
    EmptyBranch();
    m_bank->ShowNumber();
  }

  void FindBank() {
    if (m_bank->SelectTyped()) {
      EmptyBranch();
    }
  }

  void EmptyBranch() {
    FillBranches(ItemData(ui.cboBancos), {});
    m_branch->ShowNumber();
  }

  void CreateBank() {
    const qint32 before = ItemData(ui.cboBancos);
    QVariant selected = ui.cboBancos->currentData();
    OpenNested(banking::CreateFrmBanco(), {.action = action.Agregar()}, [&](qint32 id) { selected = id; });
    FillBanks(selected);
    if (ItemData(ui.cboBancos) != before) {
      FollowBank();
    } else if (before != 0) {
      m_bank->ShowNumber();
    }
  }

  void CreateBranch() {
    const qint32 bank = ItemData(ui.cboBancos);
    if (bank == 0) {
      Refuse(ui.cboBancos, 13102, vbInformation);
      return;
    }
    QVariant selected = ui.cboSucursales->currentData();
    OpenNested(banking::CreateFrmSucursal(), {.idAux = bank, .action = action.Agregar()},
               [&](qint32 id) { selected = id; });
    FillBranches(bank, selected);
    m_branch->ShowNumber();
  }

  bool Validate() override {
    QWidget* missing = Missing();
    if (missing != nullptr) {
      return Refuse(missing, 13100, vbInformation);
    }
    return IsTaxIdentifierAccepted(ui.txtNIF) &&
           IsSuffixAccepted(ui.txtSufijo, {.owners = u"SELECT idpresentador FROM presentadores WHERE sufijo='{}'",
                                           .stored = u"SELECT sufijo FROM presentadores WHERE idpresentador={}",
                                           .questionOnAdd = 13101,
                                           .questionOnModify = 13101});
  }

  // The first field, in this order, that must be filled in and is not.
  QWidget* Missing() const {
    for (QLineEdit* box : {ui.txtNombre, ui.txtNIF, ui.txtSufijo}) {
      if (box->text().trimmed().isEmpty()) {
        return box;
      }
    }
    for (QComboBox* list : {ui.cboBancos, ui.cboSucursales}) {
      if (list->currentIndex() < 0) {
        return list;
      }
    }
    return nullptr;
  }

  bool Write() override {
    const QString name = ui.txtNombre->text().trimmed();
    const QString taxIdentifier = ui.txtNIF->text().trimmed();
    const QString suffix = ui.txtSufijo->text().trimmed();
    const qint32 bank = ItemData(ui.cboBancos);
    const qint32 branch = ItemData(ui.cboSucursales);
    if (IsAdd()) {
      Execute(u"INSERT INTO Presentadores(Nombre,Nif,Sufijo,CodBanco,CodSucursal) VALUES ('{}','{}','{}',{},{})", name,
              taxIdentifier, suffix, bank, branch);
      if (IsNuevo()) {
        HandBack(u"numero", u"SELECT MAX(idpresentador) AS numero FROM presentadores");
      }
    } else if (IsModify()) {
      Execute(
          u"UPDATE Presentadores SET Nombre='{}',Nif='{}',Sufijo='{}', CodBanco={}, CodSucursal={} "
          u"WHERE idPresentador={}",
          name, taxIdentifier, suffix, bank, branch, Id());
    }
    return true;
  }

  std::optional<ListHelper> m_lists;
  std::optional<NumberedList> m_bank;
  std::optional<NumberedList> m_branch;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmPresentador() {
  return std::make_unique<frmPresentador>();
}

}  // namespace remittances
