#include "host/verification/CheckBench.h"
#include "platform/adodb/Statement.h"
#include "platform/automation/Conversion.h"
#include "platform/automation/Invoke.h"

namespace host {

using automation::Call;
using namespace Qt::StringLiterals;

namespace {

const QString leftover = u"resto"_s;
const QString live = u"Verificar, vivo"_s;
const QString deleted = u"Verificar, borrado"_s;
// Others that live, in the order of Spanish dictionaries, which is not that of the characters' numbers.
const QStringList sorted{u"Nube, verificar"_s, u"Ñu, verificar"_s, u"Oca, verificar"_s};
// A bank's number and a branch's code have four characters.
const QString liveCode = u"9V9V"_s;
const QString deletedCode = u"9V9B"_s;

/// A live and a deleted record of each kind that is listed, gone again with the object.
class Samples {
 public:
  explicit Samples(adodb::Connection& connection) : m_connection(connection), m_transaction(connection) {
    for (const bool isDeleted : {true, false}) {
      const QString& name = isDeleted ? deleted : live;
      Execute(u"INSERT INTO Paises(nombre,eliminado) VALUES('{}',{})", name, isDeleted);
      country = Newest(u"SELECT MAX(IDPais) AS n FROM Paises");
      Execute(u"INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('{}','{}',{})", isDeleted ? deletedCode : liveCode,
              name, isDeleted);
      bank = Newest(u"SELECT MAX(IDBanco) AS n FROM Bancos");
      deletedBank = isDeleted ? bank : deletedBank;
    }
    for (const bool isDeleted : {true, false}) {
      const QString& name = isDeleted ? deleted : live;
      Execute(u"INSERT INTO Provincias(CodPais,Nombre,eliminado) VALUES({},'{}',{})", country, name, isDeleted);
      province = Newest(u"SELECT MAX(IDProvincia) AS n FROM Provincias");
      Execute(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Eliminado) VALUES({},'{}','{}',{})", bank,
              isDeleted ? deletedCode : liveCode, name, isDeleted);
      branch = Newest(u"SELECT MAX(IDSucursal) AS n FROM Sucursales");
    }
    for (const int i : {1, 2, 0}) {
      const QString& name = sorted[i];
      const QString code = u"9V%1V"_s.arg(i);
      Execute(u"INSERT INTO Paises(nombre,eliminado) VALUES('{}',{})", name, false);
      Execute(u"INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('{}','{}',{})", code, name, false);
      Execute(u"INSERT INTO Provincias(CodPais,Nombre,eliminado) VALUES({},'{}',{})", country, name, false);
      Execute(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Eliminado) VALUES({},'{}','{}',{})", bank, code, name,
              false);
    }
  }

  qint32 country = 0;
  qint32 province = 0;
  qint32 bank = 0;
  qint32 deletedBank = 0;
  qint32 branch = 0;

 private:
  template <typename... Values>
  void Execute(std::type_identity_t<adodb::Statement<Values...>> statement, const Values&... values) {
    m_connection.Execute(statement.Text(values...));
  }
  qint32 Newest(adodb::Statement<> statement) {
    return automation::CLng(m_connection.Execute(statement.Text())->Field(0));
  }

  adodb::Connection& m_connection;
  adodb::Transaction m_transaction;
};

/// What a filling of the bench's list is asked for.
struct Wish {
  QVariant selected = {};
  bool empties = true;
};

/// A filling, and the key of the live record among those listed.
struct Filling {
  std::function<void(QObject* combo, const Samples& samples, const Wish& wish)> fill;
  qint32 Samples::*record;
};

// Runs `act`; whether the list said to whoever listens, which is how dialogs know, that its selection is another.
template <typename Act>
bool SaysSelection(QComboBox& combo, Act act) {
  bool said = false;
  const auto connection = QObject::connect(&combo, &QComboBox::currentIndexChanged,
                                           [&](int index) { said |= index >= 0 && index == combo.currentIndex(); });
  act();
  QObject::disconnect(connection);
  return said;
}

