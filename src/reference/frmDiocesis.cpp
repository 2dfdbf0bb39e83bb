#include "framework/ControlSetup.h"
#include "reference/Dialogs.h"
#include "ui_frmDiocesis.h"

using namespace framework;
using namespace Qt::StringLiterals;

namespace reference {
namespace {

const FormCard card{.name = u"frmDiocesis"_s, .lock = u"IDDiocesis"_s, .prompt = 7104};

/// Adds or edits one diocese. Under the action `Nuevo` the caller may fix its province in `IDAux`.
class frmDiocesis final : public FormOn<Ui::frmDiocesis> {
 public:
  frmDiocesis() : FormOn(card) {}

 private:
  void Connect() override {
    ui.lblProvinciaFija->hide();
    // What is stored when no province is chosen.
    ui.cboProvincia->setPlaceholderText(LoadResString(7103));
    On(ui.cmdNProvincia, &QToolButton::clicked,
       [this] { OpenNested(CreateFrmProvincia(), {}, [this](qint32 id) { CargarProvincias(id); }); });
    SelectTextOnFocus(ui.txtDiocesis);
    Buttons(ui.cmdDiocesis_0, ui.cmdDiocesis_1);
  }

  bool LoadRecord() override {
    SetCaption(LoadResString(7101));
    CargarProvincias(0);
    if (IsModify()) {
      LoadDiocese();
    } else if (IsNuevo() && objApi().IDAuxNumber() != 0) {
      ShowFixedProvince();
    }
    return true;
  }

  void LoadDiocese() {
    const auto rs = Execute(
        u"SELECT Diocesis.Nombre AS Diocesis,Diocesis.CodProvincia AS CodProvincia,Provincias.Nombre AS Provincia "
        u"FROM Diocesis LEFT JOIN Provincias ON Diocesis.CodProvincia=Provincias.IDProvincia "
        u"WHERE Diocesis.IDDiocesis={} AND Diocesis.Eliminado=0",
        Id());
    const QString name = Text(rs->Field(u"Diocesis"));
    ui.txtDiocesis->setText(name);
    ui.cboProvincia->setCurrentIndex(ui.cboProvincia->findData(IdOrZero(rs->Field(u"CodProvincia"))));
    LockRecord();
    SetCaption(LoadResString(7102) + name);
  }

  void ShowFixedProvince() {
    const auto rs = Execute(u"SELECT Nombre FROM Provincias WHERE IDProvincia={}", objApi().IDAuxNumber());
    ui.lblProvinciaFija->setText(rs->AtEnd() ? LoadResString(7103) : Text(rs->Field(u"Nombre")));
    ui.cboProvincia->hide();
    ui.cmdNProvincia->hide();
    ui.lblProvinciaFija->show();
  }

  void CargarProvincias(qint32 selected) {
    FillCombo(ui.cboProvincia, u"Nombre", u"IDProvincia", selected,
              u"SELECT * FROM Provincias WHERE Eliminado=0 ORDER BY Nombre");
  }

  void OnActivate() override {
    if (ui.cboProvincia->isVisible()) {
      ui.cboProvincia->setFocus();
    }
  }

  bool Validate() override {
    return !ui.txtDiocesis->text().trimmed().isEmpty() || Refuse(ui.txtDiocesis, 7100, vbInformation);
  }

  bool Write() override {
    const QString name = ui.txtDiocesis->text().trimmed();
    if (IsModify()) {
      Execute(u"UPDATE Diocesis SET Nombre='{}', CodProvincia={} WHERE IDDiocesis={}", name, ItemData(ui.cboProvincia),
              Id());
    } else if (IsAdd()) {
      // Intended: under `Nuevo` the caller's province counts, 0 too, and not the list.
      const qint32 province = IsNuevo() ? objApi().IDAuxNumber() : ItemData(ui.cboProvincia);
      Execute(u"INSERT INTO Diocesis(Nombre,CodProvincia,Eliminado) VALUES('{}',{},0)", name, province);
      if (IsNuevo()) {
        HandBack(u"maxid", u"SELECT MAX(IDDiocesis) AS maxid FROM Diocesis");
      }
    }
    return true;
  }
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmDiocesis() {
  return std::make_unique<frmDiocesis>();
}

}  // namespace reference
