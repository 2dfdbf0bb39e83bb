#include "framework/ControlSetup.h"
#include "framework/ListHelper.h"
#include "platform/contract/cConstNodo.h"
#include "taxes/Dialogs.h"
#include "ui_frmTipoDonativo.h"

#include <array>

using adodb::Verbatim;
using namespace framework;
using namespace Qt::StringLiterals;

namespace taxes {
namespace {

constexpr int administrator = 1;

const FormCard card{.name = u"frmTipoDonativo"_s,
                    .lock = u"IDTipoDonativo"_s,
                    .prompt = 18104,
                    .errors = ErrorReport{.procedure = u"Form_Load()"_s},
                    .cancel = CancelAnswer::ZeroUnderNuevo,
                    .accept = u"cmdTipoDonativo_click("_s};

/// Adds or edits one purpose of donations: the percentages that donors may deduct, the receipt's text, the tax return.
class frmTipoDonativo final : public FormOn<Ui::frmTipoDonativo> {
 public:
  frmTipoDonativo() : FormOn(card) {}

 private:
  void Connect() override {
    m_deductions = {ui.cboTipoDonativo_0, ui.cboTipoDonativo_1};
    SelectTextOnFocus(ui.txtTipoDonativo_0, ui.txtTipoDonativo_1);
    On(ui.chkRecibo, &QCheckBox::toggled, [this] { ShowWhetherReceipts(); });
    On(ui.chkTipoDonativo, &QCheckBox::toggled, [this](bool isPriority) { Propose(isPriority); });
    On(ui.cmdAgregar_0, &QToolButton::clicked, [this] { AddDeduction(0); });
    On(ui.cmdAgregar_1, &QToolButton::clicked, [this] { AddDeduction(1); });
    Buttons(ui.cmdTipoDonativo_0, ui.cmdTipoDonativo_1);
    ShowWhetherReceipts();
  }

  bool LoadRecord() override {
    m_lists.emplace();
    const bool mayAdd = objApi().TipoUsuario() == administrator;
    ui.cmdAgregar_0->setEnabled(mayAdd);
    ui.cmdAgregar_1->setEnabled(mayAdd);
    std::array<qint32, 2> selected = {};
    if (IsAdd()) {
      SetCaption(LoadResString(18102));
    } else if (IsModify()) {
      SetCaption(LoadResString(18103));
      selected = CargarTipoDonativo();
      LockRecord();
    }
    RellenarDeducciones(0, selected[0]);
    RellenarDeducciones(1, selected[1]);
    return true;
  }

  // Shows the record; the identifiers of its deductions, of individuals and of legal entities.
  std::array<qint32, 2> CargarTipoDonativo() {
    const auto rs = Execute(
        u"SELECT CodTipoDeduccionJuridica, CodTipoDeduccionFisica, Nombre, TextoRecibo, TipoA,Modelo182, GenerarRecibo "
        u"FROM TipoDonativos WHERE IDTipoDonativo = {}",
        Id());
    m_loadedReceipt = Text(rs->Field(u"TextoRecibo"));
    ui.txtTipoDonativo_0->setText(Text(rs->Field(u"Nombre")));
    ui.txtTipoDonativo_1->setText(m_loadedReceipt);
    ui.chkModelo->setChecked(IsTrue(rs->Field(u"Modelo182")));
    ui.chkRecibo->setChecked(IsTrue(rs->Field(u"GENERARRECIBO")));
    return {IdOrZero(rs->Field(u"CodTipoDeduccionFisica")), IdOrZero(rs->Field(u"CodTipoDeduccionJuridica"))};
  }

  void RellenarDeducciones(std::size_t list, qint32 selected) {
    FillCombo(m_deductions[list], u"Porcentaje", u"IDTipoDeduccion", 0,
              u"SELECT IDTipoDeduccion, Porcentaje FROM TipoDeducciones WHERE Eliminado=False");
    if (selected != 0) {
      m_lists->LocalizarElementoLista(m_deductions[list], selected);
    }
  }

