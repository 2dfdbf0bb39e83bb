#include "support/Expect.h"
#include "support/TestProgram.h"

#include <QMessageBox>
#include <QTableView>

using support::agregar;
using support::DialogUser;
using support::modificar;
using support::nuevo;
using support::TestHost;

namespace {

constexpr int bancos = 19;

// The rows of the branch grid, a line each.
QStringList Grid(const DialogUser& dialog) {
  const QAbstractItemModel* model = dialog.Find<QTableView>("msgSucursales")->model();
  QStringList rows;
  for (int row = 0; row < model->rowCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < model->columnCount(); ++column) {
      cells.append(model->index(row, column).data().toString());
    }
    rows.append(cells.join(u'|'));
  }
  return rows;
}

void SelectRow(const DialogUser& dialog, int row) {
  auto* grid = dialog.Find<QTableView>("msgSucursales");
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(row, 0)).center());
}

int SelectedRow(const DialogUser& dialog) {
  const QModelIndexList rows = dialog.Find<QTableView>("msgSucursales")->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.first().row();
}

// A bank with branches of the codes given; returns its key.
int MakeBank(const TestHost& host, const char* number, const QStringList& codes) {
  host.Query(QStringLiteral("INSERT INTO Bancos(Numero,Nombre) VALUES('%1','Banco %1')").arg(QLatin1String(number)));
  const int id = host.Id(QStringLiteral("SELECT MAX(IDBanco) FROM Bancos"));
  for (const QString& code : codes) {
    host.Query(QStringLiteral("INSERT INTO Sucursales(codBanco,Codigo,Nombre,codPais) VALUES(%1,'%2','Oficina %2',35)")
                   .arg(id)
                   .arg(code));
  }
  return id;
}

QStringList Branches(const TestHost& host, int bank) {
  return host.Query(QStringLiteral("SELECT Codigo, Nombre, Direccion, Poblacion, CP, Eliminado FROM Sucursales "
                                   "WHERE codBanco=%1 ORDER BY Codigo")
                        .arg(bank));
}

void FillBranch(const DialogUser& dialog, const char* code, const QString& name) {
  dialog.Type("txtSucursales_0", QString::fromLatin1(code));
  dialog.Type("txtSucursales_1", name);
  dialog.Press("cmdSucursales_0");
}

}  // namespace

