#include "letters/Dialogs.h"
#include "ui_frmEncabezado.h"

using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {
namespace {

const FormCard card{.name = u"frmEncabezado"_s,
                    .prompt = 9101,
                    .errors = ErrorReport{.procedure = u"CargarDatosBD"_s},
                    .accept = u"cmdEncabezado_Click"_s};

/// Rewords the salutation of one type of collaborator. The types are fixed, so it only edits, whatever the action, and
/// takes no lock.
class frmEncabezado final : public FormOn<Ui::frmEncabezado> {
 public:
  frmEncabezado() : FormOn(card) {}

 private:
  void Connect() override {
    SelectTextOnFocus(ui.txtEncabezado);
    Buttons(ui.cmdEncabezado_0, ui.cmdEncabezado_1);
  }

  bool LoadRecord() override {
    const auto rs = Execute(
        u"SELECT Encabezados.IDEncabezado, Encabezados.Nombre, Encabezados.codDescripcion, Encabezados.Descripcion "
        u"FROM Encabezados WHERE Encabezados.IDEncabezado={}",
        Id());
    ui.lblDescripcion->setText(Text(rs->Field(u"DESCRIPCION")));
    ui.txtEncabezado->setText(Text(rs->Field(u"NOMBRE")));
    return true;
  }

  bool Validate() override {
    return !ui.txtEncabezado->text().trimmed().isEmpty() || Refuse(ui.txtEncabezado, 9100, vbExclamation);
  }

  bool Write() override {
    Execute(u"UPDATE Encabezados SET Nombre='{}' WHERE Encabezados.IDEncabezado={}", ui.txtEncabezado->text().trimmed(),
            Id());
    return true;
  }
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmEncabezado() {
  return std::make_unique<frmEncabezado>();
}

}  // namespace letters
