#include "support/Expect.h"

#include <QApplication>
#include <QMessageBox>
#include <QProcess>
#include <QTableView>

#include <csignal>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// A bank of three branches; returns its key.
int MakeBank(const TestHost& host) {
  host.Query(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0100','Banco')");
  const int id = host.Id(u"SELECT MAX(IDBanco) FROM Bancos");
  for (const QString& code : {u"0001"_s, u"0002"_s, u"0003"_s}) {
    host.Query(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,codPais) VALUES({},'{}','Oficina',35)", id, code);
  }
  return id;
}

QStringList Everything(const TestHost& host) {
  return host.Query(u"SELECT IDBanco, Numero, Nombre, Eliminado FROM Bancos ORDER BY IDBanco") +
         host.Query(
             u"SELECT IDSucursal, codBanco, Codigo, Nombre, Eliminado FROM Sucursales "
             "ORDER BY IDSucursal");
}

// One edited, one deleted and one added branch, and Accept.
void EditEverything(support::Driver& driver, const DialogUser& dialog) {
  auto* grid = dialog.Find<QTableView>("msgSucursales");
  grid->selectRow(0);
  driver.On("frmSucursal", [](const DialogUser& branch) {
    branch.Type("txtSucursales_1", u"Cambiada"_s);
    branch.Press("cmdSucursales_0");
  });
  dialog.Press("cmdBanco_1");
  grid->selectRow(1);
  driver.Answer(QMessageBox::Yes);
  dialog.Press("cmdBanco_2");
  driver.On("frmSucursal", [](const DialogUser& branch) {
    branch.Type("txtSucursales_0", u"0009"_s);
    branch.Type("txtSucursales_1", u"Nueva"_s);
    branch.Press("cmdSucursales_0");
  });
  dialog.Press("cmdBanco_0");
  dialog.Type("txtBanco_1", u"Banco cambiado"_s);
}

// Edits the bank of a database and dies when the write has come to its last statement.
int DieWhileWriting(const QString& connectionString, int bank) {
  TestHost host(connectionString);
  host.Recording().SetHook([](const QString& text) {
    if (text.startsWith(u"UPDATE Sucursales SET Eliminado")) {
      raise(SIGKILL);
    }
  });
  host.driver.On("frmBanco", [&](const DialogUser& dialog) {
    EditEverything(host.driver, dialog);
    dialog.Press("cmdBanco_3");
  });
  host.PasarDatos(node.Bancos(), action.Modificar(), bank);
  return 0;
}

}  // namespace

