#include "banking/BranchEditing.h"
#include "banking/BranchModel.h"
#include "banking/Dialogs.h"
#include "framework/ControlSetup.h"
#include "framework/GridKeys.h"
#include "framework/HostServices.h"
#include "platform/automation/Conversion.h"
#include "ui_frmBanco.h"

#include <QStringList>

#include <algorithm>

using namespace framework;
using namespace Qt::StringLiterals;

namespace banking {
namespace {

constexpr cConstAccion action;

const FormCard card{.name = u"frmBanco"_s, .lock = u"IDBanco"_s, .prompt = 1101, .errors = ErrorBox{1102}};

/// Adds or edits one bank together with its branches. The branches are edited in memory; Accept writes everything in
/// one transaction.
class frmBanco final : public FormOn<Ui::frmBanco> {
 public:
  frmBanco() : FormOn(card) {}

 private:
  void Connect() override {
    m_branches.clear();
    m_model = new BranchModel(m_branches, ui.msgSucursales);
    ui.msgSucursales->setModel(m_model);
    SetColumnCharacters(*ui.msgSucursales, {7, 20, 26, 14});
    KeepColumnWidths(ui.msgSucursales);
    SelectTextOnFocus(ui.txtBanco_0, ui.txtBanco_1);
    const auto add = [this] { AddBranch(); };
    const auto modify = [this] { ModifyBranch(); };
    const auto remove = [this] { DeleteBranch(); };
    On(ui.cmdBanco_0, &QPushButton::clicked, add);
    On(ui.cmdBanco_1, &QPushButton::clicked, modify);
    On(ui.cmdBanco_2, &QPushButton::clicked, remove);
    auto* keys = new GridKeys(ui.msgSucursales);
    On(keys, &GridKeys::Add, add);
    On(keys, &GridKeys::Modify, modify);
    On(keys, &GridKeys::Delete, remove);
    On(ui.msgSucursales, &QTableView::clicked, [this](const QModelIndex& cell) { SelectRow(cell.row()); });
    Buttons(ui.cmdBanco_3, ui.cmdBanco_4);
  }

  bool LoadRecord() override {
    if (IsAdd()) {
      SetCaption(LoadResString(1100));
    } else if (IsModify()) {
      LoadBank();
      LoadBranches();
      LockRecord();
    }
    return true;
  }

  void LoadBank() {
    const auto rs = Execute(u"SELECT Bancos.Nombre, Bancos.Numero FROM Bancos WHERE Bancos.IDBanco={}", Id());
    ui.txtBanco_0->setText(Text(rs->Field(u"NUMERO")));
    ui.txtBanco_1->setText(Text(rs->Field(u"NOMBRE")));
    SetCaption(LoadResString(1105) + Text(rs->Field(u"NOMBRE")));
  }

  void LoadBranches() {
    const auto rs = Execute(
        u"SELECT Sucursales.IDSucursal, Sucursales.Nombre AS Sucursal, Sucursales.Codigo, Sucursales.Direccion, "
        u"Sucursales.Poblacion, Sucursales.CP, Sucursales.codProvincia, Provincias.Nombre AS Provincia, "
        u"Sucursales.codPais, Paises.Nombre AS Pais FROM (Sucursales LEFT JOIN Paises ON "
        u"Sucursales.codPais=Paises.IDPais) LEFT JOIN Provincias ON Sucursales.codProvincia=Provincias.IDProvincia "
        u"WHERE Sucursales.Eliminado=0 AND (Paises.Eliminado=0 OR Paises.Eliminado IS NULL) AND "
        u"(Provincias.Eliminado=0 OR Provincias.Eliminado IS NULL) AND Sucursales.codBanco={} "
        u"ORDER BY Sucursales.Codigo ASC",
        Id());
    for (; !rs->AtEnd(); rs->MoveNext()) {
      m_branches.push_back(BranchOf(*rs));
    }
    m_model->Refresh();
  }

  static std::shared_ptr<cSucursal> BranchOf(adodb::Recordset& rs) {
    auto branch = std::make_shared<cSucursal>();
    branch->IDSucursal = automation::CLng(rs.Field(u"IDSUCURSAL"));
    branch->IDProvincia = IdOrZero(rs.Field(u"CODPROVINCIA"));
    branch->IDPais = IdOrZero(rs.Field(u"CODPAIS"));
    branch->Nombre = Text(rs.Field(u"SUCURSAL"));
    branch->Codigo = Text(rs.Field(u"CODIGO"));
    branch->Direccion = Text(rs.Field(u"DIRECCION"));
    branch->Poblacion = Text(rs.Field(u"POBLACION"));
    branch->CodigoPostal = Text(rs.Field(u"CP"));
    branch->Provincia = Text(rs.Field(u"PROVINCIA"));
    branch->Pais = Text(rs.Field(u"PAIS"));
    branch->ExisteEnBD = true;
    branch->Estado = action.Agregar();
    return branch;
  }

  void AddBranch() {
    auto branch = std::make_shared<cSucursal>();
    branch->IDSucursal = NextTemporaryId();
    if (Edit(*branch, true)) {
      m_branches.push_back(branch);
      Show(branch);
    }
  }

  void ModifyBranch() {
    const std::shared_ptr<cSucursal> branch = DemandSelection();
    if (branch && Edit(*branch, false)) {
      Show(branch);
    }
  }

  bool Edit(cSucursal& branch, bool isNew) {
    return EditBranch({.branch = branch,
                       .branches = m_branches,
                       .isNew = isNew,
                       .bankNumber = ui.txtBanco_0->text(),
                       .bankName = ui.txtBanco_1->text()});
  }

