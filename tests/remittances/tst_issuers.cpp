#include "remittances/Office.h"

#include <QComboBox>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// A presenter at a bank, and the province that new issuers start in.
struct Scene : Office {
  explicit Scene(const TestHost& testHost) : Office(testHost) {
    bank = Bank(u"0049"_s, u"Banco del Norte"_s);
    presenter = Presenter(u"Cáritas"_s, u"001"_s, bank, Branch(bank, u"0001"_s, u"Centro"_s));
    madrid = host.Id(u"SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'");
  }

  int Issuer(const QString& name, const QString& suffix) const {
    host.Query(
        u"INSERT INTO Emisores(Nombre,Cif,Sufijo,CodPresentador,Direccion,Poblacion,CodProvincia,CP) "
        u"VALUES('{}','A11111119','{}',{},'Calle Mayor, 1','Getafe',{},'28901')",
        name, suffix, presenter, madrid);
    return host.Id(u"SELECT MAX(IDEmisor) FROM Emisores");
  }

  int bank, presenter, madrid;
};

void FillParty(const DialogUser& dialog, const QString& suffix) {
  dialog.Type("txtNombre", u"L'Orde"_s);
  dialog.Type("txtNIF", u"A11111119"_s);
  dialog.Type("txtSufijo", suffix);
  dialog.Find<QComboBox>("cboPresentadores")->setCurrentIndex(0);
}

void Leave(const DialogUser& dialog) {
  dialog.Find("txtNombre")->setFocus(Qt::TabFocusReason);
}

}  // namespace

