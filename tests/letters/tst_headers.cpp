#include "support/Expect.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

class tst_headers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void NothingToHandBackIsZero() {
    TestHost host;
    host.Recording().SetHook([&](const QString& entry) {
      if (entry.startsWith(u"SELECT MAX")) {
        host.Query(u"UPDATE Cabeceras SET Eliminado=-1");
      }
    });
    host.driver.On("frmCabecera", [](const DialogUser& dialog) {
      dialog.Type("txtNombre", u"Efímera"_s);
      dialog.Press("cmdBotonera_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Cabeceras(), action.Nuevo(), 0, 77));
    QCOMPARE(host.services().property("IDAux"), QVariant(0));
  }

  void ANamelessHeaderIsRefusedAndAFailedOneStays() {
    TestHost host;
    host.Recording().FailAt(u"INSERT INTO Cabeceras"_s);
    host.driver.On("frmCabecera", [](const DialogUser& dialog) {
      dialog.Type("txtLinea_0", u"Plaza Mayor, 1"_s);
      dialog.Press("cmdBotonera_0");
      QCOMPARE(dialog.Focused(), u"txtNombre"_s);
      dialog.Type("txtNombre", u"Carta"_s);
      dialog.Press("cmdBotonera_0");
      QCOMPARE(dialog.Text("txtLinea_0"), u"Plaza Mayor, 1"_s);
      dialog.Press("cmdBotonera_1");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Cabeceras(), action.Agregar()));
    QCOMPARE(host.driver.Boxes().value(0),
             u"Prueba|informacion|Debe introducir al menos el nombre para configurar la cabecera"_s);
    QVERIFY(host.driver.Boxes().value(1).contains(u"|Error -2147467259\n"_s));
  }

  void ADeletedHeaderIsNotShown() {
    TestHost host;
    host.Query(u"INSERT INTO Cabeceras(Nombre,Eliminado) VALUES('Vieja',-1)");
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Cabeceras(), action.Modificar(),
                                       host.Id(u"SELECT MAX(IDCabecera) AS N FROM Cabeceras")));
    QVERIFY(host.driver.Boxes().value(0).endsWith(u"frmCabecera / Form Load"_s));
  }
};

KEL_TEST(tst_headers);
#include "tst_headers.moc"
