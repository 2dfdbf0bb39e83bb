#include "support/Expect.h"

#include <QLabel>
#include <QMessageBox>

using namespace framework;
using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

constexpr int publication = 1;

// A publication with one subscription per subscriber: at home, abroad, without a country, and at home but deleted; and
// one of another publication. Each pays 5, for as many copies as its number says.
void FillSubscriptions(const TestHost& host) {
  host.Query(
      u"INSERT INTO TipoPublicaciones(Nombre,ImporteNacional,ImporteExtranjero,TextoRecibo) VALUES('Boletín',5,5,'x')");
  host.Query(u"INSERT INTO Colaboradores(Nombre,codpais) VALUES('Ana',35)");
  host.Query(u"INSERT INTO Colaboradores(Nombre,codpais) VALUES('Anne',70)");
  host.Query(u"INSERT INTO Colaboradores(Nombre,codpais) VALUES('Nadie',NULL)");
  const auto subscribe = [&](int subscriber, int of, int copies, bool deleted) {
    host.Query(
        u"INSERT INTO Suscripciones(CodColaborador,CodTipoPublicacion,CodTipoSuscripcion,NumeroEjemplares,Importe,"
        u"Eliminado) VALUES({},{},1,{},5,{})",
        subscriber, of, copies, deleted);
  };
  subscribe(1, publication, 2, false);
  subscribe(2, publication, 3, false);
  subscribe(3, publication, 4, false);
  subscribe(1, publication, 1, true);
  subscribe(1, publication + 1, 1, false);
}

QStringList Amounts(const TestHost& host) {
  return host.Query(u"SELECT Importe FROM Suscripciones ORDER BY IDSuscripcion");
}

void ChangePrices(const DialogUser& dialog) {
  dialog.Type("txtPublicacion", u"Boletín nuevo"_s);
  dialog.Type("txtPrecioNac", u"1234,5"_s);
  dialog.Type("txtPrecioExt", u"20"_s);
  dialog.Press("chkPublicacion");
  dialog.Press("cmdPublicacion_0");
}

const QString question =
    u"Prueba|pregunta|Se disponde a cambiar los importes de las suscripciones que estén asociadas a este tipo de "
    "publicación. ¿Desea continuar con el proceso?"_s;
const QStringList before(5, u"5"_s);

}  // namespace

