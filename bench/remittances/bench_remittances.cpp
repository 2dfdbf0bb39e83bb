// Opening a presenter among 3,000 banks and 40,000 branches, and an issuer among 5,000 presenters, until the dialog is
// painted, and choosing another bank, beside the same statements through the engine's C interface.

#include "database/Database.h"
#include "database/sqlite/SqliteHandle.h"
#include "framework/HostServices.h"
#include "host/services/Session.h"
#include "host/services/cPrincipal.h"
#include "platform/adodb/Statement.h"
#include "remittances/Dialogs.h"
#include "support/Race.h"

#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>
#include <QTimer>

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>

using adodb::Execute;
using namespace Qt::StringLiterals;

namespace {

constexpr int banks = 3000;
constexpr int branches = 40000;
constexpr int presenters = 5000;
constexpr int rounds = 15;

// Names that do not come in the order of their keys.
QString Name(const QString& kind, int i) {
  static const QString words[] = {u"Ahorro"_s, u"Comercial"_s, u"del Norte"_s, u"Ñandú"_s, u"Rural"_s, u"Único"_s};
  return u"%1 %2 %3"_s.arg(kind, words[i * 7 % 6]).arg(i * 7919 % 10007);
}

// Unloads a form when it has been painted.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(Form& form) : m_form(form) { form.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && !m_painted) {
      m_painted = true;
      QTimer::singleShot(0, this, [this] { m_form.Unload(); });
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  Form& m_form;
  bool m_painted = false;
};

class Office {
 public:
  Office() {
    database::PrepareDatabase(m_text, database::Content::Reference);
    m_connection = database::CreateConnection(m_text);
    m_connection->Open();
    Fill();
    m_session.connection = m_connection.get();
    m_session.settingsFile = m_folder.filePath(u"ajustes.ini"_s);
    m_session.showRefusedLocks = false;
    host::RegisterClasses(m_session);
    m_services = std::make_unique<host::cPrincipal>(m_session);
    m_services->setProperty("Accion", 2);
    m_services->setProperty("IDSeleccionado", 1);
    objApi() = HostServices(m_services.get());
    m_native = std::make_unique<database::SqliteHandle>(database::ConnectionString(m_text),
                                                        database::SqliteHandle::Missing::Refuse);
  }

  // The dialog is kept: what its end costs is not measured.
  void Open(std::unique_ptr<MaintenanceForm> dialog) {
    const PaintWatch watch(*dialog);
    dialog->ShowModal();
    m_dialogs.push_back(std::move(dialog));
  }

  void ReadPresenter() const {
    Read("SELECT IDBanco,Nombre FROM Bancos WHERE Eliminado=0 ORDER BY Nombre");
    Read("SELECT Nombre,Nif,Sufijo,CodBanco,CodSucursal FROM Presentadores WHERE IDPresentador=1");
    Read("SELECT Numero FROM Bancos WHERE IDBanco=1");
    ReadBranches(1);
    Read("SELECT Codigo FROM Sucursales WHERE IDSucursal=1");
    LockAndRelease("IDPresentador");
  }

  void ReadIssuer() const {
    Read(
        "SELECT Presentadores.IDPresentador, Presentadores.Nombre, Bancos.Nombre As Banco FROM Presentadores INNER "
        "JOIN Bancos ON Presentadores.codBanco=Bancos.IDBanco WHERE Presentadores.Eliminado=0 ORDER BY "
        "Presentadores.Nombre");
    Read("SELECT IDPais,Nombre FROM Paises WHERE Eliminado=0 ORDER BY Nombre");
    Read(
        "SELECT Emisores.Nombre AS Emisor,Cif,Sufijo,CodPresentador,Direccion,Poblacion,CodProvincia,CP,CodPais FROM "
        "Emisores LEFT JOIN Provincias ON Emisores.CodProvincia=Provincias.IDProvincia WHERE IDEmisor=1");
    // Once for the country that is selected, once for the province.
    for (int i = 0; i < 2; ++i) {
      Read("SELECT IDProvincia,Nombre FROM Provincias WHERE Eliminado=0 AND CodPais=35 ORDER BY Nombre");
    }
    LockAndRelease("IDEmisor");
  }