// The item's data is its record's key, as a number.
qint32 KeyOf(const QComboBox& combo, int index) {
  const QVariant data = combo.itemData(index);
  Require(data.isValid() && automation::IsNumeric(data),
          u"el elemento «%1» no lleva su identificador (Qt::UserRole)"_s.arg(combo.itemText(index)));
  Require(data.typeId() != QMetaType::QString,
          u"el elemento «%1» lleva su identificador como texto"_s.arg(combo.itemText(index)));
  return automation::CLng(data);
}

// Runs a filling that empties the list, on a list with something in it: without and with a key to select.
void CheckFilling(adodb::Connection& connection, CheckBench& bench, const Filling& filling) {
  const Samples samples(connection);
  bench.combo->clear();
  bench.combo->addItem(leftover, NobodysKey);
  filling.fill(bench.combo, samples, {});
  Require(bench.combo->findText(leftover) < 0, u"no vacía la lista, aunque se le pide"_s);
  Require(bench.combo->currentIndex() < 0, u"deja un elemento elegido que nadie ha pedido"_s);
  bool listed = false;
  for (int i = 0; i < bench.combo->count(); ++i) {
    if (KeyOf(*bench.combo, i) == samples.*filling.record) {
      listed = true;
      Require(bench.combo->itemText(i) == live, u"da «%1» por «%2»"_s.arg(bench.combo->itemText(i), live));
    }
  }
  Require(bench.combo->findText(deleted) < 0, u"da un registro borrado"_s);
  Require(listed, u"no da un registro que está en la conexión"_s);
  const bool said =
      SaysSelection(*bench.combo, [&] { filling.fill(bench.combo, samples, {.selected = samples.*filling.record}); });
  Require(bench.combo->currentText() == live, u"no elige el registro que se le dice"_s);
  Require(said, u"elige sin que la lista lo diga (currentIndexChanged)"_s);
  std::vector<int> places;
  for (const QString& name : sorted) {
    places.push_back(bench.combo->findText(name));
  }
  Require(std::is_sorted(places.begin(), places.end()), u"no da los registros en el orden del alfabeto español"_s);
  bench.combo->addItem(leftover, NobodysKey);
  filling.fill(bench.combo, samples, {.empties = false});
  Require(bench.combo->findText(leftover) >= 0, u"vacía la lista, aunque no se le pide"_s);
}

void CheckSearch(QObject& lists, CheckBench& bench) {
  bench.combo->clear();
  bench.combo->addItem(u"uno"_s, 3);
  bench.combo->addItem(u"dos"_s, 8);
  const bool said = SaysSelection(
      *bench.combo, [&] { Call(&lists, "LocalizarElementoLista", static_cast<QObject*>(bench.combo), 8); });
  Require(bench.combo->currentIndex() == 1, u"no elige el elemento de ese identificador"_s);
  Require(said, u"elige sin que la lista lo diga (currentIndexChanged)"_s);
  Call(&lists, "LocalizarElementoLista", static_cast<QObject*>(bench.combo), NobodysKey);
  Require(bench.combo->currentIndex() == 1, u"cambia lo elegido por un identificador que no está"_s);
}

// These two are given no connection: a record of the helper's own database is found only there.
void CheckCode(QObject& lists, adodb::Connection* own) {
  const auto code = [&](const QString& keyColumn, int id) {
    return String(Call(&lists, "CargarBancoSucursalCaja", keyColumn, 0, id));
  };
  Require(code(u"IDBanco"_s, NobodysKey).isEmpty(), u"da un número para un banco que no existe"_s);
  if (own == nullptr) {
    return;
  }
  const Samples samples(*own);
  Require(code(u"IDBanco"_s, samples.bank) == liveCode && code(u"IDBanco"_s, samples.deletedBank) == deletedCode,
          u"no da el número de un banco de la conexión, o no el de uno borrado"_s);
  Require(code(u"IDSucursal"_s, samples.branch) == liveCode, u"no da el código de una sucursal de la conexión"_s);
}

