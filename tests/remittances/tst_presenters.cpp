#include "remittances/Office.h"

#include <QComboBox>
#include <QMessageBox>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

const QString missingData = u"Prueba|informacion|Faltan datos por especificar"_s;
// Two banks with two branches each.
struct Banks : Office {
  explicit Banks(const TestHost& testHost) : Office(testHost) {
    north = Bank(u"0049"_s, u"Banco del Norte"_s);
    northCentre = Branch(north, u"0001"_s, u"Centro"_s);
    northPort = Branch(north, u"0002"_s, u"Puerto"_s);
    south = Bank(u"0100"_s, u"Banco del Sur"_s);
    southCentre = Branch(south, u"0001"_s, u"Alameda"_s);
    southMarket = Branch(south, u"0005"_s, u"Mercado"_s);
  }

  int north, northCentre, northPort;
  int south, southCentre, southMarket;
};

// Bank list, number, branch list, code, in one line.
QString Place(const DialogUser& dialog) {
  return QStringList{dialog.Text("cboBancos"), dialog.Text("txtNEntidad"), dialog.Text("cboSucursales"),
                     dialog.Text("txtNSucursal")}
      .join(u'|');
}

void TypeNumber(const DialogUser& dialog, const char* box, const QString& number) {
  dialog.Type(box, number);
  dialog.Find("txtNombre")->setFocus(Qt::TabFocusReason);
}

}  // namespace

