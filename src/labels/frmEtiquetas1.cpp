#include "framework/KeyFilter.h"
#include "framework/Messages.h"
#include "labels/Dialogs.h"
#include "labels/FieldCollection.h"
#include "labels/FieldEditing.h"
#include "labels/FieldRows.h"
#include "labels/NumberBox.h"
#include "labels/SheetRules.h"
#include "labels/ShownSheet.h"
#include "labels/UpDown.h"
#include "platform/automation/Conversion.h"
#include "ui_frmEtiquetas1.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
#include <utility>

using adodb::Verbatim;
using documents::BoundsOf;
using documents::SheetNumber;
using namespace framework;
using namespace Qt::StringLiterals;

namespace labels {
namespace {

// No number within the bounds of a box is longer.
constexpr int longestNumber = 10;

const FormCard card{
    .name = u"frmEtiquetas1"_s, .prompt = 10016, .errors = ErrorLetOut{}, .cancel = CancelAnswer::Nothing};

bool IsDigitOrComma(QChar c) {
  return IsDigit(c) || c == u',';
}

/// Adds or edits one sheet of labels, with the rows of the fields that are printed on it. It takes no record lock and
/// uses no transaction.
class frmEtiquetas1 final : public FormOn<Ui::frmEtiquetas1> {
 public:
  frmEtiquetas1() : FormOn(card) {}

 private:
  void Connect() override {
    m_fields.Clear();
    m_loaded = {};
    m_read.reset();
    ConnectNumber(SheetNumber::Totals, ui.txtEtiquetasTotales, ui.UpDown1, [this] { OnTotalsChanged(); });
    ConnectNumber(SheetNumber::PerRow, ui.txtEtiquetasFila, ui.UpDown2, [this] { OnPerRowChanged(); });
    ConnectMeasure(SheetNumber::Width, ui.txtMedidas_0, ui.UpDown_0);
    ConnectMeasure(SheetNumber::Height, ui.txtMedidas_1, ui.UpDown_1);
    ConnectMeasure(SheetNumber::HorizontalGap, ui.txtMedidas_2, ui.UpDown_2);
    ConnectMeasure(SheetNumber::VerticalGap, ui.txtMedidas_3, ui.UpDown_3);
    ConnectMeasure(SheetNumber::Left, ui.txtMedidas_4, ui.UpDown_4);
    ConnectMeasure(SheetNumber::Top, ui.txtMedidas_5, ui.UpDown_5);
    for (QLineEdit* box : findChildren<QLineEdit*>()) {
      OnEnter(box, [this, box] { SeleccionarTexto(box); });
    }
    On(ui.optDisco, &QRadioButton::toggled, [this](bool isSet) { ui.cmdSeleccionar_1->setDisabled(isSet); });
    On(ui.cmdSeleccionar_0, &QPushButton::clicked, [this] { SendHelpKey(); });
    On(ui.cmdSeleccionar_1, &QPushButton::clicked, [this] { SelectFields(); });
    Buttons(ui.cmdSeleccionar_2, ui.cmdSeleccionar_3);
  }

  void ConnectMeasure(SheetNumber number, QLineEdit* box, UpDown* spinner) {
    ConnectNumber(number, box, spinner, [this, number] { OnMeasureChanged(number); });
  }

  void ConnectNumber(SheetNumber number, QLineEdit* box, UpDown* spinner, const std::function<void()>& onChange) {
    const bool isCount = number == SheetNumber::Totals || number == SheetNumber::PerRow;
    spinner->SetBounds(BoundsOf(number));
    m_boxes[Index(number)] = box;
    m_numbers[Index(number)] = new NumberBox(box, spinner);
    new KeyFilter(box, isCount ? IsDigit : IsDigitOrComma, longestNumber,
                  KeyFilter::BeepOnRefusal | KeyFilter::PointIsComma);
    spinner->Bind(box);
    On(box, &QLineEdit::textChanged, onChange);
    On(spinner, &UpDown::Clicked, onChange);
  }

