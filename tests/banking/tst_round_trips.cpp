#include "support/Expect.h"
#include "support/Relay.h"

#include <QTableView>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

/// How often a dialog waits for the server: it decides how long one takes over a slow network.
class tst_round_trips : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ADialogWaitsSeldom_data() {
    QTest::addColumn<bool>("isBank");
    QTest::addColumn<int>("toOpen");
    QTest::addColumn<int>("toSave");
    QTest::newRow("country") << false << 3 << 3;
    QTest::newRow("bank with a changed branch") << true << 4 << 9;
  }

  // Saving has a note of the change log for each record. The first time statements are prepared, too.
  void ADialogWaitsSeldom() {
    QFETCH(const bool, isBank);
    QFETCH(const int, toOpen);
    QFETCH(const int, toSave);
    const support::TestDatabase database;
    database.Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre) VALUES(1,'0001','Uno')");
    database.Execute(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre) VALUES(1,'0001','Centro')");
    support::Relay relay(database.ConnectionString());
    TestHost host(relay.ConnectionString());
    relay.Delay(std::chrono::milliseconds(20));
    int opened = 0;
    int before = 0;
    for (const char* const name : {"a", "b"}) {
      const QString text = QString::fromLatin1(name);
      host.driver.On(isBank ? "frmBanco" : "frmPais", [&](const DialogUser& dialog) {
        opened = relay.RoundTrips() - before;
        dialog.Type(isBank ? "txtBanco_1" : "txtPais", text);
        if (isBank) {
          qobject_cast<QTableView*>(dialog.Find("msgSucursales"))->selectRow(0);
          dialog.Press("cmdBanco_1");
        }
        before = relay.RoundTrips();
        dialog.Press(isBank ? "cmdBanco_3" : "cmdPais_0");
      });
      if (isBank) {
        host.driver.On("frmSucursal", [&](const DialogUser& dialog) {
          dialog.Type("txtSucursales_1", text);
          dialog.Press("cmdSucursales_0");
        });
      }
      before = relay.RoundTrips();
      EXPECT_CLEAN(host, host.PasarDatos(isBank ? node.Bancos() : node.Paises(), action.Modificar(), 1));
    }
    const int saved = relay.RoundTrips() - before;
    QVERIFY2(opened <= toOpen && saved <= toSave, qPrintable(u"%1 to open, %2 to save"_s.arg(opened).arg(saved)));
    QCOMPARE(host.Query(u"SELECT Tabla, Clase FROM Cambios ORDER BY IDCambio"),
             isBank ? (QStringList{u"Bancos|2"_s, u"Sucursales|2"_s, u"Bancos|2"_s, u"Sucursales|2"_s})
                    : (QStringList{u"Paises|2"_s, u"Paises|2"_s}));
  }
};

KEL_TEST(tst_round_trips);
#include "tst_round_trips.moc"
