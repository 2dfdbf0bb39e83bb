#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QComboBox>
#include <QMessageBox>
#include <QScreen>

#include <csignal>

using support::agregar;
using support::DialogUser;
using support::modificar;
using support::nuevo;
using support::TestHost;

namespace {

constexpr int provincias = 22;
constexpr int espana = 35;

}  // namespace

class tst_provinces : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AddsWithTheChosenCountry() {
    TestHost host;
    const int francia = host.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='Francia'"));
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Agregar provincia"));
      QCOMPARE(dialog.Focused(), QStringLiteral("cboPais"));
      QVERIFY(!dialog.IsVisible("lblPaisFijo"));
      QCOMPARE(dialog.Find<QComboBox>("cboPais")->currentIndex(), -1);
      dialog.Choose("cboPais", QStringLiteral("Francia"));
      dialog.Type("txtProvincia", QStringLiteral(" L'Isère "));
      dialog.Press("cmdProvincia_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(provincias, agregar));
    QCOMPARE(
        host.connection().Writes(),
        QStringList(
            QStringLiteral("INSERT INTO Provincias(CodPais,Nombre,eliminado) VALUES(%1,'L''Isère',0)").arg(francia)));
  }

  void CountriesAreListedInSpanishOrder() {
    TestHost host;
    QStringList items;
    host.driver.On("frmProvincia", [&](const DialogUser& dialog) {
      items = dialog.Items("cboPais");
      dialog.Press("cmdProvincia_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(provincias, agregar));
    QVERIFY(items.size() > 200);
    QVERIFY(items.indexOf(QStringLiteral("Dominica")) < items.indexOf(QStringLiteral("España")));
    QVERIFY(items.indexOf(QStringLiteral("Países Bajos")) < items.indexOf(QStringLiteral("Portugal")));
    QCOMPARE(items.first(), QStringLiteral("Afganistán"));
  }

  void Modifies() {
    TestHost host;
    const int madrid = host.Id(QStringLiteral("SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'"));
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Propiedades de Madrid"));
      QCOMPARE(dialog.Text("cboPais"), QStringLiteral("España"));
      dialog.Type("txtProvincia", QStringLiteral("Los Madriles"));
      dialog.Press("cmdProvincia_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(provincias, modificar, madrid));
    QVERIFY(host.connection().Log().contains(
        QStringLiteral("UPDATE Provincias SET Nombre='Los Madriles', CodPais=35 WHERE IDProvincia=%1").arg(madrid)));
  }

  void IncompleteInputIsRefused() {
    TestHost host;
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      dialog.Type("txtProvincia", QStringLiteral("Sin país"));
      dialog.Press("cmdProvincia_0");
      dialog.Choose("cboPais", QStringLiteral("España"));
      dialog.Type("txtProvincia", QStringLiteral("  "));
      dialog.Press("cmdProvincia_0");
      dialog.Press("cmdProvincia_1");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(provincias, agregar));
    QCOMPARE(host.driver.Boxes(), QStringList(2, QStringLiteral("Prueba|informacion|Falta algún campo por rellenar")));
    QCOMPARE(host.connection().Writes(), QStringList());
  }

  void FixedCountry() {
    TestHost host;
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QVERIFY(!dialog.IsVisible("cboPais"));
      QVERIFY(!dialog.IsVisible("cmdNuevoPais"));
      QCOMPARE(dialog.Text("lblPaisFijo"), QStringLiteral("España"));
      dialog.Type("txtProvincia", QStringLiteral("Trasmiera"));
      dialog.Press("cmdProvincia_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(provincias, nuevo, 0, espana));
    QCOMPARE(host.services().property("IDAux").toInt(),
             host.Id(QStringLiteral("SELECT IDProvincia FROM Provincias WHERE Nombre='Trasmiera' AND CodPais=35")));
  }

  void NestedCountryKeepsTheRequest() {
    TestHost host;
    const int madrid = host.Id(QStringLiteral("SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'"));
    host.driver.On("frmProvincia", [&](const DialogUser& dialog) {
      dialog.Press("cmdNuevoPais");
      QCOMPARE(dialog.Text("cboPais"), QStringLiteral("Atlántida"));
      QCOMPARE(host.services().property("Accion").toInt(), modificar);
      QCOMPARE(host.services().property("IDSeleccionado").toInt(), madrid);
      QCOMPARE(host.services().property("IDAux").toInt(), 9);
      dialog.Press("cmdNuevoPais");
      QCOMPARE(dialog.Text("cboPais"), QStringLiteral("Atlántida"));
      dialog.Press("cmdProvincia_0");
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Agregar país"));
      dialog.Type("txtPais", QStringLiteral("Atlántida"));
      dialog.Press("cmdPais_0");
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) { dialog.Press("cmdPais_1"); });
    EXPECT_CLEAN(host, host.PasarDatos(provincias, modificar, madrid, 9));
    QCOMPARE(host.Query(QStringLiteral("SELECT Paises.Nombre FROM Provincias INNER JOIN Paises ON "
                                       "Provincias.CodPais=Paises.IDPais WHERE IDProvincia=%1")
                            .arg(madrid)),
             QStringList(QStringLiteral("Atlántida")));
  }

  void ErrorOfANestedDialogEndsBoth() {
    TestHost host;
    host.connection().SetHook([](const QString& entry) {
      if (entry.startsWith(u"INSERT INTO Paises")) {
        throw automation::Error(-2147467259, QStringLiteral("sin conexión"));
      }
    });
    host.driver.On("frmProvincia", [](const DialogUser& dialog) { dialog.Press("cmdNuevoPais"); });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", QStringLiteral("Atlántida"));
      dialog.Press("cmdPais_0");
    });
    EXPECT_ERROR(host, host.PasarDatos(provincias, agregar), -2147467259);
    QCOMPARE(host.services().property("Accion").toInt(), agregar);
  }

  // The program is told to end while a country is being created for a province that is being modified: the answer
  // "save" saves the province as what it is.
  void TerminationOverANestedDialog() {
    const auto before = std::signal(SIGTERM, [](int) {});
    TestHost host;
    const int madrid = host.Id(QStringLiteral("SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'"));
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      dialog.Type("txtProvincia", QStringLiteral("Los Madriles"));
      dialog.Press("cmdNuevoPais");
      QTRY_VERIFY(!dialog.Dialog()->isVisible());
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      raise(SIGTERM);
      QTRY_VERIFY(!dialog.Dialog()->isVisible());
    });
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(provincias, modificar, madrid));
    std::signal(SIGTERM, before);
    QCOMPARE(host.connection().Writes().filter(QStringLiteral("Provincias")),
             QStringList(QStringLiteral("UPDATE Provincias SET Nombre='Los Madriles', CodPais=35 WHERE IDProvincia=%1")
                             .arg(madrid)));
  }

  void ALongCountryDoesNotWidenTheWindow() {
    TestHost host;
    host.Query(QStringLiteral("INSERT INTO Paises(Nombre) VALUES('%1')").arg(QString(600, u'W')));
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QVERIFY(dialog.Dialog()->width() <= dialog.Dialog()->screen()->availableSize().width());
      dialog.Press("cmdProvincia_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(provincias, agregar));
  }

  void NameIsCutToFiftyCharacters_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");
    QTest::newRow("fifty") << QString(50, u'a') << QString(50, u'a');
    QTest::newRow("fifty-one") << QString(51, u'a') << QString(50, u'a');
    const QString emoji = QString::fromUtf8("😀");
    QTest::newRow("pair over the edge") << QString(49, u'a') + emoji << QString(49, u'a');
    QTest::newRow("pair within") << QString(48, u'a') + emoji + u'b' << QString(48, u'a') + emoji;
  }
  void NameIsCutToFiftyCharacters() {
    QFETCH(QString, text);
    QFETCH(QString, kept);
    TestHost host;
    host.driver.On("frmProvincia", [&](const DialogUser& dialog) {
      dialog.Paste("txtProvincia", text);
      QCOMPARE(dialog.Text("txtProvincia"), kept);
      dialog.Press("cmdProvincia_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(provincias, agregar));
  }
};

KEL_TEST(tst_provinces);
#include "tst_provinces.moc"
