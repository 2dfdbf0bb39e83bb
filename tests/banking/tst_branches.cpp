#include "support/Expect.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

int MakeBank(const TestHost& host) {
  host.Query(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0100','Banco')");
  return host.Id(u"SELECT MAX(IDBanco) FROM Bancos");
}

}  // namespace

class tst_branches : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void FromTheHostWrittenAtOnce() {
    TestHost host;
    const int bank = MakeBank(host);
    const int madrid = host.Id(u"SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'");
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar sucursal del banco Banco"_s);
      dialog.Type("txtSucursales_0", u"0001"_s);
      dialog.Type("txtSucursales_1", u"L'Alameda"_s);
      dialog.Type("txtSucursales_4", u"28013"_s);
      dialog.Press("cmdSucursales_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
    QCOMPARE(host.Recording().Writes(),
             QStringList(u"INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, "
                         "codProvincia, codPais) VALUES( %1,'0001','L''Alameda','','','28013',%2,35)"_s.arg(bank)
                             .arg(madrid)));
    QCOMPARE(host.services().property("IDAux").toInt(), host.Id(u"SELECT MAX(IDSucursal) FROM Sucursales"));
  }

  void WithoutABankNothingIsShown() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, 0));
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, u"ninguno"_s));
    QCOMPARE(host.driver.Boxes(), QStringList(2,
                                              u"Prueba|critico|No se han especificado alguno de los valores para los "
                                              "parámetros requeridos"_s));
    // A bank that does not exist is an error of the load.
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, 987654));
    QVERIFY(host.driver.Boxes().last().contains(u"Error3021: "_s));
  }

  void WithoutSpainOrMadridNothingIsPreselected() {
    TestHost host;
    const int bank = MakeBank(host);
    host.Query(u"UPDATE Paises SET Eliminado=-1 WHERE Nombre='España'");
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Find<QComboBox>("cboPaises")->currentIndex(), -1);
      QCOMPARE(dialog.Items("cboProvincias"), QStringList());
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Focused(), u"cboPaises"_s);
      dialog.Press("cmdSucursales_1");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
    QCOMPARE(host.driver.Boxes(),
             QStringList(u"Prueba|informacion|Debe seleccionar un pais para poder añadir una provincia"_s));
    QCOMPARE(host.services().property("IDAux").toInt(), 0);
  }

  void DefaultsReportUnderAnotherComponentsName() {
    TestHost host;
    const int bank = MakeBank(host);
    host.Recording().SetHook([](const QString& text) {
      if (text.contains(u"'España'") || text.contains(u"'Madrid'")) {
        throw automation::Error(1234, u"propio"_s);
      }
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { dialog.Press("cmdSucursales_1"); });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
    const QStringList boxes = host.driver.Boxes();
    for (const char* origin : {"KelAdministracion", "frmSucursal", "1234", "propio"}) {
      QVERIFY2(boxes.value(0).contains(QLatin1String(origin)), qPrintable(boxes.value(0)));
    }
    QVERIFY(boxes.value(0).contains(u"IDPaisEspaña"_s));
    QVERIFY(boxes.value(1).contains(u"IDProvinciaMadrid"_s));
  }

  void CountryChangeRefillsProvincesAndNestedDialogsWork() {
    TestHost host;
    const int bank = MakeBank(host);
    host.driver.On("frmSucursal", [&](const DialogUser& dialog) {
      QVERIFY(dialog.Items("cboProvincias").contains(u"Ávila"_s));
      dialog.Choose("cboPaises", u"Francia"_s);
      QCOMPARE(dialog.Items("cboProvincias"), QStringList());
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Text("cboProvincias"), u"Isère"_s);
      dialog.Press("cmdNPais");
      QCOMPARE(dialog.Text("cboPaises"), u"Atlántida"_s);
      QCOMPARE(host.services().property("IDAux").toInt(), bank);
      dialog.Press("cmdSucursales_1");
    });
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("lblPaisFijo"), u"Francia"_s);
      dialog.Type("txtProvincia", u"Isère"_s);
      dialog.Press("cmdProvincia_0");
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", u"Atlántida"_s);
      dialog.Press("cmdPais_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
  }

  void PostcodeAndProvinceFollowEachOther() {
    TestHost host;
    const int bank = MakeBank(host);
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      dialog.Type("txtSucursales_4", u"08001"_s);
      dialog.Find("txtSucursales_0")->setFocus(Qt::TabFocusReason);
      dialog.Find("txtSucursales_4")->setFocus(Qt::OtherFocusReason);
      QCOMPARE(dialog.Find<QLineEdit>("txtSucursales_4")->selectedText(), u"08001"_s);
      dialog.Find("txtSucursales_0")->setFocus(Qt::TabFocusReason);
      QCOMPARE(dialog.Text("cboProvincias"), u"Barcelona"_s);
      dialog.Type("txtSucursales_4", u"4"_s);
      dialog.Find("txtSucursales_0")->setFocus(Qt::TabFocusReason);
      QCOMPARE(dialog.Text("cboProvincias"), u"Barcelona"_s);
      dialog.Press("cmdSucursales_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
  }

  void KeysOfCodeAndPostcode() {
    TestHost host;
    const int bank = MakeBank(host);
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      dialog.Type("txtSucursales_0", u"0x049"_s);
      QCOMPARE(dialog.Text("txtSucursales_0"), u"0049"_s);
      dialog.Keys("txtSucursales_0", u"7"_s);
      QCOMPARE(dialog.Text("txtSucursales_0"), u"7"_s);
      dialog.Type("txtSucursales_4", u"AD-500"_s);
      QCOMPARE(dialog.Text("txtSucursales_4"), u"AD500"_s);
      dialog.Press("cmdSucursales_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
    QCOMPARE(host.desktop.beeps, 2);
  }

  void MandatoryFieldsAndUniqueCode() {
    TestHost host;
    const int bank = MakeBank(host);
    host.Query(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,Eliminado) VALUES({},'0001','X',-1)", bank);
    host.Query(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES({},'0002','Y')", bank + 1);
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      dialog.Type("txtSucursales_0", u"0001"_s);
      dialog.Press("cmdSucursales_0");
      QCOMPARE(dialog.Focused(), u"txtSucursales_1"_s);
      dialog.Type("txtSucursales_1", u"Nueva"_s);
      // The check that the host's branches get also sees deleted ones; another bank's code is free.
      dialog.Press("cmdSucursales_0");
      dialog.Type("txtSucursales_0", u"0002"_s);
      dialog.Press("cmdSucursales_0");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
    QCOMPARE(host.driver.Boxes(),
             (QStringList{u"Prueba|aviso|Debe rellenar los datos que son obligatorios para continuar"_s,
                          u"Prueba|critico|El código de sucursal ya está siendo utilizado. No puede haber "
                          "dos sucursales con el mismo código de sucursal para un mismo banco"_s}));
  }

  void FailedInsertIsToldAndTheDialogStays() {
    TestHost host;
    const int bank = MakeBank(host);
    host.Recording().SetHook([](const QString& text) {
      if (text.startsWith(u"INSERT")) {
        throw automation::Error(-2147467259, u"se cortó"_s);
      }
    });
    host.driver.On("frmSucursal", [&](const DialogUser& dialog) {
      dialog.Type("txtSucursales_0", u"0001"_s);
      dialog.Type("txtSucursales_1", u"Nueva"_s);
      dialog.Press("cmdSucursales_0");
      host.Recording().SetHook({});
      dialog.Press("cmdSucursales_0");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Sucursales(), action.Agregar(), 0, bank));
    QCOMPARE(host.driver.Boxes(), QStringList(u"Prueba|critico|Error-2147467259: se cortó"_s));
    QCOMPARE(host.Query(u"SELECT Codigo FROM Sucursales WHERE codBanco={}", bank), QStringList(u"0001"_s));
  }
};

KEL_TEST(tst_branches);
#include "tst_branches.moc"
