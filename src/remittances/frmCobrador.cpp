#include "framework/KeyFilter.h"
#include "remittances/Dialogs.h"
#include "remittances/NationalIdentity.h"
#include "ui_frmCobrador.h"

#include <array>

using namespace framework;
using namespace Qt::StringLiterals;

namespace remittances {
namespace {

constexpr int validIdentifier = 1;

const FormCard card{
    .name = u"frmCobrador"_s, .errors = ErrorReport{.freshServices = true}, .cancel = CancelAnswer::Nothing};

// The boxes by their index, and the columns that they show.
constexpr std::array<QStringView, 6> columns{u"NOMBRE", u"APELLIDO1", u"APELLIDO2", u"NIF", u"DIRECCION", u"POBLACION"};
constexpr std::size_t nameBox = 0;
constexpr std::size_t nifBox = 3;

/// Adds or edits one collector. It takes no lock, tracks no changes and never asks; each of its procedures traps its
/// own errors, and the dialog stays open.
class frmCobrador final : public FormOn<Ui::frmCobrador> {
 public:
  frmCobrador() : FormOn(card) {}

 private:
  void Connect() override {
    m_boxes = {ui.txtCobrador_0, ui.txtCobrador_1, ui.txtCobrador_2,
               ui.txtCobrador_3, ui.txtCobrador_4, ui.txtCobrador_5};
    for (QLineEdit* box : m_boxes) {
      OnEnter(box, Trapped(u"SeleccionarTexto"_s, [box] { HostServices::Fresh().SeleccionarTexto(box); }));
    }
    QLineEdit* nif = m_boxes[nifBox];
    new KeyFilter(nif, IsLetterOrDigit, 0, KeyFilter::BeepOnRefusal | KeyFilter::MarksDropOut);
    OnLeave(nif, [this, nif] {
      // What was stored stays as it is until the user changes it.
      if (nif->isModified()) {
        nif->setText(WithEightDigits(Trimmed(nifBox).toUpper()));
      }
      OfferLetter(NationalIdentityLetter(nif->text()));
    });
    On(nif, &QLineEdit::textEdited, [this] { OfferLetter({}); });
    On(ui.cmdLetra, &QPushButton::clicked, [this] { TakeLetter(); });
    OfferLetter({});
    Buttons(ui.cmdCobrador_0, ui.cmdCobrador_1);
  }

  bool LoadRecord() override {
    if (IsAgregar()) {
      SetCaption(LoadResString(4100));
    } else if (IsModify()) {
      SetCaption(LoadResString(4102));
      Trap(u"CargarDatos"_s, [this] { LoadCollector(); });
    } else {
      // Intended: the dialog is shown all the same, empty.
      Ask(4101, vbCritical);
    }
    return true;
  }

  void LoadCollector() {
    const auto rs = Execute(
        u"SELECT Cobradores.Nombre, Cobradores.Apellido1, Cobradores.Apellido2, Cobradores.NIF, Cobradores.Direccion, "
        u"Cobradores.Poblacion FROM Cobradores WHERE Cobradores.IDCobrador={}",
        Id());
    for (std::size_t i = 0; i < columns.size(); ++i) {
      m_boxes[i]->setText(Text(rs->Field(columns[i])));
    }
  }

  // A collector is never created for another dialog.
  bool IsAgregar() const { return IsAdd() && !IsNuevo(); }

  QString Trimmed(std::size_t box) const { return m_boxes[box]->text().trimmed(); }

  // A number without its letter is not completed by itself: the user may take the one that fits. A null one withdraws
  // the offer.
  void OfferLetter(QChar letter) {
    if (!letter.isNull()) {
      // Before it shows: it is laid out as it appears.
      ui.cmdLetra->setText(u"Añadir la &letra %1"_s.arg(letter));
    }
    ui.cmdLetra->setVisible(!letter.isNull());
  }

  void TakeLetter() {
    QLineEdit* nif = m_boxes[nifBox];
    nif->setText(nif->text() + NationalIdentityLetter(nif->text()));
    nif->setFocus();
    OfferLetter({});
  }

  bool Validate() override {
    if (Trimmed(nameBox).isEmpty()) {
      return Refuse(m_boxes[nameBox], 4103, vbExclamation);
    }
    const QString nif = Trimmed(nifBox);
    return nif.isEmpty() || VerdictOn(nif) == validIdentifier || Refuse(m_boxes[nifBox], 4104, vbExclamation);
  }

  // Intended: a check that failed is told, and counts as not passed.
  int VerdictOn(const QString& nif) {
    int verdict = 0;
    Trap(u"ValidarNIF"_s, [&] { verdict = HostServices::Fresh().Validar_NIF(nif); });
    return verdict;
  }

  bool Write() override {
    return Trap(u"ActualizarDatos"_s, [this] { WriteCollector(); });
  }

  void WriteCollector() {
    if (IsAgregar()) {
      Execute(
          u"INSERT INTO Cobradores (Nombre, Apellido1, Apellido2, NIF, Direccion, Poblacion) "
          u"VALUES('{}','{}','{}','{}','{}','{}')",
          Trimmed(0), Trimmed(1), Trimmed(2), Trimmed(3), Trimmed(4), Trimmed(5));
    } else if (IsModify()) {
      Execute(
          u"UPDATE Cobradores SET Nombre='{}',Apellido1='{}',Apellido2='{}',NIF='{}',Direccion='{}',Poblacion='{}' "
          u"WHERE Cobradores.IDCobrador={}",
          Trimmed(0), Trimmed(1), Trimmed(2), Trimmed(3), Trimmed(4), Trimmed(5), Id());
    }
  }

  std::array<QLineEdit*, 6> m_boxes = {};
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmCobrador() {
  return std::make_unique<frmCobrador>();
}

}  // namespace remittances
