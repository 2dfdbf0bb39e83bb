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
  void AddsAndHandsBack() {
    TestHost host;
    host.driver.On("frmCabecera", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar cabecera"_s);
      dialog.Type("txtNombre", u"Casa d'Oració"_s);
      dialog.Type("txtLinea_2", u"L'Hospitalet"_s);
      dialog.Press("cmdBotonera_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Cabeceras(), action.Nuevo()));
    QCOMPARE(host.Recording().Log(),
             (QStringList{u"OPEN"_s,
                          u"INSERT INTO Cabeceras(Nombre,Linea1,Linea2,Linea3,Linea4,Linea5,Eliminado) "
                          "VALUES('Casa d''Oració','','','L''Hospitalet','','',0)"_s,
                          u"SELECT MAX(IDCabecera) AS Maximo FROM Cabeceras WHERE Eliminado=0"_s, u"CLOSE"_s}));
    const int id = host.services().property("IDAux").toInt();
    QCOMPARE(host.Query(u"SELECT Nombre, Linea3, Linea5 FROM Cabeceras WHERE IDCabecera={}", id),
             QStringList(u"Casa d'Oració|L'Hospitalet|"_s));
  }

  void AnAdditionOfItsOwnHandsNothingBack() {
    TestHost host;
    host.driver.On("frmCabecera", [](const DialogUser& dialog) {
      dialog.Type("txtNombre", u"Carta"_s);
      dialog.Press("cmdBotonera_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Cabeceras(), action.Agregar(), 0, 77));
    QCOMPARE(host.Recording().Log().size(), 3);
    QCOMPARE(host.services().property("IDAux"), QVariant(77));
  }

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

  void Modifies() {
    TestHost host;
    host.Query(u"INSERT INTO Cabeceras(Nombre,Linea1,Linea2,Linea3,Linea4,Linea5) VALUES('Carta','1','2','3','4','5')");
    const int id = host.Id(u"SELECT IDCabecera FROM Cabeceras WHERE Nombre='Carta'");
    host.driver.On("frmCabecera", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de Carta"_s);
      QCOMPARE(host.Query(u"SELECT campoID, ValorID FROM BloqueoRegistros"), QStringList(u"IDCabecera|%1"_s.arg(id)));
      QCOMPARE(dialog.Text("txtLinea_4"), u"5"_s);
      dialog.Type("txtLinea_0", u" Uno "_s);
      dialog.Press("cmdBotonera_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Cabeceras(), action.Modificar(), id));
    QVERIFY(host.Recording().Log().contains(
        u"UPDATE Cabeceras SET Linea1='Uno',Linea2='2',Linea3='3',Linea4='4',Linea5='5',Nombre='Carta' "
        "WHERE IDCabecera=%1"_s.arg(id)));
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
    QVERIFY(host.driver.Boxes().value(1).startsWith(u"Prueba|critico|Error -2147467259"_s));
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
