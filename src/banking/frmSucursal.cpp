#include "banking/BranchEditing.h"
#include "banking/Dialogs.h"
#include "framework/ControlSetup.h"
#include "framework/KeyFilter.h"
#include "framework/Messages.h"
#include "reference/Dialogs.h"
#include "ui_frmSucursal.h"

#include <QSignalBlocker>

#include <algorithm>

using namespace framework;
using namespace Qt::StringLiterals;

namespace banking {
namespace {

constexpr cConstAccion action;
constexpr int longestCode = 4;
constexpr int longestPostcode = 5;

/// Edits one bank branch: for the bank dialog a branch held in memory, written by nobody here; for the host a new
/// branch of the bank `IDAux`, written at once.
class frmSucursal final : public FormOn<Ui::frmSucursal> {
 public:
  /// Without a task the dialog is the host's.
  explicit frmSucursal(const BranchTask* task)
      : FormOn({.name = u"frmSucursal"_s,
                .prompt = 16103,
                .errors = ErrorBox{16105},
                .cancel = task != nullptr ? CancelAnswer::Nothing : CancelAnswer::Zero}),
        m_task(task) {}

  /// True when the bank dialog's branch was filled in.
  bool IsAccepted() const { return m_accepted; }

 private:
  void Connect() override {
    SelectTextOnFocus(ui.txtSucursales_0, ui.txtSucursales_1, ui.txtSucursales_2, ui.txtSucursales_3,
                      ui.txtSucursales_4);
    const KeyFilter::Options options = KeyFilter::BeepOnRefusal | KeyFilter::ClearWhenFull;
    new KeyFilter(ui.txtSucursales_0, IsDigit, longestCode, options);
    new KeyFilter(ui.txtSucursales_4, IsLetterOrDigit, longestPostcode, options);
    OnChosen(ui.cboPaises, [this] { FillProvinces(0); });
    CouplePostcode(ui.txtSucursales_4, ui.cboProvincias);
    On(ui.cmdNPais, &QToolButton::clicked, [this] {
      OpenNested(reference::CreateFrmPais(), {}, [this](qint32 id) {
        FillCountries(id);
        FillProvinces(0);
      });
    });
    On(ui.cmdNProvincia, &QToolButton::clicked, [this] { CreateProvince(); });
    Buttons(ui.cmdSucursales_0, ui.cmdSucursales_1);
  }

  bool LoadRecord() override {
    m_accepted = false;
    return m_task != nullptr ? LoadForBank() : LoadForHost();
  }

  bool LoadForBank() {
    ShowBank(m_task->bankNumber, m_task->bankName, m_task->isNew ? 16101 : 16102);
    if (m_task->isNew) {
      ChooseCountryAndProvince();
      return true;
    }
    const cSucursal& branch = m_task->branch;
    FillCountries(branch.IDPais);
    FillProvinces(branch.IDProvincia);
    ui.txtSucursales_0->setText(branch.Codigo);
    ui.txtSucursales_1->setText(branch.Nombre);
    ui.txtSucursales_2->setText(branch.Direccion);
    ui.txtSucursales_3->setText(branch.Poblacion);
    ui.txtSucursales_4->setText(branch.CodigoPostal);
    return true;
  }

  bool LoadForHost() {
    m_bank = objApi().IDAuxNumber();
    if (m_bank == 0) {
      ShowMessage(16100, vbCritical);
      return false;
    }
    const auto rs = Execute(u"SELECT Bancos.Nombre, Bancos.Numero FROM Bancos WHERE Bancos.IDBanco={}", m_bank);
    ShowBank(Text(rs->Field(u"NUMERO")), Text(rs->Field(u"NOMBRE")), 16101);
    ChooseCountryAndProvince();
    return true;
  }

  void ShowBank(const QString& number, const QString& name, int caption) {
    ui.lblNumeroBanco->setText(number);
    ui.lblNombreBanco->setText(name);
    SetCaption(LoadResString(caption) + name);
  }

  void ChooseCountryAndProvince() {
    const qint32 country = DefaultId(u"IDPaisEspaña"_s, [] {
      return LookUp(u"IDPAIS", u"SELECT IDPais FROM Paises WHERE Paises.Eliminado=0 AND Paises.Nombre='España'");
    });
    const qint32 province = DefaultId(u"IDProvinciaMadrid"_s, [&] {
      return LookUp(u"IDPROVINCIA",
                    u"SELECT Provincias.IDProvincia FROM Provincias INNER JOIN Paises ON "
                    u"Provincias.codPais=Paises.IDPais WHERE Provincias.Eliminado=0 AND Paises.Eliminado=0 AND "
                    u"Provincias.Nombre='Madrid' AND Provincias.codPais={}",
                    country);
    });
    FillCountries(country);
    FillProvinces(province);
  }