  static std::size_t Index(SheetNumber number) { return static_cast<std::size_t>(number); }
  NumberBox& Number(SheetNumber number) { return *m_numbers[Index(number)]; }

  void SeleccionarTexto(QLineEdit* box) {
    Trap(u"SeleccionarTexto"_s, [box] { HostServices::Fresh().SeleccionarTexto(box); });
  }

  bool LoadRecord() override {
    if (IsAdd()) {
      LimpiarFormulario();
      ui.optEnvioPostal->setChecked(true);
    } else if (IsModify()) {
      CargarEtiqueta();
    }
    return true;
  }

  // The handlers run also for a box that was empty before: they put a bound where 0 is below it.
  void LimpiarFormulario() {
    for (QLineEdit* box : findChildren<QLineEdit*>()) {
      box->clear();
    }
    OnTotalsChanged();
    for (std::size_t i = Index(SheetNumber::Width); i < m_boxes.size(); ++i) {
      OnMeasureChanged(SheetNumber(i));
    }
  }

  void CargarEtiqueta() {
    const QScopedValueRollback loading(m_loading, true);
    LoadSheet();
    LoadFields();
  }

  void LoadSheet() {
    const auto rs = Execute(u"SELECT * FROM ETIQUETAS WHERE IDETIQUETA = {}", Id());
    ui.txtReferencia->setText(Text(rs->Field(u"nombre")));
    ui.txtEtiquetasFila->setText(Text(rs->Field(u"netiquetasancho")));
    ui.txtEtiquetasTotales->setText(Text(rs->Field(u"netiquetastotal")));
    ui.txtMedidas_1->setText(Text(rs->Field(u"altoetiqueta")));
    ui.txtMedidas_0->setText(Text(rs->Field(u"anchoetiqueta")));
    ui.txtMedidas_3->setText(Text(rs->Field(u"altoseparacion")));
    ui.txtMedidas_2->setText(Text(rs->Field(u"anchoseparacion")));
    ui.txtMedidas_5->setText(Text(rs->Field(u"alto1etiqueta")));
    ui.txtMedidas_4->setText(Text(rs->Field(u"ancho1etiqueta")));
    ShowRows();
    m_loaded = {.disk = IsTrue(rs->Field(u"DISCO")), .postal = IsTrue(rs->Field(u"ENVIOPOSTAL"))};
    ui.optDisco->setChecked(m_loaded.disk);
    ui.optEnvioPostal->setChecked(m_loaded.postal);
  }

  void LoadFields() {
    const auto rs = Execute(
        u"SELECT EtiquetasCampos.IDEtiquetaCampo, EtiquetasCampos.Linea, EtiquetasCampos.Orden, "
        u"EtiquetasCampos.NombreCampo, EtiquetasCampos.codTipoCampoEtiqueta, TipoCamposEtiquetas.codTabla FROM "
        u"EtiquetasCampos LEFT JOIN TipoCamposEtiquetas ON "
        u"EtiquetasCampos.codTipoCampoEtiqueta=TipoCamposEtiquetas.IDTipoCampoEtiqueta WHERE "
        u"EtiquetasCampos.codEtiqueta={} AND EtiquetasCampos.Disco=0",
        Id());
    for (int position = 1; !rs->AtEnd(); rs->MoveNext(), ++position) {
      m_fields.Add(FieldOf(*rs), QString::number(position));
    }
  }

  static std::shared_ptr<cCampo> FieldOf(adodb::Recordset& rs) {
    auto field = std::make_shared<cCampo>();
    field->IDElemento = automation::CLng(rs.Field(u"IDETIQUETACAMPO"));
    field->IDCampo = IdOrZero(rs.Field(u"CODTIPOCAMPOETIQUETA"));
    field->codTabla = IdOrZero(rs.Field(u"CODTABLA"));
    field->Campo = Text(rs.Field(u"NOMBRECAMPO"));
    field->Linea = automation::CByte(IdOrZero(rs.Field(u"LINEA")));
    field->Orden = automation::CByte(IdOrZero(rs.Field(u"ORDEN")));
    field->UsarCampo = field->IDCampo != 0;
    field->ExisteEnBD = true;
    if (!field->UsarCampo) {
      // The mark of a free text.
      field->Campo.remove(0, 1);
    }
    return field;
  }