class tst_presenters : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void BothWaysOfChoosingStayInStep() {
    TestHost host;
    const Banks banks(host);
    host.driver.On("frmPresentador", [](const DialogUser& dialog) {
      dialog.Choose("cboBancos", u"Banco del Norte"_s);
      QCOMPARE(Place(dialog), u"Banco del Norte|0049||"_s);
      QCOMPARE(dialog.Items("cboSucursales"), (QStringList{u"Centro"_s, u"Puerto"_s}));
      dialog.Choose("cboSucursales", u"Puerto"_s);
      QCOMPARE(dialog.Text("txtNSucursal"), u"0002"_s);
      // The same number, or the same bank, again: the branch stays.
      TypeNumber(dialog, "txtNEntidad", u"49"_s);
      QCOMPARE(Place(dialog), u"Banco del Norte|0049|Puerto|0002"_s);
      TypeNumber(dialog, "txtNSucursal", u"1"_s);
      QCOMPARE(Place(dialog), u"Banco del Norte|0049|Centro|0001"_s);
      // Another bank has the code, too; it is a new choice all the same.
      TypeNumber(dialog, "txtNEntidad", u"0100"_s);
      QCOMPARE(Place(dialog), u"Banco del Sur|0100||"_s);
      QCOMPARE(dialog.Items("cboSucursales"), (QStringList{u"Alameda"_s, u"Mercado"_s}));
      dialog.Choose("cboSucursales", u"Alameda"_s);
      // A code and a number that nobody has.
      TypeNumber(dialog, "txtNSucursal", u"0009"_s);
      QCOMPARE(Place(dialog), u"Banco del Sur|0100||0009"_s);
      TypeNumber(dialog, "txtNEntidad", u"9999"_s);
      QCOMPARE(Place(dialog), u"|9999||"_s);
      QCOMPARE(dialog.Items("cboSucursales"), QStringList());
      TypeNumber(dialog, "txtNEntidad", u"0100"_s);
      QCOMPARE(Place(dialog), u"Banco del Sur|0100||"_s);
      TypeNumber(dialog, "txtNEntidad", {});
      QCOMPARE(Place(dialog), u"|||"_s);
      dialog.Press("cmdCancelar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Presentadores(), action.Agregar()));
    QCOMPARE(Requested(host, "IDAux"), 0);
  }

  // Old data may hold one code twice: passing through the box does not choose the other one.
  void PassingThroughTheBoxesChoosesNothing() {
    TestHost host;
    const Banks banks(host);
    const int second = banks.Branch(banks.north, u"0001"_s, u"Segunda"_s);
    const int id = banks.Presenter(u"Uno"_s, u"001"_s, banks.north, second);
    host.driver.On("frmPresentador", [](const DialogUser& dialog) {
      for (const char* box : {"txtNEntidad", "txtNSucursal", "txtNombre"}) {
        dialog.Find(box)->setFocus(Qt::TabFocusReason);
      }
      QCOMPARE(Place(dialog), u"Banco del Norte|0049|Segunda|0001"_s);
      dialog.Press("cmdCancelar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Presentadores(), action.Modificar(), id));
  }

  // The suffix takes any character here, and digits only in the issuer's dialog (tst_issuers).
  void FilteredBoxes_data() {
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<int>("beeps");
    QTest::newRow("suffix") << QByteArray("txtSufijo") << u"a\b7"_s << u"7"_s << u"007"_s << u"ab1c"_s << 0;
    QTest::newRow("long suffix") << QByteArray("txtSufijo") << u"12b4"_s << u"12b4"_s << u"12b4"_s << u"ab1c"_s << 0;
    QTest::newRow("empty suffix") << QByteArray("txtSufijo") << QString() << QString() << QString() << u"ab1c"_s << 0;
    QTest::newRow("bank") << QByteArray("txtNEntidad") << u"9-b\b99"_s << u"99"_s << u"99"_s << u"99"_s << 2;
    QTest::newRow("branch") << QByteArray("txtNSucursal") << u" 7é"_s << u"7"_s << u"7"_s << u"7"_s << 2;
  }
  void FilteredBoxes() {
    QFETCH(QByteArray, box);
    QFETCH(QString, typed);
    TestHost host;
    host.driver.On("frmPresentador", [&](const DialogUser& dialog) {
      dialog.Find(box)->setFocus(Qt::TabFocusReason);
      for (const QChar key : typed) {
        key == u'\b' ? dialog.Key(Qt::Key_Backspace) : dialog.Keys(box, key);
      }
      QTEST(dialog.Text(box), "kept");
      QTEST(host.desktop.beeps, "beeps");
      dialog.Find("txtNombre")->setFocus(Qt::TabFocusReason);
      QTEST(dialog.Text(box), "left");
      dialog.Paste(box, u"ab1c"_s);
      QTEST(dialog.Text(box), "pasted");
      dialog.Press("cmdCancelar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Presentadores(), action.Agregar()));
  }

  void ANewBankIsChosenAndTheRequestPutBack() {
    TestHost host;
    const Banks banks(host);
    const int id = banks.Presenter(u"Uno"_s, u"001"_s, banks.north, banks.northPort);
    host.driver.On("frmBanco", [&](const DialogUser& dialog) {
      QCOMPARE(Requested(host, "Accion"), action.Agregar());
      QCOMPARE(Requested(host, "IDAux"), 0);
      dialog.Press("cmdBanco_4");
    });
    host.driver.On("frmBanco", [](const DialogUser& dialog) {
      dialog.Type("txtBanco_0", u"0200"_s);
      dialog.Type("txtBanco_1", u"Banco Central"_s);
      dialog.Press("cmdBanco_3");
    });
    host.driver.On("frmPresentador", [&](const DialogUser& dialog) {
      dialog.Press("cmdNuevoBanco_0");
      QCOMPARE(Place(dialog), u"Banco del Norte|0049|Puerto|0002"_s);
      dialog.Press("cmdNuevoBanco_0");
      QCOMPARE(Place(dialog), u"Banco Central|0200||"_s);
      QCOMPARE(dialog.Items("cboSucursales"), QStringList());
      QCOMPARE(Requested(host, "Accion"), action.Modificar());
      QCOMPARE(Requested(host, "IDSeleccionado"), id);
      QCOMPARE(Requested(host, "IDAux"), 9);
      dialog.Press("cmdCancelar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Presentadores(), action.Modificar(), id, 9));
  }

  // A branch dialog that is closed leaves the bank's key in IDAux: that is no new branch.
  void ANewBranchBelongsToTheChosenBank() {
    TestHost host;
    const Banks banks(host);
    const auto close = [](const DialogUser& dialog) { dialog.Close(); };
    host.driver.On("frmSucursal", close);
    host.driver.On("frmSucursal", [&](const DialogUser& dialog) {
      QCOMPARE(Requested(host, "IDAux"), banks.south);
      QCOMPARE(Requested(host, "Accion"), action.Agregar());
      dialog.Type("txtSucursales_0", u"0009"_s);
      dialog.Type("txtSucursales_1", u"Nueva"_s);
      dialog.Press("cmdSucursales_0");
    });
    host.driver.On("frmSucursal", close);
    host.driver.On("frmPresentador", [&](const DialogUser& dialog) {
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdNuevoBanco_1");
      QCOMPARE(dialog.Focused(), u"cboBancos"_s);
      dialog.Choose("cboBancos", u"Banco del Sur"_s);
      dialog.Press("cmdNuevoBanco_1");
      QCOMPARE(Place(dialog), u"Banco del Sur|0100||"_s);
      dialog.Press("cmdNuevoBanco_1");
      QCOMPARE(Place(dialog), u"Banco del Sur|0100|Nueva|0009"_s);
      dialog.Press("cmdNuevoBanco_1");
      QCOMPARE(Place(dialog), u"Banco del Sur|0100|Nueva|0009"_s);
      QCOMPARE(Requested(host, "Accion"), action.Nuevo());
      dialog.Press("cmdCancelar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Presentadores(), action.Nuevo()));
    QCOMPARE(host.driver.Boxes(),
             QStringList(u"Prueba|informacion|Debe seleccionar un banco de la lista al cual va a pertenecer la "
                         "sucursal que introduzca"_s));
  }

  void ABankThatWasDeleted() {
    TestHost host;
    const Banks banks(host);
    const int id = banks.Presenter(u"Uno"_s, u"001"_s, banks.south, banks.southMarket);
    const auto remove = [&](int bank) { host.Query(u"UPDATE Bancos SET Eliminado=-1 WHERE IDBanco={}", bank); };
    remove(banks.south);
    host.driver.On("frmBanco", [](const DialogUser& dialog) { dialog.Close(); });
    host.driver.On("frmPresentador", [&](const DialogUser& dialog) {
      // Deleted before: its number is shown, the list has it not, and another one must be chosen.
      QCOMPARE(dialog.Text("txtNEntidad"), u"0100"_s);
      host.driver.Answer(QMessageBox::Ok);
      dialog.Press("cmdAceptar");
      QCOMPARE(dialog.Focused(), u"cboBancos"_s);
      // Deleted while the dialog is open: gone with the next filling of the list.
      TypeNumber(dialog, "txtNEntidad", u"0049"_s);
      dialog.Choose("cboSucursales", u"Puerto"_s);
      remove(banks.north);
      dialog.Press("cmdNuevoBanco_0");
      QCOMPARE(Place(dialog), u"|||"_s);
      dialog.Press("cmdCancelar");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Presentadores(), action.Modificar(), id));
    QCOMPARE(host.driver.Boxes(), QStringList(missingData));
  }
};

KEL_TEST(tst_presenters);
#include "tst_presenters.moc"
