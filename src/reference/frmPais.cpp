#include "reference/Dialogs.h"
#include "ui_frmPais.h"

using namespace framework;
using namespace Qt::StringLiterals;

namespace reference {
namespace {

const FormCard card{.name = u"frmPais"_s, .lock = u"IDPais"_s, .prompt = 12104, .errors = ErrorBox{12103}};

/// Adds or edits one country.
class frmPais final : public FormOn<Ui::frmPais> {
 public:
  frmPais() : FormOn(card) {}

 private:
  void Connect() override {
    SelectTextOnFocus(ui.txtPais);
    Buttons(ui.cmdPais_0, ui.cmdPais_1);
  }

  bool LoadRecord() override {
    SetCaption(LoadResString(12101));
    if (IsModify()) {
      const auto rs = Execute(u"SELECT * FROM Paises WHERE IDPais={}", Id());
      ui.txtPais->setText(Text(rs->Field(u"nombre")));
      SetCaption(LoadResString(12102) + Text(rs->Field(u"Nombre")));
      LockRecord();
      rs->Close();
    }
    return true;
  }

  bool Validate() override {
    return !ui.txtPais->text().trimmed().isEmpty() || Refuse(ui.txtPais, 12100, vbInformation);
  }

  bool Write() override {
    const QString name = ui.txtPais->text().trimmed();
    if (IsAdd()) {
      Execute(u"INSERT INTO Paises(nombre,eliminado) VALUES('{}',0)", name);
      if (IsNuevo()) {
        HandBack(u"numero", u"SELECT MAX(IDPais) AS numero FROM Paises");
      }
    } else if (IsModify()) {
      Execute(u"UPDATE Paises SET Nombre='{}' WHERE idpais={}", name, Id());
    }
    return true;
  }
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmPais() {
  return std::make_unique<frmPais>();
}

}  // namespace reference
