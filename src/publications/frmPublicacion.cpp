#include "framework/ControlSetup.h"
#include "platform/automation/Conversion.h"
#include "publications/AmountKeys.h"
#include "publications/Dialogs.h"
#include "publications/SubscriptionModel.h"
#include "ui_frmPublicacion.h"

#include <QScopeGuard>

#include <utility>

using adodb::Verbatim;
using namespace framework;
using namespace Qt::StringLiterals;

namespace publications {
namespace {

// The home country's identifier in every database.
constexpr qint32 homeCountry = 35;

const FormCard card{.name = u"frmPublicacion"_s,
                    .lock = u"IDTipoPublicacion"_s,
                    .prompt = 15109,
                    .errors = ErrorReport{.procedure = u"Form_Load()"_s},
                    .accept = u"cmdPublicacion_Click (0)"_s};

/// Adds or edits one publication with its two prices, and changes what its subscribers pay.
class frmPublicacion final : public FormOn<Ui::frmPublicacion> {
 public:
  frmPublicacion() : FormOn(card) {}

 private:
  void Connect() override {
    m_subscriptions = new SubscriptionModel(ui.msgPublicacion);
    ui.msgPublicacion->setModel(m_subscriptions);
    SetColumnCharacters(*ui.msgPublicacion, {30, 14, 18});
    SelectTextOnFocus(ui.txtPublicacion, ui.txtTextoRecibo, ui.txtPrecioNac, ui.txtPrecioExt);
    TakesAnAmount(ui.txtPrecioNac);
    TakesAnAmount(ui.txtPrecioExt);
    Buttons(ui.cmdPublicacion_0, ui.cmdPublicacion_1);
  }

  void TakesAnAmount(QLineEdit* box) {
    On(new AmountKeys(box), &AmountKeys::Typed, [box](int* key) {
      const int start = box->hasSelectedText() ? box->selectionStart() : box->cursorPosition();
      HostServices::Fresh().VerificarEuros(*key, box, start, box->selectionLength());
    });
    OnLeave(box, [box] {
      if (!box->text().isEmpty()) {
        box->setText(HostServices::Fresh().FormatearAEuros(box->text()));
      }
    });
  }

  bool LoadRecord() override {
    if (IsAdd()) {
      SetCaption(LoadResString(15108));
      ui.chkPublicacion->setEnabled(false);
    } else if (IsModify()) {
      LoadPublication();
      LockRecord();
      LoadSubscriptions();
    }
    return true;
  }

  void LoadPublication() {
    const auto rs = Execute(
        u"SELECT Nombre, TextoRecibo, ImporteNacional, ImporteExtranjero FROM TipoPublicaciones "
        u"WHERE IDTipoPublicacion = {}",
        Id());
    const HostServices services = HostServices::Fresh();
    const QString name = Text(rs->Field(u"Nombre"));
    SetCaption(LoadResString(15107) + name);
    ui.txtPublicacion->setText(name);
    ui.txtTextoRecibo->setText(Text(rs->Field(u"TextoRecibo")));
    ui.txtPrecioNac->setText(services.FormatearAEuros(rs->Field(u"ImporteNacional")));
    ui.txtPrecioExt->setText(services.FormatearAEuros(rs->Field(u"ImporteExtranjero")));
  }

  void LoadSubscriptions() {
    // Intended: no blank stands between the identifier and GROUP BY.
    const auto rs = Execute(
        u"SELECT TipoSuscripciones.IDTipoSuscripcion, TipoSuscripciones.Nombre AS Suscripcion, COUNT(*) AS Contador, "
        u"SUM(Suscripciones.Importe) AS ImporteTotal FROM (Suscripciones INNER JOIN TipoSuscripciones ON "
        u"Suscripciones.CodTipoSuscripcion = TipoSuscripciones.IDTipoSuscripcion) INNER JOIN TipoPublicaciones ON "
        u"Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion WHERE Suscripciones.Eliminado = 0 "
        u"AND TipoSuscripciones.Eliminado = 0 AND TipoPublicaciones.Eliminado = 0 AND "
        u"TipoPublicaciones.IDTipoPublicacion = {}GROUP BY TipoSuscripciones.IDTipoSuscripcion, "
        u"TipoSuscripciones.Nombre",
        Id());
    const HostServices services = HostServices::Fresh();
    std::vector<SubscriptionSummary> rows;
    for (; !rs->AtEnd(); rs->MoveNext()) {
      rows.push_back({.type = Text(rs->Field(u"Suscripcion")),
                      .amount = services.FormatearAEuros(rs->Field(u"ImporteTotal")),
                      .count = Text(rs->Field(u"Contador"))});
    }
    m_subscriptions->SetRows(std::move(rows));
  }

