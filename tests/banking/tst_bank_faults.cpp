#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QMessageBox>
#include <QProcess>
#include <QTableView>

#include <csignal>

using support::agregar;
using support::DialogUser;
using support::modificar;
using support::TestHost;

namespace {

constexpr int bancos = 19;

// A bank of three branches; returns its key.
int MakeBank(const TestHost& host) {
  host.Query(QStringLiteral("INSERT INTO Bancos(Numero,Nombre) VALUES('0100','Banco')"));
  const int id = host.Id(QStringLiteral("SELECT MAX(IDBanco) FROM Bancos"));
  for (const char* code : {"0001", "0002", "0003"}) {
    host.Query(QStringLiteral("INSERT INTO Sucursales(codBanco,Codigo,Nombre,codPais) VALUES(%1,'%2','Oficina',35)")
                   .arg(id)
                   .arg(QLatin1String(code)));
  }
  return id;
}

QStringList Everything(const TestHost& host) {
  return host.Query(QStringLiteral("SELECT IDBanco, Numero, Nombre, Eliminado FROM Bancos ORDER BY IDBanco")) +
         host.Query(QStringLiteral("SELECT IDSucursal, codBanco, Codigo, Nombre, Eliminado FROM Sucursales "
                                   "ORDER BY IDSucursal"));
}

// One edited, one deleted and one added branch, and Accept.
void EditEverything(support::Driver& driver, const DialogUser& dialog) {
  auto* grid = dialog.Find<QTableView>("msgSucursales");
  grid->selectRow(0);
  driver.On("frmSucursal", [](const DialogUser& branch) {
    branch.Type("txtSucursales_1", QStringLiteral("Cambiada"));
    branch.Press("cmdSucursales_0");
  });
  dialog.Press("cmdBanco_1");
  grid->selectRow(1);
  driver.Answer(QMessageBox::Yes);
  dialog.Press("cmdBanco_2");
  driver.On("frmSucursal", [](const DialogUser& branch) {
    branch.Type("txtSucursales_0", QStringLiteral("0009"));
    branch.Type("txtSucursales_1", QStringLiteral("Nueva"));
    branch.Press("cmdSucursales_0");
  });
  dialog.Press("cmdBanco_0");
  dialog.Type("txtBanco_1", QStringLiteral("Banco cambiado"));
}

// Edits the bank of a database file and dies when the write has come to its last statement.
int DieWhileWriting(const QString& file, int bank) {
  TestHost host(file);
  host.connection().SetHook([](const QString& text) {
    if (text.startsWith(u"UPDATE Sucursales SET Eliminado")) {
      raise(SIGKILL);
    }
  });
  host.driver.On("frmBanco", [&](const DialogUser& dialog) {
    EditEverything(host.driver, dialog);
    dialog.Press("cmdBanco_3");
  });
  host.PasarDatos(bancos, modificar, bank);
  return 0;
}

}  // namespace

