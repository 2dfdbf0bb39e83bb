#include "letters/Dialogs.h"
#include "ui_frmCabecera.h"

#include <array>

using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {
namespace {

const FormCard card{
    .name = u"frmCabecera"_s, .lock = u"IDCabecera"_s, .prompt = 2103, .accept = u"cmdBotonera_Click"_s};

/// Adds or edits one header: a name and five lines.
class frmCabecera final : public FormOn<Ui::frmCabecera> {
 public:
  frmCabecera() : FormOn(card) {}

 private:
  void Connect() override {
    m_lines = {ui.txtLinea_0, ui.txtLinea_1, ui.txtLinea_2, ui.txtLinea_3, ui.txtLinea_4};
    SelectTextOnFocus(ui.txtNombre, ui.txtLinea_0, ui.txtLinea_1, ui.txtLinea_2, ui.txtLinea_3, ui.txtLinea_4);
    Buttons(ui.cmdBotonera_0, ui.cmdBotonera_1);
  }

  bool LoadRecord() override {
    if (IsModify()) {
      const auto rs = Execute(u"SELECT * FROM Cabeceras WHERE IDCabecera={} AND Eliminado=0", Id());
      const QString name = Text(rs->Field(u"Nombre"));
      ui.txtNombre->setText(name);
      for (std::size_t i = 0; i < m_lines.size(); ++i) {
        m_lines[i]->setText(Text(rs->Field(u"linea%1"_s.arg(i + 1))));
      }
      SetCaption(LoadResString(2101) + name);
      LockRecord();
    } else if (IsAdd()) {
      SetCaption(LoadResString(2102));
    }
    return true;
  }

  bool Validate() override {
    return !ui.txtNombre->text().trimmed().isEmpty() || Refuse(ui.txtNombre, 2100, vbInformation);
  }

  bool Write() override {
    const QString name = ui.txtNombre->text().trimmed();
    if (IsAdd()) {
      Execute(
          u"INSERT INTO Cabeceras(Nombre,Linea1,Linea2,Linea3,Linea4,Linea5,Eliminado) "
          u"VALUES('{}','{}','{}','{}','{}','{}',0)",
          name, Line(0), Line(1), Line(2), Line(3), Line(4));
      if (IsNuevo()) {
        HandBack(u"Maximo", u"SELECT MAX(IDCabecera) AS Maximo FROM Cabeceras WHERE Eliminado=0");
      }
    } else if (IsModify()) {
      Execute(
          u"UPDATE Cabeceras SET Linea1='{}',Linea2='{}',Linea3='{}',Linea4='{}',Linea5='{}',Nombre='{}' "
          u"WHERE IDCabecera={}",
          Line(0), Line(1), Line(2), Line(3), Line(4), name, Id());
    }
    return true;
  }

  QString Line(std::size_t i) const { return m_lines[i]->text().trimmed(); }

  std::array<QLineEdit*, 5> m_lines = {};
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmCabecera() {
  return std::make_unique<frmCabecera>();
}

}  // namespace letters
