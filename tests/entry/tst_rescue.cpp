#include "host/records/ComponentBridge.h"
#include "host/records/OfficeConnection.h"
#include "host/services/Rescue.h"
#include "support/ErrorOf.h"
#include "support/Expect.h"

#include <QComboBox>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

using host::ComponentRequest;
using support::action;
using support::DialogUser;
using support::node;

namespace {

struct Office : support::TestHost {
  Office() {
    session.office = static_cast<host::OfficeConnection*>(&Recording().Beneath());
    Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre) VALUES(1,'0001','Uno')");
    Execute(u"INSERT INTO TipoDeducciones(Porcentaje) VALUES(33)");
  }

  int Show(const ComponentRequest& request) {
    return support::ErrorOf([&] { bridge.ShowDialog(request); });
  }

  host::ComponentBridge bridge{services(), session};
  host::Rescue rescue{services(), bridge};
};

void Fill(const DialogUser& dialog, const QByteArray& control, const QString& text) {
  if (dialog.Dialog()->findChild<QComboBox*>(QString::fromLatin1(control)) != nullptr) {
    dialog.Choose(control, text);
  } else {
    dialog.Type(control, text);
  }
}

void Cancel(const DialogUser& dialog) {
  const QList<QPushButton*> buttons = dialog.Dialog()->findChildren<QPushButton*>();
  for (QPushButton* button : buttons) {
    if (button->property("SirveEnConsulta").toBool()) {
      button->click();
      return;
    }
  }
}

}  // namespace

/// What was typed into a dialog that closed without saving it.
class tst_rescue : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EveryDialog_data();
  void EveryDialog();
  void NestedDialogs();
  void MemoryOfADialogBelow();
  void TheLastTenAreKept();
  void FilesThatMakeNoSense();
};

void tst_rescue::EveryDialog_data() {
  QTest::addColumn<int>("number");
  QTest::addColumn<QByteArray>("control");
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("failure");  // The statement that fails; empty where a mandatory field is missing.
  const auto row = [](const char* dialog, const QVariant& number, const char* control, const QString& text,
                      const QString& failure = {}) {
    QTest::newRow(dialog) << number.toInt() << QByteArray(control) << text << failure;
  };
  row("frmBanco", node.Bancos(), "txtBanco_1", u"Banco <b>Nuevo</b>"_s);
  row("frmSucursal", node.Sucursales(), "txtSucursales_1", u"Centro"_s);
  row("frmPresentador", node.Presentadores(), "txtNombre", u"L'Orde"_s);
  row("frmEmisor", node.Emisores(), "txtPoblacion", u"Olot"_s);
  row("frmCobrador", node.Cobradores(), "txtCobrador_0", u"Ana"_s);
  row("frmPais", node.Paises(), "txtPais", u"Utopía"_s, u"INSERT"_s);
  row("frmProvincia", node.Provincias(), "cboPais", u"Francia"_s);
  row("frmDiocesis", node.Diocesis(), "cboProvincia", u"Soria"_s);
  row("frmComunidadAutonoma", node.ComunidadAutonoma(), "txtCodigo", u"99"_s);
  row("frmDeduccionComunidad", node.DeduccionesComunidad(), "cboDeduccion", u"33"_s);
  row("frmTipoDeduccion", node.TipoDeduccion(), "txtDeduccion", u"77"_s, u"INSERT"_s);
  row("frmTipoDonativo", node.TipoDonativos(), "txtTipoDonativo_0", u"Becas"_s);
  row("frmPublicacion", node.Publicaciones(), "txtTextoRecibo", u"Boletín"_s);
  row("frmEtiquetas1", node.Etiquetas(), "txtReferencia", u"Hoja"_s);
  row("frmCabecera", node.Cabeceras(), "txtLinea_0", u"Plaza Mayor, 1"_s);
  row("frmEncabezado", node.Encabezados(), "txtEncabezado", u"Querida amiga"_s, u"UPDATE"_s);
}

