// Opening a presenter among 3,000 banks and 40,000 branches, and an issuer among 5,000 presenters, until the dialog is
// painted, and choosing another bank, beside the same statements through the engine's C interface.

#include "platform/adodb/Statement.h"
#include "remittances/Dialogs.h"
#include "support/Office.h"
#include "support/Race.h"

#include <QApplication>
#include <QComboBox>
#include <QTimer>

using adodb::Execute;
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

  // The dialog is kept: what its end costs is not measured.
  void Open(std::unique_ptr<MaintenanceForm> dialog) {
    const PaintWatch watch(*dialog);
    dialog->ShowModal();
    m_dialogs.push_back(std::move(dialog));
  }

  void ReadPresenter() const {
    ReadNative("SELECT IDBanco,Nombre FROM Bancos WHERE Eliminado=0 ORDER BY Nombre");
    ReadNative("SELECT Nombre,Nif,Sufijo,CodBanco,CodSucursal FROM Presentadores WHERE IDPresentador=1");
    ReadNative("SELECT Numero FROM Bancos WHERE IDBanco=1");
    ReadBranches(1);
    ReadNative("SELECT Codigo FROM Sucursales WHERE IDSucursal=1");
    LockAndRelease("IDPresentador");
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
    LockAndRelease("IDEmisor");
  }

  void ReadBranches(int bank) const {
    ReadNative("SELECT IDSucursal,Nombre FROM Sucursales WHERE Eliminado=0 AND codBanco=" + QByteArray::number(bank) +
               " ORDER BY Nombre");
  }

 private:
  void LockAndRelease(const QByteArray& keyColumn) const {
    const QByteArray record = "campoID='" + keyColumn + "' AND ValorID=1";
    Native().Value("SELECT codUsuario, Usuario, Equipo, Proceso, InicioProceso, Desde FROM BloqueoRegistros WHERE " +
                   record);
    Native().Run("INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID) VALUES (1, '" + keyColumn + "', 1)");
    Native().Run("DELETE FROM BloqueoRegistros WHERE " + record);
  }

  std::vector<std::unique_ptr<MaintenanceForm>> m_dialogs;
};

void Race(const char* what, std::vector<bench::Contestant> contestants) {
  bench::Race(contestants, rounds);
  bench::Report(what, contestants, {2.0});
}

void RaceOfChoosing(const PartyOffice& office) {
  const std::unique_ptr<MaintenanceForm> dialog = CreateFrmPresentador();
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
  Race("Choosing 200 other banks",
       {{"the list: number and branches follow", choose}, {"their branches through the C interface", read}});
  dialog->Unload();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  PartyOffice office;
  Race("Opening a presenter among 3,000 banks and 40,000 branches",
       {{"the dialog: load, lock, painted", [&] { office.Open(CreateFrmPresentador()); }},
        {"its statements through the C interface", [&] { office.ReadPresenter(); }}});
  Race("Opening an issuer among 5,000 presenters",
       {{"the dialog: load, lock, painted", [&] { office.Open(CreateFrmEmisor()); }},
        {"its statements through the C interface", [&] { office.ReadIssuer(); }}});
  RaceOfChoosing(office);
  return 0;
}
