// Opening a bank of 10,000 branches, and saving it with 5,000 changed ones, beside the same statements through the
// engine's C interface.

#include "banking/BancoBD.h"
#include "banking/frmBanco.h"
#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "framework/ServiciosHost.h"
#include "framework/Sql.h"
#include "host/services/Session.h"
#include "host/services/cPrincipal.h"
#include "support/Race.h"

#include <QApplication>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>

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
    m_connection->Execute(QStringLiteral("INSERT INTO Bancos(Numero,Nombre) VALUES('9999','Grande')"));
    m_bank = m_connection->Execute(QStringLiteral("SELECT MAX(IDBanco) AS N FROM Bancos"))->Field(u"N").toInt();
    for (int i = 0; i < branches; ++i) {
      m_connection->Execute(
          QStringLiteral("INSERT INTO Sucursales(codBanco,Codigo,Nombre,Direccion,Poblacion,CP,codProvincia,codPais) "
                         "VALUES(%1,'%2','Oficina %3','Calle de la Constitución, %3','Alcalá','28801',28,35)")
              .arg(m_bank)
              .arg(i, 4, 10, QLatin1Char('0'))
              .arg(i));
    }
    m_connection->CommitTrans();
    m_session.connection = m_connection.get();
    m_session.settingsFile = m_folder.filePath(QStringLiteral("ajustes.ini"));
    m_session.showRefusedLocks = false;
    host::RegisterClasses(m_session);
    m_services = std::make_unique<host::cPrincipal>(m_session);
    m_services->setProperty("Accion", 2);
    m_services->setProperty("IDSeleccionado", m_bank);
    objApi() = ServiciosHost(m_services.get());
    m_native = std::make_unique<database::SqliteHandle>(database::ConnectionString(m_text),
                                                        database::SqliteHandle::Missing::Refuse);
  }

  void OpenByDialog() const {
    frmBanco dialog;
    dialog.Load();
    dialog.Unload();
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

  // The branches as the dialog holds them, with 5,000 edited.
  ColeccionSucursales Edited() const {
    ColeccionSucursales all = BancoBD::LeerSucursales(*m_connection, m_bank);
    for (std::size_t i = 0; i < changed; ++i) {
      all[i]->Estado = 2;
    }
    return all;
  }

  void SaveByDialog(const ColeccionSucursales& all) const {
    BancoBD::ModificarBanco(*m_connection, m_bank, {QStringLiteral("9999"), QStringLiteral("Grande")}, all);
  }

  void SaveByCInterface(const ColeccionSucursales& all) const {
    Run("BEGIN IMMEDIATE");
    Run("UPDATE Bancos SET Numero='9999',Nombre='Grande' WHERE IDBanco=" + QByteArray::number(m_bank));
    for (std::size_t i = 0; i < changed; ++i) {
      const cSucursal& branch = *all[i];
      Run((QStringLiteral("UPDATE Sucursales SET Codigo='") + TextoSql(branch.Codigo) + QStringLiteral("',Nombre='") +
           TextoSql(branch.Nombre) + QStringLiteral("',Direccion='") + TextoSql(branch.Direccion) +
           QStringLiteral("',Poblacion='") + TextoSql(branch.Poblacion) + QStringLiteral("',CP='") +
           TextoSql(branch.CodigoPostal) + QStringLiteral("',codProvincia=") + QString::number(branch.IDProvincia) +
           QStringLiteral(",codPais=") + QString::number(branch.IDPais) +
           QStringLiteral(" WHERE Sucursales.IDSucursal=") + QString::number(branch.IDSucursal))
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
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(QStringLiteral("kel.db")));
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

  const ColeccionSucursales all = office.Edited();
  std::vector<bench::Contestant> saving{
      {"the bank's write", [&] { office.SaveByDialog(all); }},
      {"the statements through the C interface", [&] { office.SaveByCInterface(all); }},
  };
  bench::Race(saving, rounds);
  bench::Report("Saving it with 5,000 changed branches", saving, {2.0});
  return 0;
}
