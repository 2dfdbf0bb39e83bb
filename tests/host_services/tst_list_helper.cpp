#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Invoke.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using automation::Call;
using automation::Ref;
using support::ErrorOf;

class tst_list_helper : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void cleanupTestCase();

  void Countries();
  void ListsAreSortedInSpanish();
  void ClearingOrAdding();
  void ProvincesOfACountry();
  void BanksAndBranches();
  void NumbersAndCodes_data();
  void NumbersAndCodes();
  void UnknownListIsRefused();
  void FromAStatementOrATable();
  void FindingAnItem();
  void ClosedConnectionIsOpened();
  void ChangeIsSignalledOnce();
  void ProvinceFollowsPostcode_data();
  void ProvinceFollowsPostcode();
  void ChosenExceptionStays();
  void PostcodeFollowsProvince_data();
  void PostcodeFollowsProvince();
  void FormattedAmountGoesBackIntoTheDatabase();

 private:
  QObject* Lists() const { return m_lists.get(); }
  void FillProvinces(QComboBox& combo) const;

  std::unique_ptr<support::TestDatabase> m_database;
  host::Session m_session;
  std::unique_ptr<QObject> m_lists;
  std::unique_ptr<QObject> m_api;
};

namespace {

QStringList TextsOf(const QComboBox& combo) {
  QStringList texts;
  for (int i = 0; i < combo.count(); ++i) {
    texts.append(combo.itemText(i));
  }
  return texts;
}

}  // namespace

void tst_list_helper::initTestCase() {
  m_database = std::make_unique<support::TestDatabase>();
  m_session.connection = &m_database->Connection();
  host::RegisterClasses(m_session);
  m_lists = automation::CreateObject(u"KELAPI.CLISTAS"_s);
  m_api = automation::CreateObject(u"KelAPI.cPrincipal"_s);
  m_database->Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES('0049', 'Banco Ñandú')");
  m_database->Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES('0100', 'Banco Nuevo')");
  m_database->Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES('0200', 'banco central')");
  m_database->Execute(u"INSERT INTO Bancos (Numero, Nombre, Eliminado) VALUES('0300', 'Banco Cerrado', -1)");
  m_database->Execute(u"INSERT INTO Sucursales (codBanco, Codigo, Nombre) VALUES(1, '0001', 'Principal')");
  m_database->Execute(u"INSERT INTO Sucursales (codBanco, Codigo, Nombre) VALUES(1, '0002', 'Centro')");
  m_database->Execute(u"INSERT INTO Sucursales (codBanco, Codigo, Nombre) VALUES(2, '0001', 'De otro banco')");
  m_database->Execute(u"INSERT INTO Sucursales (codBanco, Codigo, Nombre, Eliminado) VALUES(1, '0003', 'Cerrada', -1)");
}

void tst_list_helper::cleanupTestCase() {
  m_lists.reset();
  m_api.reset();
  host::UnregisterClasses();
}

void tst_list_helper::FillProvinces(QComboBox& combo) const {
  Call(Lists(), "RellenarComboProvincias", m_session.connection, &combo, 35, QVariant(), true);
}

void tst_list_helper::Countries() {
  QComboBox combo;
  Call(Lists(), "RellenarComboPais", m_session.connection, &combo, 35, true);
  QCOMPARE(combo.currentText(), u"España"_s);
  QCOMPARE(combo.currentData(Qt::UserRole).toInt(), 35);
  QVERIFY(combo.count() > 200);

  Call(Lists(), "RellenarComboPais", m_session.connection, &combo, QVariant(), true);
  QCOMPARE(combo.currentIndex(), -1);
}

void tst_list_helper::ListsAreSortedInSpanish() {
  QComboBox combo;
  Call(Lists(), "rellenarcombobancos", &combo, m_session.connection, QVariant(), true);
  QCOMPARE(TextsOf(combo), (QStringList{u"banco central"_s, u"Banco Nuevo"_s, u"Banco Ñandú"_s}));
}

void tst_list_helper::ClearingOrAdding() {
  QComboBox combo;
  combo.addItem(u"Todos"_s, 0);
  Call(Lists(), "rellenarcombobancos", &combo, m_session.connection, 2, false);
  QCOMPARE(combo.count(), 4);
  QCOMPARE(combo.itemText(0), u"Todos"_s);
  QCOMPARE(combo.currentText(), u"Banco Nuevo"_s);
  Call(Lists(), "rellenarcombobancos", &combo, m_session.connection, 99, true);
  QCOMPARE(combo.count(), 3);
  QCOMPARE(combo.currentIndex(), -1);
}