  void DeleteBranch() {
    const std::shared_ptr<cSucursal> branch = DemandSelection();
    if (!branch || Ask(1104, vbYesNo + vbQuestion) != vbYes || !MayBeDeleted(*branch)) {
      return;
    }
    const int row = m_model->RowOf(branch);
    if (branch->ExisteEnBD) {
      branch->Estado = action.Eliminar();
    } else {
      std::erase(m_branches, branch);
    }
    m_model->Refresh();
    SelectRow(std::min(row, m_model->rowCount() - 1));
  }

  bool MayBeDeleted(const cSucursal& branch) {
    bool inUse = false;
    const bool asked = Trap([&] {
      inUse = branch.ExisteEnBD &&
              !Execute(
                   u"SELECT codSucursal FROM Colaboradores_Cuentas WHERE Colaboradores_Cuentas.Eliminado=0 AND "
                   u"Colaboradores_Cuentas.codSucursal={0} UNION SELECT codSucursal FROM Cuentas WHERE "
                   u"Cuentas.Eliminado=0 AND Cuentas.codSucursal={0}",
                   branch.IDSucursal)
                   ->AtEnd();
    });
    return asked && (!inUse || Refuse(nullptr, 1110, vbCritical));
  }

  bool Validate() override {
    for (QLineEdit* box : {ui.txtBanco_0, ui.txtBanco_1}) {
      if (box->text().trimmed().isEmpty()) {
        return Refuse(box, 1111, vbExclamation);
      }
    }
    return true;
  }

  bool Write() override {
    const QString number = ui.txtBanco_0->text().trimmed();
    const QString name = ui.txtBanco_1->text().trimmed();
    bool numberInUse = false;
    const bool done = Trap([&] {
      numberInUse = !Execute(
                         u"SELECT Bancos.IDBanco FROM Bancos WHERE Bancos.Eliminado=0 AND Bancos.Numero='{}' AND "
                         u"Bancos.IDBanco<>{}",
                         number, Id())
                         ->AtEnd();
      if (!numberInUse && IsAdd()) {
        InsertBank(number, name);
      } else if (!numberInUse && IsModify()) {
        UpdateBank(number, name);
      }
    });
    return done && (!numberInUse || Refuse(nullptr, 1112, vbCritical));
  }

  void InsertBank(const QString& number, const QString& name) {
    adodb::Transaction transaction(Connection());
    Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES('{}','{}')", number, name);
    const qint32 bank = automation::CLng(LookUp(u"MAXID", u"SELECT MAX(Bancos.IDBanco) AS MaxID FROM Bancos"));
    for (const std::shared_ptr<cSucursal>& branch : m_branches) {
      InsertBranch(bank, *branch);
    }
    transaction.Commit();
    HandBack(bank);
  }

  void UpdateBank(const QString& number, const QString& name) {
    adodb::Transaction transaction(Connection());
    Execute(u"UPDATE Bancos SET Numero='{}',Nombre='{}' WHERE IDBanco={}", number, name, Id());
    QStringList deleted;
    for (const std::shared_ptr<cSucursal>& branch : m_branches) {
      if (!branch->ExisteEnBD) {
        InsertBranch(Id(), *branch);
      } else if (branch->Estado == action.Modificar()) {
        UpdateBranch(*branch);
      } else if (branch->Estado == action.Eliminar()) {
        deleted.append(QString::number(branch->IDSucursal));
      }
    }
    if (!deleted.isEmpty()) {
      Execute(u"UPDATE Sucursales SET Eliminado=-1 WHERE IDSucursal IN({})", adodb::Verbatim{deleted.join(u',')});
    }
    transaction.Commit();
  }

  void InsertBranch(qint32 bank, const cSucursal& branch) {
    Execute(
        u"INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, codProvincia, codPais) "
        u"VALUES({},'{}','{}','{}','{}','{}',{},{})",
        bank, branch.Codigo, branch.Nombre, branch.Direccion, branch.Poblacion, branch.CodigoPostal, branch.IDProvincia,
        branch.IDPais);
  }

  void UpdateBranch(const cSucursal& branch) {
    // Intended: no blank stands between the last identifier and WHERE.
    Execute(
        u"UPDATE Sucursales SET Codigo='{}',Nombre='{}',Direccion='{}',Poblacion='{}',CP='{}',codProvincia={},"
        u"codPais={}WHERE Sucursales.IDSucursal={}",
        branch.Codigo, branch.Nombre, branch.Direccion, branch.Poblacion, branch.CodigoPostal, branch.IDProvincia,
        branch.IDPais, branch.IDSucursal);
  }

  void Show(const std::shared_ptr<cSucursal>& branch) {
    m_model->Refresh();
    SelectRow(m_model->RowOf(branch));
  }

  // The selected branch; null, and the user told, when there is none.
  std::shared_ptr<cSucursal> DemandSelection() {
    const QModelIndexList rows = ui.msgSucursales->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
      Refuse(nullptr, 1103, vbExclamation);
      return nullptr;
    }
    return m_model->At(rows.first().row());
  }

  void SelectRow(int row) { HostServices::Fresh().SeleccionarFila(ui.msgSucursales, row); }

  // Branches that are not in the database yet count down from -1.
  qint32 NextTemporaryId() const {
    qint32 lowest = 0;
    for (const std::shared_ptr<cSucursal>& branch : m_branches) {
      lowest = std::min(lowest, branch->IDSucursal);
    }
    return lowest - 1;
  }

  BranchCollection m_branches;
  BranchModel* m_model = nullptr;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmBanco() {
  return std::make_unique<frmBanco>();
}

}  // namespace banking
