#include "host/verification/CheckBench.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Invoke.h"

namespace host {

using automation::Call;
using namespace Qt::StringLiterals;

namespace {

const QString leftover = u"resto"_s;

// Runs a filling that empties the list and selects nothing, on a list with something in it.
void CheckFilling(CheckBench& bench, const std::function<void(QObject*)>& fill) {
  bench.combo->clear();
  bench.combo->addItem(leftover, NobodysKey);
  fill(bench.combo);
  Require(bench.combo->findText(leftover) < 0, u"no vacía la lista, aunque se le pide"_s);
  Require(bench.combo->currentIndex() < 0, u"deja un elemento elegido que nadie ha pedido"_s);
  for (int i = 0; i < bench.combo->count(); ++i) {
    const QVariant data = bench.combo->itemData(i);
    Require(data.isValid() && automation::IsNumeric(data),
            u"el elemento «%1» no lleva su identificador (Qt::UserRole)"_s.arg(bench.combo->itemText(i)));
  }
}

void CheckSearch(QObject& lists, CheckBench& bench) {
  bench.combo->clear();
  bench.combo->addItem(u"uno"_s, 3);
  bench.combo->addItem(u"dos"_s, 8);
  Call(&lists, "LocalizarElementoLista", static_cast<QObject*>(bench.combo), 8);
  Require(bench.combo->currentIndex() == 1, u"no elige el elemento de ese identificador"_s);
  Call(&lists, "LocalizarElementoLista", static_cast<QObject*>(bench.combo), NobodysKey);
  Require(bench.combo->currentIndex() == 1, u"cambia lo elegido por un identificador que no está"_s);
}

void CheckTypedCode(QObject& lists, CheckBench& bench) {
  bench.combo->clear();
  bench.combo->addItem(leftover, NobodysKey);
  Call(&lists, "CargarBancoSucursalLista", static_cast<QObject*>(bench.combo), u"IDBanco"_s, QString(), 0);
  Require(bench.combo->currentIndex() < 0, u"elige un elemento para un texto vacío, que no es de nadie"_s);
}

}  // namespace

std::vector<MemberCheck> ListChecks(QObject& lists, CheckBench& bench) {
  adodb::Connection* connection = &bench.Connection();
  const QVariant nothing;
  const auto filling = [&bench](const char* method, std::function<void(QObject*)> fill) {
    return MemberCheck{QString::fromLatin1(method), [&bench, fill = std::move(fill)] { CheckFilling(bench, fill); }};
  };
  return {
      filling("RellenarCombo",
              [&lists](QObject* combo) {
                Call(&lists, "RellenarCombo", combo, u"SELECT IDPais,Nombre FROM Paises"_s, u"Nombre"_s, u"IDPais"_s,
                     true);
                Call(&lists, "RellenarCombo", combo, u"Paises"_s, u"Nombre"_s, u"IDPais"_s, true);
              }),
      filling("RellenarComboPais",
              [=, &lists](QObject* combo) { Call(&lists, "RellenarComboPais", connection, combo, nothing, true); }),
      filling("RellenarComboProvincias",
              [=, &lists](QObject* combo) {
                Call(&lists, "RellenarComboProvincias", connection, combo, 1, nothing, true);
                Call(&lists, "RellenarComboProvincias", connection, combo, 0, nothing, true);
                Require(static_cast<QComboBox*>(combo)->count() == 0,
                        u"da provincias para el país 0, que no es ninguno"_s);
              }),
      filling("rellenarcombobancos",
              [=, &lists](QObject* combo) { Call(&lists, "rellenarcombobancos", combo, connection, nothing, true); }),
      filling("rellenarcombosucursales",
              [=, &lists](QObject* combo) {
                Call(&lists, "rellenarcombosucursales", combo, 1, connection, nothing, true);
              }),
      {u"LocalizarElementoLista"_s, [&] { CheckSearch(lists, bench); }},
      {u"CargarBancoSucursalCaja"_s,
       [&lists] {
         Require(String(Call(&lists, "CargarBancoSucursalCaja", u"IDBanco"_s, 0, NobodysKey)).isEmpty(),
                 u"da un número para un banco que no existe"_s);
         String(Call(&lists, "CargarBancoSucursalCaja", u"IDSucursal"_s, 0, NobodysKey));
       }},
      {u"CargarBancoSucursalLista"_s, [&] { CheckTypedCode(lists, bench); }},
  };
}

}  // namespace host