  // The look-ups of the defaults were written for another component; their reports keep its name on purpose.
  template <typename Query>
  static qint32 DefaultId(const QString& procedure, Query query) {
    try {
      return IdOrZero(query());
    } catch (...) {
      ReportError(automation::CurrentError(), procedure, u"frmSucursal"_s, u"KelAdministracion"_s);
      return 0;
    }
  }

  void FillCountries(qint32 selected) {
    const QSignalBlocker quiet(ui.cboPaises);
    FillCombo(ui.cboPaises, u"NOMBRE", u"IDPAIS", selected,
              u"SELECT Paises.IDPais, Paises.Nombre FROM Paises WHERE Paises.Eliminado=0 ORDER BY Paises.Nombre ASC");
  }

  void FillProvinces(qint32 selected) {
    const qint32 country = ItemData(ui.cboPaises);
    if (country == 0) {
      ui.cboProvincias->clear();
      return;
    }
    FillCombo(ui.cboProvincias, u"NOMBRE", u"IDPROVINCIA", selected,
              u"SELECT Provincias.IDProvincia, Provincias.Nombre FROM Provincias WHERE Provincias.Eliminado=0 AND "
              u"Provincias.codPais={} ORDER BY Provincias.Nombre ASC",
              country);
  }

  void CreateProvince() {
    const qint32 country = ItemData(ui.cboPaises);
    if (country == 0) {
      Refuse(ui.cboPaises, 16104, vbInformation);
      return;
    }
    OpenNested(reference::CreateFrmProvincia(), {.idAux = country}, [this](qint32 id) { FillProvinces(id); });
  }

  bool Validate() override {
    for (QLineEdit* box : {ui.txtSucursales_0, ui.txtSucursales_1}) {
      if (box->text().trimmed().isEmpty()) {
        return Refuse(box, 16106, vbExclamation);
      }
    }
    bool inUse = false;
    return Trap([&] { inUse = IsCodeInUse(ui.txtSucursales_0->text().trimmed()); }) &&
           (!inUse || Refuse(ui.txtSucursales_0, 16107, vbCritical));
  }

  bool IsCodeInUse(const QString& code) const {
    if (m_task != nullptr) {
      return std::ranges::any_of(m_task->branches, [&](const std::shared_ptr<cSucursal>& other) {
        return other->Estado != action.Eliminar() && other->IDSucursal != m_task->branch.IDSucursal &&
               other->Codigo.trimmed().compare(code, Qt::CaseInsensitive) == 0;
      });
    }
    return !Execute(
                u"SELECT Sucursales.IDSucursal FROM Sucursales WHERE Sucursales.Codigo='{}' AND "
                u"Sucursales.codBanco={}",
                code, m_bank)
                ->AtEnd();
  }

  bool Write() override {
    if (m_task == nullptr) {
      return Trap([this] { WriteForHost(); });
    }
    cSucursal& branch = m_task->branch;
    Collect(branch);
    if (m_task->isNew) {
      branch.ExisteEnBD = false;
      branch.Estado = action.Agregar();
    } else if (branch.ExisteEnBD) {
      branch.Estado = action.Modificar();
    }
    m_accepted = true;
    return true;
  }

  void WriteForHost() {
    cSucursal branch;
    Collect(branch);
    Execute(
        u"INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, codProvincia, codPais) "
        u"VALUES( {},'{}','{}','{}','{}','{}',{},{})",
        m_bank, branch.Codigo, branch.Nombre, branch.Direccion, branch.Poblacion, branch.CodigoPostal,
        branch.IDProvincia, branch.IDPais);
    HandBack(u"MAXID", u"SELECT MAX(IDSucursal) AS MaxID FROM Sucursales");
  }

  void Collect(cSucursal& branch) const {
    branch.Codigo = ui.txtSucursales_0->text().trimmed();
    branch.Nombre = ui.txtSucursales_1->text().trimmed();
    branch.Direccion = ui.txtSucursales_2->text().trimmed();
    branch.Poblacion = ui.txtSucursales_3->text().trimmed();
    branch.CodigoPostal = ui.txtSucursales_4->text().trimmed();
    branch.IDPais = ItemData(ui.cboPaises);
    branch.IDProvincia = ItemData(ui.cboProvincias);
    branch.Pais = ui.cboPaises->currentText();
    branch.Provincia = ui.cboProvincias->currentText();
  }

  const BranchTask* m_task;
  qint32 m_bank = 0;
  bool m_accepted = false;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmSucursal() {
  return std::make_unique<frmSucursal>(nullptr);
}

bool EditBranch(const BranchTask& task) {
  frmSucursal dialog(&task);
  dialog.ShowModal();
  return dialog.IsAccepted();
}

}  // namespace banking