class tst_bank_faults : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // The connection fails at each entry of the write in turn; every time nothing is written, the dialog stays with what
  // was typed, and the next try writes everything.
  void FailureAtEachStatement_data() {
    QTest::addColumn<bool>("isNew");
    QTest::addColumn<int>("failing");
    for (int i = 0; i < 6; ++i) {
      QTest::addRow("modify, entry %d", i) << false << i;
    }
    for (int i = 0; i < 5; ++i) {
      QTest::addRow("add, entry %d", i) << true << i;
    }
  }
  void FailureAtEachStatement() {
    QFETCH(bool, isNew);
    QFETCH(int, failing);
    TestHost host;
    const int bank = MakeBank(host);
    const QStringList before = Everything(host);
    int entry = -1;
    bool failed = false;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      if (!isNew) {
        EditEverything(host.driver, dialog);
      } else {
        host.driver.On("frmSucursal", [](const DialogUser& branch) {
          branch.Type("txtSucursales_0", u"0009"_s);
          branch.Type("txtSucursales_1", u"Nueva"_s);
          branch.Press("cmdSucursales_0");
        });
        dialog.Type("txtBanco_0", u"0300"_s);
        dialog.Type("txtBanco_1", u"Nuevo"_s);
        dialog.Press("cmdBanco_0");
      }
      host.Recording().SetHook([&](const QString& text) {
        entry = text == u"BEGIN" ? 0 : entry < 0 ? -1 : entry + 1;
        if (entry == failing && !failed) {
          failed = true;
          throw automation::Error(-2147467259, u"se cortó"_s);
        }
      });
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdBanco_3");
      QVERIFY(failed);
      QCOMPARE(Everything(host), before);
      QVERIFY(dialog.Dialog()->isVisible() && dialog.IsEnabled("cmdBanco_3"));
      QCOMPARE(dialog.Find<QTableView>("msgSucursales")->model()->rowCount(), isNew ? 1 : 3);
      dialog.Press("cmdBanco_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), isNew ? action.Agregar() : action.Modificar(), isNew ? 0 : bank));
    QCOMPARE(host.driver.Boxes().filter(u"critico"_s), QStringList(u"Prueba|critico|Error -2147467259: se cortó"_s));
    QCOMPARE(Everything(host).size(), before.size() + (isNew ? 2 : 1));
  }

  void FailedWriteFromTheClosePromptClosesTheDialog() {
    TestHost host;
    const int bank = MakeBank(host);
    const QStringList before = Everything(host);
    host.Recording().SetHook([](const QString& text) {
      if (text == u"COMMIT") {
        throw automation::Error(-2147467259, u"se cortó"_s);
      }
    });
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      dialog.Type("txtBanco_1", u"Otro"_s);
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank));
    QCOMPARE(Everything(host), before);
    QCOMPARE(host.Query(u"SELECT * FROM BloqueoRegistros"), QStringList());
  }

  // The process dies in the middle of the write, with the bank and a branch already written in its transaction.
  void KilledInTheMiddleOfTheWrite() {
    TestHost host;
    const int bank = MakeBank(host);
    const QStringList before = Everything(host);
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(),
                  {u"--die"_s, host.ConnectionString(), QString::number(bank)});
    QVERIFY(program.waitForFinished());
    QVERIFY(program.exitStatus() == QProcess::CrashExit && program.exitCode() == SIGKILL);
    QCOMPARE(Everything(host), before);
    // What the dead program had locked is free for the next one.
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      QVERIFY(dialog.IsEnabled("cmdBanco_3"));
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank));
  }

  // Somebody else is modifying the bank: it can be read, down to its branches, and nothing can be changed.
  void HeldByAnotherUser() {
    TestHost host;
    const int bank = MakeBank(host);
    host.Query(
        u"INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID, Usuario) VALUES (9, 'IDBanco', {}, 'blas')",
        bank);
    host.driver.Answer(QMessageBox::Ok);
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      QVERIFY(dialog.Text("").endsWith(u" (solo lectura)"_s));
      auto* grid = dialog.Find<QTableView>("msgSucursales");
      grid->selectRow(1);
      for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_Return, Qt::Key_Delete}) {
        QTest::keyClick(grid, key);
      }
      QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(1, 0)).center());
      QTest::keyClicks(dialog.Find("txtBanco_1"), u"x"_s);
      QCOMPARE(dialog.Text("txtBanco_1"), u"Banco"_s);
      for (const char* off : {"cmdBanco_0", "cmdBanco_1", "cmdBanco_2", "cmdBanco_3"}) {
        QVERIFY2(!dialog.IsEnabled(off), off);
      }
      dialog.Press("cmdBanco_4");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank));
    QCOMPARE(host.driver.Boxes().size(), 1);
  }

  // Another user takes the number between this dialog's check and its write.
  void TheSameNumberAtTheSameMoment() {
    TestHost host;
    host.Recording().SetHook([&](const QString& text) {
      if (text == u"BEGIN") {
        host.Query(u"INSERT INTO Bancos(Numero,Nombre) VALUES('0300','El otro')");
        host.Recording().SetHook({});
      }
    });
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      dialog.Type("txtBanco_0", u"0300"_s);
      dialog.Type("txtBanco_1", u"El mío"_s);
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdBanco_3");
      dialog.Press("cmdBanco_4");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Agregar()));
    QVERIFY(host.driver.Boxes().last().startsWith(u"Prueba|critico|Error "_s));
    QCOMPARE(host.Query(u"SELECT Nombre FROM Bancos WHERE Numero='0300'"), QStringList(u"El otro"_s));
  }
};

KEL_TEST(tst_bank_faults);
KEL_TEST_HELPER(die, [](const QStringList& arguments) {
  return DieWhileWriting(arguments.value(0), arguments.value(1).toInt());
});

#include "tst_bank_faults.moc"