void CheckTypedCode(QObject& lists, adodb::Connection* own, CheckBench& bench) {
  bench.combo->clear();
  bench.combo->addItem(leftover, NobodysKey);
  const auto type = [&](const QString& code) {
    bench.combo->setCurrentIndex(0);
    Call(&lists, "CargarBancoSucursalLista", static_cast<QObject*>(bench.combo), u"IDBanco"_s, code, 0);
    return bench.combo->currentIndex();
  };
  Require(type({}) < 0, u"elige un elemento para un texto vacío, que no es de nadie"_s);
  if (own == nullptr) {
    return;
  }
  const Samples samples(*own);
  bench.combo->addItem(live, samples.bank);
  Require(type(liveCode) == 1, u"no elige el banco cuyo número se ha escrito"_s);
}

}  // namespace

std::vector<MemberCheck> ListChecks(QObject& lists, adodb::Connection* own, CheckBench& bench) {
  adodb::Connection* given = own != nullptr ? own : &bench.Connection();
  const auto filling = [&bench, given](const char* method, qint32 Samples::*record, auto fill) {
    return MemberCheck{QString::fromLatin1(method), [&bench, given, record, fill] {
                         CheckFilling(*given, bench, {.fill = fill, .record = record});
                       }};
  };
  return {
      filling("RellenarCombo", &Samples::country,
              [&lists](QObject* combo, const Samples& samples, const Wish& wish) {
                if (wish.empties) {
                  Call(&lists, "RellenarCombo", combo, u"Paises"_s, u"Nombre"_s, u"IDPais"_s, true);
                  auto* list = static_cast<QComboBox*>(combo);
                  Require(list->findText(leftover) < 0, u"no vacía la lista, aunque se le pide"_s);
                  list->clear();
                }
                Call(&lists, "RellenarCombo", combo,
                     u"SELECT IDPais,Nombre FROM Paises WHERE Eliminado=0 ORDER BY Nombre"_s, u"Nombre"_s, u"IDPais"_s,
                     wish.empties);
                // It has no key to select.
                if (wish.selected.isValid()) {
                  static_cast<QComboBox*>(combo)->setCurrentIndex(
                      static_cast<QComboBox*>(combo)->findData(samples.country));
                }
              }),
      filling("RellenarComboPais", &Samples::country,
              [=, &lists](QObject* combo, const Samples&, const Wish& wish) {
                Call(&lists, "RellenarComboPais", given, combo, wish.selected, wish.empties);
              }),
      filling("RellenarComboProvincias", &Samples::province,
              [=, &lists](QObject* combo, const Samples& samples, const Wish& wish) {
                if (wish.empties) {
                  Call(&lists, "RellenarComboProvincias", given, combo, 0, QVariant(), true);
                  Require(static_cast<QComboBox*>(combo)->count() == 0,
                          u"da provincias para el país 0, que no es ninguno"_s);
                }
                Call(&lists, "RellenarComboProvincias", given, combo, samples.country, wish.selected, wish.empties);
              }),
      filling("rellenarcombobancos", &Samples::bank,
              [=, &lists](QObject* combo, const Samples&, const Wish& wish) {
                Call(&lists, "rellenarcombobancos", combo, given, wish.selected, wish.empties);
              }),
      filling("rellenarcombosucursales", &Samples::branch,
              [=, &lists](QObject* combo, const Samples& samples, const Wish& wish) {
                Call(&lists, "rellenarcombosucursales", combo, samples.bank, given, wish.selected, wish.empties);
              }),
      {u"LocalizarElementoLista"_s, [&] { CheckSearch(lists, bench); }},
      {u"CargarBancoSucursalCaja"_s, [=, &lists] { CheckCode(lists, own); }},
      {u"CargarBancoSucursalLista"_s, [=, &lists, &bench] { CheckTypedCode(lists, own, bench); }},
  };
}

}  // namespace host
