#include "framework/KeyFilter.h"
#include "taxes/Dialogs.h"
#include "ui_frmComunidadAutonoma.h"

using namespace framework;
using namespace Qt::StringLiterals;

namespace taxes {
namespace {

const FormCard card{
    .name = u"frmComunidadAutonoma"_s, .lock = u"IDComunidad"_s, .prompt = 5104, .accept = u"cmdAceptar_Click"_s};

/// Adds or edits one autonomous community.
class frmComunidadAutonoma final : public FormOn<Ui::frmComunidadAutonoma> {
 public:
  frmComunidadAutonoma() : FormOn(card) {}

 private:
  void Connect() override {
    SelectTextOnFocus(ui.txtComunidad, ui.txtCodigo);
    new KeyFilter(ui.txtCodigo, IsDigit, 0, KeyFilter::NoOptions);
    Buttons(ui.cmdAceptar, ui.cmdCancelar);
  }

  bool LoadRecord() override {
    if (!IsModify()) {
      SetCaption(LoadResString(5103));
      return true;
    }
    const auto rs = Execute(u"SELECT Nombre,Codigo FROM ComunidadAutonoma WHERE IDComunidad={}", Id());
    const QString name = Text(rs->Field(u"Nombre"));
    ui.txtComunidad->setText(name);
    ui.txtCodigo->setText(Text(rs->Field(u"Codigo")));
    SetCaption(LoadResString(5102) + name);
    LockRecord();
    return true;
  }

  bool Validate() override {
    if (ui.txtComunidad->text().trimmed().isEmpty()) {
      return Refuse(ui.txtComunidad, 5100, vbInformation);
    }
    return !ui.txtCodigo->text().trimmed().isEmpty() || Refuse(ui.txtCodigo, 5101, vbInformation);
  }

  bool Write() override {
    const QString name = ui.txtComunidad->text().trimmed();
    const QString code = ui.txtCodigo->text().trimmed();
    if (IsModify()) {
      Execute(u"UPDATE ComunidadAutonoma SET Codigo='{}',Nombre='{}' WHERE IDComunidad={}", code, name, Id());
      return true;
    }
    Execute(u"INSERT INTO ComunidadAutonoma(Nombre,Codigo) VALUES('{}','{}')", name, code);
    if (IsNuevo()) {
      HandBack(u"Maximo", u"SELECT MAX(IDComunidad) AS Maximo FROM ComunidadAutonoma");
    }
    return true;
  }
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmComunidadAutonoma() {
  return std::make_unique<frmComunidadAutonoma>();
}

}  // namespace taxes
