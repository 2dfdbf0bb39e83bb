#include "host/verification/CheckBench.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "platform/automation/Invoke.h"

#include <QAction>

namespace host {

using automation::Call;
using automation::Get;
using automation::Put;
using automation::Ref;
using namespace Qt::StringLiterals;

namespace {

const QString form = u"frmPrueba"_s;
const QString keyColumn = u"IDPrueba"_s;
const QString widthsKey = u"Prueba\\verificar-servicios"_s;
const QString otherWidthsKey = u"Prueba\\verificar-servicios-2"_s;
constexpr int widthKept = 77;
constexpr int otherWidthKept = 55;
constexpr int widthMeanwhile = 33;

// A request's number: what is put is what is got.
MemberCheck Carried(QObject& services, const char* property, int value) {
  return {QString::fromLatin1(property), [&services, property, value] {
            Put(&services, property, value);
            Require(Number(Get(&services, property)) == value, u"no guarda el valor que se le da"_s);
          }};
}

MemberCheck NumberProperty(QObject& services, const char* property) {
  return {QString::fromLatin1(property), [&services, property] { Number(Get(&services, property)); }};
}

MemberCheck TextProperty(QObject& services, const char* property) {
  return {QString::fromLatin1(property), [&services, property] { String(Get(&services, property)); }};
}

adodb::Connection* ConnectionOf(QObject& services) {
  return Get(&services, "congestion").value<adodb::Connection*>();
}

void CheckConnection(QObject& services) {
  adodb::Connection* connection = ConnectionOf(services);
  Require(connection != nullptr, u"no contesta una adodb::Connection*"_s);
  if (connection->State() == adodb::StateClosed) {
    connection->Open();
  }
}

struct LockAnswer {
  bool refused;
  bool held;
};

// The component passes the request's services object first. `held` is what the flag was before.
LockAnswer AskForLock(QObject& services, bool held = false) {
  QObject* request = &services;
  const bool refused =
      Boolean(Call(&services, "BloqueoRegistro", Ref(request), form, keyColumn, NobodysKey, Ref(held)));
  Require(!refused || !held, u"dice que otro tiene el registro y que lo tiene este cuadro"_s);
  Require(refused || held, u"dice que el registro no lo tiene nadie, ni siquiera este cuadro"_s);
  return {refused, held};
}

void Release(QObject& services) {
  QObject* request = &services;
  Call(&services, "DesbloqueoRegistro", Ref(request), form, keyColumn, NobodysKey);
}

void CheckLock(QObject& services, QObject& second, bool& granted) {
  RequireReference(services, "BloqueoRegistro", 5, 4);
  granted = AskForLock(services).held;
  // Whether a second object of the same user may have it, too, is the host's; what it is told must agree.
  if (AskForLock(second, true).held) {
    Release(second);
    AskForLock(services);
  }
}

// The check before this one had the lock taken, and `granted`: a host that can't write refuses always. Another object
// lets go than the one that took it, as in a dialog.
void CheckUnlock(QObject& services, QObject& second, bool granted) {
  for (QObject* object : {&second, &services}) {
    Release(*object);
    Require(AskForLock(*object).held || !granted, u"otro objeto sigue viendo el bloqueo después de soltarlo"_s);
  }
  Release(services);
}

void CheckDisabling(QObject& services, CheckBench& bench) {
  const auto disable = [&](QObject* control) { Call(&services, "BloquearControles", control); };
  bench.button->setEnabled(true);
  disable(bench.button);
  Require(!bench.button->isEnabled(), u"no desactiva el control"_s);
  // «Guardar» of a letter.
  QAction item(&bench.otherWindow);
  item.setObjectName(u"mnuPrueba"_s);
  disable(&item);
  Require(!item.isEnabled(), u"no desactiva una opción de menú (QAction)"_s);
}

void CheckRemembering(QObject& services, CheckBench& bench) {
  bench.combo->clear();
  bench.combo->addItems({u"uno"_s, u"dos"_s});
  Call(&services, "establecercontrolcambioformulario", bench.Controls());
}

// The check before this one had the values remembered, by another object.
void CheckChangeTracking(QObject& second, CheckBench& bench) {
  const auto changed = [&] { return Boolean(Call(&second, "controlcambioformulario", bench.Controls())); };
  Require(!changed(), u"ve un cambio donde no lo hay (otro objeto guardó los valores)"_s);
  const QString before = bench.box->text();
  bench.box->setText(u"otro texto"_s);
  Require(changed(), u"no ve que un texto ha cambiado"_s);
  bench.box->setText(before);
  bench.combo->setCurrentIndex(1);
  Require(changed(), u"no ve que se ha elegido otra cosa en una lista"_s);
}

void CheckTextSelection(QObject& services, CheckBench& bench) {
  bench.box->deselect();
  Call(&services, "SeleccionarTexto", static_cast<QObject*>(bench.box));
  Require(bench.box->selectedText() == bench.box->text(), u"no selecciona el texto entero"_s);
}

void CheckRowSelection(QObject& services, CheckBench& bench) {
  Call(&services, "SeleccionarFila", static_cast<QObject*>(bench.grid), 1);
  Require(bench.grid->selectionModel()->isRowSelected(1), u"no selecciona la fila entera (cuentan desde 0)"_s);
}

void CheckWidthsKept(QObject& services, CheckBench& bench) {
  const auto keep = [&](const QString& key, int width) {
    bench.grid->setColumnWidth(0, width);
    Call(&services, "SalvarAnchos", static_cast<QObject*>(bench.grid), key, form);
  };
  keep(widthsKey, widthKept);
  keep(otherWidthsKey, otherWidthKept);
}

void CheckWidthsRestored(QObject& services, CheckBench& bench) {
  bench.grid->setColumnWidth(0, widthMeanwhile);
  Call(&services, "CargarAnchos", static_cast<QObject*>(bench.grid), widthsKey, form);
  Require(bench.grid->columnWidth(0) == widthKept, u"no repone los anchos que otro objeto guardó con esa clave"_s);
}

void CheckErrorReport(QObject& services, CheckBench& bench) {
  const int before = bench.WindowsShown();
  const automation::Error error(32123, u"Un error de prueba"_s);
  automation::Err().Set(error);
  Call(&services, "VerError", u"cmdAceptar_Click"_s, form, u"KelConfiguracion"_s);
  automation::Err().Clear();
  Require(bench.WindowsShown() > before, u"no enseña el error"_s);
  const QString& shown = bench.TextsShown();
  Require(shown.contains(error.Description()) || shown.contains(QString::number(error.Number())),
          u"enseña algo que no dice ni el texto ni el número del error"_s);
}

int TaxIdentifier(QObject& services, const QString& text, QString& control) {
  QString kind;
  return Number(Call(&services, "CIF_NIF_Valido", text, Ref(kind), Ref(control)));
}

// 12345678Z is the usual specimen of a valid one.
void CheckTaxIdentifier(QObject& services) {
  QString control;
  RequireReference(services, "CIF_NIF_Valido", 3, 1);
  RequireReference(services, "CIF_NIF_Valido", 3, 2);
  Require(TaxIdentifier(services, u"12345678Z"_s, control) == 1, u"no contesta 1 para el NIF válido 12345678Z"_s);
  Require(TaxIdentifier(services, u"12345678A"_s, control) == 3 && control == u"Z",
          u"no contesta 3 y la letra Z para 12345678A"_s);
}

void CheckTaxIdentifierAlone(QObject& services) {
  const auto answer = [&](const QString& text) { return Number(Call(&services, "Validar_NIF", text)); };
  Require(answer(u"12345678Z"_s) == 1, u"no contesta 1 para el NIF válido 12345678Z"_s);
  Require(answer(u"12345678A"_s) != 1, u"contesta 1 para 12345678A, que no es válido"_s);
}

void CheckAmountText(QObject& services) {
  const auto text = [&](const QVariant& amount) { return String(Call(&services, "FormatearAEuros", amount)); };
  // Numbers come from columns, texts from boxes.
  for (const QVariant& amount : {QVariant(1234.5), QVariant(u"1234,5"_s)}) {
    const QString given = text(amount);
    Require(given == u"1.234,50" || given == u"1.234,50 €",
            u"da «%1» por mil doscientos treinta y cuatro y medio, y no «1.234,50»"_s.arg(given));
  }
  Require(text(automation::Null()).isEmpty(), u"da un importe donde no hay ninguno (Null)"_s);
  Require(text(u"doce"_s) == u"doce", u"no deja como está un texto que no es un importe"_s);
}

void CheckAmountKey(QObject& services, CheckBench& bench) {
  RequireReference(services, "VerificarEuros", 4, 0);
  bench.box->clear();
  const auto filtered = [&](int key) {
    Call(&services, "VerificarEuros", Ref(key), QVariant::fromValue(static_cast<QObject*>(bench.box)), 0, 0);
    return key;
  };
  constexpr int backspace = 8;
  Require(filtered(u'x') == 0, u"deja pasar una letra en un importe"_s);
  for (const QChar key : u"0123456789,"_s) {
    Require(filtered(key.unicode()) == key.unicode(), u"no deja pasar «%1» en un importe"_s.arg(key));
  }
  Require(filtered(backspace) == backspace, u"no deja pasar la tecla de retroceso (8)"_s);
}

void CheckPostcode(QObject& services, CheckBench& bench) {
  QObject* box = bench.box;
  QObject* combo = bench.combo;
  adodb::Connection* given = ConnectionOf(services);
  adodb::Connection* connection = given != nullptr ? given : &bench.Connection();
  Call(&services, "SeleccionarCP_Provincia", Ref(box), Ref(combo), connection);
  Call(&services, "SeleccionarCP_Provincia", Ref(combo), Ref(box), connection);
}

}  // namespace

std::vector<MemberCheck> ServiceChecks(QObject& services, QObject& second, CheckBench& bench) {
  const auto granted = std::make_shared<bool>(false);
  return {
      Carried(services, "IDNodo", 20),
      Carried(services, "Accion", 2),
      Carried(services, "IDSeleccionado", NobodysKey),
      Carried(services, "IDAux", 7),
      {u"congestion"_s, [&] { CheckConnection(services); }},
      TextProperty(services, "tituloaplicacion"),
      TextProperty(services, "Icono"),
      TextProperty(services, "strFichAyuda"),
      TextProperty(services, "PathNodo"),
      NumberProperty(services, "IDUsuario"),
      NumberProperty(services, "TipoUsuario"),
      {u"velumar"_s, [&] { Boolean(Get(&services, "velumar")); }},
      {u"BloqueoRegistro"_s, [&, granted] { CheckLock(services, second, *granted); }},
      {u"DesbloqueoRegistro"_s, [&, granted] { CheckUnlock(services, second, *granted); }},
      {u"BloquearControles"_s, [&] { CheckDisabling(services, bench); }},
      {u"establecercontrolcambioformulario"_s, [&] { CheckRemembering(services, bench); }},
      {u"controlcambioformulario"_s, [&] { CheckChangeTracking(second, bench); }},
      {u"SeleccionarTexto"_s, [&] { CheckTextSelection(services, bench); }},
      {u"SeleccionarFila"_s, [&] { CheckRowSelection(services, bench); }},
      {u"SalvarAnchos"_s, [&] { CheckWidthsKept(services, bench); }},
      {u"CargarAnchos"_s, [&] { CheckWidthsRestored(second, bench); }},
      {u"VerError"_s, [&] { CheckErrorReport(services, bench); }},
      {u"CIF_NIF_Valido"_s, [&] { CheckTaxIdentifier(services); }},
      {u"Validar_NIF"_s, [&] { CheckTaxIdentifierAlone(services); }},
      {u"FormatearAEuros"_s, [&] { CheckAmountText(services); }},
      {u"VerificarEuros"_s, [&] { CheckAmountKey(services, bench); }},
      {u"SeleccionarCP_Provincia"_s, [&] { CheckPostcode(services, bench); }},
  };
}

}  // namespace host
