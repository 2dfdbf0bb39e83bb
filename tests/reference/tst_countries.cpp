#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QMessageBox>
#include <QPushButton>

using support::agregar;
using support::DialogUser;
using support::modificar;
using support::nuevo;
using support::TestHost;

namespace {

constexpr int paises = 20;

}  // namespace

class tst_countries : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AddsByStatementsToTheLetter() {
    TestHost host;
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Agregar país"));
      QCOMPARE(dialog.Text("lblPais"), QStringLiteral("(*) País:"));
      QCOMPARE(dialog.Text("cmdPais_0"), QStringLiteral("&Aceptar"));
      dialog.Type("txtPais", QStringLiteral("  Côte d'Ivoire  "));
      dialog.Press("cmdPais_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(paises, agregar, 0, 77));
    QCOMPARE(host.connection().Log(),
             (QStringList{QStringLiteral("OPEN"),
                          QStringLiteral("INSERT INTO Paises(nombre,eliminado) VALUES('Côte d''Ivoire',0)"),
                          QStringLiteral("CLOSE")}));
    QCOMPARE(host.Query(QStringLiteral("SELECT Nombre, Eliminado FROM Paises WHERE Nombre='Côte d''Ivoire'")),
             QStringList(QStringLiteral("Côte d'Ivoire|Falso")));
    QCOMPARE(host.services().property("IDAux"), QVariant(77));
  }

