#include "framework/ControlSetup.h"
#include "framework/ListHelper.h"
#include "reference/Dialogs.h"
#include "ui_frmProvincia.h"

using namespace framework;
using namespace Qt::StringLiterals;

namespace reference {
namespace {

constexpr qsizetype longestName = 50;

const FormCard card{.name = u"frmProvincia"_s, .lock = u"IDProvincia"_s, .prompt = 14104, .errors = ErrorBox{14103}};

/// Adds or edits one province. Under the action `Nuevo` the caller may fix its country in `IDAux`.
class frmProvincia final : public FormOn<Ui::frmProvincia> {
 public:
  frmProvincia() : FormOn(card) {}

 private:
  void Connect() override {
    ui.lblPaisFijo->hide();
    SelectTextOnFocus(ui.txtProvincia);
    On(ui.txtProvincia, &QLineEdit::textChanged, [this] { CutName(); });
    On(ui.cmdNuevoPais, &QToolButton::clicked,
       [this] { OpenNested(CreateFrmPais(), {}, [this](qint32 id) { m_lists->RellenarComboPais(ui.cboPais, id); }); });
    Buttons(ui.cmdProvincia_0, ui.cmdProvincia_1);
  }

  bool LoadRecord() override {
    m_lists.emplace();
    SetCaption(LoadResString(14101));
    if (IsModify()) {
      LoadProvince();
    } else if (FixedCountry() != 0) {
      ShowFixedCountry();
    } else if (IsAdd()) {
      m_lists->RellenarComboPais(ui.cboPais);
    }
    return true;
  }

  void LoadProvince() {
    const auto rs = Execute(
        u"SELECT Provincias.Nombre AS Provincia,Provincias.Codpais,Paises.Nombre AS Pais FROM Provincias "
        u"LEFT JOIN Paises ON Provincias.CodPais=Paises.IDPais WHERE IDProvincia={}",
        Id());
    m_lists->RellenarComboPais(ui.cboPais, rs->Field(u"CodPais"));
    LockRecord();
    ui.txtProvincia->setText(Text(rs->Field(u"Provincia")));
    SetCaption(LoadResString(14102) + Text(rs->Field(u"Provincia")));
  }

  void ShowFixedCountry() {
    ui.cboPais->hide();
    ui.cmdNuevoPais->hide();
    ui.lblPaisFijo->show();
    const auto rs = Execute(u"SELECT Nombre FROM Paises WHERE IDPais={} AND Eliminado=0", FixedCountry());
    ui.lblPaisFijo->setText(Text(rs->Field(u"Nombre")).trimmed());
  }

  void OnActivate() override {
    if (ui.cboPais->isVisible()) {
      ui.cboPais->setFocus();
    }
  }

  bool Validate() override {
    const bool countryMissing = ui.lblPaisFijo->isHidden() && ui.cboPais->currentIndex() < 0;
    const bool incomplete = ui.txtProvincia->text().trimmed().isEmpty() || countryMissing;
    return !incomplete || Refuse(ui.txtProvincia, 14100, vbInformation);
  }

  bool Write() override {
    const QString name = ui.txtProvincia->text().trimmed();
    if (IsModify()) {
      Execute(u"UPDATE Provincias SET Nombre='{}', CodPais={} WHERE IDProvincia={}", name, ItemData(ui.cboPais), Id());
    } else if (IsAdd()) {
      const qint32 country = FixedCountry() != 0 ? FixedCountry() : ItemData(ui.cboPais);
      Execute(u"INSERT INTO Provincias(CodPais,Nombre,eliminado) VALUES({},'{}',0)", country, name);
      if (IsNuevo()) {
        Desktop::Current().DoEvents();
        HandBack(u"maxid", u"SELECT MAX(IDProvincia) AS maxid FROM Provincias");
      }
    }
    return true;
  }

  // The country that the caller fixed, 0 for none.
  qint32 FixedCountry() const { return IsNuevo() ? objApi().IDAuxNumber() : 0; }

  void CutName() {
    const QString text = ui.txtProvincia->text();
    if (text.size() > longestName) {
      const int caret = ui.txtProvincia->cursorPosition();
      // A character outside the basic plane takes two units and is not cut in half.
      const bool half = text[longestName - 1].isHighSurrogate();
      ui.txtProvincia->setText(text.left(half ? longestName - 1 : longestName));
      ui.txtProvincia->setCursorPosition(caret);
    }
  }

  std::optional<ListHelper> m_lists;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmProvincia() {
  return std::make_unique<frmProvincia>();
}

}  // namespace reference
