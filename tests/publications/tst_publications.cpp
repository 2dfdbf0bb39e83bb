#include "support/Expect.h"

#include <QMessageBox>
#include <QTableView>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

void Fill(const DialogUser& dialog) {
  dialog.Type("txtPublicacion", u" L'Infinit "_s);
  dialog.Type("txtTextoRecibo", u"Subscripció d'un any"_s);
  dialog.Type("txtPrecioNac", u"1234,5"_s);
  dialog.Type("txtPrecioExt", u"20"_s);
}

}  // namespace

class tst_publications : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AddsAndHandsBack() {
    TestHost host;
    host.driver.On("frmPublicacion", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar publicación"_s);
      QCOMPARE(dialog.Text("fraPublicacion"), u"Información de las suscripciones asociadas a la publicación:"_s);
      Fill(dialog);
      dialog.Press("cmdPublicacion_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Agregar(), 0, 77));
    QCOMPARE(
        host.Recording().Log(),
        (QStringList{u"OPEN"_s, u"BEGIN"_s,
                     u"INSERT INTO TipoPublicaciones (Nombre, ImporteNacional, ImporteExtranjero, TextoRecibo) "
                     "VALUES ( 'L''Infinit', '1.234,50', '20,00', 'Subscripció d''un any')"_s,
                     u"SELECT MAX(IDTipoPublicacion) AS MaxID FROM TipoPublicaciones"_s, u"COMMIT"_s, u"CLOSE"_s}));
    const int id = host.services().property("IDAux").toInt();
    QCOMPARE(host.Query(u"SELECT Nombre, ImporteNacional, ImporteExtranjero, TextoRecibo FROM TipoPublicaciones WHERE "
                        u"IDTipoPublicacion={}",
                        id),
             QStringList(u"L'Infinit|1234,5|20|Subscripció d'un any"_s));
  }

  // What was handed back goes with the transaction.
  void AFailedCommitHandsNothingBack() {
    TestHost host;
    host.Recording().FailAt(u"COMMIT"_s);
    host.driver.On("frmPublicacion", [&](const DialogUser& dialog) {
      Fill(dialog);
      dialog.Press("cmdPublicacion_0");
      QCOMPARE(host.services().property("IDAux"), QVariant(0));
      QCOMPARE(dialog.Text("txtPrecioNac"), u"1.234,50"_s);
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Agregar(), 0, 77));
    QVERIFY(host.driver.Boxes().value(0).endsWith(u"frmPublicacion / cmdPublicacion_Click (0)"_s));
    QCOMPARE(host.Query(u"SELECT * FROM TipoPublicaciones"), QStringList());
    QCOMPARE(host.services().property("IDAux"), QVariant(0));
  }

  void ShowsTheSubscriptionsThatCount() {
    TestHost host;
    host.Query(
        u"INSERT INTO TipoPublicaciones(Nombre,ImporteNacional,ImporteExtranjero) VALUES('Boletín','12,5','1.800')");
    const int id = host.Id(u"SELECT MAX(IDTipoPublicacion) AS N FROM TipoPublicaciones");
    host.Query(u"INSERT INTO TipoSuscripciones(Nombre,Eliminado) VALUES('Vieja',-1)");
    const int old = host.Id(u"SELECT IDTipoSuscripcion FROM TipoSuscripciones WHERE Nombre='Vieja'");
    // Of the first type two count: the third is another publication's, the fourth is deleted.
    host.Query(u"INSERT INTO Suscripciones(CodTipoPublicacion,CodTipoSuscripcion,Importe) VALUES({},1,'1.000,55')", id);
    host.Query(u"INSERT INTO Suscripciones(CodTipoPublicacion,CodTipoSuscripcion,Importe) VALUES({},1,'0,45')", id);
    host.Query(u"INSERT INTO Suscripciones(CodTipoPublicacion,CodTipoSuscripcion,Importe) VALUES({},1,7)", id + 1);
    host.Query(u"INSERT INTO Suscripciones(CodTipoPublicacion,CodTipoSuscripcion,Importe,Eliminado) VALUES({},1,7,-1)",
               id);
    host.Query(u"INSERT INTO Suscripciones(CodTipoPublicacion,CodTipoSuscripcion,Importe) VALUES({},{},7)", id, old);
    const QString type = host.Query(u"SELECT Nombre FROM TipoSuscripciones WHERE IDTipoSuscripcion=1").value(0);
    host.driver.On("frmPublicacion", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de Boletín"_s);
      QCOMPARE(dialog.Text("txtPrecioNac"), u"12,50"_s);
      QCOMPARE(dialog.Text("txtPrecioExt"), u"1.800,00"_s);
      QCOMPARE(host.Query(u"SELECT campoID FROM BloqueoRegistros"), QStringList(u"IDTipoPublicacion"_s));
      const QAbstractItemModel* grid = dialog.Find<QTableView>("msgPublicacion")->model();
      QStringList cells;
      for (int column = 0; column < grid->columnCount(); ++column) {
        cells.append(grid->headerData(column, Qt::Horizontal).toString());
        cells.append(grid->index(0, column).data().toString());
      }
      QCOMPARE(cells, (QStringList{u"Tipo de suscripción"_s, type, u"Importe (€)"_s, u"1.001,00"_s,
                                   u"Nº de bienhechores"_s, u"2"_s}));
      QCOMPARE(grid->rowCount(), 1);
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Modificar(), id));
    QVERIFY(host.Recording().Log().last() == u"CLOSE"_s);
    QVERIFY(host.Recording().Log().filter(u"TipoPublicaciones.IDTipoPublicacion = %1GROUP BY "_s.arg(id)).size() == 1);
  }

  void MissingInputIsRefusedInOrder() {
    TestHost host;
    host.driver.On("frmPublicacion", [](const DialogUser& dialog) {
      dialog.Type("txtPublicacion", u" "_s);
      dialog.Press("cmdPublicacion_0");
      QCOMPARE(dialog.Focused(), u"txtPublicacion"_s);
      dialog.Type("txtPublicacion", u"Boletín"_s);
      dialog.Press("cmdPublicacion_0");
      QCOMPARE(dialog.Focused(), u"txtPrecioNac"_s);
      dialog.Type("txtPrecioNac", u"1"_s);
      dialog.Press("cmdPublicacion_0");
      QCOMPARE(dialog.Focused(), u"txtPrecioExt"_s);
      dialog.Press("cmdPublicacion_1");
    });
    for (int i = 0; i < 3; ++i) {
      host.driver.Answer(QMessageBox::Ok);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Agregar()));
    // The first names the price, too.
    const QString national = u"Prueba|informacion|¡Debe introducir datos en el campo precio nacional!"_s;
    QCOMPARE(host.driver.Boxes(),
             (QStringList{national, national,
                          u"Prueba|informacion|¡Debe introducir datos en el campo precio extranjero!"_s}));
    QCOMPARE(host.Recording().Writes(), QStringList());
  }

  void AFailedLoadIsToldUnderItsName() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Modificar(), 999));
    QVERIFY(host.driver.Boxes().value(0).endsWith(u"frmPublicacion / Form_Load()"_s));
  }
};

KEL_TEST(tst_publications);
#include "tst_publications.moc"
