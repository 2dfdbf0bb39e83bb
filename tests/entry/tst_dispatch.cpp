#include "entry/CPrincipal.h"
#include "entry/Dispatch.h"
#include "framework/HostServices.h"
#include "platform/automation/Invoke.h"
#include "support/Expect.h"

#include <QApplication>
#include <QMessageBox>

using namespace framework;
using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

class tst_dispatch : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TableInTestOrder() {
    QStringList rows;
    for (const entry::dispatch::Entry& entry : entry::dispatch::Table()) {
      const QString released = entry.released == entry.dialog ? QString() : u'/' + entry.released;
      rows.append(u"%1 %2%3 %4"_s.arg(entry.node.toInt()).arg(entry.dialog, released).arg(int(entry.opening)));
    }
    QCOMPARE(rows.join(u", "_s),
             u"19 frmBanco 1, 0 frmSucursal 0, 15 frmCabecera 0, 26 frmCartaModelo 2, 16 frmDiocesis 0, "
             "18 frmEmisor 0, 20 frmPais 0, 21 frmPresentador 0, 32 frmCobrador 0, 22 frmProvincia 0, "
             "25 frmPublicacion 0, 17 frmTipoDonativo 0, 27 frmTipoDeduccion 0, 30 frmEtiquetas1 0, "
             "32 frmCobrador 1, 34 frmDeduccionComunidad/frmTipoDeduccion 0, 35 frmComunidadAutonoma 0, "
             "36 frmEncabezado 3"_s);
  }

  void ConstantsOfTheContract() {
    QCOMPARE(node.Sucursales(), 0);
    QCOMPARE(node.SuscriptoresDependientes(), 999999999);
    QCOMPARE(node.Encabezados(), QVariant::fromValue(qint16(36)));
    QCOMPARE(action.Error(), quint8(255));
    QCOMPARE(action.Nuevo(), quint8(4));
  }

  void UnknownNodeOpensAndClosesTheConnection() {
    TestHost host;
    EXPECT_CLEAN(host, host.PasarDatos(999999999, 1));
    QCOMPARE(host.Recording().Log(), (QStringList{u"OPEN"_s, u"CLOSE"_s}));
    host.Recording().Open();
    EXPECT_CLEAN(host, host.PasarDatos(3, 1));
    QCOMPARE(host.Recording().Log(), QStringList(u"CLOSE"_s));
  }

  void HeaderNeedsASelectedRecord() {
    TestHost host;
    EXPECT_CLEAN(host, host.PasarDatos(36, 2, 0));
    QCOMPARE(host.driver.Boxes(), QStringList());
  }

  void PrinterRefusalLeavesTheConnectionOpen() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(26, 1));
    QCOMPARE(host.driver.Boxes(),
             QStringList(u"Prueba|informacion|¡No dispone de impresoras instaladas en el equipo!"_s));
    QCOMPARE(host.desktop.beeps, 1);
    QCOMPARE(host.Recording().State(), int(adodb::StateOpen));
  }

  void NodesWithoutADialogSaySo() {
    TestHost host;
    for (const entry::dispatch::Entry& entry : entry::dispatch::Table()) {
      if (entry.create != nullptr || entry.opening == entry::dispatch::Opening::WithPrinter) {
        continue;
      }
      host.driver.Answer(QMessageBox::Ok);
      EXPECT_CLEAN(host, host.PasarDatos(entry.node.toInt(), 1, 1));
      const QString box = host.driver.TakeBoxes().value(0);
      QVERIFY2(box.contains(entry.dialog) && box.contains(u"no está disponible"_s), qPrintable(box));
      QCOMPARE(host.Recording().State(), int(adodb::StateClosed));
    }
  }

  void GuardedLoadWaitsBehindTheHourglass() {
    TestHost host;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      QCOMPARE(host.desktop.pointers, (QList<int>{11, 0}));
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(19, 1));
    // A bank that is not there is told, and never shown.
    host.desktop.pointers.clear();
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(19, 2, 987654));
    QCOMPARE(host.desktop.pointers, (QList<int>{11, 0}));
    QCOMPARE(host.Recording().Log().last(), u"CLOSE"_s);
  }

  // A timer of the host asks for a dialog while one is open: for the same one it is refused, and the open one stays as
  // it is; either way the open dialog goes on with its own services object and an open connection.
  void ACallInTheMiddleOfAnother_data() {
    QTest::addColumn<bool>("sameDialog");
    QTest::addColumn<bool>("sameServices");
    QTest::newRow("the same dialog, the same services") << true << true;
    QTest::newRow("the same dialog, other services") << true << false;
    QTest::newRow("another dialog, other services") << false << false;
  }
  void ACallInTheMiddleOfAnother() {
    QFETCH(bool, sameDialog);
    QFETCH(bool, sameServices);
    TestHost host;
    host::cPrincipal others(host.session);
    entry::CPrincipal component;
    host.driver.On("frmPais", [&](const DialogUser& dialog) {
      dialog.Type("txtPais", u"Atlántida"_s);
      host::cPrincipal& services = sameServices ? host.services() : others;
      automation::Put(&services, "IDNodo", sameDialog ? node.Paises() : node.Provincias());
      automation::Put(&services, "Accion", action.Agregar());
      try {
        component.PasarDatos(&services);
        QVERIFY(!sameDialog);
      } catch (const automation::Error& error) {
        QVERIFY(sameDialog);
        QCOMPARE(error.Number(), 400);
        QCOMPARE(error.Description(), u"El formulario ya se muestra; no se puede mostrar modalmente"_s);
      }
      QCOMPARE(objApi().Object(), &host.services());
      QCOMPARE(dialog.Text("txtPais"), u"Atlántida"_s);
      dialog.Press("cmdPais_0");
    });
    if (!sameDialog) {
      host.driver.On("frmProvincia", [](const DialogUser& dialog) { dialog.Press("cmdProvincia_1"); });
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Nuevo()));
    QCOMPARE(host.Query(u"SELECT Nombre FROM Paises WHERE Nombre='Atlántida'").size(), 1);
    QCOMPARE(host.Recording().State(), int(adodb::StateClosed));
    // The dialog that was shown is released, and can be shown again.
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("txtPais"), QString());
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Agregar()));
  }

  // A dialog that is still loading is in use, too.
  void ACallInTheMiddleOfALoad() {
    TestHost host;
    host.Query(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0100','Banco')");
    entry::CPrincipal component;
    int refused = 0;
    host.Recording().SetHook([&](const QString& entry) {
      if (entry.startsWith(u"SELECT Bancos.Nombre")) {
        try {
          component.PasarDatos(&host.services());
        } catch (const automation::Error& error) {
          refused = error.Number();
        }
      }
    });
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("txtBanco_0"), u"0100"_s);
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), host.Id(u"SELECT MAX(IDBanco) FROM Bancos")));
    QCOMPARE(refused, 400);
  }

  // So does a deletion, and a call that fails.
  void ADeletionInTheMiddleOfADialog() {
    TestHost host;
    host::cPrincipal others(host.session);
    entry::CPrincipal component;
    automation::Put(&others, "IDNodo", node.Cabeceras());
    automation::Put(&others, "IDSeleccionado", 1);
    QObject bare;
    host.driver.On("frmPais", [&](const DialogUser& dialog) {
      component.EliminarRegistro(&others);
      QCOMPARE(host.Recording().State(), int(adodb::StateOpen));
      QVERIFY_THROWS_EXCEPTION(automation::Error, component.PasarDatos(&bare));
      QCOMPARE(objApi().Object(), &host.services());
      dialog.Type("txtPais", u"Atlántida"_s);
      dialog.Press("cmdPais_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Agregar()));
    QCOMPARE(host.Query(u"SELECT Nombre FROM Paises WHERE Nombre='Atlántida'").size(), 1);
  }

  void DialogsAreReleased() {
    TestHost host;
    for (const int requested : {node.Bancos(), node.Paises()}) {
      host.driver.On(requested == node.Bancos() ? "frmBanco" : "frmPais",
                     [](const DialogUser& dialog) { dialog.Close(); });
      EXPECT_CLEAN(host, host.PasarDatos(requested, action.Agregar()));
      for (const QWidget* window : QApplication::topLevelWidgets()) {
        QVERIFY2(qobject_cast<const Form*>(window) == nullptr, qPrintable(window->objectName()));
      }
    }
  }

  void AbrirConexionOpensOnlyAClosedOne() {
    TestHost host;
    entry::CPrincipal principal;
    automation::Call(&principal, "abrirconexion", static_cast<adodb::Connection*>(&host.Recording()));
    automation::Call(&principal, "abrirconexion", static_cast<adodb::Connection*>(&host.Recording()));
    QCOMPARE(host.Recording().Log(), QStringList(u"OPEN('','','',-1)"_s));
  }

  void ConnectionThatCannotBeOpened() {
    TestHost host;
    host.Recording().SetHook([](const QString& entry) {
      if (entry == u"OPEN") {
        throw automation::Error(-2147467259, u"no hay red"_s);
      }
    });
    EXPECT_ERROR(host, host.PasarDatos(20, 1), -2147467259);
    EXPECT_ERROR(host, host.EliminarRegistro(20, 1), -2147467259);
  }
};

KEL_TEST(tst_dispatch);
#include "tst_dispatch.moc"
