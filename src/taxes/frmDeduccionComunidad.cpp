#include "framework/ControlSetup.h"
#include "taxes/Dialogs.h"
#include "ui_frmDeduccionComunidad.h"

using namespace framework;
using namespace Qt::StringLiterals;

namespace taxes {
namespace {

const FormCard card{.name = u"frmDeduccionComunidad"_s,
                    .lock = u"IDDeduccion_Comunidad"_s,
                    .prompt = 6104,
                    .accept = u"cmdAceptar_Click"_s};

/// Adds or edits one percentage that a community lets donors deduct. The same pair may be there twice.
class frmDeduccionComunidad final : public FormOn<Ui::frmDeduccionComunidad> {
 public:
  frmDeduccionComunidad() : FormOn(card) {}

 private:
  void Connect() override {
    On(ui.cmdComunidad, &QToolButton::clicked, [this] {
      Trap(u"cmdComunidad_Click"_s,
           [this] { OpenNested(CreateFrmComunidadAutonoma(), {}, [this](qint32 id) { RellenarComunidades(id); }); });
    });
    On(ui.cmdDeduccion, &QToolButton::clicked, [this] {
      Trap(u"cmdDeduccion_Click"_s,
           [this] { OpenNested(CreateFrmTipoDeduccion(), {}, [this](qint32 id) { RellenarDeducciones(id); }); });
    });
    Buttons(ui.cmdAceptar, ui.cmdCancelar);
  }

  bool LoadRecord() override {
    if (!IsModify()) {
      SetCaption(LoadResString(6103));
      RellenarComunidades(0);
      RellenarDeducciones(0);
      return true;
    }
    const auto rs = Execute(
        u"SELECT Deduccion_Comunidad.CodComunidad AS CodComunidad,Deduccion_Comunidad.CodDeduccion AS CodDeduccion, "
        u"ComunidadAutonoma.Nombre AS Nombre FROM Deduccion_Comunidad INNER JOIN ComunidadAutonoma  "
        u"ON Deduccion_Comunidad.CodComunidad=ComunidadAutonoma.IDComunidad "
        u"WHERE Deduccion_Comunidad.IDDeduccion_Comunidad={}",
        Id());
    RellenarComunidades(IdOrZero(rs->Field(u"CodComunidad")));
    RellenarDeducciones(IdOrZero(rs->Field(u"CodDeduccion")));
    SetCaption(LoadResString(6102) + Text(rs->Field(u"Nombre")));
    LockRecord();
    return true;
  }

  void RellenarComunidades(qint32 selected) {
    FillCombo(ui.cboComunidad, u"Nombre", u"IDComunidad", selected,
              u"SELECT IDComunidad,Nombre FROM ComunidadAutonoma WHERE Eliminado=0");
  }

  void RellenarDeducciones(qint32 selected) {
    FillCombo(ui.cboDeduccion, u"Porcentaje", u"IDTipoDeduccion", selected,
              u"SELECT TipoDeducciones.IDTipoDeduccion,TipoDeducciones.Porcentaje FROM TipoDeducciones "
              u"WHERE Eliminado=0  ORDER BY Porcentaje");
  }

  bool Validate() override {
    if (ui.cboComunidad->currentIndex() < 0) {
      return Refuse(ui.cboComunidad, 6100, vbInformation);
    }
    return ui.cboDeduccion->currentIndex() >= 0 || Refuse(ui.cboDeduccion, 6101, vbInformation);
  }

  bool Write() override {
    const qint32 community = ItemData(ui.cboComunidad);
    const qint32 deduction = ItemData(ui.cboDeduccion);
    if (IsModify()) {
      Execute(u"UPDATE Deduccion_Comunidad SET CodComunidad={},CodDeduccion={} WHERE IDDeduccion_Comunidad={}",
              community, deduction, Id());
    } else {
      Execute(u"INSERT INTO Deduccion_Comunidad(CodComunidad,CodDeduccion) VALUES({},{})", community, deduction);
    }
    return true;
  }
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmDeduccionComunidad() {
  return std::make_unique<frmDeduccionComunidad>();
}

}  // namespace taxes