void tst_list_helper::ProvincesOfACountry() {
  QComboBox combo;
  Call(Lists(), "RellenarComboProvincias", nullptr, &combo, 35, QVariant(), true);
  QCOMPARE(combo.count(), 52);
  QCOMPARE(combo.currentIndex(), -1);
  Call(Lists(), "RellenarComboProvincias", nullptr, &combo, QVariant(), QVariant(), true);
  QCOMPARE(combo.count(), 0);
}

void tst_list_helper::BanksAndBranches() {
  QComboBox branches;
  Call(Lists(), "rellenarcombosucursales", &branches, 1, m_session.connection, 1, true);
  QCOMPARE(TextsOf(branches), (QStringList{u"Centro"_s, u"Principal"_s}));
  QCOMPARE(branches.currentText(), u"Principal"_s);
}

void tst_list_helper::NumbersAndCodes_data() {
  QTest::addColumn<QString>("column");
  QTest::addColumn<QVariant>("typed");
  QTest::addColumn<QString>("selected");
  const QString bank = u"IDBanco"_s;
  const QString branch = u"IDSucursal"_s;
  QTest::newRow("bank") << bank << QVariant(u"0049"_s) << u"Banco Ñandú"_s;
  QTest::newRow("bank without zeros") << bank << QVariant(u" 49 "_s) << u"Banco Ñandú"_s;
  QTest::newRow("bank as a number") << bank << QVariant(100) << u"Banco Nuevo"_s;
  QTest::newRow("no such bank") << bank << QVariant(u"9999"_s) << QString();
  QTest::newRow("deleted bank") << bank << QVariant(u"0300"_s) << QString();
  QTest::newRow("nothing typed") << bank << QVariant(QString()) << QString();
  QTest::newRow("hostile text") << bank << QVariant(u"'; DELETE FROM Bancos"_s) << QString();
  QTest::newRow("branch among those listed") << branch << QVariant(u"1"_s) << u"Principal"_s;
  QTest::newRow("branch of another bank") << branch << QVariant(u"0007"_s) << QString();
}

void tst_list_helper::NumbersAndCodes() {
  QFETCH(QString, column);
  QFETCH(QVariant, typed);
  QFETCH(QString, selected);
  QComboBox combo;
  if (column == u"IDBanco") {
    Call(Lists(), "rellenarcombobancos", &combo, m_session.connection, 3, true);
  } else {
    Call(Lists(), "rellenarcombosucursales", &combo, 1, m_session.connection, 2, true);
  }
  Call(Lists(), "CargarBancoSucursalLista", &combo, column, typed, 0);
  QCOMPARE(combo.currentText(), selected);
  if (combo.currentIndex() >= 0) {
    const QString code = Call(Lists(), "CargarBancoSucursalCaja", column, 0, combo.currentData().toInt()).toString();
    QCOMPARE(code.toInt(), typed.toInt());
    QCOMPARE(code.size(), 4);
  }
}

void tst_list_helper::UnknownListIsRefused() {
  QCOMPARE(Call(Lists(), "CargarBancoSucursalCaja", u"IDBanco"_s, 0, 999).toString(), QString());
  QCOMPARE(ErrorOf([this] { Call(Lists(), "CargarBancoSucursalCaja", u"Usuarios"_s, 0, 1); }),
           int(automation::InvalidProcedureCall));
}

void tst_list_helper::FromAStatementOrATable() {
  QComboBox combo;
  Call(Lists(), "RellenarCombo", &combo,
       u"  select IDBanco, Nombre AS Banco FROM Bancos WHERE Eliminado=0 ORDER BY Numero DESC"_s, u"BANCO"_s,
       u"IDBANCO"_s, true);
  QCOMPARE(combo.itemText(0), u"banco central"_s);
  QCOMPARE(combo.itemData(0).toInt(), 3);
  QCOMPARE(combo.currentIndex(), -1);
  Call(Lists(), "RellenarCombo", &combo, u"Bancos"_s, u"Nombre"_s, u"IDBanco"_s, true);
  QCOMPARE(combo.count(), 4);
  QCOMPARE(combo.itemText(1), u"Banco Cerrado"_s);
}

void tst_list_helper::FindingAnItem() {
  QComboBox combo;
  combo.addItem(u"sin dato"_s);
  combo.addItem(u"texto"_s, u"7"_s);
  combo.addItem(u"entero"_s, qint64(8));
  Call(Lists(), "LocalizarElementoLista", &combo, 8);
  QCOMPARE(combo.currentText(), u"entero"_s);
  Call(Lists(), "LocalizarElementoLista", &combo, 7.0);
  QCOMPARE(combo.currentText(), u"texto"_s);
  Call(Lists(), "LocalizarElementoLista", &combo, 9);
  Call(Lists(), "LocalizarElementoLista", &combo, QVariant());
  QCOMPARE(combo.currentText(), u"texto"_s);
}

