#include "support/Expect.h"

#include <QMessageBox>
#include <QTableView>

using namespace Qt::StringLiterals;

using adodb::Verbatim;
using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

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
int MakeBank(const TestHost& host, const QString& number, const QStringList& codes) {
  host.Query(u"INSERT INTO Bancos(Numero,Nombre) VALUES('{0}','Banco {0}')", number);
  const int id = host.Id(u"SELECT MAX(IDBanco) FROM Bancos");
  for (const QString& code : codes) {
    host.Query(u"INSERT INTO Sucursales(codBanco,Codigo,Nombre,codPais) VALUES({0},'{1}','Oficina {1}',35)", id, code);
  }
  return id;
}

QStringList Branches(const TestHost& host, int bank) {
  return host.Query(
      u"SELECT Codigo, Nombre, Direccion, Poblacion, CP, Eliminado FROM Sucursales "
      "WHERE codBanco={} ORDER BY Codigo",
      bank);
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
      QCOMPARE(dialog.Text(""), u"Agregar banco"_s);
      dialog.Type("txtBanco_0", u"0049"_s);
      dialog.Type("txtBanco_1", u"Banco d'Or"_s);
      dialog.Press("cmdBanco_0");
      dialog.Press("cmdBanco_0");
      QCOMPARE(Grid(dialog), (QStringList{u"0002|Centro|C/ Mayor, 1|Madrid"_s, u"0001|L'Eixample||Madrid"_s}));
      QCOMPARE(SelectedRow(dialog), 1);
      dialog.Press("cmdBanco_3");
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Agregar sucursal del banco Banco d'Or"_s);
      QCOMPARE(dialog.Text("lblNumeroBanco"), u"0049"_s);
      QCOMPARE(dialog.Text("cboPaises"), u"España"_s);
      QCOMPARE(dialog.Text("cboProvincias"), u"Madrid"_s);
      dialog.Type("txtSucursales_2", u"C/ Mayor, 1"_s);
      FillBranch(dialog, "0002", u"Centro"_s);
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { FillBranch(dialog, "0001", u"L'Eixample"_s); });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Nuevo()));
    const int bank = host.services().property("IDAux").toInt();
    const int madrid = host.Id(u"SELECT IDProvincia FROM Provincias WHERE Nombre='Madrid'");
    const QString insert =
        u"INSERT INTO Sucursales (codBanco, Codigo, Nombre, Direccion, Poblacion, CP, codProvincia, codPais) VALUES("_s;
    const QStringList log = host.Recording().Log();
    QCOMPARE(log.mid(log.indexOf(u"BEGIN"_s) - 1),
             (QStringList{u"SELECT Bancos.IDBanco FROM Bancos WHERE Bancos.Eliminado=0 AND Bancos.Numero='0049' "
                          "AND Bancos.IDBanco<>0"_s,
                          u"BEGIN"_s, u"INSERT INTO Bancos (Numero, Nombre) VALUES('0049','Banco d''Or')"_s,
                          u"SELECT MAX(Bancos.IDBanco) AS MaxID FROM Bancos"_s,
                          insert + u"%1,'0002','Centro','C/ Mayor, 1','','',%2,35)"_s.arg(bank).arg(madrid),
                          insert + u"%1,'0001','L''Eixample','','','',%2,35)"_s.arg(bank).arg(madrid), u"COMMIT"_s,
                          u"CLOSE"_s}));
    QCOMPARE(host.Query(u"SELECT Numero, Nombre, Eliminado FROM Bancos WHERE IDBanco={}", bank),
             QStringList(u"0049|Banco d'Or|Falso"_s));
    QCOMPARE(Branches(host, bank).size(), 2);
  }

  void ChangesDeletionsAndAdditionsAreWrittenAtOnce() {
    TestHost host;
    const int bank = MakeBank(host, u"0100"_s, {u"0001"_s, u"0002"_s, u"0003"_s, u"0004"_s});
    const auto idOf = [&](const QString& code) {
      return host.Id(u"SELECT IDSucursal FROM Sucursales WHERE Codigo='{}' AND codBanco={}", code, bank);
    };
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades del banco Banco 0100"_s);
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
      QCOMPARE(host.Recording().Writes().filter(u"Sucursales"_s), QStringList());
      dialog.Press("cmdBanco_3");
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Propiedades de la sucursal del banco Banco 0100"_s);
      QCOMPARE(dialog.Text("txtSucursales_0"), u"0002"_s);
      dialog.Type("txtSucursales_3", u"Ávila"_s);
      dialog.Press("cmdSucursales_0");
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Yes);
    // The code of a branch that was just marked for deletion is free again.
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { FillBranch(dialog, "0003", u"Nueva"_s); });
    const int second = idOf(u"0002"_s);
    const QString gone = u"%1,%2"_s.arg(idOf(u"0003"_s)).arg(idOf(u"0004"_s));
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank));
    const QStringList writes = host.Recording().Writes().filter(u"Sucursales"_s);
    QCOMPARE(writes.value(0),
             u"UPDATE Sucursales SET Codigo='0002',Nombre='Oficina 0002',Direccion='',"
             "Poblacion='Ávila',CP='',codProvincia=0,codPais=35WHERE "
             "Sucursales.IDSucursal=%1"_s.arg(second));
    QVERIFY(writes.value(1).startsWith(u"INSERT INTO Sucursales"_s));
    QCOMPARE(writes.value(2), u"UPDATE Sucursales SET Eliminado=-1 WHERE IDSucursal IN(%1)"_s.arg(gone));
    QCOMPARE(writes.size(), 3);
    QStringList branches = Branches(host, bank);
    branches.sort();
    QCOMPARE(branches, (QStringList{u"0001|Oficina 0001|NULL|NULL|NULL|Falso"_s, u"0002|Oficina 0002||Ávila||Falso"_s,
                                    u"0003|Nueva||||Falso"_s, u"0003|Oficina 0003|NULL|NULL|NULL|Verdadero"_s,
                                    u"0004|Oficina 0004|NULL|NULL|NULL|Verdadero"_s}));
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
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Agregar()));
    QCOMPARE(host.driver.Boxes(), QStringList(2, u"Prueba|aviso|No ha seleccionado ninguna sucursal"_s));
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
    const int bank = MakeBank(host, u"0100"_s, {u"0001"_s});
    host.Query(u"INSERT INTO {}(CodSucursal,Eliminado) SELECT MAX(IDSucursal),{} FROM Sucursales", Verbatim{table},
               mark);
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
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank));
    QCOMPARE(host.driver.Boxes().contains(
                 u"Prueba|critico|La sucursal no puede ser eliminada porque tiene datos relacionados"_s),
             kept);
    QCOMPARE(Branches(host, bank).value(0).endsWith(u"|Falso"_s), true);
  }

  void AJustAddedBranchIsDeletedWithoutTheDatabase() {
    TestHost host;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      dialog.Press("cmdBanco_0");
      host.Recording().Clear();
      SelectRow(dialog, 0);
      dialog.Press("cmdBanco_2");
      QCOMPARE(Grid(dialog), QStringList());
      QCOMPARE(host.Recording().Log(), QStringList());
      dialog.Press("cmdBanco_4");
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { FillBranch(dialog, "0001", u"A"_s); });
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Agregar()));
  }

  // Two branches that were added in one session of the dialog can't share a code, and each is edited as itself.
  void AddedBranchesAreToldApart() {
    TestHost host;
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      dialog.Press("cmdBanco_0");
      dialog.Press("cmdBanco_0");
      SelectRow(dialog, 0);
      dialog.Press("cmdBanco_1");
      QCOMPARE(Grid(dialog), (QStringList{u"0001|Uno bis||Madrid"_s, u"0002|Dos||Madrid"_s}));
      dialog.Press("cmdBanco_4");
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { FillBranch(dialog, "0001", u"Uno"_s); });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      FillBranch(dialog, "0001", u"Dos"_s);
      FillBranch(dialog, "0002", u"Dos"_s);
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) {
      FillBranch(dialog, "0002", u"Uno"_s);
      FillBranch(dialog, "0001", u"Uno bis"_s);
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Agregar()));
    QCOMPARE(host.driver.Boxes().size(), 2);
  }

  // Cancelling a branch leaves the bank's own auxiliary value alone.
  void CancellingABranchHandsNothingBack() {
    TestHost host;
    const int bank = MakeBank(host, u"0100"_s, {});
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      dialog.Press("cmdBanco_0");
      QCOMPARE(host.services().property("IDAux").toInt(), 9);
      QCOMPARE(Grid(dialog), QStringList());
      dialog.Close();
    });
    host.driver.On("frmSucursal", [](const DialogUser& dialog) { dialog.Press("cmdSucursales_1"); });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank, 9));
  }

  void MandatoryFieldsAndUniqueNumber() {
    TestHost host;
    MakeBank(host, u"0100"_s, {});
    host.Query(u"INSERT INTO Bancos(Numero,Nombre,Eliminado) VALUES('0200','Viejo',-1)");
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      dialog.Type("txtBanco_0", u"0100"_s);
      dialog.Type("txtBanco_1", u" "_s);
      dialog.Press("cmdBanco_3");
      QCOMPARE(dialog.Focused(), u"txtBanco_1"_s);
      dialog.Type("txtBanco_1", u"Otro"_s);
      dialog.Press("cmdBanco_3");
      QVERIFY(dialog.IsEnabled("txtBanco_0"));
      dialog.Type("txtBanco_0", u"0200"_s);
      dialog.Press("cmdBanco_3");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Agregar()));
    QCOMPARE(host.driver.Boxes(),
             (QStringList{u"Prueba|aviso|Debe rellenar los datos que son obligatorios para continuar"_s,
                          u"Prueba|critico|El número de banco ya está siendo utilizado. No puede haber "
                          "dos bancos con el mismo número de banco"_s}));
    QCOMPARE(host.Query(u"SELECT Nombre FROM Bancos WHERE Numero='0200' AND Eliminado=0"), QStringList(u"Otro"_s));
    QCOMPARE(host.services().property("IDAux").toInt(), host.Id(u"SELECT IDBanco FROM Bancos WHERE Nombre='Otro'"));
  }

  void BranchesOfDeletedPlacesAreHiddenAndSurvive() {
    TestHost host;
    const int bank = MakeBank(host, u"0100"_s, {u"0001"_s, u"0002"_s, u"0003"_s});
    host.Query(u"INSERT INTO Paises(Nombre,Eliminado) VALUES('Perdido',-1)");
    host.Query(u"UPDATE Sucursales SET codPais={} WHERE Codigo='0002'", host.Id(u"SELECT MAX(IDPais) FROM Paises"));
    host.Query(u"UPDATE Sucursales SET codPais=0, codProvincia=0 WHERE Codigo='0003'");
    const QStringList before = Branches(host, bank);
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      QCOMPARE(Grid(dialog).size(), 2);
      dialog.Type("txtBanco_1", u"Otro nombre"_s);
      dialog.Press("cmdBanco_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank));
    QCOMPARE(Branches(host, bank), before);
  }

  void ClosePromptKnowsTheGrid() {
    TestHost host;
    const int bank = MakeBank(host, u"0100"_s, {u"0001"_s});
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      SelectRow(dialog, 0);
      dialog.Press("cmdBanco_2");
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(node.Bancos(), action.Modificar(), bank));
    QCOMPARE(host.driver.Boxes().last(), u"Prueba|pregunta|¿Desea guardar los cambios efectuados en el formulario?"_s);
    QVERIFY(Branches(host, bank).first().endsWith(u"|Verdadero"_s));
  }
};

KEL_TEST(tst_banks);
#include "tst_banks.moc"