  // The handlers of a change. A text that one of them sets runs the handler of its box at once; nothing goes on for
  // ever, for that text is within the bounds.

  void OnPerRowChanged() {
    const QString perRow = ui.txtEtiquetasFila->text();
    if (Number(SheetNumber::PerRow).Bound() && ExceedsTotal(perRow, ui.txtEtiquetasTotales->text())) {
      Ask(10028, vbExclamation);
      Number(SheetNumber::Totals).Replace(perRow);
    }
    RecomputeRows(SheetNumber::PerRow, 10027);
  }

  void OnTotalsChanged() {
    OnPerRowChanged();
    Number(SheetNumber::Totals).Bound();
    RecomputeRows(SheetNumber::Totals, 10029);
  }

  void OnMeasureChanged(SheetNumber number) {
    Number(number).Bound();
    ShowPicture();
  }

  // A count that got past the bounds is told instead, and stays.
  void RecomputeRows(SheetNumber count, int stringId) {
    ShowPicture();
    if (m_loading) {
      return;
    }
    const bool bothHoldText = !ui.txtEtiquetasFila->text().isEmpty() && !ui.txtEtiquetasTotales->text().isEmpty();
    QLineEdit* box = m_boxes[Index(count)];
    if (bothHoldText && IsAbove(box->text(), BoundsOf(count).max)) {
      box->selectAll();
      Ask(stringId, vbInformation);
    } else if (IsCount(ui.txtEtiquetasTotales->text()) && IsCount(ui.txtEtiquetasFila->text())) {
      ShowRows();
    }
  }

  void ShowRows() { ui.lblNumFilas->setText(RowCount(ui.txtEtiquetasTotales->text(), ui.txtEtiquetasFila->text())); }

  // The handlers run one another; what they left as it was is not read again.
  void ShowPicture() {
    SheetBoxTexts texts;
    std::ranges::transform(m_boxes, texts.begin(), &QLineEdit::text);
    if (texts == std::exchange(m_read, texts)) {
      return;
    }
    const auto sheet = ReadSheet(texts);
    ui.picHoja->Show(sheet);
    ui.lblAjuste->setText(FitText(sheet, ui.picHoja->Paper()));
  }

  void SendHelpKey() {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent key(type, Qt::Key_F1, Qt::NoModifier);
      QCoreApplication::sendEvent(this, &key);
    }
  }

  void SelectFields() {
    if (ValidarDatos()) {
      EditFields(m_fields, *this);
    }
  }

  bool Validate() override {
    const bool fieldsMissing = ui.optEnvioPostal->isChecked() && m_fields.IsEmpty();
    return ValidarDatos() && (!fieldsMissing || Refuse(nullptr, 10017, vbExclamation));
  }

  bool ValidarDatos() {
    const std::optional<SheetRefusal> refusal = RefusalOf(ShownTexts());
    if (!refusal) {
      return true;
    }
    const QString second = refusal->secondString != 0 ? u"\r\n"_s + LoadResString(refusal->secondString) : QString();
    Desktop::Current().Beep();
    ShowText(LoadResString(refusal->firstString) + second, vbExclamation);
    if (QLineEdit* box = BoxOf(refusal->box)) {
      box->setFocus();
    }
    return false;
  }

  SheetTexts ShownTexts() const {
    SheetTexts texts{.boxes = {},
                     .captions = {},
                     .totals = ui.txtEtiquetasTotales->text(),
                     .perRow = ui.txtEtiquetasFila->text(),
                     .rows = ui.lblNumFilas->text(),
                     .width = ui.txtMedidas_0->text(),
                     .height = ui.txtMedidas_1->text()};
    for (const QLineEdit* box : findChildren<QLineEdit*>()) {
      texts.boxes.append(box->text());
    }
    for (const QLabel* label : findChildren<QLabel*>()) {
      texts.captions.append(label->text());
    }
    return texts;
  }

