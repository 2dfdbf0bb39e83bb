#include "support/Expect.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

class tst_communities : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AddsAndHandsBack() {
    TestHost host;
    host.driver.On("frmComunidadAutonoma", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Nueva comunidad autónoma"_s);
      dialog.Type("txtComunidad", u" Comunitat d'Enlloc "_s);
      // Only digits arrive, without a sound.
      dialog.Type("txtCodigo", u"9a-9"_s);
      QCOMPARE(host.desktop.beeps, 0);
      dialog.Press("cmdAceptar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.ComunidadAutonoma(), action.Nuevo()));
    QCOMPARE(host.Recording().Log().mid(1, 2),
             (QStringList{u"INSERT INTO ComunidadAutonoma(Nombre,Codigo) VALUES('Comunitat d''Enlloc','99')"_s,
                          u"SELECT MAX(IDComunidad) AS Maximo FROM ComunidadAutonoma"_s}));
    QCOMPARE(host.services().property("IDAux").toInt(),
             host.Id(u"SELECT IDComunidad FROM ComunidadAutonoma WHERE Nombre='Comunitat d''Enlloc'"));
  }

  void Modifies() {
    TestHost host;
    const int id = host.Id(u"SELECT IDComunidad FROM ComunidadAutonoma WHERE Nombre='La Rioja'");
    host.driver.On("frmComunidadAutonoma", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de La Rioja"_s);
      QCOMPARE(dialog.Text("txtCodigo"), u"16"_s);
      QCOMPARE(host.Query(u"SELECT campoID, ValorID FROM BloqueoRegistros"), QStringList(u"IDComunidad|%1"_s.arg(id)));
      dialog.Paste("txtCodigo", u"n.º 77"_s);
      dialog.Press("cmdAceptar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.ComunidadAutonoma(), action.Modificar(), id));
    QVERIFY(host.Recording().Log().contains(
        u"UPDATE ComunidadAutonoma SET Codigo='77',Nombre='La Rioja' WHERE IDComunidad=%1"_s.arg(id)));
  }

  void IncompleteInputIsRefusedInOrder() {
    TestHost host;
    host.driver.On("frmComunidadAutonoma", [](const DialogUser& dialog) {
      dialog.Press("cmdAceptar");
      QCOMPARE(dialog.Focused(), u"txtComunidad"_s);
      dialog.Type("txtComunidad", u"Enlloc"_s);
      dialog.Press("cmdAceptar");
      QCOMPARE(dialog.Focused(), u"txtCodigo"_s);
      dialog.Press("cmdCancelar");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.ComunidadAutonoma(), action.Agregar(), 0, 77));
    QCOMPARE(host.driver.Boxes(), (QStringList{u"Prueba|informacion|Debe introducir un nombre para la comunidad"_s,
                                               u"Prueba|informacion|Debe introducir un código para la comunidad"_s}));
    QCOMPARE(host.services().property("IDAux"), QVariant(0));
    QCOMPARE(host.Recording().Writes(), QStringList());
  }

  void AFailedWriteKeepsWhatWasTyped() {
    TestHost host;
    host.Recording().FailAt(u"INSERT INTO ComunidadAutonoma"_s);
    host.driver.On("frmComunidadAutonoma", [&](const DialogUser& dialog) {
      dialog.Type("txtComunidad", u"Enlloc"_s);
      dialog.Type("txtCodigo", u"99"_s);
      dialog.Press("cmdAceptar");
      QCOMPARE(dialog.Text("txtComunidad"), u"Enlloc"_s);
      host.Recording().FailAt({});
      dialog.Press("cmdAceptar");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.ComunidadAutonoma(), action.Agregar(), 0, 77));
    QCOMPARE(host.services().property("IDAux"), QVariant(77));
    QVERIFY(host.driver.Boxes().value(0).startsWith(u"Prueba|critico|Error -2147467259: sin conexión"_s));
    QCOMPARE(host.Query(u"SELECT Codigo FROM ComunidadAutonoma WHERE Nombre='Enlloc'"), QStringList(u"99"_s));
  }
};

KEL_TEST(tst_communities);
#include "tst_communities.moc"
