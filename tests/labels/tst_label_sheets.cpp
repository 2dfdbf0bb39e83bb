#include "documents/labels/Sheet.h"
#include "support/Expect.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QTableView>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

const QStringList measureNames{u"txtMedidas_0"_s, u"txtMedidas_1"_s, u"txtMedidas_2"_s,
                               u"txtMedidas_3"_s, u"txtMedidas_4"_s, u"txtMedidas_5"_s};

// What the boxes and the computed row count say, in the dialog's order.
QStringList Shown(const DialogUser& dialog) {
  QStringList texts{dialog.Text("txtEtiquetasTotales"), dialog.Text("txtEtiquetasFila"), dialog.Text("lblNumFilas")};
  for (const QString& name : measureNames) {
    texts.append(dialog.Text(name.toLatin1()));
  }
  return texts;
}

void TypeMeasures(const DialogUser& dialog, const QStringList& measures) {
  for (qsizetype i = 0; i < measures.size(); ++i) {
    dialog.Type(measureNames[i].toLatin1(), measures[i]);
  }
}

// Sets a text that no change handler has seen.
void SetUnseen(const DialogUser& dialog, const char* name, const QString& text) {
  auto* box = dialog.Find<QLineEdit>(name);
  const QSignalBlocker quiet(box);
  box->setText(text);
}

int MakeSheet(const TestHost& host, bool disk, bool postal) {
  host.Query(
      u"INSERT INTO ETIQUETAS (NOMBRE,NETIQUETASTOTAL,NETIQUETASANCHO,ALTOETIQUETA,ANCHOETIQUETA,ALTOSEPARACION,"
      u"ANCHOSEPARACION,ALTO1ETIQUETA,ANCHO1ETIQUETA,NULTIMAETIQUETA,ULTIMOUTILIZADO,DISCO,ENVIOPOSTAL) "
      u"VALUES ('Hoja',13,4,'2,97','7,5','0,2','0,1','1,3','0,5',6,1,{},{})",
      disk, postal);
  return host.Id(u"SELECT MAX(IDETIQUETA) FROM ETIQUETAS");
}

void MakeField(const TestHost& host, int sheet, const QString& name, int line, int position, int field) {
  host.Query(
      u"INSERT INTO EtiquetasCampos (codEtiqueta,NombreCampo,Disco,Linea,Orden,codTipoCampoEtiqueta) "
      u"VALUES ({},'{}',0,{},{},{})",
      sheet, name, line, position, field);
}

QStringList Fields(const TestHost& host, int sheet) {
  return host.Query(
      u"SELECT NombreCampo,Linea,Orden,codTipoCampoEtiqueta FROM EtiquetasCampos WHERE codEtiqueta={} "
      u"ORDER BY Linea,Orden",
      sheet);
}

}  // namespace

