#include "framework/KeyFilter.h"
#include "platform/automation/Conversion.h"
#include "taxes/Dialogs.h"
#include "ui_frmTipoDeduccion.h"

using adodb::Verbatim;
using namespace framework;
using namespace Qt::StringLiterals;

namespace taxes {
namespace {

constexpr double tooMuch = 101;

const FormCard card{.name = u"frmTipoDeduccion"_s,
                    .lock = u"IDTipoDeduccion"_s,
                    .prompt = 17008,
                    .errors = ErrorReport{.procedure = u"Form_Load"_s},
                    .cancel = CancelAnswer::ZeroUnderNuevo,
                    .accept = u"cmdDeduccion_Click("_s};

/// Adds or edits one percentage that donors may deduct, a whole number.
class frmTipoDeduccion final : public FormOn<Ui::frmTipoDeduccion> {
 public:
  frmTipoDeduccion() : FormOn(card) {}

 private:
  void Connect() override {
    SelectTextOnFocus(ui.txtDeduccion);
    new KeyFilter(ui.txtDeduccion, IsDigit, 0, KeyFilter::BeepOnRefusal);
    Buttons(ui.cmdDeduccion_0, ui.cmdDeduccion_1);
  }

  bool LoadRecord() override {
    if (IsAdd()) {
      SetCaption(LoadResString(17006));
    } else if (IsModify()) {
      SetCaption(LoadResString(17007));
      const auto rs = Execute(u"SELECT Porcentaje FROM TipoDeducciones WHERE IDTipoDeduccion={}", Id());
      ui.txtDeduccion->setText(Text(rs->Field(u"Porcentaje")));
      LockRecord();
    }
    return true;
  }

  bool Validate() override {
    if (ui.txtDeduccion->text().isEmpty()) {
      return Refuse(ui.txtDeduccion, 17003, vbExclamation);
    }
    if (IsTaken()) {
      return Refuse(ui.txtDeduccion, 17004, vbExclamation);
    }
    return automation::Val(ui.txtDeduccion->text()) < tooMuch || Refuse(ui.txtDeduccion, 17005, vbExclamation);
  }

  bool IsTaken() const {
    // Intended: a change is checked against deleted rows, too, an addition is not.
    const auto rs =
        IsModify()
            ? Execute(u"SELECT IDTipoDeduccion FROM TipoDeducciones WHERE Porcentaje={} AND IDTipoDeduccion <> {}",
                      Digits(), Id())
            : Execute(u"SELECT IDTipoDeduccion FROM TipoDeducciones WHERE Porcentaje={} AND Eliminado=0", Digits());
    return !rs->AtEnd();
  }

  bool Write() override { return IsModify() ? ModificarDeduccionBD() : !IsAdd() || AgregarDeduccionBD(); }

  bool AgregarDeduccionBD() {
    const QString procedure = u"AgregarDeduccionBD"_s;
    const bool added = TrapInTransaction(procedure, [this] {
      Execute(u"INSERT INTO TipoDeducciones (Porcentaje) VALUES ('{}')", ui.txtDeduccion->text());
    });
    return added && (!IsNuevo() || Trap(procedure, [this] {
             HandBack(u"IDTipoDeduccion", u"SELECT MAX(IDTipoDeduccion) AS IDTipoDeduccion FROM TipoDeducciones");
           }));
  }

  bool ModificarDeduccionBD() {
    return Trap(u"ModificarDeduccionBD"_s, [this] {
      Execute(u"UPDATE TipoDeducciones SET Porcentaje = {} WHERE IDTipoDeduccion = {}", Digits(), Id());
    });
  }

  // The text as a number of a statement; the box lets digits through only.
  Verbatim Digits() const { return {ui.txtDeduccion->text()}; }
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmTipoDeduccion() {
  return std::make_unique<frmTipoDeduccion>();
}

}  // namespace taxes
