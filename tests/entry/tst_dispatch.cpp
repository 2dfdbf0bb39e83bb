#include "entry/CPrincipal.h"
#include "entry/Despacho.h"
#include "platform/contract/cConstNodo.h"
#include "platform/contract/cConstAccion.h"
#include "platform/automation/Invoke.h"
#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QMessageBox>

using support::DialogUser;
using support::TestHost;

class tst_dispatch : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TableInTestOrder() {
    QStringList rows;
    for (const Despacho::Entrada& entrada : Despacho::Tabla()) {
      const QString released = entrada.liberado == entrada.dialogo ? QString() : u'/' + entrada.liberado;
      rows.append(QStringLiteral("%1 %2%3 %4")
                      .arg(entrada.nodo.toInt())
                      .arg(entrada.dialogo, released)
                      .arg(int(entrada.apertura)));
    }
    QCOMPARE(rows.join(QStringLiteral(", ")),
             QStringLiteral("19 frmBanco 1, 0 frmSucursal 0, 15 frmCabecera 0, 26 frmCartaModelo 2, 16 frmDiocesis 0, "
                            "18 frmEmisor 0, 20 frmPais 0, 21 frmPresentador 0, 32 frmCobrador 0, 22 frmProvincia 0, "
                            "25 frmPublicacion 0, 17 frmTipoDonativo 0, 27 frmTipoDeduccion 0, 30 frmEtiquetas1 0, "
                            "32 frmCobrador 1, 34 frmDeduccionComunidad/frmTipoDeduccion 0, 35 frmComunidadAutonoma 0, "
                            "36 frmEncabezado 3"));
  }

  void ConstantsOfTheContract() {
    const cConstNodo nodo;
    QCOMPARE(nodo.Sucursales(), 0);
    QCOMPARE(nodo.SuscriptoresDependientes(), 999999999);
    QCOMPARE(nodo.Encabezados(), QVariant::fromValue(qint16(36)));
    const cConstAccion accion;
    QCOMPARE(accion.Error(), quint8(255));
    QCOMPARE(accion.Nuevo(), quint8(4));
  }

  void UnknownNodeOpensAndClosesTheConnection() {
    TestHost host;
    EXPECT_CLEAN(host, host.PasarDatos(999999999, 1));
    QCOMPARE(host.connection().Log(), (QStringList{QStringLiteral("OPEN"), QStringLiteral("CLOSE")}));
    host.connection().Open();
    EXPECT_CLEAN(host, host.PasarDatos(3, 1));
    QCOMPARE(host.connection().Log(), QStringList(QStringLiteral("CLOSE")));
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
             QStringList(QStringLiteral("Prueba|informacion|¡No dispone de impresoras instaladas en el equipo!")));
    QCOMPARE(host.platform.beeps, 1);
    QCOMPARE(host.connection().State(), int(adodb::StateOpen));
  }

  void NodesWithoutADialogSaySo() {
    TestHost host;
    for (const Despacho::Entrada& entrada : Despacho::Tabla()) {
      if (entrada.crear != nullptr || entrada.apertura == Despacho::Apertura::ConImpresora) {
        continue;
      }
      host.driver.Answer(QMessageBox::Ok);
      EXPECT_CLEAN(host, host.PasarDatos(entrada.nodo.toInt(), 1, 1));
      const QString box = host.driver.TakeBoxes().value(0);
      QVERIFY2(box.contains(entrada.dialogo) && box.contains(QStringLiteral("no está disponible")), qPrintable(box));
      QCOMPARE(host.connection().State(), int(adodb::StateClosed));
    }
  }

  void GuardedLoadWaitsBehindTheHourglass() {
    TestHost host;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      QCOMPARE(host.platform.pointers, (QList<int>{11, 0}));
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(19, 1));
    // A bank that is not there is told, and never shown.
    host.platform.pointers.clear();
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(19, 2, 987654));
    QCOMPARE(host.platform.pointers, (QList<int>{11, 0}));
    QCOMPARE(host.connection().Log().last(), QStringLiteral("CLOSE"));
  }

  void AbrirConexionOpensOnlyAClosedOne() {
    TestHost host;
    CPrincipal principal;
    automation::Call(&principal, "abrirconexion", static_cast<adodb::Connection*>(&host.connection()));
    automation::Call(&principal, "abrirconexion", static_cast<adodb::Connection*>(&host.connection()));
    QCOMPARE(host.connection().Log(), QStringList(QStringLiteral("OPEN('','','',-1)")));
  }

  void ConnectionThatCannotBeOpened() {
    TestHost host;
    host.connection().SetHook([](const QString& entry) {
      if (entry == u"OPEN") {
        throw automation::Error(-2147467259, QStringLiteral("no hay red"));
      }
    });
    EXPECT_ERROR(host, host.PasarDatos(20, 1), -2147467259);
    EXPECT_ERROR(host, host.EliminarRegistro(20, 1), -2147467259);
  }
};

KEL_TEST(tst_dispatch);
#include "tst_dispatch.moc"
