#include "support/Expect.h"

#include <QComboBox>
#include <QMessageBox>
#include <QScreen>

#include <csignal>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// The home country's identifier in the reference data.
constexpr int spain = 35;

}  // namespace

class tst_provinces : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void CountriesAreListedInSpanishOrder() {
    TestHost host;
    QStringList items;
    host.driver.On("frmProvincia", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Focused(), u"cboPais"_s);
      items = dialog.Items("cboPais");
      dialog.Press("cmdProvincia_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Provincias(), action.Agregar()));
    QVERIFY(items.size() > 200);
    QVERIFY(items.indexOf(u"Dominica"_s) < items.indexOf(u"España"_s));
    QVERIFY(items.indexOf(u"Países Bajos"_s) < items.indexOf(u"Portugal"_s));
    QCOMPARE(items.first(), u"Afganistán"_s);
  }

  void FixedCountry() {
    TestHost host;
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QVERIFY(!dialog.IsVisible("cboPais"));
      QVERIFY(!dialog.IsVisible("cmdNuevoPais"));
      QCOMPARE(dialog.Text("lblPaisFijo"), u"España"_s);
      dialog.Type("txtProvincia", u"Trasmiera"_s);
      dialog.Press("cmdProvincia_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Provincias(), action.Nuevo(), 0, spain));
    QCOMPARE(host.services().property("IDAux").toInt(),
             host.Id(u"SELECT IDProvincia FROM Provincias WHERE Nombre='Trasmiera' AND CodPais=35"));
  }

  void NestedCountryKeepsTheRequest() {
    TestHost host;
    const int madrid = host.Id(u"SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'");
    host.driver.On("frmProvincia", [&](const DialogUser& dialog) {
      dialog.Press("cmdNuevoPais");
      QCOMPARE(dialog.Text("cboPais"), u"Atlántida"_s);
      QCOMPARE(host.services().property("Accion").toInt(), action.Modificar());
      QCOMPARE(host.services().property("IDSeleccionado").toInt(), madrid);
      QCOMPARE(host.services().property("IDAux").toInt(), 9);
      dialog.Press("cmdNuevoPais");
      QCOMPARE(dialog.Text("cboPais"), u"Atlántida"_s);
      dialog.Press("cmdProvincia_0");
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar país"_s);
      dialog.Type("txtPais", u"Atlántida"_s);
      dialog.Press("cmdPais_0");
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) { dialog.Press("cmdPais_1"); });
    EXPECT_CLEAN(host, host.PasarDatos(node.Provincias(), action.Modificar(), madrid, 9));
    QCOMPARE(host.Query(u"SELECT Paises.Nombre FROM Provincias INNER JOIN Paises ON "
                        "Provincias.CodPais=Paises.IDPais WHERE IDProvincia={}",
                        madrid),
             QStringList(u"Atlántida"_s));
  }

  void ErrorOfANestedDialogEndsBoth() {
    TestHost host;
    host.Recording().SetHook([](const QString& entry) {
      if (entry.startsWith(u"INSERT INTO Paises")) {
        throw automation::Error(-2147467259, u"sin conexión"_s);
      }
    });
    host.driver.On("frmProvincia", [](const DialogUser& dialog) { dialog.Press("cmdNuevoPais"); });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", u"Atlántida"_s);
      dialog.Press("cmdPais_0");
    });
    EXPECT_ERROR(host, host.PasarDatos(node.Provincias(), action.Agregar()), -2147467259);
    QCOMPARE(host.services().property("Accion").toInt(), action.Agregar());
  }

  // The program is told to end while a country is being created for a province that is being modified: the answer
  // "save" saves the province as what it is.
  void TerminationOverANestedDialog() {
    const auto before = std::signal(SIGTERM, [](int) {});
    TestHost host;
    const int madrid = host.Id(u"SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'");
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      dialog.Type("txtProvincia", u"Los Madriles"_s);
      dialog.Press("cmdNuevoPais");
      QTRY_VERIFY(!dialog.Dialog()->isVisible());
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      raise(SIGTERM);
      QTRY_VERIFY(!dialog.Dialog()->isVisible());
    });
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(node.Provincias(), action.Modificar(), madrid));
    std::signal(SIGTERM, before);
    QCOMPARE(
        host.Recording().Writes().filter(u"Provincias"_s),
        QStringList(u"UPDATE Provincias SET Nombre='Los Madriles', CodPais=35 WHERE IDProvincia=%1"_s.arg(madrid)));
  }

  void ALongCountryDoesNotWidenTheWindow() {
    TestHost host;
    host.Query(u"INSERT INTO Paises(Nombre) VALUES('{}')", QString(600, u'W'));
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QVERIFY(dialog.Dialog()->width() <= dialog.Dialog()->screen()->availableSize().width());
      dialog.Press("cmdProvincia_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Provincias(), action.Agregar()));
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
    EXPECT_CLEAN(host, host.PasarDatos(node.Provincias(), action.Agregar()));
  }
};

KEL_TEST(tst_provinces);
#include "tst_provinces.moc"