  void ReadBranches(int bank) const {
    Read("SELECT IDSucursal,Nombre FROM Sucursales WHERE Eliminado=0 AND codBanco=" + QByteArray::number(bank) +
         " ORDER BY Nombre");
  }

 private:
  void Fill() {
    m_connection->BeginTrans();
    for (int i = 0; i < banks; ++i) {
      Execute(*m_connection, u"INSERT INTO Bancos(Numero,Nombre) VALUES('{}','{}')",
              QString::number(i).rightJustified(4, u'0'), Name(u"Banco"_s, i));
    }
    for (int i = 0; i < branches; ++i) {
      Execute(*m_connection, u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES({},'{}','{}')", i % banks + 1,
              QString::number(i / banks).rightJustified(4, u'0'), Name(u"Oficina"_s, i));
    }
    for (int i = 0; i < presenters; ++i) {
      Execute(*m_connection,
              u"INSERT INTO Presentadores(Nombre,Nif,Sufijo,CodBanco,CodSucursal) VALUES('{}','A11111119','000',{},{})",
              Name(u"Presentador"_s, i), i % banks + 1, i % banks + 1);
    }
    Execute(
        *m_connection,
        u"INSERT INTO Emisores(Nombre,Cif,Sufijo,CodPresentador,CodProvincia) VALUES('Uno','A11111119','000',1,28)");
    m_connection->CommitTrans();
  }

  void LockAndRelease(const QByteArray& keyColumn) const {
    Read("SELECT codUsuario, Usuario, Equipo, Proceso, InicioProceso, Desde FROM BloqueoRegistros WHERE campoID='" +
         keyColumn + "' AND ValorID=1");
    Read("INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID) VALUES (1, '" + keyColumn + "', 1)");
    Read("DELETE FROM BloqueoRegistros WHERE campoID='" + keyColumn + "' AND ValorID=1");
  }

  void Read(const QByteArray& text) const {
    const database::SqliteStatement statement = m_native->Prepare(text);
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
      for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
        m_characters += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column)),
                                          sqlite3_column_bytes(statement.get(), column))
                            .size();
      }
    }
  }

  QTemporaryDir m_folder;
  QString m_text = database::ConnectionStringForFile(m_folder.filePath(u"kel.db"_s));
  std::unique_ptr<adodb::Connection> m_connection;
  std::unique_ptr<database::SqliteHandle> m_native;
  host::Session m_session;
  std::unique_ptr<host::cPrincipal> m_services;
  std::vector<std::unique_ptr<MaintenanceForm>> m_dialogs;
  // What was read, so that no compiler leaves the reading out.
  mutable qsizetype m_characters = 0;
};

void Race(const char* what, std::vector<bench::Contestant> contestants) {
  bench::Race(contestants, rounds);
  bench::Report(what, contestants, {2.0});
}

void RaceOfChoosing(const Office& office) {
  const std::unique_ptr<MaintenanceForm> dialog = CreateFrmPresentador();
  dialog->Load();
  auto* list = dialog->findChild<QComboBox*>(u"cboBancos"_s);
  int row = 0;
  int bank = 0;
  Race("Choosing 200 other banks", {{"the list: number and branches follow",
                                     [&] {
                                       for (int i = 0; i < 200; ++i) {
                                         row = (row + 7) % banks;
                                         list->setCurrentIndex(row);
                                       }
                                     }},
                                    {"their branches through the C interface", [&] {
                                       for (int i = 0; i < 200; ++i) {
                                         bank = (bank + 7) % banks;
                                         office.ReadBranches(bank + 1);
                                       }
                                     }}});
  dialog->Unload();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  Office office;
  Race("Opening a presenter among 3,000 banks and 40,000 branches",
       {{"the dialog: load, lock, painted", [&] { office.Open(CreateFrmPresentador()); }},
        {"its statements through the C interface", [&] { office.ReadPresenter(); }}});
  Race("Opening an issuer among 5,000 presenters",
       {{"the dialog: load, lock, painted", [&] { office.Open(CreateFrmEmisor()); }},
        {"its statements through the C interface", [&] { office.ReadIssuer(); }}});
  RaceOfChoosing(office);
  return 0;
}
