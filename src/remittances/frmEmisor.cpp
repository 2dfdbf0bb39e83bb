#include "framework/ControlSetup.h"
#include "framework/KeyFilter.h"
#include "framework/ListHelper.h"
#include "reference/Dialogs.h"
#include "remittances/Dialogs.h"
#include "remittances/PartyForm.h"
#include "ui_frmEmisor.h"

using namespace framework;
using namespace Qt::StringLiterals;

namespace remittances {
namespace {

const FormCard card{.name = u"frmEmisor"_s,
                    .lock = u"IDEmisor"_s,
                    .prompt = 8102,
                    .errors = ErrorReport{.entity = u"Emisores"_s},
                    .accept = u"cmdEmisor_Click"_s};

/// Adds or edits one issuer of remittances, with its presenter and its postal address.
class frmEmisor final : public FormOn<Ui::frmEmisor, PartyForm> {
 public:
  frmEmisor() : FormOn(card) {}

 private:
  void Connect() override {
    SelectTextOnFocus(ui.txtNombre, ui.txtNIF, ui.txtSufijo, ui.txtDireccion, ui.txtPoblacion, ui.txtCP);
    new KeyFilter(ui.txtSufijo, IsDigit, suffixLength, KeyFilter::BeepOnRefusal);
    PadSuffixOnLeave(ui.txtSufijo);
    new KeyFilter(ui.txtCP, IsDigit, 0, KeyFilter::NoOptions);
    OnChosen(ui.cboPaises, Trapped(u"cboPaises_Click"_s, [this] { FillProvinces(ItemData(ui.cboPaises), {}); }));
    CouplePostcode(ui.txtCP, ui.cboProvincias);
    On(ui.cmdNPresentador, &QToolButton::clicked, Trapped(u"cmdNPresentador_Click"_s, [this] { CreatePresenter(); }));
    On(ui.cmdNPais, &QToolButton::clicked, Trapped(u"cmdNPais_Click"_s, [this] { CreateCountry(); }));
    On(ui.cmdNProvincia, &QToolButton::clicked, Trapped(u"cmdNProvincia_Click"_s, [this] { CreateProvince(); }));
    Buttons(ui.cmdEmisor_0, ui.cmdEmisor_1);
  }

  bool LoadRecord() override {
    m_lists.emplace();
    FillPresenters();
    m_lists->RellenarComboPais(ui.cboPaises);
    if (IsAdd()) {
      SetCaption(LoadResString(8115));
      ChooseCountryAndProvince();
    } else if (IsModify()) {
      SetCaption(LoadResString(8116));
      LoadIssuer();
      LockRecord();
    }
    return true;
  }

  void FillPresenters() {
    const auto text = [](adodb::Recordset& row) {
      return Text(row.Field(u"Nombre")) + u" - "_s + Text(row.Field(u"banco"));
    };
    FillCombo(ui.cboPresentadores, text, u"IDPresentador", 0,
              u"SELECT Presentadores.IDPresentador, Presentadores.Nombre, Bancos.Nombre As Banco FROM Presentadores "
              u"INNER JOIN Bancos ON Presentadores.codBanco=Bancos.IDBanco WHERE Presentadores.Eliminado=0 "
              u"ORDER BY Presentadores.Nombre");
  }

  void FillProvinces(qint32 country, const QVariant& selected) {
    m_lists->RellenarComboProvincias(ui.cboProvincias, country, selected);
  }

  // A database without the country, or without the province, starts with none.
  void ChooseCountryAndProvince() {
    const qint32 country =
        IdOrZero(LookUp(u"idpais", u"SELECT idpais FROM paises WHERE eliminado=false AND ucase(Nombre)='{}'",
                        LoadResString(8100).toUpper()));
    if (country == 0) {
      return;
    }
    // Its being chosen fills the list of provinces.
    m_lists->LocalizarElementoLista(ui.cboPaises, country);
    const QVariant province =
        LookUp(u"IDProvincia",
               u"SELECT IDProvincia FROM Provincias WHERE Eliminado=false AND Ucase(Nombre)='{}' AND CodPais={}",
               LoadResString(8101).toUpper(), country);
    m_lists->LocalizarElementoLista(ui.cboProvincias, province);
  }

