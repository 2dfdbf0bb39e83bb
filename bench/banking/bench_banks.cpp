// Opening a bank of 10,000 branches until it is painted, and saving it with 5,000 changed ones, beside the same
// statements through the engine's C interface.

#include "banking/BranchModel.h"
#include "banking/Dialogs.h"
#include "platform/adodb/Statement.h"
#include "support/Office.h"
#include "support/Race.h"

#include <QApplication>
#include <QPushButton>
#include <QTableView>

using adodb::Execute;
using namespace framework;
using namespace Qt::StringLiterals;

namespace {

constexpr int branches = 10000;
constexpr int changed = 5000;
constexpr int rounds = 15;

class BigBank {
 public:
  BigBank() {
    adodb::Connection& connection = m_office.Connection();
    connection.BeginTrans();
    Execute(connection, u"INSERT INTO Bancos(Numero,Nombre) VALUES('9999','Grande')");
    m_bank = Execute(connection, u"SELECT MAX(IDBanco) AS N FROM Bancos")->Field(u"N").toInt();
    for (int i = 0; i < branches; ++i) {
      const QString number = QString::number(i);
      Execute(connection,
              u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Direccion,Poblacion,CP,codProvincia,codPais) "
              u"VALUES({0},'{1}','Oficina {2}','Calle de la Constitución, {2}','Alcalá','28801',28,35)",
              m_bank, number.rightJustified(4, u'0'), number);
    }
    connection.CommitTrans();
    m_office.Select(m_bank);
  }

  static void OpenByDialog() {
    const auto dialog = banking::CreateFrmBanco();
    dialog->Load();
    dialog->show();
    if (dialog->grab().isNull()) {
      qFatal("nothing was painted");
    }
    dialog->Unload();
  }

  void ReadByCInterface() const {
    m_office.ReadNative(
        "SELECT Sucursales.IDSucursal, Sucursales.Nombre AS Sucursal, Sucursales.Codigo, Sucursales.Direccion, "
        "Sucursales.Poblacion, Sucursales.CP, Sucursales.codProvincia, Provincias.Nombre AS Provincia, "
        "Sucursales.codPais, Paises.Nombre AS Pais FROM (Sucursales LEFT JOIN Paises ON "
        "Sucursales.codPais=Paises.IDPais) LEFT JOIN Provincias ON Sucursales.codProvincia=Provincias.IDProvincia "
        "WHERE Sucursales.Eliminado=0 AND (Paises.Eliminado=0 OR Paises.Eliminado IS NULL) AND "
        "(Provincias.Eliminado=0 OR Provincias.Eliminado IS NULL) AND Sucursales.codBanco=" +
        QByteArray::number(m_bank) + " ORDER BY Sucursales.Codigo ASC");
  }

  // The dialog with 5,000 branches edited, as the branch dialog leaves them.
  static std::unique_ptr<MaintenanceForm> Edited() {
    std::unique_ptr<MaintenanceForm> dialog = banking::CreateFrmBanco();
    dialog->Load();
    const auto* model =
        static_cast<const banking::BranchModel*>(dialog->findChild<QTableView*>(u"msgSucursales"_s)->model());
    for (int row = 0; row < changed; ++row) {
      model->At(row)->Estado = 2;
    }
    return dialog;
  }

  static void SaveByDialog(MaintenanceForm& dialog) { dialog.findChild<QPushButton*>(u"cmdBanco_3"_s)->click(); }

  void SaveByCInterface(const MaintenanceForm& dialog) const {
    const auto* model =
        static_cast<const banking::BranchModel*>(dialog.findChild<QTableView*>(u"msgSucursales"_s)->model());
    const database::SqliteHandle& native = m_office.Native();
    native.Run("BEGIN IMMEDIATE");
    native.Run("UPDATE Bancos SET Numero='9999',Nombre='Grande' WHERE IDBanco=" + QByteArray::number(m_bank));
    for (int row = 0; row < changed; ++row) {
      const banking::cSucursal& branch = *model->At(row);
      native.Run(
          adodb::StatementText(
              u"UPDATE Sucursales SET Codigo='{}',Nombre='{}',Direccion='{}',Poblacion='{}',CP='{}',codProvincia={},"
              u"codPais={} WHERE Sucursales.IDSucursal={}",
              branch.Codigo, branch.Nombre, branch.Direccion, branch.Poblacion, branch.CodigoPostal, branch.IDProvincia,
              branch.IDPais, branch.IDSucursal)
              .toUtf8());
    }
    native.Run("COMMIT");
  }

 private:
  bench::Office m_office;
  int m_bank = 0;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const BigBank bank;
  std::vector<bench::Contestant> opening{
      {"the dialog: load, lock, grid, change tracking, painting, unload", BigBank::OpenByDialog},
      {"the rows through the C interface", [&] { bank.ReadByCInterface(); }},
  };
  bench::Race(opening, rounds);
  bench::Report("Opening a bank with 10,000 branches", opening, {2.0});

  std::vector<std::unique_ptr<MaintenanceForm>> edited;
  for (int i = 0; i < rounds; ++i) {
    edited.push_back(BigBank::Edited());
  }
  const auto kept = BigBank::Edited();
  std::vector<bench::Contestant> saving{
      {"Accept",
       [&] {
         BigBank::SaveByDialog(*edited.back());
         edited.pop_back();
       }},
      {"the statements through the C interface", [&] { bank.SaveByCInterface(*kept); }},
  };
  bench::Race(saving, rounds);
  bench::Report("Saving it with 5,000 changed branches", saving, {2.0});
  return 0;
}