  bool Validate() override {
    if (ui.txtPublicacion->text().trimmed().isEmpty()) {
      // Intended: the message names the price.
      return Refuse(ui.txtPublicacion, 15104, vbInformation);
    }
    if (ui.txtPrecioNac->text().trimmed().isEmpty()) {
      return Refuse(ui.txtPrecioNac, 15104, vbInformation);
    }
    return !ui.txtPrecioExt->text().trimmed().isEmpty() || Refuse(ui.txtPrecioExt, 15105, vbInformation);
  }

  bool Write() override {
    QString procedure = card.accept;
    bool written = true;
    const bool done = TrapInTransaction(procedure, [&] {
      const bool changesPrices = IsModify() && ui.chkPublicacion->isChecked();
      if (changesPrices && Ask(15106, vbYesNo + vbQuestion) != vbYes) {
        // Intended: not even the publication is written, and the empty transaction is committed.
        written = false;
        return;
      }
      if (IsAdd()) {
        Insert();
      } else if (IsModify()) {
        Update();
      }
      if (changesPrices) {
        const QString click = std::exchange(procedure, u"ModificarPrecioSuscripciones"_s);
        ModificarPrecioSuscripciones();
        procedure = click;
      }
    });
    return done && written;
  }

  void Insert() {
    Execute(
        u"INSERT INTO TipoPublicaciones (Nombre, ImporteNacional, ImporteExtranjero, TextoRecibo) "
        u"VALUES ( '{}', '{}', '{}', '{}')",
        TrimmedText(ui.txtPublicacion), Price(ui.txtPrecioNac), Price(ui.txtPrecioExt), TrimmedText(ui.txtTextoRecibo));
    HandBack(u"MaxID", u"SELECT MAX(IDTipoPublicacion) AS MaxID FROM TipoPublicaciones");
  }

  void Update() {
    Execute(
        u"UPDATE TipoPublicaciones SET Nombre = '{}', ImporteNacional = '{}', ImporteExtranjero = '{}', "
        u"TextoRecibo = '{}' WHERE IDTipoPublicacion = {}",
        TrimmedText(ui.txtPublicacion), Price(ui.txtPrecioNac), Price(ui.txtPrecioExt), TrimmedText(ui.txtTextoRecibo),
        Id());
  }

  void ModificarPrecioSuscripciones() {
    const Hourglass hourglass;
    const auto ended = qScopeGuard([this] { ui.lblProceso->clear(); });
    ui.lblProceso->setText(u"Actualizando los importes de las suscripciones…"_s);
    // Painted at once: the statements that follow let nothing else be painted.
    repaint();
    SetPrice(ui.txtPrecioNac, {u"="_s});
    SetPrice(ui.txtPrecioExt, {u"<>"_s});
  }

  // Subscribers whose country compares so with the home country; who has none is not among them.
  void SetPrice(const QLineEdit* price, const Verbatim& comparison) {
    Execute(
        u"UPDATE Suscripciones SET Importe = NumeroEjemplares * '{}' WHERE IDSuscripcion IN ("
        u"SELECT Suscripciones.IDSuscripcion FROM Colaboradores INNER JOIN (Suscripciones INNER JOIN TipoPublicaciones "
        u"ON Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion) "
        u"ON Colaboradores.IDColaborador = Suscripciones.CodColaborador "
        u"WHERE CodPais {} {} AND IDTipoPublicacion = {})",
        price->text(), comparison, homeCountry, Id());
  }

  static QString TrimmedText(const QLineEdit* box) { return box->text().trimmed(); }
  static QString Price(const QLineEdit* box) { return automation::Format(box->text(), u"#,0.#0"); }

  SubscriptionModel* m_subscriptions = nullptr;
};

}  // namespace

std::unique_ptr<MaintenanceForm> CreateFrmPublicacion() {
  return std::make_unique<frmPublicacion>();
}

}  // namespace publications
