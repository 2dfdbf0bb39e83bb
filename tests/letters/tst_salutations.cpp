#include "support/Expect.h"

#include <QMessageBox>

using namespace framework;
using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

const int encabezados = node.Encabezados().toInt();
// The priests' one in the reference data.
constexpr int priest = 4;

}  // namespace

class tst_salutations : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void IsReworded() {
    TestHost host;
    host.driver.On("frmEncabezado", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de encabezado"_s);
      QCOMPARE(dialog.Text("lblDescripcion"), u"Sacerdote"_s);
      QCOMPARE(dialog.Text("txtEncabezado"), u"Reverendo padre:"_s);
      QCOMPARE(host.desktop.pointers, (QList<int>{vbHourglass, vbDefault}));
      dialog.Type("txtEncabezado", u"Mossèn d'aquí:"_s);
      dialog.Press("cmdEncabezado_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(encabezados, action.Modificar(), priest));
    QCOMPARE(host.Recording().Log(),
             (QStringList{u"OPEN"_s,
                          u"SELECT Encabezados.IDEncabezado, Encabezados.Nombre, Encabezados.codDescripcion, "
                          "Encabezados.Descripcion FROM Encabezados WHERE Encabezados.IDEncabezado=4"_s,
                          u"UPDATE Encabezados SET Nombre='Mossèn d''aquí:' WHERE Encabezados.IDEncabezado=4"_s,
                          u"CLOSE"_s}));
    QCOMPARE(host.Query(u"SELECT Nombre FROM Encabezados WHERE IDEncabezado={}", priest),
             QStringList(u"Mossèn d'aquí:"_s));
  }

  void AnEmptyOneIsRefused() {
    TestHost host;
    host.driver.On("frmEncabezado", [](const DialogUser& dialog) {
      dialog.Type("txtEncabezado", u" "_s);
      dialog.Press("cmdEncabezado_0");
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(encabezados, action.Modificar(), priest));
    QCOMPARE(host.driver.Boxes(),
             (QStringList{u"Prueba|aviso|Debe rellenar los datos obligatorios para continuar"_s,
                          u"Prueba|pregunta|¿Desea guardar los cambios efectuados en el formulario?"_s}));
    QCOMPARE(host.Recording().Writes(), QStringList());
  }

  void OneThatIsMissingIsToldAndNotShown() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(encabezados, action.Modificar(), 999));
    const QString box = host.driver.Boxes().value(0);
    QVERIFY2(box.contains(u"\nError 3021\n"_s), qPrintable(box));
    QVERIFY2(box.endsWith(u"frmEncabezado / CargarDatosBD"_s), qPrintable(box));
    QCOMPARE(host.desktop.pointers.last(), int(vbDefault));
    QCOMPARE(host.Recording().Log().last(), u"CLOSE"_s);
  }
};

KEL_TEST(tst_salutations);
#include "tst_salutations.moc"
