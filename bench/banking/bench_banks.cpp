// Opening a bank of 10,000 branches, and saving it with 5,000 changed ones, beside the same statements through the
// engine's C interface.

#include "banking/BranchModel.h"
#include "banking/Dialogs.h"
#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "framework/HostServices.h"
#include "host/services/Session.h"
#include "host/services/cPrincipal.h"
#include "platform/adodb/Statement.h"
#include "support/Race.h"

#include <QApplication>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>

using adodb::Execute;
using namespace Qt::StringLiterals;

namespace {

constexpr int branches = 10000;
constexpr int changed = 5000;
constexpr int rounds = 7;

class Office {
 public:
  Office() {
    database::PrepareDatabase(m_text, database::Content::Reference);
    m_connection = database::CreateConnection(m_text);
    m_connection->Open();
    m_connection->BeginTrans();
    Execute(*m_connection, u"INSERT INTO Bancos(Numero,Nombre) VALUES('9999','Grande')");
    m_bank = Execute(*m_connection, u"SELECT MAX(IDBanco) AS N FROM Bancos")->Field(u"N").toInt();
    for (int i = 0; i < branches; ++i) {
      const QString number = QString::number(i);
      Execute(*m_connection,
              u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Direccion,Poblacion,CP,codProvincia,codPais) "
              u"VALUES({0},'{1}','Oficina {2}','Calle de la Constitución, {2}','Alcalá','28801',28,35)",
              m_bank, number.rightJustified(4, u'0'), number);
    }
    m_connection->CommitTrans();
    m_session.connection = m_connection.get();
    m_session.settingsFile = m_folder.filePath(u"ajustes.ini"_s);
    m_session.showRefusedLocks = false;
    host::RegisterClasses(m_session);
    m_services = std::make_unique<host::cPrincipal>(m_session);
    m_services->setProperty("Accion", 2);
    m_services->setProperty("IDSeleccionado", m_bank);
    objApi() = HostServices(m_services.get());
    m_native = std::make_unique<database::SqliteHandle>(database::ConnectionString(m_text),
                                                        database::SqliteHandle::Missing::Refuse);
  }

  void OpenByDialog() const {
    const auto dialog = CreateFrmBanco();
    dialog->Load();
    dialog->Unload();
  }

  void ReadByCInterface() const {
    const QByteArray text =
        "SELECT Sucursales.IDSucursal, Sucursales.Nombre AS Sucursal, Sucursales.Codigo, Sucursales.Direccion, "
        "Sucursales.Poblacion, Sucursales.CP, Sucursales.codProvincia, Provincias.Nombre AS Provincia, "
        "Sucursales.codPais, Paises.Nombre AS Pais FROM (Sucursales LEFT JOIN Paises ON "
        "Sucursales.codPais=Paises.IDPais) LEFT JOIN Provincias ON Sucursales.codProvincia=Provincias.IDProvincia "
        "WHERE Sucursales.Eliminado=0 AND (Paises.Eliminado=0 OR Paises.Eliminado IS NULL) AND "
        "(Provincias.Eliminado=0 OR Provincias.Eliminado IS NULL) AND Sucursales.codBanco=" +
        QByteArray::number(m_bank) + " ORDER BY Sucursales.Codigo ASC";
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(m_native->Engine(), text.constData(), -1, &statement, nullptr));
    qsizetype characters = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int column = 0; column < 10; ++column) {
        characters += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                                        sqlite3_column_bytes(statement, column))
                          .size();
      }
    }
    sqlite3_finalize(statement);
    if (characters == 0) {
      std::abort();
    }
  }

  // The dialog with 5,000 branches edited, as the branch dialog leaves them.
  std::unique_ptr<MaintenanceForm> Edited() const {
    std::unique_ptr<MaintenanceForm> dialog = CreateFrmBanco();
    dialog->Load();
    const auto* model = static_cast<const BranchModel*>(dialog->findChild<QTableView*>(u"msgSucursales"_s)->model());
    for (int row = 0; row < changed; ++row) {
      model->At(row)->Estado = 2;
    }
    return dialog;
  }

  static void SaveByDialog(MaintenanceForm& dialog) { dialog.findChild<QPushButton*>(u"cmdBanco_3"_s)->click(); }

  void SaveByCInterface(const MaintenanceForm& dialog) const {
    const auto* model = static_cast<const BranchModel*>(dialog.findChild<QTableView*>(u"msgSucursales"_s)->model());
    Run("BEGIN IMMEDIATE");
    Run("UPDATE Bancos SET Numero='9999',Nombre='Grande' WHERE IDBanco=" + QByteArray::number(m_bank));
    for (int row = 0; row < changed; ++row) {
      const cSucursal& branch = *model->At(row);
      Run(adodb::StatementText(
              u"UPDATE Sucursales SET Codigo='{}',Nombre='{}',Direccion='{}',Poblacion='{}',CP='{}',codProvincia={},"
              u"codPais={} WHERE Sucursales.IDSucursal={}",
              branch.Codigo, branch.Nombre, branch.Direccion, branch.Poblacion, branch.CodigoPostal, branch.IDProvincia,
              branch.IDPais, branch.IDSucursal)
              .toUtf8());
    }
    Run("COMMIT");
  }

 private:
  void Check(int code) const {
    if (code != SQLITE_OK) {
      std::fprintf(stderr, "%s\n", sqlite3_errmsg(m_native->Engine()));
      std::exit(1);
    }
  }
  void Run(const QByteArray& text) const {
    Check(sqlite3_exec(m_native->Engine(), text.constData(), nullptr, nullptr, nullptr));
  }

  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(u"kel.db"_s));
  std::unique_ptr<adodb::Connection> m_connection;
  std::unique_ptr<database::SqliteHandle> m_native;
  host::Session m_session;
  std::unique_ptr<host::cPrincipal> m_services;
  int m_bank = 0;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const Office office;
  std::vector<bench::Contestant> opening{
      {"the dialog: load, lock, grid, change tracking, unload", [&] { office.OpenByDialog(); }},
      {"the rows through the C interface", [&] { office.ReadByCInterface(); }},
  };
  bench::Race(opening, rounds);
  bench::Report("Opening a bank with 10,000 branches", opening, {2.0});

  std::vector<std::unique_ptr<MaintenanceForm>> edited;
  for (int i = 0; i < rounds; ++i) {
    edited.push_back(office.Edited());
  }
  const auto kept = office.Edited();
  std::vector<bench::Contestant> saving{
      {"Accept",
       [&] {
         Office::SaveByDialog(*edited.back());
         edited.pop_back();
       }},
      {"the statements through the C interface", [&] { office.SaveByCInterface(*kept); }},
  };
  bench::Race(saving, rounds);
  bench::Report("Saving it with 5,000 changed branches", saving, {2.0});
  return 0;
}
