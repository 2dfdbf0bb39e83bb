#include "platform/automation/ClassRegistry.h"
#include "support/Expect.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// What the request of the donation type looks like, from the host's side.
QString RequestOf(TestHost& host) {
  QStringList values;
  for (const char* name : {"IDNodo", "Accion", "IDSeleccionado", "IDAux"}) {
    values.append(host.services().property(name).toString());
  }
  return values.join(u' ');
}

}  // namespace

// A percentage is added in the middle of a donation type through the component's own dispatcher, which closes the
// connection that the donation type goes on with.
class tst_nested_deductions : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TheDonationTypeGoesOn_data() {
    QTest::addColumn<QString>("failing");
    QTest::addColumn<bool>("accepts");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("reported");
    QTest::newRow("created") << QString() << true << u"66"_s << QString();
    QTest::newRow("cancelled") << QString() << false << u"50"_s << QString();
    QTest::newRow("refused by the database")
        << u"INSERT INTO TipoDeducciones"_s << true << u"50"_s << u"frmTipoDeduccion / AgregarDeduccionBD"_s;
    QTest::newRow("the call fails") << u"CLOSE"_s << false << u"50"_s << u"frmTipoDonativo / cmdAgregar_Click("_s;
  }
  void TheDonationTypeGoesOn() {
    QFETCH(QString, failing);
    QFETCH(bool, accepts);
    QFETCH(QString, chosen);
    QFETCH(QString, reported);
    TestHost host;
    host.Query(
        u"INSERT INTO TipoDonativos(CodTipoDeduccionFisica,CodTipoDeduccionJuridica,Nombre) VALUES(2,4,'Becas')");
    const int id = host.Id(u"SELECT MAX(IDTipoDonativo) AS N FROM TipoDonativos");
    host.driver.On("frmTipoDonativo", [&](const DialogUser& dialog) {
      const QString request = RequestOf(host);
      host.Recording().FailAt(failing);
      dialog.Press("cmdAgregar_1");
      host.Recording().FailAt({});
      QCOMPARE(RequestOf(host), request);
      QCOMPARE(host.Recording().State(), int(adodb::StateOpen));
      QCOMPARE(dialog.Text("cboTipoDonativo_0"), u"40"_s);
      QCOMPARE(dialog.Text("cboTipoDonativo_1"), chosen);
      QCOMPARE(host.Query(u"SELECT ValorID FROM BloqueoRegistros"), QStringList(QString::number(id)));
      dialog.Type("txtTipoDonativo_0", u"Becas y libros"_s);
      dialog.Press("cmdTipoDonativo_0");
    });
    host.driver.On("frmTipoDeduccion", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar tipo de deducción"_s);
      dialog.Type("txtDeduccion", u"66"_s);
      dialog.Press(accepts ? "cmdDeduccion_0" : "cmdDeduccion_1");
      if (dialog.Dialog()->isVisible()) {
        dialog.Press("cmdDeduccion_1");
      }
    });
    if (!reported.isEmpty()) {
      host.driver.Answer(QMessageBox::Ok);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Modificar(), id, 9));
    QVERIFY2(host.driver.Boxes().value(0).endsWith(reported), qPrintable(host.driver.Boxes().value(0)));
    QCOMPARE(host.Query(u"SELECT Nombre, Porcentaje FROM TipoDonativos INNER JOIN TipoDeducciones ON "
                        u"CodTipoDeduccionJuridica=IDTipoDeduccion"),
             QStringList(u"Becas y libros|"_s + chosen));
    QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
    QCOMPARE(host.Recording().Log().last(), u"CLOSE"_s);
  }

  // Nobody but the component opens the connection again: at once, with its own string, before the lists are filled. And
  // the dispatcher is this library's own, not one that is registered.
  void TheConnectionIsOpenedAtOnce() {
    TestHost host;
    host.driver.On("frmTipoDonativo", [&](const DialogUser& dialog) {
      automation::UnregisterClass(u"KelConfiguracion.CPrincipal"_s);
      host.Recording().Clear();
      dialog.Press("cmdAgregar_0");
      const QString fill = u"SELECT IDTipoDeduccion, Porcentaje FROM TipoDeducciones WHERE Eliminado=False"_s;
      QCOMPARE(host.Recording().Log().mid(5), (QStringList{u"CLOSE"_s, u"OPEN('','','',-1)"_s, fill, fill}));
      QCOMPARE(dialog.Text("cboTipoDonativo_0"), u"66"_s);
      dialog.Close();
    });
    host.driver.On("frmTipoDeduccion", [](const DialogUser& dialog) {
      dialog.Type("txtDeduccion", u"66"_s);
      dialog.Press("cmdDeduccion_0");
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDonativos(), action.Agregar()));
  }
};

KEL_TEST(tst_nested_deductions);
#include "tst_nested_deductions.moc"
