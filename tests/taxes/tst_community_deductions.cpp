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
  void AddsTheSamePairTwice_data() {
    QTest::addColumn<int>("requested");
    QTest::newRow("add") << int(action.Agregar());
    QTest::newRow("on behalf of another: nothing is handed back") << int(action.Nuevo());
  }
  void AddsTheSamePairTwice() {
    QFETCH(int, requested);
    TestHost host;
    for (int i = 0; i < 2; ++i) {
      host.driver.On("frmDeduccionComunidad", [](const DialogUser& dialog) {
        QCOMPARE(dialog.Text(""), u"Nueva comunidad"_s);
        // Every opening starts clean.
        QCOMPARE(dialog.Find<QComboBox>("cboComunidad")->currentIndex(), -1);
        QCOMPARE(dialog.Find<QComboBox>("cboDeduccion")->currentIndex(), -1);
        QCOMPARE(dialog.Items("cboDeduccion").mid(0, 3), (QStringList{u"10"_s, u"15"_s, u"20"_s}));
        dialog.Choose("cboComunidad", u"La Rioja"_s);
        dialog.Choose("cboDeduccion", u"40"_s);
        dialog.Press("cmdAceptar");
      });
      EXPECT_CLEAN(host, host.PasarDatos(node.DeduccionesComunidad(), requested, 0, 77));
      QCOMPARE(host.services().property("IDAux"), QVariant(77));
    }
    const int rioja = host.Id(u"SELECT IDComunidad FROM ComunidadAutonoma WHERE Nombre='La Rioja'");
    QCOMPARE(host.Recording().Log(),
             (QStringList{
                 u"OPEN"_s, u"SELECT IDComunidad,Nombre FROM ComunidadAutonoma WHERE Eliminado=0"_s,
                 u"SELECT TipoDeducciones.IDTipoDeduccion,TipoDeducciones.Porcentaje FROM TipoDeducciones "
                 "WHERE Eliminado=0  ORDER BY Porcentaje"_s,
                 u"INSERT INTO Deduccion_Comunidad(CodComunidad,CodDeduccion) VALUES(%1,%2)"_s.arg(rioja).arg(forty),
                 u"CLOSE"_s}));
    QCOMPARE(host.Query(u"SELECT CodDeduccion FROM Deduccion_Comunidad WHERE CodComunidad={}", rioja).size(), 2);
  }

  void MissingChoicesAreRefusedInOrder() {
    TestHost host;
    host.driver.On("frmDeduccionComunidad", [](const DialogUser& dialog) {
      dialog.Press("cmdAceptar");
      dialog.Choose("cboComunidad", u"La Rioja"_s);
      dialog.Press("cmdAceptar");
      dialog.Press("cmdCancelar");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.DeduccionesComunidad(), action.Agregar()));
    QCOMPARE(host.driver.Boxes(), (QStringList{u"Prueba|informacion|Debe introducir alguna comunidad autónoma."_s,
                                               u"Prueba|informacion|Debe seleccionar alguna deducción."_s}));
  }

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
};

KEL_TEST(tst_community_deductions);
#include "tst_community_deductions.moc"