class tst_price_changes : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ReachEverySubscription() {
    TestHost host;
    FillSubscriptions(host);
    host.driver.On("frmPublicacion", [&](const DialogUser& dialog) {
      const QPointer<QLabel> work = dialog.Find<QLabel>("lblProceso");
      QStringList shown;
      host.Recording().SetHook([&, work](const QString& entry) {
        if (entry.startsWith(u"UPDATE Suscripciones")) {
          shown.append(work->text() + u' ' + QString::number(host.desktop.pointers.value(0)));
        }
      });
      ChangePrices(dialog);
      QCOMPARE(shown, QStringList(2, u"Actualizando los importes de las suscripciones… 11"_s));
      QCOMPARE(host.desktop.pointers, (QList<int>{vbHourglass, vbDefault}));
    });
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Modificar(), publication));
    QCOMPARE(host.driver.Boxes(), QStringList(question));
    const QString update =
        u"UPDATE Suscripciones SET Importe = NumeroEjemplares * '%1' WHERE IDSuscripcion IN (SELECT "
        "Suscripciones.IDSuscripcion FROM Colaboradores INNER JOIN (Suscripciones INNER JOIN TipoPublicaciones ON "
        "Suscripciones.CodTipoPublicacion = TipoPublicaciones.IDTipoPublicacion) ON Colaboradores.IDColaborador = "
        "Suscripciones.CodColaborador WHERE CodPais %2 35 AND IDTipoPublicacion = 1)"_s;
    QCOMPARE(host.Recording().Writes().filter(u"UPDATE"_s),
             (QStringList{u"UPDATE TipoPublicaciones SET Nombre = 'Boletín nuevo', ImporteNacional = '1.234,50', "
                          "ImporteExtranjero = '20,00', TextoRecibo = 'x' WHERE IDTipoPublicacion = 1"_s,
                          update.arg(u"1.234,50"_s, u"="_s), update.arg(u"20,00"_s, u"<>"_s)}));
    QCOMPARE(Amounts(host), (QStringList{u"2469"_s, u"60"_s, u"5"_s, u"1234,5"_s, u"5"_s}));
  }

  void WithoutTheTickOnlyThePublicationChanges() {
    TestHost host;
    FillSubscriptions(host);
    host.driver.On("frmPublicacion", [](const DialogUser& dialog) {
      dialog.Type("txtPrecioNac", u"9"_s);
      dialog.Press("cmdPublicacion_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Modificar(), publication));
    QCOMPARE(Amounts(host), before);
    QCOMPARE(host.Query(u"SELECT ImporteNacional FROM TipoPublicaciones"), QStringList(u"9"_s));
  }

  // Nothing at all is written, and the dialog stays with what was typed.
  void NoToTheQuestion() {
    TestHost host;
    FillSubscriptions(host);
    host.driver.On("frmPublicacion", [&](const DialogUser& dialog) {
      host.Recording().Clear();
      ChangePrices(dialog);
      QCOMPARE(host.Recording().Log(), (QStringList{u"BEGIN"_s, u"COMMIT"_s}));
      QCOMPARE(dialog.Text("txtPublicacion"), u"Boletín nuevo"_s);
      QCOMPARE(dialog.Text("txtPrecioNac"), u"1.234,50"_s);
      QVERIFY(dialog.Dialog()->isEnabled());
      dialog.Press("chkPublicacion");
      dialog.Press("cmdPublicacion_0");
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Modificar(), publication));
    QCOMPARE(Amounts(host), before);
    QCOMPARE(host.Query(u"SELECT Nombre FROM TipoPublicaciones"), QStringList(u"Boletín nuevo"_s));
  }

  // The old prices stay, all of them; the error is told before the roll-back, under the name of the part that failed.
  void AFailureInTheMiddle_data() {
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("procedure");
    QTest::newRow("publication") << u"UPDATE TipoPublicaciones"_s << u"cmdPublicacion_Click (0)"_s;
    QTest::newRow("home prices") << u"UPDATE Suscripciones SET Importe = NumeroEjemplares * '1.234,50'"_s
                                 << u"ModificarPrecioSuscripciones"_s;
    QTest::newRow("foreign prices") << u"UPDATE Suscripciones SET Importe = NumeroEjemplares * '20,00'"_s
                                    << u"ModificarPrecioSuscripciones"_s;
    QTest::newRow("commit") << u"COMMIT"_s << u"cmdPublicacion_Click (0)"_s;
  }
  void AFailureInTheMiddle() {
    QFETCH(QString, failing);
    QFETCH(QString, procedure);
    TestHost host;
    FillSubscriptions(host);
    host.Recording().FailAt(failing);
    host.driver.On("frmPublicacion", [&](const DialogUser& dialog) {
      ChangePrices(dialog);
      QCOMPARE(host.Recording().Log().last(), u"ROLLBACK"_s);
      QCOMPARE(dialog.Text("txtPublicacion"), u"Boletín nuevo"_s);
      QCOMPARE(dialog.Text("lblProceso"), QString());
      dialog.Press("cmdPublicacion_1");
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Modificar(), publication));
    QCOMPARE(host.driver.Boxes().size(), 2);
    QVERIFY2(host.driver.Boxes().last().endsWith(u"frmPublicacion / "_s + procedure),
             qPrintable(host.driver.Boxes().last()));
    QCOMPARE(Amounts(host), before);
    QCOMPARE(host.Query(u"SELECT Nombre, ImporteNacional FROM TipoPublicaciones"), QStringList(u"Boletín|5"_s));
    QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
  }

  void AnAmountThatIsNoneIsToldAndStays() {
    TestHost host;
    FillSubscriptions(host);
    host.driver.On("frmPublicacion", [](const DialogUser& dialog) {
      dialog.Paste("txtPrecioNac", u"1,2,3"_s);
      dialog.Press("cmdPublicacion_0");
      QCOMPARE(dialog.Text("txtPrecioNac"), u"1,2,3"_s);
      dialog.Press("cmdPublicacion_1");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Publicaciones(), action.Modificar(), publication));
    QVERIFY(host.driver.Boxes().value(0).contains(u"\nError 13\n"_s));
  }
};

KEL_TEST(tst_price_changes);
#include "tst_price_changes.moc"
