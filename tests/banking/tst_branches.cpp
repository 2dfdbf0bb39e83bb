#include "banking/frmSucursal.h"
#include "framework/ServiciosHost.h"
#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>

using support::agregar;
using support::DialogUser;
using support::TestHost;

namespace {

constexpr int sucursales = 0;

int MakeBank(const TestHost& host) {
  host.Query(QStringLiteral("INSERT INTO Bancos(Numero,Nombre) VALUES('0100','Banco')"));
  return host.Id(QStringLiteral("SELECT MAX(IDBanco) FROM Bancos"));
}

}  // namespace

class tst_branches : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void FromTheHostWrittenAtOnce() {
    TestHost host;
    const int bank = MakeBank(host);
    const int madrid = host.Id(QStringLiteral("SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'"));
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Agregar sucursal del banco Banco"));
      dialog.Type("txtSucursales_0", QStringLiteral("0001"));
      dialog.Type("txtSucursales_1", QStringLiteral("L'Alameda"));
      dialog.Type("txtSucursales_4", QStringLiteral("28013"));
      dialog.Press("cmdSucursales_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
    QCOMPARE(host.connection().Writes(),
             QStringList(QStringLiteral("INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, "
                                        "codProvincia, codPais) VALUES( %1,'0001','L''Alameda','','','28013',%2,35)")
                             .arg(bank)
                             .arg(madrid)));
    QCOMPARE(host.services().property("IDAux").toInt(),
             host.Id(QStringLiteral("SELECT MAX(IDSucursal) FROM Sucursales")));
  }