void tst_rescue::EveryDialog() {
  QFETCH(int, number);
  QFETCH(QByteArray, control);
  QFETCH(QString, text);
  QFETCH(QString, failure);
  const char* name = QTest::currentDataTag();
  const bool isModified = number == node.Encabezados().toInt();
  const ComponentRequest request{.node = number,
                                 .action = isModified ? action.Modificar() : action.Agregar(),
                                 .selectedId = isModified ? 1 : 0,
                                 .aux = 1};
  const bool asks = number != node.Cobradores();
  Office office;
  host::Rescue& rescue = office.rescue;
  const auto typeAndClose = [&](const DialogUser& dialog) {
    Fill(dialog, control, text);
    office.Recording().FailAt(failure);
    dialog.Close();
    office.Recording().FailAt({});
  };

  // A wish is a wish.
  office.driver.On(name, [&](const DialogUser& dialog) {
    Fill(dialog, control, text);
    Cancel(dialog);
  });
  office.Show(request);
  if (asks) {
    office.driver.On(name, typeAndClose);
    office.driver.Answer(QMessageBox::No);
    office.Show(request);
  }
  office.driver.On(name, [](const DialogUser& dialog) { dialog.Close(); });
  office.Show(request);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(rescue.Inputs().size(), 0);

  office.driver.On(name, typeAndClose);
  if (asks) {
    office.driver.Answer(QMessageBox::Yes);
    office.driver.Answer(QMessageBox::Ok);
  }
  office.Show(request);
  office.driver.TakeProblems();
  QCOMPARE(rescue.Inputs().size(), 1);
  QVERIFY2(rescue.Inputs().first().Text().contains(text), qPrintable(rescue.Inputs().first().Text()));

  // Through the file of a next start, and into the dialog.
  const QString file = office.Path(u"a/b.json"_s);
  QVERIFY(host::WriteKeptInputs(file, rescue.Inputs()));
  QCOMPARE(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
  const host::KeptInput kept = host::TakeKeptInputs(file).value(0);
  QVERIFY(!QFile::exists(file) && kept.request);
  QString seen;
  office.driver.On(name, [&](const DialogUser& dialog) {
    QVERIFY(QTest::qWaitFor([&] { return rescue.Inputs().isEmpty(); }));
    seen = dialog.Text(control);
    Cancel(dialog);
  });
  rescue.PutBackInto(kept);
  office.Show(*kept.request);
  QCOMPARE(seen, text);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(rescue.Inputs().size(), 0);
}

// The inner one's typing is its own; what it writes does not count as the outer one's.
void tst_rescue::NestedDialogs() {
  Office office;
  office.driver.On("frmProvincia", [](const DialogUser& dialog) {
    dialog.Choose("cboPais", u"España"_s);
    dialog.Type("txtProvincia", u"Tierra Media"_s);
    dialog.Press("cmdProvincia_0");
  });
  office.driver.On("frmDiocesis", [&](const DialogUser& dialog) {
    dialog.Press("cmdNProvincia");
    QCOMPARE(office.Query(u"SELECT Nombre FROM Provincias WHERE Nombre='Tierra Media'").size(), 1);
    dialog.Close();
  });
  office.driver.Answer(QMessageBox::Yes);
  office.driver.Answer(QMessageBox::Ok);
  QCOMPARE(office.Show({.node = node.Diocesis(), .action = action.Agregar()}), 0);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(office.rescue.Inputs().size(), 1);
  QVERIFY(office.rescue.Inputs().first().Text().contains(u"Provincia: Tierra Media"_s));
  QCOMPARE(office.rescue.Inputs().first().reason, u"Faltan datos por rellenar"_s);
}

// A branch that a bank's dialog took in is the bank's loss, and can only be shown.
void tst_rescue::MemoryOfADialogBelow() {
  Office office;
  office.driver.On("frmSucursal", [](const DialogUser& dialog) {
    dialog.Type("txtSucursales_0", u"0007"_s);
    dialog.Type("txtSucursales_1", u"Soria Centro"_s);
    dialog.Press("cmdSucursales_0");
  });
  office.driver.On("frmBanco", [&](const DialogUser& dialog) {
    dialog.Press("cmdBanco_0");
    QCOMPARE(office.rescue.Inputs().size(), 0);
    dialog.Close();
  });
  office.driver.Answer(QMessageBox::Yes);
  office.driver.Answer(QMessageBox::Ok);
  QCOMPARE(office.Show({.node = node.Bancos(), .action = action.Agregar()}), 0);
  QCOMPARE(office.driver.TakeProblems().join(u'\n'), QString());
  QCOMPARE(office.rescue.Inputs().size(), 1);
  QVERIFY(office.rescue.Inputs().first().rows.value(0).startsWith(u"0007\tSoria Centro"_s));
}

// One for a record, the newest first.
void tst_rescue::TheLastTenAreKept() {
  Office office;
  QList<host::KeptInput> inputs(12);
  for (int id = 0; id < inputs.size(); ++id) {
    inputs[id].dialog = u"frmPais"_s;
    inputs[id].request = host::ComponentRequest{.node = node.Paises(), .action = action.Modificar(), .selectedId = id};
  }
  office.rescue.Add(inputs);
  office.rescue.Add({inputs[5]});
  QCOMPARE(office.rescue.Inputs().size(), 10);
  QCOMPARE(office.rescue.Inputs().first().request->selectedId, 5);
  QCOMPARE(office.rescue.Inputs().last().request->selectedId, 9);
}

void tst_rescue::FilesThatMakeNoSense() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"x.json"_s);
  for (const QByteArray& content :
       {QByteArray(), QByteArray("{"), QByteArray("{\"version\":2,\"cuadros\":[{\"cuadro\":\"frmPais\"}]}"),
        QByteArray("{\"version\":1,\"cuadros\":[1,{},{\"cuadro\":\"frmPais\",\"valores\":[7]}]}"),
        QByteArray(5'000'000, '[')}) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    QCOMPARE(host::TakeKeptInputs(path).size(), 0);
    QVERIFY(!QFile::exists(path));
  }
  QFile inTheWay(path);
  QVERIFY(inTheWay.open(QIODevice::WriteOnly));
  QVERIFY(!host::WriteKeptInputs(path + u"/b.json"_s, {host::KeptInput()}));
}

KEL_TEST(tst_rescue);
#include "tst_rescue.moc"
