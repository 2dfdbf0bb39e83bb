#include "support/Expect.h"

#include <QComboBox>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

class tst_dioceses : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ADeletedDioceseIsNotShown() {
    TestHost host;
    host.Query(u"UPDATE Diocesis SET Eliminado=-1 WHERE IDDiocesis=1");
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Diocesis(), action.Modificar(), 1));
    const QString box = host.driver.Boxes().value(0);
    QVERIFY2(box.contains(u"\nError 3021\n"_s), qPrintable(box));
    QVERIFY2(box.endsWith(u"frmDiocesis / Form Load"_s), qPrintable(box));
  }

  // On behalf of another dialog the province is the caller's.
  void TheCallersProvince_data() {
    QTest::addColumn<int>("fixed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a province") << 45 << u"Toledo"_s;
    QTest::newRow("one that is not there") << 99999 << u" Sin provincia asociada"_s;
    QTest::newRow("none: the list shows, and does not count") << 0 << QString();
  }
  void TheCallersProvince() {
    QFETCH(int, fixed);
    QFETCH(QString, shown);
    TestHost host;
    host.driver.On("frmDiocesis", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.IsVisible("lblProvinciaFija"), fixed != 0);
      QCOMPARE(dialog.IsVisible("cboProvincia"), fixed == 0);
      QCOMPARE(dialog.IsVisible("cmdNProvincia"), fixed == 0);
      QCOMPARE(dialog.Text("lblProvinciaFija"), shown);
      if (fixed == 0) {
        QCOMPARE(dialog.Focused(), u"cboProvincia"_s);
        QCOMPARE(dialog.Find<QComboBox>("cboProvincia")->placeholderText(), u" Sin provincia asociada"_s);
        dialog.Choose("cboProvincia", u"Madrid"_s);
      }
      dialog.Type("txtDiocesis", u"Nueva"_s);
      dialog.Press("cmdDiocesis_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Diocesis(), action.Nuevo(), 0, fixed));
    QCOMPARE(host.services().property("IDAux").toInt(),
             host.Id(u"SELECT IDDiocesis FROM Diocesis WHERE Nombre='Nueva' AND CodProvincia={}", fixed));
  }

  void ANewProvinceInTheMiddle() {
    TestHost host;
    host.driver.On("frmDiocesis", [&](const DialogUser& dialog) {
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Text("cboProvincia"), u"Trasmiera"_s);
      QCOMPARE(dialog.Focused(), u"cboProvincia"_s);
      QCOMPARE(host.services().property("Accion").toInt(), action.Modificar());
      QCOMPARE(host.services().property("IDSeleccionado").toInt(), 1);
      QCOMPARE(host.services().property("IDAux").toInt(), 9);
      dialog.Press("cmdNProvincia");
      QCOMPARE(dialog.Text("cboProvincia"), u"Trasmiera"_s);
      dialog.Press("cmdDiocesis_0");
    });
    host.driver.On("frmProvincia", [](const DialogUser& dialog) {
      QVERIFY(dialog.IsVisible("cboPais"));
      dialog.Choose("cboPais", u"España"_s);
      dialog.Type("txtProvincia", u"Trasmiera"_s);
      dialog.Press("cmdProvincia_0");
    });
    host.driver.On("frmProvincia", [](const DialogUser& dialog) { dialog.Press("cmdProvincia_1"); });
    EXPECT_CLEAN(host, host.PasarDatos(node.Diocesis(), action.Modificar(), 1, 9));
    QCOMPARE(host.Query(u"SELECT Provincias.Nombre FROM Diocesis INNER JOIN Provincias ON "
                        u"Diocesis.CodProvincia=Provincias.IDProvincia WHERE IDDiocesis=1"),
             QStringList(u"Trasmiera"_s));
  }
};

KEL_TEST(tst_dioceses);
#include "tst_dioceses.moc"