  void LoadIssuer() {
    const auto rs = Execute(
        u"SELECT Emisores.Nombre AS Emisor,Cif,Sufijo,CodPresentador,Direccion,Poblacion,CodProvincia,CP,CodPais "
        u"FROM Emisores LEFT JOIN Provincias ON Emisores.CodProvincia=Provincias.IDProvincia WHERE IDEmisor={}",
        Id());
    ui.txtNombre->setText(Text(rs->Field(u"Emisor")));
    ui.txtNIF->setText(Text(rs->Field(u"Cif")));
    ui.txtSufijo->setText(Text(rs->Field(u"Sufijo")));
    ui.txtDireccion->setText(Text(rs->Field(u"Direccion")));
    ui.txtPoblacion->setText(Text(rs->Field(u"Poblacion")));
    ui.txtCP->setText(Text(rs->Field(u"CP")));
    const QVariant country = rs->Field(u"CodPais");
    m_lists->LocalizarElementoLista(ui.cboPresentadores, rs->Field(u"Codpresentador"));
    m_lists->LocalizarElementoLista(ui.cboPaises, country);
    FillProvinces(IdOrZero(country), rs->Field(u"CodProvincia"));
  }

  void CreatePresenter() {
    OpenNested(CreateFrmPresentador(), {}, [this](qint32 id) {
      FillPresenters();
      m_lists->LocalizarElementoLista(ui.cboPresentadores, id);
    });
  }

  void CreateCountry() {
    OpenNested(reference::CreateFrmPais(), {}, [this](qint32 id) { m_lists->RellenarComboPais(ui.cboPaises, id); });
  }

  void CreateProvince() {
    // Intended: the first country of the list counts as none.
    if (ui.cboPaises->currentIndex() <= 0) {
      Refuse(ui.cboPaises, 8114, vbInformation);
      return;
    }
    const qint32 country = ItemData(ui.cboPaises);
    OpenNested(reference::CreateFrmProvincia(), {.idAux = country}, [this, country](qint32 id) {
      FillProvinces(country, id);
      ui.cboProvincias->setFocus();
    });
  }

  bool Validate() override {
    bool incomplete = ui.cboPresentadores->currentIndex() < 0;
    for (const QLineEdit* box : {ui.txtNombre, ui.txtNIF, ui.txtSufijo}) {
      incomplete |= box->text().trimmed().isEmpty();
    }
    if (incomplete) {
      // Intended: the focus goes to the name, whichever field is missing.
      return Refuse(ui.txtNombre, 8103, vbInformation);
    }
    return IsTaxIdentifierAccepted(ui.txtNIF) &&
           IsSuffixAccepted(ui.txtSufijo, {.owners = u"SELECT idemisor FROM emisores WHERE sufijo='{}'",
                                           .stored = u"SELECT sufijo FROM emisores WHERE idemisor={}",
                                           .questionOnAdd = 8112,
                                           .questionOnModify = 8113});
  }

  bool Write() override {
    const QString name = ui.txtNombre->text().trimmed();
    const QString taxIdentifier = ui.txtNIF->text().trimmed();
    const QString suffix = ui.txtSufijo->text().trimmed();
    const QString address = ui.txtDireccion->text().trimmed();
    const QString town = ui.txtPoblacion->text().trimmed();
    const QString postcode = ui.txtCP->text().trimmed();
    const qint32 presenter = ItemData(ui.cboPresentadores);
    const qint32 province = ItemData(ui.cboProvincias);
    if (IsAdd()) {
      Execute(
          u"INSERT INTO Emisores(Nombre,Cif,Sufijo,CodPresentador,Direccion,Poblacion,CodProvincia,CP) "
          u"VALUES('{}','{}','{}',{},'{}','{}',{},'{}')",
          name, taxIdentifier, suffix, presenter, address, town, province, postcode);
      if (IsNuevo()) {
        HandBack(u"numero", u"SELECT MAX(IDEmisor) AS numero FROM Emisores");
      }
    } else if (IsModify()) {
      Execute(
          u"UPDATE Emisores SET Nombre='{}',Cif='{}',Sufijo='{}',Codpresentador={},Direccion='{}',Poblacion='{}',"
          u"CodProvincia={},CP='{}' WHERE IDEmisor={}",
          name, taxIdentifier, suffix, presenter, address, town, province, postcode, Id());
    }
    return true;
  }

  std::optional<ListHelper> m_lists;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmEmisor() {
  return std::make_unique<frmEmisor>();
}

}  // namespace remittances
