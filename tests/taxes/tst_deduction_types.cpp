#include "support/Expect.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// The percentage 40 in the reference data.
constexpr int forty = 2;

}  // namespace

class tst_deduction_types : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Accept_data() {
    QTest::addColumn<int>("requested");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("refusal");
    const int add = action.Agregar();
    const int modify = action.Modificar();
    const QString taken = u"¡Ya existe un tipo de deducción con ese porcentaje!"_s;
    const QString tooMuch = u"¡El porcentaje no debe superar el 100%!"_s;
    QTest::newRow("nothing") << add << QString() << u"¡Debe introducir datos en el campo porcentaje!"_s;
    QTest::newRow("zero") << add << u"0"_s << QString();
    QTest::newRow("100") << add << u"100"_s << QString();
    QTest::newRow("101") << add << u"101"_s << tooMuch;
    QTest::newRow("twenty digits") << add << u"99999999999999999999"_s << tooMuch;
    QTest::newRow("taken") << add << u"40"_s << taken;
    QTest::newRow("taken, with a zero in front") << add << u"040"_s << taken;
    QTest::newRow("a deleted one's, added") << add << u"3"_s << QString();
    QTest::newRow("a deleted one's, modified") << modify << u"3"_s << taken;
    QTest::newRow("its own, modified") << modify << u"40"_s << QString();
    QTest::newRow("101 that is taken: taken is told") << modify << u"300"_s << taken;
  }
  void Accept() {
    QFETCH(int, requested);
    QFETCH(QString, typed);
    QFETCH(QString, refusal);
    TestHost host;
    host.Query(u"INSERT INTO TipoDeducciones(Porcentaje,Eliminado) VALUES(3,-1)");
    host.Query(u"INSERT INTO TipoDeducciones(Porcentaje) VALUES(300)");
    host.driver.On("frmTipoDeduccion", [&](const DialogUser& dialog) {
      dialog.Type("txtDeduccion", typed);
      dialog.Press("cmdDeduccion_0");
      if (!refusal.isEmpty()) {
        QCOMPARE(dialog.Focused(), u"txtDeduccion"_s);
        QCOMPARE(dialog.Text("txtDeduccion"), typed);
        dialog.Press("cmdDeduccion_1");
      }
    });
    if (!refusal.isEmpty()) {
      host.driver.Answer(QMessageBox::Ok);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDeduccion(), requested, forty, 77));
    QCOMPARE(host.services().property("IDAux"), QVariant(77));
    QCOMPARE(host.driver.Boxes(), refusal.isEmpty() ? QStringList() : QStringList(u"Prueba|aviso|"_s + refusal));
    QCOMPARE(host.Recording().Writes().filter(u"TipoDeducciones"_s).size(), refusal.isEmpty() ? 1 : 0);
  }

  void OnlyDigitsAreTakenWithABeep() {
    TestHost host;
    host.driver.On("frmTipoDeduccion", [&](const DialogUser& dialog) {
      dialog.Type("txtDeduccion", u"6,5%"_s);
      QCOMPARE(dialog.Text("txtDeduccion"), u"65"_s);
      QCOMPARE(host.desktop.beeps, 2);
      dialog.Key(Qt::Key_Backspace);
      QCOMPARE(dialog.Text("txtDeduccion"), u"6"_s);
      dialog.Paste("txtDeduccion", u"6,5"_s);
      QCOMPARE(dialog.Text("txtDeduccion"), u"6"_s);
      QCOMPARE(host.desktop.beeps, 3);
      dialog.Press("cmdDeduccion_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDeduccion(), action.Agregar()));
  }

  // Told under the procedure's name, rolled back afterwards, and the text is still there.
  void Errors_data() {
    QTest::addColumn<int>("requested");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("procedure");
    QTest::addColumn<bool>("rolledBack");
    QTest::newRow("check") << int(action.Agregar()) << u"SELECT IDTipoDeduccion"_s << u"cmdDeduccion_Click("_s << false;
    QTest::newRow("begin") << int(action.Agregar()) << u"BEGIN"_s << u"AgregarDeduccionBD"_s << false;
    QTest::newRow("insert") << int(action.Agregar()) << u"INSERT"_s << u"AgregarDeduccionBD"_s << true;
    QTest::newRow("key") << int(action.Nuevo()) << u"SELECT MAX"_s << u"AgregarDeduccionBD"_s << false;
    QTest::newRow("update") << int(action.Modificar()) << u"UPDATE TipoDeducciones"_s << u"ModificarDeduccionBD"_s
                            << false;
    QTest::newRow("load") << int(action.Modificar()) << u"SELECT Porcentaje"_s << u"Form_Load"_s << false;
  }
  void Errors() {
    QFETCH(int, requested);
    QFETCH(QString, failing);
    QFETCH(QString, procedure);
    QFETCH(bool, rolledBack);
    TestHost host;
    host.Recording().FailAt(failing);
    if (procedure != u"Form_Load"_s) {
      host.driver.On("frmTipoDeduccion", [](const DialogUser& dialog) {
        dialog.Type("txtDeduccion", u"66"_s);
        dialog.Press("cmdDeduccion_0");
        QCOMPARE(dialog.Text("txtDeduccion"), u"66"_s);
        dialog.Press("cmdDeduccion_1");
      });
    }
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDeduccion(), requested, forty));
    const QString box = host.driver.Boxes().value(0);
    QVERIFY2(box.endsWith(u"KelConfiguracion / frmTipoDeduccion / "_s + procedure), qPrintable(box));
    QCOMPARE(host.Recording().Log().contains(u"ROLLBACK"_s), rolledBack);
    QCOMPARE(host.services().property("IDAux"), QVariant(0));
  }

  void WhatCancelHandsBack_data() {
    QTest::addColumn<int>("requested");
    QTest::addColumn<int>("handedBack");
    QTest::newRow("add") << int(action.Agregar()) << 77;
    QTest::newRow("on behalf of another") << int(action.Nuevo()) << 0;
  }
  void WhatCancelHandsBack() {
    QFETCH(int, requested);
    QFETCH(int, handedBack);
    TestHost host;
    host.driver.On("frmTipoDeduccion", [](const DialogUser& dialog) { dialog.Press("cmdDeduccion_1"); });
    EXPECT_CLEAN(host, host.PasarDatos(node.TipoDeduccion(), requested, 0, 77));
    QCOMPARE(host.services().property("IDAux").toInt(), handedBack);
  }
};

KEL_TEST(tst_deduction_types);
#include "tst_deduction_types.moc"