class tst_banks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ANewBankWithItsBranches() {
    TestHost host;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Agregar banco"));
      dialog.Type("txtBanco_0", QStringLiteral("0049"));
      dialog.Type("txtBanco_1", QStringLiteral("Banco d'Or"));
      dialog.Press("cmdBanco_0");
      dialog.Press("cmdBanco_0");
      QCOMPARE(Grid(dialog), (QStringList{QStringLiteral("0002|Centro|C/ Mayor, 1|Madrid"),
                                          QStringLiteral("0001|L'Eixample||Madrid")}));
      QCOMPARE(SelectedRow(dialog), 1);
      dialog.Press("cmdBanco_3");
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Agregar sucursal del banco Banco d'Or"));
      QCOMPARE(dialog.Text("lblNumeroBanco"), QStringLiteral("0049"));
      QCOMPARE(dialog.Text("cboPaises"), QStringLiteral("España"));
      QCOMPARE(dialog.Text("cboProvincias"), QStringLiteral("Madrid"));
      dialog.Type("txtSucursales_2", QStringLiteral("C/ Mayor, 1"));
      FillBranch(dialog, "0002", QStringLiteral("Centro"));
    });
    host.driver.On("frmSucursal",
                   [](const DialogUser& dialog) { FillBranch(dialog, "0001", QStringLiteral("L'Eixample")); });
    EXPECT_CLEAN(host, host.PasarDatos(bancos, nuevo));
    const int bank = host.services().property("IDAux").toInt();
    const int madrid = host.Id(QStringLiteral("SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'"));
    const QString insert = QStringLiteral(
        "INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, codProvincia, codPais) VALUES(");
    const QStringList log = host.connection().Log();
    QCOMPARE(
        log.mid(log.indexOf(QStringLiteral("BEGIN")) - 1),
        (QStringList{
            QStringLiteral("SELECT Bancos.IDBanco FROM Bancos WHERE Bancos.Eliminado=0 AND Bancos.Numero='0049' "
                           "AND Bancos.IDBanco<>0"),
            QStringLiteral("BEGIN"), QStringLiteral("INSERT INTO Bancos (Numero, Nombre) VALUES('0049','Banco d''Or')"),
            QStringLiteral("SELECT MAX(Bancos.IDBanco) AS MaxID FROM Bancos"),
            insert + QStringLiteral("%1,'0002','Centro','C/ Mayor, 1','','',%2,35)").arg(bank).arg(madrid),
            insert + QStringLiteral("%1,'0001','L''Eixample','','','',%2,35)").arg(bank).arg(madrid),
            QStringLiteral("COMMIT"), QStringLiteral("CLOSE")}));
    QCOMPARE(host.Query(QStringLiteral("SELECT Numero, Nombre, Eliminado FROM Bancos WHERE IDBanco=%1").arg(bank)),
             QStringList(QStringLiteral("0049|Banco d'Or|Falso")));
    QCOMPARE(Branches(host, bank).size(), 2);
  }

  void ChangesDeletionsAndAdditionsAreWrittenAtOnce() {
    TestHost host;
    const int bank = MakeBank(
        host, "0100", {QStringLiteral("0001"), QStringLiteral("0002"), QStringLiteral("0003"), QStringLiteral("0004")});
    const auto idOf = [&](const char* code) {
      return host.Id(QStringLiteral("SELECT IDSucursal FROM Sucursales WHERE Codigo='%1' AND codBanco=%2")
                         .arg(QLatin1String(code))
                         .arg(bank));
    };
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Propiedades del banco Banco 0100"));
      SelectRow(dialog, 1);
      dialog.Press("cmdBanco_1");
      QCOMPARE(SelectedRow(dialog), 1);
      SelectRow(dialog, 2);
      QTest::keyClick(dialog.Find("msgSucursales"), Qt::Key_Delete);
      QCOMPARE(SelectedRow(dialog), 2);
      QTest::keyClick(dialog.Find("msgSucursales"), Qt::Key_Delete);
      QTest::keyClick(dialog.Find("msgSucursales"), Qt::Key_Insert);
      QCOMPARE(Grid(dialog).size(), 3);
      // Nothing is written before Accept.
      QCOMPARE(host.connection().Writes().filter(QStringLiteral("Sucursales")), QStringList());
      dialog.Press("cmdBanco_3");
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), QStringLiteral("Propiedades de la sucursal del banco Banco 0100"));
      QCOMPARE(dialog.Text("txtSucursales_0"), QStringLiteral("0002"));
      dialog.Type("txtSucursales_3", QStringLiteral("Ávila"));
      dialog.Press("cmdSucursales_0");
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Yes);
    // The code of a branch that was just marked for deletion is free again.
    host.driver.On("frmSucursal",
                   [](const DialogUser& dialog) { FillBranch(dialog, "0003", QStringLiteral("Nueva")); });
    const int second = idOf("0002");
    const QString gone = QStringLiteral("%1,%2").arg(idOf("0003")).arg(idOf("0004"));
    EXPECT_CLEAN(host, host.PasarDatos(bancos, modificar, bank));
    const QStringList writes = host.connection().Writes().filter(QStringLiteral("Sucursales"));
    QCOMPARE(writes.value(0), QStringLiteral("UPDATE Sucursales SET Codigo='0002',Nombre='Oficina 0002',Direccion='',"
                                             "Poblacion='Ávila',CP='',codProvincia=0,codPais=35WHERE "
                                             "Sucursales.IDSucursal=%1")
                                  .arg(second));
    QVERIFY(writes.value(1).startsWith(QStringLiteral("INSERT INTO Sucursales")));
    QCOMPARE(writes.value(2), QStringLiteral("UPDATE Sucursales SET Eliminado=-1 WHERE IDSucursal IN(%1)").arg(gone));
    QCOMPARE(writes.size(), 3);
    QStringList branches = Branches(host, bank);
    branches.sort();
    QCOMPARE(branches,
             (QStringList{QStringLiteral("0001|Oficina 0001|NULL|NULL|NULL|Falso"),
                          QStringLiteral("0002|Oficina 0002||Ávila||Falso"), QStringLiteral("0003|Nueva||||Falso"),
                          QStringLiteral("0003|Oficina 0003|NULL|NULL|NULL|Verdadero"),
                          QStringLiteral("0004|Oficina 0004|NULL|NULL|NULL|Verdadero")}));
  }

  void SelectionIsNeeded() {
    TestHost host;
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      dialog.Press("cmdBanco_1");
      dialog.Press("cmdBanco_2");
      dialog.Press("cmdBanco_4");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(bancos, agregar));
    QCOMPARE(host.driver.Boxes(), QStringList(2, QStringLiteral("Prueba|aviso|No ha seleccionado ninguna sucursal")));
  }

  void ABranchInUseStays_data() {
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("mark");
    QTest::addColumn<bool>("kept");
    for (const char* table : {"Cuentas", "Colaboradores_Cuentas"}) {
      QTest::addRow("%s, live", table) << QString::fromLatin1(table) << 0 << true;
      QTest::addRow("%s, deleted", table) << QString::fromLatin1(table) << -1 << false;
    }
  }
  void ABranchInUseStays() {
    QFETCH(QString, table);
    QFETCH(int, mark);
    QFETCH(bool, kept);
    TestHost host;
    const int bank = MakeBank(host, "0100", {QStringLiteral("0001")});
    host.Query(QStringLiteral("INSERT INTO %1(CodSucursal,Eliminado) SELECT MAX(IDSucursal),%2 FROM Sucursales")
                   .arg(table)
                   .arg(mark));
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      SelectRow(dialog, 0);
      dialog.Press("cmdBanco_2");
      QCOMPARE(Grid(dialog).size(), kept ? 1 : 0);
      dialog.Press("cmdBanco_4");
    });
    host.driver.Answer(QMessageBox::Yes);
    if (kept) {
      host.driver.Answer(QMessageBox::Ok);
    }
    EXPECT_CLEAN(host, host.PasarDatos(bancos, modificar, bank));
    QCOMPARE(host.driver.Boxes().contains(
                 QStringLiteral("Prueba|critico|La sucursal no puede ser eliminada porque tiene datos relacionados")),
             kept);
    QCOMPARE(Branches(host, bank).value(0).endsWith(QStringLiteral("|Falso")), true);
  }

  void AJustAddedBranchIsDeletedWithoutTheDatabase() {
    TestHost host;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      dialog.Press("cmdBanco_0");
      host.connection().Clear();
      SelectRow(dialog, 0);
      dialog.Press("cmdBanco_2");
      QCOMPARE(Grid(dialog), QStringList());
      QCOMPARE(host.connection().Log(), QStringList());
      dialog.Press("cmdBanco_4");
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { FillBranch(dialog, "0001", QStringLiteral("A")); });
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(bancos, agregar));
  }

  void MandatoryFieldsAndUniqueNumber() {
    TestHost host;
    MakeBank(host, "0100", {});
    host.Query(QStringLiteral("INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('0200','Viejo',-1)"));
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      dialog.Type("txtBanco_0", QStringLiteral("0100"));
      dialog.Type("txtBanco_1", QStringLiteral(" "));
      dialog.Press("cmdBanco_3");
      QCOMPARE(dialog.Focused(), QStringLiteral("txtBanco_1"));
      dialog.Type("txtBanco_1", QStringLiteral("Otro"));
      dialog.Press("cmdBanco_3");
      QVERIFY(dialog.IsEnabled("txtBanco_0"));
      dialog.Type("txtBanco_0", QStringLiteral("0200"));
      dialog.Press("cmdBanco_3");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(bancos, agregar));
    QCOMPARE(host.driver.Boxes(),
             (QStringList{QStringLiteral("Prueba|aviso|Debe rellenar los datos que son obligatorios para continuar"),
                          QStringLiteral("Prueba|critico|El número de banco ya está siendo utilizado. No puede haber "
                                         "dos bancos con el mismo número de banco")}));
    QCOMPARE(host.Query(QStringLiteral("SELECT Nombre FROM Bancos WHERE Numero='0200' AND Eliminado=0")),
             QStringList(QStringLiteral("Otro")));
    QCOMPARE(host.services().property("IDAux").toInt(),
             host.Id(QStringLiteral("SELECT IDBanco FROM Bancos WHERE Nombre='Otro'")));
  }

  void BranchesOfDeletedPlacesAreHiddenAndSurvive() {
    TestHost host;
    const int bank = MakeBank(host, "0100", {QStringLiteral("0001"), QStringLiteral("0002"), QStringLiteral("0003")});
    host.Query(QStringLiteral("INSERT INTO Paises(Nombre,Eliminado) VALUES('Perdido',-1)"));
    host.Query(QStringLiteral("UPDATE Sucursales SET codPais=%1 WHERE Codigo='0002'")
                   .arg(host.Id(QStringLiteral("SELECT MAX(IDPais) FROM Paises"))));
    host.Query(QStringLiteral("UPDATE Sucursales SET codPais=0, codProvincia=0 WHERE Codigo='0003'"));
    const QStringList before = Branches(host, bank);
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      QCOMPARE(Grid(dialog).size(), 2);
      dialog.Type("txtBanco_1", QStringLiteral("Otro nombre"));
      dialog.Press("cmdBanco_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(bancos, modificar, bank));
    QCOMPARE(Branches(host, bank), before);
  }

  void ClosePromptKnowsTheGrid() {
    TestHost host;
    const int bank = MakeBank(host, "0100", {QStringLiteral("0001")});
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      SelectRow(dialog, 0);
      dialog.Press("cmdBanco_2");
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(bancos, modificar, bank));
    QCOMPARE(host.driver.Boxes().last(),
             QStringLiteral("Prueba|pregunta|¿Desea guardar los cambios efectuados en el formulario?"));
    QVERIFY(Branches(host, bank).first().endsWith(QStringLiteral("|Verdadero")));
  }
};

KEL_TEST(tst_banks);
#include "tst_banks.moc"