  void WithoutABankNothingIsShown() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, 0));
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, QStringLiteral("ninguno")));
    QCOMPARE(host.driver.Boxes(),
             QStringList(2, QStringLiteral("Prueba|critico|No se han especificado alguno de los valores para los "
                                           "parámetros requeridos")));
    // A bank that does not exist is an error of the load.
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, 987654));
    QVERIFY(host.driver.Boxes().last().contains(QStringLiteral("Error3021: ")));
  }

  void IncompleteOrder_data() {
    QTest::addColumn<bool>("withBranch");
    QTest::addColumn<bool>("withBank");
    QTest::addColumn<int>("action");
    QTest::newRow("no branch") << false << true << 1;
    QTest::newRow("modify without the bank") << true << false << 2;
  }
  void IncompleteOrder() {
    QFETCH(bool, withBranch);
    QFETCH(bool, withBank);
    QFETCH(int, action);
    TestHost host;
    objApi() = ServiciosHost(&host.services());
    host.connection().Open();
    const ColeccionSucursales branches;
    frmSucursal dialog;
    dialog.Abrir({.sucursal = withBranch ? std::make_shared<cSucursal>() : nullptr,
                  .sucursales = &branches,
                  .accion = quint8(action),
                  .banco = withBank ? std::optional(BancoBD::Banco()) : std::nullopt});
    host.driver.Answer(QMessageBox::Ok);
    dialog.ShowModal();
    QCOMPARE(host.driver.TakeProblems(), QStringList());
    QVERIFY(!dialog.Aceptado());
  }

  void WithoutSpainOrMadridNothingIsPreselected() {
    TestHost host;
    const int bank = MakeBank(host);
    host.Query(QStringLiteral("UPDATE Paises SET Eliminado=-1 WHERE Nombre='España'"));
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Find<QComboBox>("cboPaises")->currentIndex(), -1);
      QCOMPARE(dialog.Items("cboProvincias"), QStringList());
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Focused(), QStringLiteral("cboPaises"));
      dialog.Press("cmdSucursales_1");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
    QCOMPARE(
        host.driver.Boxes(),
        QStringList(QStringLiteral("Prueba|informacion|Debe seleccionar un pais para poder añadir una provincia")));
    QCOMPARE(host.services().property("IDAux").toInt(), 0);
  }

  void DefaultsReportUnderAnotherComponentsName() {
    TestHost host;
    const int bank = MakeBank(host);
    host.connection().SetHook([](const QString& text) {
      if (text.contains(u"'España'") || text.contains(u"'Madrid'")) {
        throw automation::Error(1234, QStringLiteral("propio"));
      }
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { dialog.Press("cmdSucursales_1"); });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
    const QStringList boxes = host.driver.Boxes();
    for (const char* origin : {"KelAdministracion", "frmSucursal", "1234", "propio"}) {
      QVERIFY2(boxes.value(0).contains(QLatin1String(origin)), qPrintable(boxes.value(0)));
    }
    QVERIFY(boxes.value(0).contains(QStringLiteral("IDPaisEspaña")));
    QVERIFY(boxes.value(1).contains(QStringLiteral("IDProvinciaMadrid")));
  }

  void CountryChangeRefillsProvincesAndNestedDialogsWork() {
    TestHost host;
    const int bank = MakeBank(host);
    host.driver.On("frmSucursal", [&](const DialogUser& dialog) {
      QVERIFY(dialog.Items("cboProvincias").contains(QStringLiteral("Ávila")));
      dialog.Choose("cboPaises", QStringLiteral("Francia"));
      QCOMPARE(dialog.Items("cboProvincias"), QStringList());
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Text("cboProvincias"), QStringLiteral("Isère"));
      dialog.Press("cmdNPais");
      QCOMPARE(dialog.Text("cboPaises"), QStringLiteral("Atlántida"));
      QCOMPARE(host.services().property("IDAux").toInt(), bank);
      dialog.Press("cmdSucursales_1");
    });
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("lblPaisFijo"), QStringLiteral("Francia"));
      dialog.Type("txtProvincia", QStringLiteral("Isère"));
      dialog.Press("cmdProvincia_0");
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", QStringLiteral("Atlántida"));
      dialog.Press("cmdPais_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
  }

  void PostcodeAndProvinceFollowEachOther() {
    TestHost host;
    const int bank = MakeBank(host);
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      dialog.Type("txtSucursales_4", QStringLiteral("08001"));
      dialog.Find("txtSucursales_0")->setFocus(Qt::TabFocusReason);
      dialog.Find("txtSucursales_4")->setFocus(Qt::OtherFocusReason);
      QCOMPARE(dialog.Find<QLineEdit>("txtSucursales_4")->selectedText(), QStringLiteral("08001"));
      dialog.Find("txtSucursales_0")->setFocus(Qt::TabFocusReason);
      QCOMPARE(dialog.Text("cboProvincias"), QStringLiteral("Barcelona"));
      dialog.Type("txtSucursales_4", QStringLiteral("4"));
      dialog.Find("txtSucursales_0")->setFocus(Qt::TabFocusReason);
      QCOMPARE(dialog.Text("cboProvincias"), QStringLiteral("Barcelona"));
      dialog.Press("cmdSucursales_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
  }

  void KeysOfCodeAndPostcode() {
    TestHost host;
    const int bank = MakeBank(host);
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      dialog.Type("txtSucursales_0", QStringLiteral("0x049"));
      QCOMPARE(dialog.Text("txtSucursales_0"), QStringLiteral("0049"));
      dialog.Keys("txtSucursales_0", QStringLiteral("7"));
      QCOMPARE(dialog.Text("txtSucursales_0"), QStringLiteral("7"));
      dialog.Type("txtSucursales_4", QStringLiteral("AD-500"));
      QCOMPARE(dialog.Text("txtSucursales_4"), QStringLiteral("AD500"));
      dialog.Press("cmdSucursales_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
    QCOMPARE(host.platform.beeps, 2);
  }

  void MandatoryFieldsAndUniqueCode() {
    TestHost host;
    const int bank = MakeBank(host);
    host.Query(
        QStringLiteral("INSERT INTO Sucursales(codBanco,Codigo,Nombre,Eliminado) VALUES(%1,'0001','X',-1)").arg(bank));
    host.Query(QStringLiteral("INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES(%1,'0002','Y')").arg(bank + 1));
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      dialog.Type("txtSucursales_0", QStringLiteral("0001"));
      dialog.Press("cmdSucursales_0");
      QCOMPARE(dialog.Focused(), QStringLiteral("txtSucursales_1"));
      dialog.Type("txtSucursales_1", QStringLiteral("Nueva"));
      // The check that the host's branches get also sees deleted ones; another bank's code is free.
      dialog.Press("cmdSucursales_0");
      dialog.Type("txtSucursales_0", QStringLiteral("0002"));
      dialog.Press("cmdSucursales_0");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
    QCOMPARE(
        host.driver.Boxes(),
        (QStringList{QStringLiteral("Prueba|aviso|Debe rellenar los datos que son obligatorios para continuar"),
                     QStringLiteral("Prueba|critico|El código de sucursal ya está siendo utilizado. No puede haber "
                                    "dos sucursales con el mismo código de sucursal para un mismo banco")}));
  }

  void FailedInsertIsToldAndTheDialogStays() {
    TestHost host;
    const int bank = MakeBank(host);
    host.connection().SetHook([](const QString& text) {
      if (text.startsWith(u"INSERT")) {
        throw automation::Error(-2147467259, QStringLiteral("se cortó"));
      }
    });
    host.driver.On("frmSucursal", [&](const DialogUser& dialog) {
      dialog.Type("txtSucursales_0", QStringLiteral("0001"));
      dialog.Type("txtSucursales_1", QStringLiteral("Nueva"));
      dialog.Press("cmdSucursales_0");
      host.connection().SetHook({});
      dialog.Press("cmdSucursales_0");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(sucursales, agregar, 0, bank));
    QCOMPARE(host.driver.Boxes(), QStringList(QStringLiteral("Prueba|critico|Error-2147467259: se cortó")));
    QCOMPARE(host.Query(QStringLiteral("SELECT Codigo FROM Sucursales WHERE codBanco=%1").arg(bank)),
             QStringList(QStringLiteral("0001")));
  }
};

KEL_TEST(tst_branches);
#include "tst_branches.moc"