  QLineEdit* BoxOf(SheetBox box) const {
    switch (box) {
      case SheetBox::Totals:
        return ui.txtEtiquetasTotales;
      case SheetBox::PerRow:
        return ui.txtEtiquetasFila;
      case SheetBox::Width:
        return ui.txtMedidas_0;
      case SheetBox::Height:
        return ui.txtMedidas_1;
      case SheetBox::None:
        break;
    }
    return nullptr;
  }

  bool Write() override {
    if (IsAdd()) {
      InsertSheet();
    } else if (IsModify()) {
      UpdateSheet();
    }
    return true;
  }

  // Intended: every save starts the printing position and the last use anew.

  void InsertSheet() {
    Execute(
        u"INSERT INTO ETIQUETAS (NOMBRE, NETIQUETASTOTAL, NETIQUETASANCHO, ALTOETIQUETA, ANCHOETIQUETA, "
        u"ALTOSEPARACION, ANCHOSEPARACION, ALTO1ETIQUETA, ANCHO1ETIQUETA, NULTIMAETIQUETA, ULTIMOUTILIZADO, "
        u"DISCO, ENVIOPOSTAL) VALUES ( '{}', {} , {},'{}','{}', '{}','{}', '{}','{}', 0,0, {}, {} )",
        ui.txtReferencia->text(), Stored(ui.txtEtiquetasTotales), Stored(ui.txtEtiquetasFila),
        Measure(SheetNumber::Height), Measure(SheetNumber::Width), Measure(SheetNumber::VerticalGap),
        Measure(SheetNumber::HorizontalGap), Measure(SheetNumber::Top), Measure(SheetNumber::Left), Kind().disk,
        Kind().postal);
    const qint32 id = automation::CLng(LookUp(u"MAXID", u"SELECT MAX(IDETIQUETA) AS MaxID FROM ETIQUETAS"));
    ExecuteAll(WritingStatements(id, Kind(), m_fields));
  }

  void UpdateSheet() {
    Execute(
        u"UPDATE ETIQUETAS SET  NOMBRE = '{}',  NETIQUETASTOTAL = {},  NETIQUETASANCHO = {},  ALTOETIQUETA = '{}',  "
        u"ANCHOETIQUETA = '{}',  ALTOSEPARACION= '{}',  ANCHOSEPARACION= '{}',  ALTO1ETIQUETA= '{}',  "
        u"ANCHO1ETIQUETA= '{}',  NULTIMAETIQUETA= 0,  ULTIMOUTILIZADO= 0,  DISCO= {},  ENVIOPOSTAL= {}  "
        u"WHERE IDetiqueta= {}",
        ui.txtReferencia->text(), Stored(ui.txtEtiquetasTotales), Stored(ui.txtEtiquetasFila),
        Measure(SheetNumber::Height), Measure(SheetNumber::Width), Measure(SheetNumber::VerticalGap),
        Measure(SheetNumber::HorizontalGap), Measure(SheetNumber::Top), Measure(SheetNumber::Left), Kind().disk,
        Kind().postal, Id());
    ExecuteAll(ReconcilingStatements(Id(), m_loaded, Kind(), m_fields));
  }

  void ExecuteAll(const QStringList& statements) {
    for (const QString& statement : statements) {
      Connection().Execute(statement);
    }
  }

  static Verbatim Stored(const QLineEdit* count) { return {StoredNumber(count->text())}; }
  QString Measure(SheetNumber number) const { return StoredNumber(m_boxes[Index(number)]->text()); }
  SheetKind Kind() const { return {.disk = ui.optDisco->isChecked(), .postal = ui.optEnvioPostal->isChecked()}; }

  FieldCollection m_fields;
  SheetKind m_loaded;
  bool m_loading = false;
  std::array<QLineEdit*, documents::sheetNumberCount> m_boxes = {};
  std::array<NumberBox*, documents::sheetNumberCount> m_numbers = {};
  std::optional<SheetBoxTexts> m_read;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmEtiquetas1() {
  return std::make_unique<frmEtiquetas1>();
}

}  // namespace labels