class tst_issuers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AnEmptyRowAndAPresenterThatIsNotListed() {
    TestHost host;
    const Scene scene(host);
    host.Query(u"INSERT INTO Emisores(Nombre,CodPresentador) VALUES(NULL,{})",
               scene.Presenter(u"Sin banco"_s, u"002"_s, 987654, 0));
    scene.Presenter(u"Ánimas"_s, u"003"_s, scene.bank, 0);
    host.Query(u"UPDATE Bancos SET Eliminado=-1");
    host.driver.On("frmEmisor", [&](const DialogUser& dialog) {
      // Those of a deleted bank are listed, those whose bank is missing are not.
      QCOMPARE(dialog.Items("cboPresentadores"),
               (QStringList{u"Ánimas - Banco del Norte"_s, u"Cáritas - Banco del Norte"_s}));
      QCOMPARE(dialog.Text("cboPresentadores") + dialog.Text("txtNombre") + dialog.Text("txtCP"), QString());
      QCOMPARE(dialog.Find<QComboBox>("cboPaises")->currentIndex(), -1);
      QCOMPARE(dialog.Items("cboProvincias"), QStringList());
      FillParty(dialog, u"4"_s);
      dialog.Find<QComboBox>("cboPresentadores")->setCurrentIndex(-1);
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdEmisor_0");
      QCOMPARE(dialog.Focused(), u"txtNombre"_s);
      dialog.Press("cmdEmisor_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Emisores(), action.Modificar(), 1));
    QCOMPARE(host.driver.Boxes(), QStringList(u"Prueba|informacion|Ha dejado algún campo obligatorio sin datos"_s));
  }

  void PostcodeAndProvince_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<QString>("province");
    QTest::newRow("complete") << u"08001"_s << u"08001"_s << u"Barcelona"_s;
    QTest::newRow("its first two digits") << u"08"_s << u"08"_s << u"Barcelona"_s;
    QTest::newRow("one digit") << u"0"_s << u"0"_s << u"Madrid"_s;
    QTest::newRow("letters") << u"SW1A 08"_s << u"108"_s << u"Cáceres"_s;
    QTest::newRow("of no province") << u"99123"_s << u"99123"_s << u"Madrid"_s;
  }
  void PostcodeAndProvince() {
    QFETCH(QString, typed);
    QFETCH(QString, kept);
    TestHost host;
    const Scene scene(host);
    host.driver.On("frmEmisor", [&](const DialogUser& dialog) {
      dialog.Type("txtCP", typed);
      Leave(dialog);
      QCOMPARE(dialog.Text("txtCP"), kept);
      QTEST(dialog.Text("cboProvincias"), "province");
      dialog.Paste("txtCP", typed);
      QCOMPARE(dialog.Text("txtCP"), kept);
      QCOMPARE(host.desktop.beeps, kept == typed ? 0 : 1);
      dialog.Type("txtCP", {});
      dialog.Choose("cboProvincias", u"Soria"_s);
      Leave(dialog);
      QCOMPARE(dialog.Text("txtCP"), u"42"_s);
      dialog.Press("cmdEmisor_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Emisores(), action.Agregar()));
  }

  void TheSuffixTakesThreeDigits() {
    TestHost host;
    const Scene scene(host);
    host.driver.On("frmEmisor", [&](const DialogUser& dialog) {
      dialog.Type("txtSufijo", u"1a2"_s);
      QCOMPARE(dialog.Text("txtSufijo"), u"12"_s);
      Leave(dialog);
      QCOMPARE(dialog.Text("txtSufijo"), u"012"_s);
      dialog.Type("txtSufijo", u"1234"_s);
      QCOMPARE(dialog.Text("txtSufijo"), u"123"_s);
      QCOMPARE(host.desktop.beeps, 2);
      dialog.Press("cmdEmisor_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Emisores(), action.Agregar()));
  }

  void NestedDialogsKeepTheRequest() {
    TestHost host;
    const Scene scene(host);
    const int id = scene.Issuer(u"Uno"_s, u"001"_s);
    const auto requestIsBack = [&] {
      QCOMPARE(Requested(host, "Accion"), action.Modificar());
      QCOMPARE(Requested(host, "IDSeleccionado"), id);
      QCOMPARE(Requested(host, "IDAux"), 9);
    };
    const auto cancelled = [](const char* dialog, const char* cancel) {
      return [=](const DialogUser& nested) {
        QCOMPARE(nested.Dialog()->objectName(), QString::fromLatin1(dialog));
        nested.Press(cancel);
      };
    };
    host.driver.On("frmEmisor", [&](const DialogUser& dialog) {
      host.driver.On("frmPais", cancelled("frmPais", "cmdPais_1"));
      dialog.Press("cmdNPais");
      QCOMPARE(dialog.Text("cboProvincias"), u"Madrid"_s);
      host.driver.On("frmProvincia", cancelled("frmProvincia", "cmdProvincia_1"));
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Text("cboProvincias"), u"Madrid"_s);
      host.driver.On("frmPresentador", cancelled("frmPresentador", "cmdCancelar"));
      dialog.Press("cmdNPresentador");
      QCOMPARE(dialog.Text("cboPresentadores"), u"Cáritas - Banco del Norte"_s);
      requestIsBack();
      host.driver.On("frmPais", [&](const DialogUser& nested) {
        QCOMPARE(Requested(host, "IDAux"), 0);
        nested.Type("txtPais", u"Lemuria"_s);
        nested.Press("cmdPais_0");
      });
      dialog.Press("cmdNPais");
      QCOMPARE(dialog.Text("cboPaises"), u"Lemuria"_s);
      QCOMPARE(dialog.Items("cboProvincias"), QStringList());
      requestIsBack();
      host.driver.On("frmProvincia", [](const DialogUser& nested) {
        QCOMPARE(nested.Text("lblPaisFijo"), u"Lemuria"_s);
        nested.Type("txtProvincia", u"Isla"_s);
        nested.Press("cmdProvincia_0");
      });
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Text("cboProvincias"), u"Isla"_s);
      QCOMPARE(dialog.Focused(), u"cboProvincias"_s);
      requestIsBack();
      host.driver.On("frmPresentador", [](const DialogUser& nested) {
        nested.Type("txtNombre", u"Ánimas"_s);
        nested.Type("txtNIF", u"A11111119"_s);
        nested.Type("txtSufijo", u"9"_s);
        nested.Choose("cboBancos", u"Banco del Norte"_s);
        nested.Choose("cboSucursales", u"Centro"_s);
        nested.Press("cmdAceptar");
      });
      dialog.Press("cmdNPresentador");
      QCOMPARE(dialog.Text("cboPresentadores"), u"Ánimas - Banco del Norte"_s);
      QCOMPARE(dialog.Items("cboPresentadores").size(), 2);
      requestIsBack();
      dialog.Press("cmdEmisor_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Emisores(), action.Modificar(), id, 9));
    QCOMPARE(host.Query(u"SELECT Provincias.Nombre, Presentadores.Nombre FROM (Emisores INNER JOIN Provincias ON "
                        u"Emisores.CodProvincia=Provincias.IDProvincia) INNER JOIN Presentadores ON "
                        u"Emisores.CodPresentador=Presentadores.IDPresentador"),
             QStringList(u"Isla|Ánimas"_s));
    // A list of countries that is emptied chooses none.
    QCOMPARE(host.Recording().Log().filter(u"CodPais=0 "_s), QStringList());
  }

  void TheFirstCountryCountsAsNone() {
    TestHost host;
    const Scene scene(host);
    host.Query(u"UPDATE Paises SET Eliminado=-1 WHERE Nombre='España'");
    host.driver.On("frmEmisor", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Find<QComboBox>("cboPaises")->currentIndex(), -1);
      for (const int country : {-1, 0}) {
        dialog.Find<QComboBox>("cboPaises")->setCurrentIndex(country);
        host.driver.Answer(QMessageBox::Ok);
        dialog.Press("cmdNProvincia");
        QCOMPARE(dialog.Focused(), u"cboPaises"_s);
      }
      dialog.Find<QComboBox>("cboPaises")->setCurrentIndex(1);
      host.driver.On("frmProvincia", [](const DialogUser& nested) { nested.Press("cmdProvincia_1"); });
      dialog.Press("cmdNProvincia");
      dialog.Press("cmdEmisor_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Emisores(), action.Agregar()));
    QCOMPARE(host.driver.Boxes(),
             QStringList(2, u"Prueba|informacion|Antes de crear una provincia debe seleccionar un pais de la lista"_s));
  }
};

KEL_TEST(tst_issuers);
#include "tst_issuers.moc"
