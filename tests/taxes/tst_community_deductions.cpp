#include "support/Expect.h"

#include <QComboBox>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// The percentages 40 and 80 in the reference data.
constexpr int forty = 2;
constexpr int eighty = 1;

}  // namespace

class tst_community_deductions : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ModifiesWithANewCommunityAndANewPercentage() {
    TestHost host;
    host.Query(u"INSERT INTO Deduccion_Comunidad(CodComunidad,CodDeduccion) VALUES(3,{})", eighty);
    const QString community = host.Query(u"SELECT Nombre FROM ComunidadAutonoma WHERE IDComunidad=3").value(0);
    const int id = host.Id(u"SELECT MAX(IDDeduccion_Comunidad) AS N FROM Deduccion_Comunidad");
    host.driver.On("frmDeduccionComunidad", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de la deducción de "_s + community);
      QCOMPARE(dialog.Text("cboComunidad"), community);
      QCOMPARE(dialog.Text("cboDeduccion"), u"80"_s);
      dialog.Press("cmdComunidad");
      QCOMPARE(dialog.Text("cboComunidad"), community);
      dialog.Press("cmdComunidad");
      QCOMPARE(dialog.Text("cboComunidad"), u"Enlloc"_s);
      dialog.Press("cmdDeduccion");
      QCOMPARE(dialog.Text("cboDeduccion"), u"66"_s);
      QCOMPARE(host.services().property("Accion").toInt(), action.Modificar());
      QCOMPARE(host.services().property("IDAux").toInt(), 9);
      dialog.Press("cmdAceptar");
    });
    host.driver.On("frmComunidadAutonoma", [](const DialogUser& dialog) { dialog.Press("cmdCancelar"); });
    host.driver.On("frmComunidadAutonoma", [](const DialogUser& dialog) {
      dialog.Type("txtComunidad", u"Enlloc"_s);
      dialog.Type("txtCodigo", u"99"_s);
      dialog.Press("cmdAceptar");
    });
    host.driver.On("frmTipoDeduccion", [](const DialogUser& dialog) {
      dialog.Type("txtDeduccion", u"66"_s);
      dialog.Press("cmdDeduccion_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.DeduccionesComunidad(), action.Modificar(), id, 9));
    QCOMPARE(host.Query(u"SELECT ComunidadAutonoma.Nombre, TipoDeducciones.Porcentaje FROM (Deduccion_Comunidad INNER "
                        u"JOIN ComunidadAutonoma ON CodComunidad=IDComunidad) INNER JOIN TipoDeducciones ON "
                        u"CodDeduccion=IDTipoDeduccion WHERE IDDeduccion_Comunidad={}",
                        id),
             QStringList(u"Enlloc|66"_s));
    QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
  }

  // The row of the dispatch table releases another dialog's instance; after a failed load this one is clean, too.
  void AnOpeningAfterAFailedOne() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.DeduccionesComunidad(), action.Modificar(), 987654));
    QVERIFY(host.driver.Boxes().value(0).endsWith(u"frmDeduccionComunidad / Form Load"_s));
    host.driver.On("frmDeduccionComunidad", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Nueva comunidad"_s);
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.DeduccionesComunidad(), action.Agregar()));
  }

  void AFailedWriteOfACommunityKeepsWhatWasTyped() {
    TestHost host;
    host.Recording().FailAt(u"INSERT INTO ComunidadAutonoma"_s);
    host.driver.On("frmComunidadAutonoma", [&](const DialogUser& dialog) {
      dialog.Type("txtComunidad", u"Enlloc"_s);
      dialog.Type("txtCodigo", u"9a9"_s);
      // A letter is not taken, without a sound.
      QCOMPARE(host.desktop.beeps, 0);
      dialog.Press("cmdAceptar");
      QCOMPARE(dialog.Text("txtComunidad"), u"Enlloc"_s);
      host.Recording().FailAt({});
      dialog.Press("cmdAceptar");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.ComunidadAutonoma(), action.Agregar(), 0, 77));
    QCOMPARE(host.services().property("IDAux"), QVariant(77));
    QVERIFY(host.driver.Boxes().value(0).contains(u"|sin conexión|Error -2147467259\n"_s));
    QCOMPARE(host.Query(u"SELECT Codigo FROM ComunidadAutonoma WHERE Nombre='Enlloc'"), QStringList(u"99"_s));
  }
};

KEL_TEST(tst_community_deductions);
#include "tst_community_deductions.moc"