class tst_label_sheets : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // The least values stand in an empty sheet, and the boxes that may be 0 are empty.
  void ANewSheet() {
    TestHost host;
    host.driver.On("frmEtiquetas1", [&](const DialogUser& dialog) {
      QCOMPARE(Shown(dialog), (QStringList{u"1"_s, u"1"_s, u"1"_s, u"6"_s, u"2"_s, u""_s, u""_s, u""_s, u""_s}));
      QCOMPARE(dialog.Text("txtReferencia"), QString());
      QVERIFY(dialog.Find<QAbstractButton>("optEnvioPostal")->isChecked());
      QVERIFY(dialog.IsEnabled("cmdSeleccionar_1"));
      dialog.Press("optDisco");
      QVERIFY(!dialog.IsEnabled("cmdSeleccionar_1"));
      dialog.Press("optEnvioPostal");
      QVERIFY(dialog.IsEnabled("cmdSeleccionar_1"));
      dialog.Press("cmdSeleccionar_0");
      QCOMPARE(host.desktop.helpShown, QStringList(u"/ayuda/kel.html"_s));
      dialog.Press("cmdSeleccionar_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Agregar(), 0, u"nada"_s));
    QCOMPARE(host.Recording().Log(), (QStringList{u"OPEN"_s, u"CLOSE"_s}));
    QCOMPARE(host.services().property("IDAux").toString(), u"nada"_s);
  }

  void APostalSheetIsInserted() {
    TestHost host;
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      dialog.Type("txtReferencia", u"L'Hoja"_s);
      dialog.Type("txtEtiquetasTotales", u"40"_s);
      dialog.Type("txtEtiquetasFila", u"4"_s);
      QCOMPARE(dialog.Text("lblNumFilas"), u"10"_s);
      TypeMeasures(dialog, {u"7"_s, u"3.7"_s, u"0"_s, u"0,0"_s, u"0,5"_s, u"1,30"_s});
      QVERIFY(dialog.Text("lblAjuste").contains(u"28,5 cm"_s));
      dialog.Press("cmdSeleccionar_2");
      dialog.Press("cmdSeleccionar_1");
      dialog.Press("cmdSeleccionar_2");
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.On("frmEtiquetas2", [](const DialogUser& dialog) {
      dialog.Press("cmdCampos_2");
      dialog.Press("optCampos_1");
      dialog.Type("txtCampos_2", u"D'"_s);
      dialog.Type("txtCampos_0", u"2"_s);
      dialog.Type("txtCampos_1", u"3"_s);
      dialog.Press("cmdCampos_5");
      dialog.Press("cmdCampos_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Agregar()));
    QCOMPARE(host.driver.Boxes(), QStringList(u"Prueba|aviso|Debe seleccionar los campos que se mostrarán en la "
                                              "etiqueta de envío postal"_s));
    const QStringList log = host.Recording().Log().mid(host.Recording().Log().size() - 4, 3);
    QCOMPARE(log, (QStringList{u"INSERT INTO ETIQUETAS (NOMBRE, NETIQUETASTOTAL, NETIQUETASANCHO, ALTOETIQUETA, "
                               "ANCHOETIQUETA, ALTOSEPARACION, ANCHOSEPARACION, ALTO1ETIQUETA, ANCHO1ETIQUETA, "
                               "NULTIMAETIQUETA, ULTIMOUTILIZADO, DISCO, ENVIOPOSTAL) VALUES ( 'L''Hoja', 40 , "
                               "4,'3,7','7', '0','0', '1,3','0,5', 0,0, 0, -1 )"_s,
                               u"SELECT MAX(IDETIQUETA) AS MaxID FROM ETIQUETAS"_s,
                               u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, "
                               "codTipoCampoEtiqueta) VALUES (%1,'*D''',0,2,3,0)"_s.arg(
                                   host.Id(u"SELECT MAX(IDETIQUETA) FROM ETIQUETAS"))}));
  }

  void ASheetIsUpdated() {
    TestHost host;
    const int sheet = MakeSheet(host, false, true);
    MakeField(host, sheet, u"*Texto"_s, 1, 1, 0);
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      QCOMPARE(Shown(dialog),
               (QStringList{u"13"_s, u"4"_s, u"4"_s, u"7,5"_s, u"2,97"_s, u"0,1"_s, u"0,2"_s, u"0,5"_s, u"1,3"_s}));
      dialog.Type("txtReferencia", u"Hoja d'or"_s);
      dialog.Press("cmdSeleccionar_2");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet));
    QCOMPARE(host.Recording().Log(),
             (QStringList{
                 u"OPEN"_s, u"SELECT * FROM ETIQUETAS WHERE IDETIQUETA = %1"_s.arg(sheet),
                 u"SELECT EtiquetasCampos.IDEtiquetaCampo, EtiquetasCampos.Linea, EtiquetasCampos.Orden, "
                 "EtiquetasCampos.NombreCampo, EtiquetasCampos.codTipoCampoEtiqueta, TipoCamposEtiquetas.codTabla FROM "
                 "EtiquetasCampos LEFT JOIN TipoCamposEtiquetas ON "
                 "EtiquetasCampos.codTipoCampoEtiqueta=TipoCamposEtiquetas.IDTipoCampoEtiqueta WHERE "
                 "EtiquetasCampos.codEtiqueta=%1 AND EtiquetasCampos.Disco=0"_s.arg(sheet),
                 u"UPDATE ETIQUETAS SET  NOMBRE = 'Hoja d''or',  NETIQUETASTOTAL = 13,  NETIQUETASANCHO = 4,  "
                 "ALTOETIQUETA = '2,97',  ANCHOETIQUETA = '7,5',  ALTOSEPARACION= '0,2',  ANCHOSEPARACION= '0,1',  "
                 "ALTO1ETIQUETA= '1,3',  ANCHO1ETIQUETA= '0,5',  NULTIMAETIQUETA= 0,  ULTIMOUTILIZADO= 0,  DISCO= 0,  "
                 "ENVIOPOSTAL= -1  WHERE IDetiqueta= %1"_s.arg(sheet),
                 u"CLOSE"_s}));
    QCOMPARE(Fields(host, sheet), QStringList(u"*Texto|1|1|0"_s));
  }

  // What a host that prints labels makes of the stored row.
  void ASheetIsReadFromItsRow() {
    const TestHost host;
    const int sheet = MakeSheet(host, false, true);
    const auto connection = host.Connect();
    const auto read = [&] {
      return documents::ReadSheet(*connection->Execute(u"SELECT * FROM ETIQUETAS WHERE IDETIQUETA=%1"_s.arg(sheet)));
    };
    QCOMPARE(read(), (documents::Sheet{13, 4, 75000, 29700, 1000, 2000, 5000, 13000}));
    for (const QString& column :
         {u"NETIQUETASTOTAL=0"_s, u"ANCHO1ETIQUETA=-1"_s, u"ANCHOSEPARACION=1001"_s, u"ANCHOETIQUETA=1E300"_s}) {
      connection->Execute(u"UPDATE ETIQUETAS SET %1 WHERE IDETIQUETA=%2"_s.arg(column).arg(sheet));
      QVERIFY2(!read(), qPrintable(column));
      connection->Execute(
          u"UPDATE ETIQUETAS SET NETIQUETASTOTAL=1,ANCHO1ETIQUETA=0,ANCHOSEPARACION=0,ANCHOETIQUETA=6 "
          "WHERE IDETIQUETA=%1"_s.arg(sheet));
      QVERIFY(read());
    }
  }

  void PostalToDiskAndBack() {
    TestHost host;
    const int sheet = MakeSheet(host, false, true);
    MakeField(host, sheet, u"[COLABORADORES].[NOMBRE]"_s, 1, 1, 2);
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      dialog.Press("optDisco");
      dialog.Press("cmdSeleccionar_2");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet));
    QCOMPARE(Fields(host, sheet).size(), 9);
    QCOMPARE(Fields(host, sheet).first(), u"[EMISORES].[CIF]|1|1|0"_s);

    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      QVERIFY(!dialog.IsEnabled("cmdSeleccionar_1"));
      dialog.Press("optEnvioPostal");
      // The rows of a disk are no fields of a letter.
      dialog.Press("cmdSeleccionar_2");
      dialog.Press("cmdSeleccionar_3");
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet));
    QCOMPARE(Fields(host, sheet).size(), 9);
  }

  // A sheet that says neither, or both, as another program may have left it.
  void OddSheets() {
    TestHost host;
    const int neither = MakeSheet(host, false, false);
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      QVERIFY(!dialog.Find<QAbstractButton>("optDisco")->isChecked());
      QVERIFY(!dialog.Find<QAbstractButton>("optEnvioPostal")->isChecked());
      dialog.Press("cmdSeleccionar_2");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), neither));
    QCOMPARE(host.Query(u"SELECT DISCO,ENVIOPOSTAL FROM ETIQUETAS WHERE IDETIQUETA={}", neither),
             QStringList(u"Falso|Falso"_s));

    // More labels in a row than in all: told while it is loaded; what exceeds the bounds is cut back.
    host.Query(u"UPDATE ETIQUETAS SET NETIQUETASTOTAL=3,ANCHOETIQUETA='5,25',ALTOETIQUETA='31' WHERE IDETIQUETA={}",
               neither);
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      QCOMPARE(Shown(dialog).first(4), (QStringList{u"4"_s, u"4"_s, u"1"_s, u"6"_s}));
      QCOMPARE(dialog.Text("txtMedidas_1"), u"29"_s);
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), neither));
    QCOMPARE(host.driver.Boxes(), QStringList(u"Prueba|aviso|El número de etiquetas por fila no puede ser mayor al de "
                                              "etiquetas totales"_s));
  }

  // Each message once, whoever sets the text that runs the other handler.
  void CountsFollowEachOther() {
    TestHost host;
    host.driver.On("frmEtiquetas1", [&](const DialogUser& dialog) {
      dialog.Type("txtEtiquetasTotales", u"41"_s);
      QCOMPARE(dialog.Text("txtEtiquetasTotales"), u"40"_s);
      dialog.Type("txtEtiquetasFila", u"5"_s);
      QCOMPARE(Shown(dialog).first(3), (QStringList{u"40"_s, u"4"_s, u"10"_s}));
      QCOMPARE(host.driver.TakeBoxes(), QStringList());
      const auto paste = [&](const QString& totals, const QStringList& shown, int messages) {
        for (int i = 0; i < messages; ++i) {
          host.driver.Answer(QMessageBox::Ok);
        }
        dialog.Paste("txtEtiquetasTotales", totals);
        QCOMPARE(Shown(dialog).first(3), shown);
        QCOMPARE(host.driver.TakeBoxes().size(), messages);
      };
      paste(u"13"_s, {u"13"_s, u"4"_s, u"4"_s}, 0);
      paste(u"32768"_s, {u"40"_s, u"4"_s, u"10"_s}, 0);
      paste(u"3"_s, {u"4"_s, u"4"_s, u"1"_s}, 1);
      // What is typed on after the message goes on from what was typed before it.
      dialog.Keys("txtEtiquetasTotales", u"2"_s);
      QCOMPARE(Shown(dialog).first(3), (QStringList{u"32"_s, u"4"_s, u"8"_s}));
      dialog.Paste("txtEtiquetasTotales", u"4"_s);
      host.driver.Answer(QMessageBox::Ok);
      QTest::keyClick(dialog.Find("txtEtiquetasTotales"), Qt::Key_Down);
      QCOMPARE(Shown(dialog).first(3), (QStringList{u"4"_s, u"4"_s, u"1"_s}));
      QCOMPARE(host.driver.TakeBoxes().size(), 1);
      // What is cut back is not more than there are.
      dialog.Type("txtEtiquetasFila", u"5"_s);
      QCOMPARE(Shown(dialog).first(3), (QStringList{u"4"_s, u"4"_s, u"1"_s}));
      dialog.Press("cmdSeleccionar_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Agregar()));
  }

  // What got past the bounds is told, and stays.
  void CountsPastTheBounds() {
    TestHost host;
    host.driver.On("frmEtiquetas1", [&](const DialogUser& dialog) {
      dialog.Type("txtEtiquetasTotales", u"40"_s);
      dialog.Find("UpDown2")->setProperty("Max", 9);
      dialog.Find("UpDown1")->setProperty("Max", 99);
      host.driver.Answer(QMessageBox::Ok);
      dialog.Type("txtEtiquetasFila", u"5"_s);
      QCOMPARE(Shown(dialog).first(3), (QStringList{u"40"_s, u"5"_s, u"40"_s}));
      QCOMPARE(dialog.Find<QLineEdit>("txtEtiquetasFila")->selectedText(), u"5"_s);
      dialog.Type("txtEtiquetasFila", u"4"_s);
      host.driver.Answer(QMessageBox::Ok);
      dialog.Paste("txtEtiquetasTotales", u"41"_s);
      QCOMPARE(Shown(dialog).first(2), (QStringList{u"41"_s, u"4"_s}));
      dialog.Press("cmdSeleccionar_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Agregar()));
    QCOMPARE(host.driver.Boxes(),
             (QStringList{u"Prueba|informacion|Por favor, introduzca 4 etiquetas por fila como máximo"_s,
                          u"Prueba|informacion|Por favor, introduzca 40 etiquetas en total como máximo"_s}));
  }

  void RefusalsWithTheirFocus() {
    TestHost host;
    host.driver.On("frmEtiquetas1", [&](const DialogUser& dialog) {
      const auto refused = [&](const QString& focus) {
        host.driver.Answer(QMessageBox::Ok);
        dialog.Press("cmdSeleccionar_2");
        QCOMPARE(dialog.Focused(), focus);
      };
      dialog.Type("txtReferencia", u"Hoja"_s);
      refused(u"cmdSeleccionar_2"_s);
      TypeMeasures(dialog, {u"7"_s, u"3"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s});
      dialog.Find<QLabel>("lblNumFilas")->clear();
      refused(u"cmdSeleccionar_2"_s);
      dialog.Type("txtEtiquetasTotales", u"40"_s);
      dialog.Type("txtEtiquetasFila", u"3"_s);
      refused(u"txtEtiquetasTotales"_s);
      dialog.Type("txtEtiquetasFila", u"4"_s);
      SetUnseen(dialog, "txtMedidas_0", u"5,4"_s);
      refused(u"txtMedidas_0"_s);
      SetUnseen(dialog, "txtMedidas_0", u"5,5"_s);
      SetUnseen(dialog, "txtMedidas_1", u"1,4"_s);
      refused(u"txtMedidas_1"_s);
      SetUnseen(dialog, "txtMedidas_1", u"1,5"_s);
      refused(u"cmdSeleccionar_2"_s);
      dialog.Press("cmdSeleccionar_3");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Agregar()));
    const QString incomplete = u"Prueba|aviso|Debe rellenar los datos que son obligatorios para continuar"_s;
    QCOMPARE(host.driver.Boxes(),
             (QStringList{incomplete, incomplete,
                          u"Prueba|aviso|Verifique los datos introducidos.\r\nSe pueden establecer hasta 10 filas "
                          "totales como máximo"_s,
                          u"Prueba|aviso|Verifique el valor introducido para el ancho de la \r\n etiqueta, ya que "
                          "como mínimo su valor es 6 cm."_s,
                          u"Prueba|aviso|etiqueta, ya que como mínimo su valor es 2 cm.\r\nPor favor, introduzca 4 "
                          "etiquetas por fila como máximo"_s,
                          u"Prueba|aviso|Debe seleccionar los campos que se mostrarán en la etiqueta de envío "
                          "postal"_s}));
    QCOMPARE(host.Recording().Writes(), QStringList());
  }

  void CloseAndSave() {
    TestHost host;
    const int sheet = MakeSheet(host, true, false);
    const auto change = [](const DialogUser& dialog) {
      dialog.Type("txtMedidas_0", u"10,5"_s);
      dialog.Close();
    };
    host.driver.On("frmEtiquetas1", change);
    host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet));
    QCOMPARE(
        host.Query(u"SELECT ANCHOETIQUETA,NULTIMAETIQUETA,ULTIMOUTILIZADO FROM ETIQUETAS WHERE IDETIQUETA={}", sheet),
        QStringList(u"10,5|0|0"_s));
    // Refused, and closed all the same.
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      dialog.Type("txtMedidas_2", u""_s);
      dialog.Close();
    });
    host.driver.Answer(QMessageBox::Yes);
    host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet));
    // Nothing changed, nothing asked.
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) { dialog.Close(); });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet));
  }

  // A failure leaves what was already written, and reaches the host.
  void FailuresPartWay() {
    TestHost host;
    host.Recording().SetHook([](const QString& entry) {
      if (entry.contains(u"[DISCOS].[RECIBOS]")) {
        throw automation::Error(-2147467259, u"se cortó"_s);
      }
    });
    host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      dialog.Type("txtReferencia", u"Discos"_s);
      dialog.Press("optDisco");
      TypeMeasures(dialog, {u"7"_s, u"3"_s, u","_s, u"0"_s, u"0"_s, u"0"_s});
      dialog.Press("cmdSeleccionar_2");
    });
    EXPECT_ERROR(host, host.PasarDatos(node.Etiquetas(), action.Agregar()), -2147467259);
    const int sheet = host.Id(u"SELECT IDETIQUETA FROM ETIQUETAS WHERE NOMBRE='Discos'");
    QCOMPARE(host.Query(u"SELECT ANCHOSEPARACION FROM ETIQUETAS WHERE IDETIQUETA={}", sheet), QStringList(u"0"_s));
    QCOMPARE(Fields(host, sheet).size(), 7);
    host.Recording().SetHook({});
    EXPECT_ERROR(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), 987654), 3021);
  }

  // Two programs change one sheet: there is no lock, the last one's values stay, and what is gone is not missed.
  void TwoProgramsAtOneSheet() {
    TestHost host;
    const int sheet = MakeSheet(host, false, true);
    MakeField(host, sheet, u"*Uno"_s, 1, 1, 0);
    MakeField(host, sheet, u"*Dos"_s, 1, 2, 0);
    host.driver.On("frmEtiquetas1", [&](const DialogUser& dialog) {
      dialog.Press("cmdSeleccionar_1");
      host.Query(u"UPDATE ETIQUETAS SET NOMBRE='Otra',NETIQUETASTOTAL=8 WHERE IDETIQUETA={}", sheet);
      host.Query(u"DELETE FROM EtiquetasCampos WHERE NombreCampo='*Uno'");
      dialog.Type("txtReferencia", u"La mía"_s);
      dialog.Press("cmdSeleccionar_2");
    });
    host.driver.On("frmEtiquetas2", [](const DialogUser& dialog) {
      dialog.Find<QTableView>("msgCampos")->selectRow(0);
      dialog.Press("cmdCampos_3");
      dialog.Type("txtCampos_2", u"Primero"_s);
      dialog.Press("cmdCampos_5");
      dialog.Press("cmdCampos_0");
    });
    EXPECT_CLEAN(host, host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet));
    QCOMPARE(host.Query(u"SELECT NOMBRE,NETIQUETASTOTAL FROM ETIQUETAS WHERE IDETIQUETA={}", sheet),
             QStringList(u"La mía|13"_s));
    QCOMPARE(Fields(host, sheet), QStringList(u"*Dos|1|2|0"_s));
  }
};

KEL_TEST(tst_label_sheets);
#include "tst_label_sheets.moc"