  void NewOnBehalfHandsTheIdentifierBack() {
    TestHost host;
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", QStringLiteral("Atlántida"));
      dialog.Key(Qt::Key_Return);
    });
    EXPECT_CLEAN(host, host.PasarDatos(paises, nuevo));
    QCOMPARE(host.services().property("IDAux").toInt(),
             host.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='Atlántida'")));
  }

  void NothingCreatedHandsZeroBack_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("cancel button") << 0;
    QTest::newRow("close box, unchanged") << 1;
    QTest::newRow("escape, changed, answered no") << 2;
  }
  void NothingCreatedHandsZeroBack() {
    QFETCH(int, way);
    TestHost host;
    host.driver.On("frmPais", [way](const DialogUser& dialog) {
      if (way == 0) {
        dialog.Press("cmdPais_1");
      } else if (way == 1) {
        dialog.Close();
      } else {
        dialog.Type("txtPais", QStringLiteral("Nada"));
        dialog.Key(Qt::Key_Escape);
      }
    });
    if (way == 2) {
      host.driver.Answer(QMessageBox::No);
    }
    EXPECT_CLEAN(host, host.PasarDatos(paises, nuevo, 0, 35));
    QCOMPARE(host.services().property("IDAux").toInt(), 0);
    QCOMPARE(host.connection().Writes(), QStringList());
  }

  void ModifiesTheSelectedRow() {
    TestHost host;
    const int id = host.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='Francia'"));
    host.driver.On("frmPais", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Propiedades de Francia"));
      QCOMPARE(dialog.Text("txtPais"), QStringLiteral("Francia"));
      QCOMPARE(host.Query(QStringLiteral("SELECT campoID, ValorID, codUsuario FROM BloqueoRegistros")),
               QStringList(QStringLiteral("IDPais|%1|1").arg(id)));
      dialog.Type("txtPais", QStringLiteral("Galia"));
      dialog.Press("cmdPais_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(paises, modificar, id));
    QVERIFY(
        host.connection().Log().contains(QStringLiteral("UPDATE Paises SET Nombre='Galia' WHERE idpais=%1").arg(id)));
    QCOMPARE(host.Query(QStringLiteral("SELECT Nombre FROM Paises WHERE IDPais=%1").arg(id)),
             QStringList(QStringLiteral("Galia")));
    QCOMPARE(host.Query(QStringLiteral("SELECT * FROM BloqueoRegistros")), QStringList());
  }

  void BlankNameIsRefused() {
    TestHost host;
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", QStringLiteral("   "));
      dialog.Press("cmdPais_0");
      QCOMPARE(dialog.Focused(), QStringLiteral("txtPais"));
      dialog.Press("cmdPais_1");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(paises, agregar));
    QCOMPARE(host.driver.Boxes(), QStringList(QStringLiteral("Prueba|informacion|Debe introducir el nombre del pais")));
    QCOMPARE(host.platform.beeps, 1);
  }

  void ClosePrompt_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QList<int>>("answers");
    QTest::addColumn<int>("written");
    const QList<int> none;
    QTest::newRow("unchanged") << "Francia" << none << 0;
    QTest::newRow("no") << "Galia" << QList<int>{QMessageBox::No} << 0;
    QTest::newRow("yes") << "Galia" << QList<int>{QMessageBox::Yes} << 1;
    QTest::newRow("yes, but Accept refuses: closes all the same")
        << " " << QList<int>{QMessageBox::Yes, QMessageBox::Ok} << 0;
    QTest::newRow("cancel, then no") << "Galia" << QList<int>{QMessageBox::Cancel, QMessageBox::No} << 0;
  }
  void ClosePrompt() {
    QFETCH(QString, typed);
    QFETCH(QList<int>, answers);
    QFETCH(int, written);
    TestHost host;
    const int id = host.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='Francia'"));
    const bool stays = answers.value(0) == QMessageBox::Cancel;
    host.driver.On("frmPais", [&](const DialogUser& dialog) {
      dialog.Type("txtPais", typed);
      dialog.Close();
      QCOMPARE(dialog.Dialog() != nullptr && dialog.Dialog()->isVisible(), stays);
      if (stays) {
        QCOMPARE(dialog.Text("txtPais"), typed);
        dialog.Close();
      }
    });
    for (const int answer : answers) {
      host.driver.Answer(answer);
    }
    EXPECT_CLEAN(host, host.PasarDatos(paises, modificar, id));
    QCOMPARE(host.connection().Writes().filter(QStringLiteral("Paises")).size(), written);
    if (!answers.isEmpty()) {
      QCOMPARE(host.driver.Boxes().first(),
               QStringLiteral("Prueba|pregunta|¿Desea guardar los cambios efectuados en el formulario?"));
    }
    QCOMPARE(host.Query(QStringLiteral("SELECT * FROM BloqueoRegistros")), QStringList());
  }

  void LockedByAnotherUserOpensReadOnly() {
    TestHost host;
    host.session.showRefusedLocks = false;
    const int id = host.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='Francia'"));
    host.Query(QStringLiteral("INSERT INTO BloqueoRegistros(codUsuario,campoID,ValorID,Usuario,Equipo,Proceso,Desde) "
                              "VALUES(2,'IDPais',%1,'Ana','otro-equipo',1,'2026-01-01T00:00:00')")
                   .arg(id));
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      QVERIFY(!dialog.IsEnabled("cmdPais_0"));
      dialog.Type("txtPais", QStringLiteral("Galia"));
      dialog.Key(Qt::Key_Return);
      dialog.Press("cmdPais_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(paises, modificar, id));
    QCOMPARE(host.connection().Writes().filter(QStringLiteral("Paises")), QStringList());
    QCOMPARE(host.Query(QStringLiteral("SELECT Usuario FROM BloqueoRegistros")), QStringList(QStringLiteral("Ana")));
  }

  void FailedLoadTellsAndShowsNothing() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(paises, modificar, 999999));
    QCOMPARE(host.driver.Boxes().size(), 1);
    QVERIFY2(host.driver.Boxes().first().startsWith(QStringLiteral("Prueba|critico|Error 3021: ")),
             qPrintable(host.driver.Boxes().first()));
    QCOMPARE(host.connection().Log().last(), QStringLiteral("CLOSE"));
  }

  void FailedWriteReachesTheHostAndReleasesTheLock() {
    TestHost host;
    const int id = host.Id(QStringLiteral("SELECT IDPais FROM Paises WHERE Nombre='Francia'"));
    host.connection().SetHook([](const QString& entry) {
      if (entry.startsWith(u"UPDATE Paises")) {
        throw automation::Error(-2147467259, QStringLiteral("sin conexión"));
      }
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", QStringLiteral("Galia"));
      dialog.Press("cmdPais_0");
    });
    EXPECT_ERROR(host, host.PasarDatos(paises, modificar, id), -2147467259);
    QCOMPARE(host.Query(QStringLiteral("SELECT * FROM BloqueoRegistros")), QStringList());
    QCOMPARE(host.driver.Boxes(), QStringList());
    // The next request works on.
    host.connection().SetHook({});
    host.driver.On("frmPais", [](const DialogUser& dialog) { dialog.Press("cmdPais_1"); });
    EXPECT_CLEAN(host, host.PasarDatos(paises, modificar, id));
  }

  // Clicks that waited while the program was busy reach the dialog when it is already gone.
  void QueuedClicksWriteOnce() {
    TestHost host;
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", QStringLiteral("Atlántida"));
      auto* accept = dialog.Find<QPushButton>("cmdPais_0");
      for (int i = 0; i < 3; ++i) {
        accept->click();
      }
    });
    EXPECT_CLEAN(host, host.PasarDatos(paises, agregar));
    QCOMPARE(host.connection().Writes().size(), 1);
  }

  void StrangeNamesAreStoredIntact_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << QStringLiteral("O'Brien \"x\" ; DROP TABLE Paises;--");
    QTest::newRow("marks") << QStringLiteral("100% _[x]*? & <b>negrita</b> %1 {ID}");
    QTest::newRow("emoji") << QString::fromUtf8("🇪🇸 País 👩‍👩‍👧");
    QTest::newRow("long") << QString(10000, u'ñ');
  }
  void StrangeNamesAreStoredIntact() {
    QFETCH(QString, name);
    TestHost host;
    host.driver.On("frmPais", [&](const DialogUser& dialog) {
      dialog.Paste("txtPais", name);
      dialog.Press("cmdPais_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(paises, nuevo));
    const int id = host.services().property("IDAux").toInt();
    QCOMPARE(host.Query(QStringLiteral("SELECT Nombre FROM Paises WHERE IDPais=%1").arg(id)), QStringList(name));
    // It is shown as it is, too.
    host.driver.On("frmPais", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("txtPais"), name);
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(paises, modificar, id));
  }
};

KEL_TEST(tst_countries);
#include "tst_countries.moc"