  void AddDeduction(std::size_t list) {
    Trap(u"cmdAgregar_Click("_s, [this, list] {
      OpenThroughDispatcher(cConstNodo().TipoDeduccion(), [this, list](qint32 id) {
        for (std::size_t i = 0; i < m_deductions.size(); ++i) {
          RellenarDeducciones(i, i == list ? id : ItemData(m_deductions[i]));
        }
      });
    });
  }

  void ShowWhetherReceipts() {
    const bool receipts = ui.chkRecibo->isChecked();
    ui.txtTipoDonativo_1->setEnabled(receipts);
    ui.lblBloqueo->setText(receipts ? QString() : u"Bloqueado: no se generan recibos para esta finalidad."_s);
  }

  void Propose(bool isPriority) {
    Show(ui.cboTipoDonativo_0, isPriority ? u"25"_s : u"20"_s);
    Show(ui.cboTipoDonativo_1, isPriority ? u"15"_s : u"10"_s);
  }

  // A percentage that the list lacks is shown without being selected, so that Accept asks for one.
  static void Show(QComboBox* list, const QString& percentage) {
    const int index = list->findText(percentage);
    list->setPlaceholderText(index < 0 ? percentage : QString());
    list->setCurrentIndex(index);
  }

  bool Validate() override {
    for (QComboBox* list : m_deductions) {
      if (list->currentIndex() < 0) {
        return Refuse(list, 18100, vbExclamation);
      }
    }
    return !Purpose().isEmpty() || Refuse(ui.txtTipoDonativo_0, 18101, vbExclamation);
  }

  bool Write() override { return IsModify() ? ModificarTipoDonativoBD() : !IsAdd() || AgregarTipoDonativo(); }

  bool AgregarTipoDonativo() {
    return TrapInTransaction(u"AgregarTipoDonativo"_s, [this] {
      // Intended: between these quotes an apostrophe is stored doubled, and a quote ends the text.
      Execute(
          u"INSERT INTO TipoDonativos (CodTipoDeduccionJuridica, CodTipoDeduccionFisica, Nombre, TextoRecibo, TipoA, "
          u"Modelo182, GenerarRecibo) VALUES ({}, {}, \"{}\", \"{}\", -1,{},{})",
          ItemData(ui.cboTipoDonativo_1), ItemData(ui.cboTipoDonativo_0), Purpose(), Receipt(), Modelo182(),
          ui.chkRecibo->isChecked());
      if (IsNuevo()) {
        HandBack(u"IDTipoDonativo", u"SELECT MAX(IDTipoDonativo) AS IDTipoDonativo FROM TipoDonativos");
      }
    });
  }

  bool ModificarTipoDonativoBD() {
    return TrapInTransaction(u"ModificarTipoDonativoBD"_s, [this] {
      Execute(
          u"UPDATE TipoDonativos SET CodTipoDeduccionJuridica = {}, CodTipoDeduccionFisica = {}, Nombre = '{}', "
          u"TextoRecibo = '{}', TipoA = -1, Modelo182= {}, GenerarRecibo ={} WHERE IDTipoDonativo = {}",
          ItemData(ui.cboTipoDonativo_1), ItemData(ui.cboTipoDonativo_0), Purpose(), Receipt(), Modelo182(),
          ui.chkRecibo->isChecked(), Id());
      if (ui.txtTipoDonativo_1->text() != m_loadedReceipt &&
          Ask(u"Ha cambiado el texto del recibo. ¿Desea cambiarlo a todos los donativos existentes?"_s, vbYesNo) ==
              vbYes) {
        const Hourglass hourglass;
        Execute(u"UPDATE Donativos SET TextoRecibo='{}' WHERE CodTipoDonativo = {}", Receipt(), Id());
      }
    });
  }

  QString Purpose() const { return ui.txtTipoDonativo_0->text().trimmed(); }
  QString Receipt() const { return ui.txtTipoDonativo_1->text().trimmed(); }
  Verbatim Modelo182() const { return {ui.chkModelo->isChecked() ? u"True"_s : u"False"_s}; }

  std::optional<ListHelper> m_lists;
  std::array<QComboBox*, 2> m_deductions = {};
  QString m_loadedReceipt;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmTipoDonativo() {
  return std::make_unique<frmTipoDonativo>();
}

}  // namespace taxes
