#include "ErrorOf.h"
#include "HostDatabase.h"
#include "support/TestProgram.h"

#include "host/services/Session.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Invoke.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using automation::Call;
using automation::Ref;

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

  std::unique_ptr<HostDatabase> m_database;
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
  m_database = std::make_unique<HostDatabase>();
  m_session.connection = m_database->Connection();
  host::RegisterClasses(m_session);
  m_lists = automation::CreateObject(QStringLiteral("KELAPI.CLISTAS"));
  m_api = automation::CreateObject(QStringLiteral("KelAPI.cPrincipal"));
  m_database->Run("INSERT INTO Bancos (Numero, Nombre) VALUES('0049', 'Banco Ñandú')");
  m_database->Run("INSERT INTO Bancos (Numero, Nombre) VALUES('0100', 'Banco Nuevo')");
  m_database->Run("INSERT INTO Bancos (Numero, Nombre) VALUES('0200', 'banco central')");
  m_database->Run("INSERT INTO Bancos (Numero, Nombre, Eliminado) VALUES('0300', 'Banco Cerrado', -1)");
  m_database->Run("INSERT INTO Sucursales (codBanco, Codigo, Nombre) VALUES(1, '0001', 'Principal')");
  m_database->Run("INSERT INTO Sucursales (codBanco, Codigo, Nombre) VALUES(1, '0002', 'Centro')");
  m_database->Run("INSERT INTO Sucursales (codBanco, Codigo, Nombre) VALUES(2, '0001', 'De otro banco')");
  m_database->Run("INSERT INTO Sucursales (codBanco, Codigo, Nombre, Eliminado) VALUES(1, '0003', 'Cerrada', -1)");
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
  QCOMPARE(combo.currentText(), QStringLiteral("España"));
  QCOMPARE(combo.currentData(Qt::UserRole).toInt(), 35);
  QVERIFY(combo.count() > 200);

  Call(Lists(), "RellenarComboPais", m_session.connection, &combo, QVariant(), true);
  QCOMPARE(combo.currentIndex(), -1);
}

void tst_list_helper::ListsAreSortedInSpanish() {
  QComboBox combo;
  Call(Lists(), "rellenarcombobancos", &combo, m_session.connection, QVariant(), true);
  QCOMPARE(TextsOf(combo), (QStringList{QStringLiteral("banco central"), QStringLiteral("Banco Nuevo"),
                                        QStringLiteral("Banco Ñandú")}));
}

void tst_list_helper::ClearingOrAdding() {
  QComboBox combo;
  combo.addItem(QStringLiteral("Todos"), 0);
  Call(Lists(), "rellenarcombobancos", &combo, m_session.connection, 2, false);
  QCOMPARE(combo.count(), 4);
  QCOMPARE(combo.itemText(0), QStringLiteral("Todos"));
  QCOMPARE(combo.currentText(), QStringLiteral("Banco Nuevo"));
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
  QCOMPARE(TextsOf(branches), (QStringList{QStringLiteral("Centro"), QStringLiteral("Principal")}));
  QCOMPARE(branches.currentText(), QStringLiteral("Principal"));
}

void tst_list_helper::NumbersAndCodes_data() {
  QTest::addColumn<QString>("column");
  QTest::addColumn<QVariant>("typed");
  QTest::addColumn<QString>("selected");
  const QString bank = QStringLiteral("IDBanco");
  const QString branch = QStringLiteral("IDSucursal");
  QTest::newRow("bank") << bank << QVariant(QStringLiteral("0049")) << QStringLiteral("Banco Ñandú");
  QTest::newRow("bank without zeros") << bank << QVariant(QStringLiteral(" 49 ")) << QStringLiteral("Banco Ñandú");
  QTest::newRow("bank as a number") << bank << QVariant(100) << QStringLiteral("Banco Nuevo");
  QTest::newRow("no such bank") << bank << QVariant(QStringLiteral("9999")) << QString();
  QTest::newRow("deleted bank") << bank << QVariant(QStringLiteral("0300")) << QString();
  QTest::newRow("nothing typed") << bank << QVariant(QString()) << QString();
  QTest::newRow("hostile text") << bank << QVariant(QStringLiteral("'; DELETE FROM Bancos")) << QString();
  QTest::newRow("branch among those listed") << branch << QVariant(QStringLiteral("1")) << QStringLiteral("Principal");
  QTest::newRow("branch of another bank") << branch << QVariant(QStringLiteral("0007")) << QString();
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
  QCOMPARE(Call(Lists(), "CargarBancoSucursalCaja", QStringLiteral("IDBanco"), 0, 999).toString(), QString());
  QCOMPARE(ErrorOf([this] { Call(Lists(), "CargarBancoSucursalCaja", QStringLiteral("Usuarios"), 0, 1); }),
           int(automation::InvalidProcedureCall));
}