class tst_bank_faults : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // The connection fails at each entry of the write in turn; every time nothing is written, the dialog stays with what
  // was typed, and the next try writes everything.
  void FailureAtEachStatement_data() {
    QTest::addColumn<int>("action");
    QTest::addColumn<int>("failing");
    for (int i = 0; i < 7; ++i) {
      QTest::addRow("modify, entry %d", i) << modificar << i;
    }
    for (int i = 0; i < 5; ++i) {
      QTest::addRow("add, entry %d", i) << agregar << i;
    }
  }
  void FailureAtEachStatement() {
    QFETCH(int, action);
    QFETCH(int, failing);
    TestHost host;
    const int bank = MakeBank(host);
    const QStringList before = Everything(host);
    int entry = -1;
    bool failed = false;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      if (action == modificar) {
        EditEverything(host.driver, dialog);
      } else {
        host.driver.On("frmSucursal", [](const DialogUser& branch) {
          branch.Type("txtSucursales_0", QStringLiteral("0009"));
          branch.Type("txtSucursales_1", QStringLiteral("Nueva"));
          branch.Press("cmdSucursales_0");
        });
        dialog.Type("txtBanco_0", QStringLiteral("0300"));
        dialog.Type("txtBanco_1", QStringLiteral("Nuevo"));
        dialog.Press("cmdBanco_0");
      }
      host.connection().SetHook([&](const QString& text) {
        entry = text == u"BEGIN" ? 0 : entry < 0 ? -1 : entry + 1;
        if (entry == failing && !failed) {
          failed = true;
          throw automation::Error(-2147467259, QStringLiteral("se cortó"));
        }
      });
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdBanco_3");
      QVERIFY(failed);
      QCOMPARE(Everything(host), before);
      QVERIFY(dialog.Dialog()->isVisible() && dialog.IsEnabled("cmdBanco_3"));
      QCOMPARE(dialog.Find<QTableView>("msgSucursales")->model()->rowCount(), action == modificar ? 3 : 1);
      dialog.Press("cmdBanco_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(bancos, action, action == modificar ? bank : 0));
    QCOMPARE(host.driver.Boxes().filter(QStringLiteral("critico")),
             QStringList(QStringLiteral("Prueba|critico|Error -2147467259: se cortó")));
    QCOMPARE(Everything(host).size(), before.size() + (action == modificar ? 1 : 2));
  }

  void FailedWriteFromTheClosePromptClosesTheDialog() {
    TestHost host;
    const int bank = MakeBank(host);
    const QStringList before = Everything(host);
    host.connection().SetHook([](const QString& text) {
      if (text == u"COMMIT") {
        throw automation::Error(-2147467259, QStringLiteral("se cortó"));
      }
    });
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      dialog.Type("txtBanco_1", QStringLiteral("Otro"));
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(bancos, modificar, bank));
    QCOMPARE(Everything(host), before);
    QCOMPARE(host.Query(QStringLiteral("SELECT * FROM BloqueoRegistros")), QStringList());
  }

  // The process dies in the middle of the write, with the bank and a branch already written in its transaction.
  void KilledInTheMiddleOfTheWrite() {
    TestHost host;
    const int bank = MakeBank(host);
    const QStringList before = Everything(host);
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--die"), host.file(), QString::number(bank)});
    QVERIFY(program.waitForFinished());
    QVERIFY(program.exitStatus() == QProcess::CrashExit && program.exitCode() == SIGKILL);
    QCOMPARE(Everything(host), before);
    // What the dead program had locked is free for the next one.
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      QVERIFY(dialog.IsEnabled("cmdBanco_3"));
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(bancos, modificar, bank));
  }

  void DeletedByAnotherUserMeanwhile() {
    TestHost host;
    const int bank = MakeBank(host);
    QStringList before;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      EditEverything(host.driver, dialog);
      host.Query(QStringLiteral("UPDATE Sucursales SET Eliminado=-1 WHERE CodBanco=%1").arg(bank));
      host.Query(QStringLiteral("UPDATE Bancos SET Eliminado=-1 WHERE IDBanco=%1").arg(bank));
      before = Everything(host);
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdBanco_3");
      dialog.Press("cmdBanco_4");
    });
    EXPECT_CLEAN(host, host.PasarDatos(bancos, modificar, bank));
    // The user is told, and nothing is written to a bank that is gone.
    QVERIFY2(host.driver.Boxes().last().contains(QStringLiteral("eliminado")), qPrintable(host.driver.Boxes().last()));
    QCOMPARE(Everything(host), before);
  }

  // Another user takes the number between this dialog's check and its write.
  void TheSameNumberAtTheSameMoment() {
    TestHost host;
    host.connection().SetHook([&](const QString& text) {
      if (text == u"BEGIN") {
        host.Query(QStringLiteral("INSERT INTO Bancos(Numero,Nombre) VALUES('0300','El otro')"));
        host.connection().SetHook({});
      }
    });
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      dialog.Type("txtBanco_0", QStringLiteral("0300"));
      dialog.Type("txtBanco_1", QStringLiteral("El mío"));
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdBanco_3");
      dialog.Press("cmdBanco_4");
    });
    EXPECT_CLEAN(host, host.PasarDatos(bancos, agregar));
    QVERIFY(host.driver.Boxes().last().startsWith(QStringLiteral("Prueba|critico|Error ")));
    QCOMPARE(host.Query(QStringLiteral("SELECT Nombre FROM Bancos WHERE Numero='0300'")),
             QStringList(QStringLiteral("El otro")));
  }
};

KEL_TEST(tst_bank_faults);
KEL_TEST_HELPER(die, [](const QStringList& arguments) {
  return DieWhileWriting(arguments.value(0), arguments.value(1).toInt());
});

#include "tst_bank_faults.moc"
