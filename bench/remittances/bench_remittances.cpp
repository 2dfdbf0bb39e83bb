// Opening a presenter among 3,000 banks and 40,000 branches, and an issuer among 5,000 presenters, until the dialog is
// painted, and choosing another bank, beside the same statements through the engine's C interface.

#include "platform/adodb/Statement.h"
#include "remittances/Dialogs.h"
#include "support/FirstPaint.h"
#include "support/Office.h"
#include "support/Race.h"

#include <QApplication>
#include <QComboBox>

using adodb::Execute;
using namespace framework;
using namespace Qt::StringLiterals;

namespace {

constexpr int banks = 3000;
constexpr int branches = 40000;
constexpr int presenters = 5000;
constexpr int chosen = 200;
constexpr int rounds = 15;

// Names that do not come in the order of their keys.
QString Name(const QString& kind, int i) {
  static const QString words[] = {u"Ahorro"_s, u"Comercial"_s, u"del Norte"_s, u"Ñandú"_s, u"Rural"_s, u"Único"_s};
  return u"%1 %2 %3"_s.arg(kind, words[i * 7 % 6]).arg(i * 7919 % 10007);
}

class PartyOffice : public bench::Office {
 public:
  PartyOffice() {
    Connection().BeginTrans();
    for (int i = 0; i < banks; ++i) {
      Execute(Connection(), u"INSERT INTO Bancos(Numero,Nombre) VALUES('{}','{}')",
              QString::number(i).rightJustified(4, u'0'), Name(u"Banco"_s, i));
    }
    for (int i = 0; i < branches; ++i) {
      Execute(Connection(), u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES({},'{}','{}')", i % banks + 1,
              QString::number(i / banks).rightJustified(4, u'0'), Name(u"Oficina"_s, i));
    }
    for (int i = 0; i < presenters; ++i) {
      Execute(Connection(),
              u"INSERT INTO Presentadores(Nombre,Nif,Sufijo,CodBanco,CodSucursal) VALUES('{}','A11111119','000',{},{})",
              Name(u"Presentador"_s, i), i % banks + 1, i % banks + 1);
    }
    Execute(
        Connection(),
        u"INSERT INTO Emisores(Nombre,Cif,Sufijo,CodPresentador,CodProvincia) VALUES('Uno','A11111119','000',1,28)");
    Connection().CommitTrans();
    Select(1);
  }

  // Until it is painted; what its end costs is not measured.
  static double Open(std::unique_ptr<MaintenanceForm> (*create)()) {
    const std::function<void()> open = [create] { create()->ShowModal(); };
    return bench::FirstPaint::Measure(open).clock;
  }

  void ReadPresenter() const {
    ReadNative("SELECT IDBanco,Nombre FROM Bancos WHERE Eliminado=0 ORDER BY Nombre");
    ReadNative("SELECT Nombre,Nif,Sufijo,CodBanco,CodSucursal FROM Presentadores WHERE IDPresentador=1");
    ReadNative("SELECT Numero FROM Bancos WHERE IDBanco=1");
    ReadBranches(1);
    ReadNative("SELECT Codigo FROM Sucursales WHERE IDSucursal=1");
    Lock("IDPresentador");
  }

  void ReadIssuer() const {
    ReadNative(
        "SELECT Presentadores.IDPresentador, Presentadores.Nombre, Bancos.Nombre As Banco FROM Presentadores INNER "
        "JOIN Bancos ON Presentadores.codBanco=Bancos.IDBanco WHERE Presentadores.Eliminado=0 ORDER BY "
        "Presentadores.Nombre");
    ReadNative("SELECT IDPais,Nombre FROM Paises WHERE Eliminado=0 ORDER BY Nombre");
    ReadNative(
        "SELECT Emisores.Nombre AS Emisor,Cif,Sufijo,CodPresentador,Direccion,Poblacion,CodProvincia,CP,CodPais FROM "
        "Emisores LEFT JOIN Provincias ON Emisores.CodProvincia=Provincias.IDProvincia WHERE IDEmisor=1");
    // Once for the country that is selected, once for the province.
    for (int i = 0; i < 2; ++i) {
      ReadNative("SELECT IDProvincia,Nombre FROM Provincias WHERE Eliminado=0 AND CodPais=35 ORDER BY Nombre");
    }
    Lock("IDEmisor");
  }

  void ReadBranches(int bank) const {
    ReadNative("SELECT IDSucursal,Nombre FROM Sucursales WHERE Eliminado=0 AND codBanco=" + QByteArray::number(bank) +
               " ORDER BY Nombre");
  }

  /// What a dialog does when it ends.
  void Release() const { Native().Run("DELETE FROM BloqueoRegistros"); }

 private:
  void Lock(const QByteArray& keyColumn) const {
    Native().Value(
        "SELECT codUsuario, Usuario, Equipo, Proceso, InicioProceso, Desde FROM BloqueoRegistros WHERE "
        "campoID='" +
        keyColumn + "' AND ValorID=1");
    Native().Run("INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID) VALUES (1, '" + keyColumn + "', 1)");
  }
};

void RaceOfOpening(const char* what, const PartyOffice& office, std::unique_ptr<MaintenanceForm> (*create)(),
                   void (PartyOffice::*read)() const) {
  std::vector<bench::Contestant> contestants{{"the dialog: load, lock, painted", {}},
                                             {"its statements through the C interface", [&] { (office.*read)(); }}};
  for (int round = 0; round < rounds; ++round) {
    contestants[0].milliseconds.push_back(PartyOffice::Open(create));
    contestants[1].milliseconds.push_back(bench::Milliseconds(contestants[1].work));
    office.Release();
  }
  bench::Report(what, contestants, {2.0});
}

void RaceOfChoosing(const PartyOffice& office) {
  const std::unique_ptr<MaintenanceForm> dialog = remittances::CreateFrmPresentador();
  dialog->Load();
  auto* list = dialog->findChild<QComboBox*>(u"cboBancos"_s);
  int row = 0;
  const auto choose = [&] {
    for (int i = 0; i < chosen; ++i) {
      row = (row + 7) % banks;
      list->setCurrentIndex(row);
    }
  };
  int bank = 0;
  const auto read = [&] {
    for (int i = 0; i < chosen; ++i) {
      bank = (bank + 7) % banks;
      office.ReadBranches(bank + 1);
    }
  };
  std::vector<bench::Contestant> contestants{{"the list: number and branches follow", choose},
                                             {"their branches through the C interface", read}};
  bench::Race(contestants, rounds);
  bench::Report("Choosing 200 other banks", contestants, {2.0});
  dialog->Unload();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const PartyOffice office;
  RaceOfOpening("Opening a presenter among 3,000 banks and 40,000 branches", office, remittances::CreateFrmPresentador,
                &PartyOffice::ReadPresenter);
  RaceOfOpening("Opening an issuer among 5,000 presenters", office, remittances::CreateFrmEmisor,
                &PartyOffice::ReadIssuer);
  RaceOfChoosing(office);
  return 0;
}