void tst_list_helper::FromAStatementOrATable() {
  QComboBox combo;
  Call(Lists(), "RellenarCombo", &combo,
       QStringLiteral("  select IDBanco, Nombre AS Banco FROM Bancos WHERE Eliminado=0 ORDER BY Numero DESC"),
       QStringLiteral("BANCO"), QStringLiteral("IDBANCO"), true);
  QCOMPARE(combo.itemText(0), QStringLiteral("banco central"));
  QCOMPARE(combo.itemData(0).toInt(), 3);
  QCOMPARE(combo.currentIndex(), -1);
  Call(Lists(), "RellenarCombo", &combo, QStringLiteral("Bancos"), QStringLiteral("Nombre"), QStringLiteral("IDBanco"),
       true);
  QCOMPARE(combo.count(), 4);
  QCOMPARE(combo.itemText(1), QStringLiteral("Banco Cerrado"));
}

void tst_list_helper::FindingAnItem() {
  QComboBox combo;
  combo.addItem(QStringLiteral("sin dato"));
  combo.addItem(QStringLiteral("texto"), QStringLiteral("7"));
  combo.addItem(QStringLiteral("entero"), qint64(8));
  Call(Lists(), "LocalizarElementoLista", &combo, 8);
  QCOMPARE(combo.currentText(), QStringLiteral("entero"));
  Call(Lists(), "LocalizarElementoLista", &combo, 7.0);
  QCOMPARE(combo.currentText(), QStringLiteral("texto"));
  Call(Lists(), "LocalizarElementoLista", &combo, 9);
  Call(Lists(), "LocalizarElementoLista", &combo, QVariant());
  QCOMPARE(combo.currentText(), QStringLiteral("texto"));
}

void tst_list_helper::ClosedConnectionIsOpened() {
  const auto connection = database::CreateConnection(m_database->ConnectionString());
  QComboBox combo;
  Call(Lists(), "RellenarComboPais", connection.get(), &combo, 35, true);
  QCOMPARE(connection->State(), int(adodb::StateOpen));
  QCOMPARE(combo.currentText(), QStringLiteral("España"));
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
  QTest::newRow("complete") << QStringLiteral("28013") << QStringLiteral("Madrid");
  QTest::newRow("two digits") << QStringLiteral("42") << QStringLiteral("Soria");
  QTest::newRow("blanks around") << QStringLiteral(" 08001 ") << QStringLiteral("Barcelona");
  QTest::newRow("no such prefix") << QStringLiteral("99123") << QStringLiteral("Albacete");
  QTest::newRow("foreign") << QStringLiteral("SW1A 1AA") << QStringLiteral("Albacete");
  QTest::newRow("too short") << QStringLiteral("2") << QStringLiteral("Albacete");
  QTest::newRow("a quote") << QStringLiteral("''") << QStringLiteral("Albacete");
}

void tst_list_helper::ProvinceFollowsPostcode() {
  QFETCH(QString, postcode);
  QFETCH(QString, province);
  QComboBox combo;
  FillProvinces(combo);
  combo.setCurrentText(QStringLiteral("Albacete"));
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
  QLineEdit box(QStringLiteral("26127"));
  Call(m_api.get(), "SeleccionarCP_Provincia", &box, &combo, m_session.connection);
  QCOMPARE(combo.currentText(), QStringLiteral("La Rioja"));
  combo.setCurrentText(QStringLiteral("Soria"));
  Call(m_api.get(), "SeleccionarCP_Provincia", &combo, &box, m_session.connection);
  QCOMPARE(box.text(), QStringLiteral("26127"));
  Call(m_api.get(), "SeleccionarCP_Provincia", &box, &combo, m_session.connection);
  QCOMPARE(combo.currentText(), QStringLiteral("Soria"));
}

void tst_list_helper::PostcodeFollowsProvince_data() {
  QTest::addColumn<QString>("typed");
  QTest::addColumn<QString>("province");
  QTest::addColumn<QString>("expected");
  const QString madrid = QStringLiteral("Madrid");
  QTest::newRow("empty") << QString() << madrid << QStringLiteral("28");
  QTest::newRow("blanks") << QStringLiteral("  ") << madrid << QStringLiteral("28");
  QTest::newRow("other prefix") << QStringLiteral("08") << madrid << QStringLiteral("28");
  QTest::newRow("half a postcode") << QStringLiteral("0801") << madrid << QStringLiteral("2801");
  QTest::newRow("fits already") << QStringLiteral("280") << madrid << QStringLiteral("280");
  QTest::newRow("complete one stays") << QStringLiteral("08001") << madrid << QStringLiteral("08001");
  QTest::newRow("foreign one stays") << QStringLiteral("D-10") << madrid << QStringLiteral("D-10");
  QTest::newRow("no province") << QString() << QString() << QString();
  QTest::newRow("leading zero") << QString() << QStringLiteral("Albacete") << QStringLiteral("02");
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
  m_database->Run(qPrintable(
      QStringLiteral("INSERT INTO TipoPublicaciones (Nombre, ImporteNacional) VALUES('Boletín', '%1')").arg(amount)));
  QCOMPARE(m_database->Value("SELECT ImporteNacional FROM TipoPublicaciones").toDouble(), 1234.5);
}

KEL_TEST(tst_list_helper);
#include "tst_list_helper.moc"
