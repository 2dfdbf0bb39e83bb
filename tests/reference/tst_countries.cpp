#include "support/Expect.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

class tst_countries : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void NewOnBehalfHandsTheIdentifierBack() {
    TestHost host;
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", u"Atlántida"_s);
      dialog.Key(Qt::Key_Return);
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Nuevo()));
    QCOMPARE(host.services().property("IDAux").toInt(), host.Id(u"SELECT IDPais FROM Paises WHERE Nombre='Atlántida'"));
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
        dialog.Type("txtPais", u"Nada"_s);
        dialog.Key(Qt::Key_Escape);
      }
    });
    if (way == 2) {
      host.driver.Answer(QMessageBox::No);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), way == 0 ? action.Agregar() : action.Nuevo(), 0, 35));
    QCOMPARE(host.services().property("IDAux").toInt(), 0);
    QCOMPARE(host.Recording().Writes(), QStringList());
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
    const int id = host.Id(u"SELECT IDPais FROM Paises WHERE Nombre='Francia'");
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
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Modificar(), id));
    QCOMPARE(host.Recording().Writes().filter(u"Paises"_s).size(), written);
    if (!answers.isEmpty()) {
      QCOMPARE(host.driver.Boxes().first(),
               u"Prueba|pregunta|¿Desea guardar los cambios efectuados en el formulario?"_s);
    }
    QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
  }

  void LockedByAnotherUserOpensReadOnly() {
    TestHost host;
    host.session.showRefusedLocks = false;
    const int id = host.Id(u"SELECT IDPais FROM Paises WHERE Nombre='Francia'");
    host.Query(
        u"INSERT INTO BloqueoRegistros(codUsuario,campoID,ValorID,Usuario,Equipo,Proceso,Desde) "
        "VALUES(2,'IDPais',{},'Ana','otro-equipo',1,'2026-01-01T00:00:00')",
        id);
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      QVERIFY(!dialog.IsEnabled("cmdPais_0"));
      dialog.Type("txtPais", u"Galia"_s);
      dialog.Key(Qt::Key_Return);
      dialog.Press("cmdPais_1");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Modificar(), id));
    QCOMPARE(host.Recording().Writes().filter(u"Paises"_s), QStringList());
    QCOMPARE(host.Query(u"SELECT Usuario FROM BloqueoRegistros"), QStringList(u"Ana"_s));
    // What was refused is not released.
    QCOMPARE(host.Recording().Writes().filter(u"DELETE"_s), QStringList());
  }

  void FailedLoadTellsAndShowsNothing() {
    TestHost host;
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Modificar(), 999999));
    QCOMPARE(host.driver.Boxes().size(), 1);
    QVERIFY2(host.driver.Boxes().first().startsWith(u"Prueba|critico|Error 3021: "_s),
             qPrintable(host.driver.Boxes().first()));
    QCOMPARE(host.Recording().Log().last(), u"CLOSE"_s);
  }

  void FailedWriteReachesTheHostAndReleasesTheLock() {
    TestHost host;
    const int id = host.Id(u"SELECT IDPais FROM Paises WHERE Nombre='Francia'");
    host.Recording().SetHook([](const QString& entry) {
      if (entry.startsWith(u"UPDATE Paises")) {
        throw automation::Error(-2147467259, u"sin conexión"_s);
      }
    });
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", u"Galia"_s);
      dialog.Press("cmdPais_0");
    });
    EXPECT_ERROR(host, host.PasarDatos(node.Paises(), action.Modificar(), id), -2147467259);
    QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
    QCOMPARE(host.driver.Boxes(), QStringList());
    // The next request works on.
    host.Recording().SetHook({});
    host.driver.On("frmPais", [](const DialogUser& dialog) { dialog.Press("cmdPais_1"); });
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Modificar(), id));
  }

  // Clicks that waited while the program was busy reach the dialog when it is already gone: they write nothing twice
  // and take back nothing.
  void QueuedClicksDoNothing() {
    TestHost host;
    host.driver.On("frmPais", [](const DialogUser& dialog) {
      dialog.Type("txtPais", u"Atlántida"_s);
      auto* accept = dialog.Find<QPushButton>("cmdPais_0");
      auto* cancel = dialog.Find<QPushButton>("cmdPais_1");
      accept->click();
      accept->click();
      cancel->click();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Nuevo()));
    QCOMPARE(host.Recording().Writes().size(), 1);
    QVERIFY(host.services().property("IDAux").toInt() > 0);
  }

  void StrangeNamesAreStoredIntact_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("quotes") << u"O'Brien \"x\" ; DROP TABLE Paises;--"_s;
    QTest::newRow("marks") << u"100% _[x]*? & <b>negrita</b> %1 {ID}"_s;
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
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Nuevo()));
    const int id = host.services().property("IDAux").toInt();
    QCOMPARE(host.Query(u"SELECT Nombre FROM Paises WHERE IDPais={}", id), QStringList(name));
    // It is shown as it is, too.
    host.driver.On("frmPais", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("txtPais"), name);
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Paises(), action.Modificar(), id));
  }
};

KEL_TEST(tst_countries);
#include "tst_countries.moc"