void tst_list_helper::ClosedConnectionIsOpened() {
  const auto connection = database::CreateConnection(m_database->ConnectionString());
  QComboBox combo;
  Call(Lists(), "RellenarComboPais", connection.get(), &combo, 35, true);
  QCOMPARE(connection->State(), int(adodb::StateOpen));
  QCOMPARE(combo.currentText(), u"España"_s);
}

void tst_list_helper::ChangeIsSignalledOnce() {
  QComboBox combo;
  QSignalSpy spy(&combo, &QComboBox::currentIndexChanged);
  Call(Lists(), "RellenarComboPais", m_session.connection, &combo, 35, true);
  QCOMPARE(spy.size(), 1);
  Call(Lists(), "RellenarComboPais", m_session.connection, &combo, QVariant(), true);
  QCOMPARE(spy.size(), 2);
}

void tst_list_helper::ProvinceFollowsPostcode_data() {
  QTest::addColumn<QString>("postcode");
  QTest::addColumn<QString>("province");
  QTest::newRow("complete") << u"28013"_s << u"Madrid"_s;
  QTest::newRow("two digits") << u"42"_s << u"Soria"_s;
  QTest::newRow("blanks around") << u" 08001 "_s << u"Barcelona"_s;
  QTest::newRow("no such prefix") << u"99123"_s << u"Albacete"_s;
  QTest::newRow("foreign") << u"SW1A 1AA"_s << u"Albacete"_s;
  QTest::newRow("too short") << u"2"_s << u"Albacete"_s;
  QTest::newRow("a quote") << u"''"_s << u"Albacete"_s;
}

void tst_list_helper::ProvinceFollowsPostcode() {
  QFETCH(QString, postcode);
  QFETCH(QString, province);
  QComboBox combo;
  FillProvinces(combo);
  combo.setCurrentText(u"Albacete"_s);
  QLineEdit box;
  QTest::keyClicks(&box, postcode);
  QObject* changed = &box;
  QObject* coupled = &combo;
  Call(m_api.get(), "SeleccionarCP_Provincia", Ref(changed), Ref(coupled), m_session.connection);
  QCOMPARE(combo.currentText(), province);
  QCOMPARE(changed, &box);
  QCOMPARE(coupled, &combo);
}

void tst_list_helper::ChosenExceptionStays() {
  QComboBox combo;
  FillProvinces(combo);
  QLineEdit box(u"26127"_s);
  Call(m_api.get(), "SeleccionarCP_Provincia", &box, &combo, m_session.connection);
  QCOMPARE(combo.currentText(), u"La Rioja"_s);
  combo.setCurrentText(u"Soria"_s);
  Call(m_api.get(), "SeleccionarCP_Provincia", &combo, &box, m_session.connection);
  QCOMPARE(box.text(), u"26127"_s);
  Call(m_api.get(), "SeleccionarCP_Provincia", &box, &combo, m_session.connection);
  QCOMPARE(combo.currentText(), u"Soria"_s);
}

void tst_list_helper::PostcodeFollowsProvince_data() {
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("province");
  QTest::addColumn<QString>("expected");
  const QString madrid = u"Madrid"_s;
  QTest::newRow("empty") << QString() << madrid << u"28"_s;
  QTest::newRow("blanks") << u"  "_s << madrid << u"28"_s;
  QTest::newRow("other prefix") << u"08"_s << madrid << u"28"_s;
  QTest::newRow("half a postcode") << u"0801"_s << madrid << u"2801"_s;
  QTest::newRow("fits already") << u"280"_s << madrid << u"280"_s;
  QTest::newRow("complete one stays") << u"08001"_s << madrid << u"08001"_s;
  QTest::newRow("foreign one stays") << u"D-10"_s << madrid << u"D-10"_s;
  QTest::newRow("no province") << QString() << QString() << QString();
  QTest::newRow("leading zero") << QString() << u"Albacete"_s << u"02"_s;
}

void tst_list_helper::PostcodeFollowsProvince() {
  QFETCH(QString, typed);
  QFETCH(QString, province);
  QFETCH(QString, expected);
  QComboBox combo;
  FillProvinces(combo);
  if (!province.isEmpty()) {
    combo.setCurrentText(province);
  }
  QLineEdit box(typed);
  Call(m_api.get(), "SeleccionarCP_Provincia", &combo, &box, nullptr);
  QCOMPARE(box.text(), expected);
}

void tst_list_helper::FormattedAmountGoesBackIntoTheDatabase() {
  const QString amount = Call(m_api.get(), "FormatearAEuros", 1234.5).toString();
  m_database->Execute(u"INSERT INTO TipoPublicaciones (Nombre, ImporteNacional) VALUES('Boletín', '{}')", amount);
  QCOMPARE(m_database->Query(u"SELECT ImporteNacional FROM TipoPublicaciones"), QStringList(u"1234,5"_s));
}

KEL_TEST(tst_list_helper);
#include "tst_list_helper.moc"
