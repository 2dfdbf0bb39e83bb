#include "host/services/ServiceClasses.h"
#include "platform/automation/ClassRegistry.h"
#include "platform/automation/Invoke.h"
#include "support/Expect.h"

#include <QAbstractButton>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

// Services that fail where the dialogs go on without them.
class Failing : public host::cPrincipal {
  Q_OBJECT

 public:
  using cPrincipal::cPrincipal;
  Q_INVOKABLE void SeleccionarTexto(QObject*) { throw automation::Error(1234, u"propio"_s); }
  Q_INVOKABLE void CargarAnchos(QObject*, const QString&, const QString&) {
    throw automation::Error(1234, u"propio"_s);
  }
  Q_INVOKABLE void SalvarAnchos(QObject*, const QString&, const QString&) {
    throw automation::Error(1234, u"propio"_s);
  }
};

// A host with one stored postal sheet, whose field dialog a test uses.
class Sheet {
 public:
  Sheet() {
    host.Query(
        u"INSERT INTO ETIQUETAS (NOMBRE,NETIQUETASTOTAL,NETIQUETASANCHO,ALTOETIQUETA,ANCHOETIQUETA,ENVIOPOSTAL) "
        u"VALUES ('Hoja',30,3,'2,9','7',-1)");
    id = host.Id(u"SELECT MAX(IDETIQUETA) FROM ETIQUETAS");
    automation::Put(&host.services(), "PathNodo", u"Impresión"_s);
  }

  int Add(const QString& name, int line, int position, int field = 0) const {
    host.Query(
        u"INSERT INTO EtiquetasCampos (codEtiqueta,NombreCampo,Disco,Linea,Orden,codTipoCampoEtiqueta) "
        u"VALUES ({},'{}',0,{},{},{})",
        id, name, line, position, field);
    return host.Id(u"SELECT MAX(IDEtiquetaCampo) FROM EtiquetasCampos");
  }

  // Opens the sheet, then its fields, for the script, and accepts the sheet.
  std::optional<automation::Error> Use(const support::Driver::Script& script) {
    return Open(script, "cmdSeleccionar_2");
  }
  // The same, and cancels the sheet.
  std::optional<automation::Error> LookAt(const support::Driver::Script& script) {
    return Open(script, "cmdSeleccionar_3");
  }

  QStringList Rows() const {
    return host.Query(
        u"SELECT NombreCampo,Linea,Orden,codTipoCampoEtiqueta FROM EtiquetasCampos WHERE codEtiqueta={} "
        u"ORDER BY Linea,Orden",
        id);
  }
  // What was written beside the sheet's own row.
  QStringList Written() { return host.Recording().Writes().mid(1); }

  TestHost host;
  int id = 0;

 private:
  std::optional<automation::Error> Open(const support::Driver::Script& script, const char* end) {
    host.driver.On("frmEtiquetas1", [end](const DialogUser& dialog) {
      dialog.Press("cmdSeleccionar_1");
      dialog.Press(end);
    });
    host.driver.On("frmEtiquetas2", script);
    return host.PasarDatos(node.Etiquetas(), action.Modificar(), id);
  }
};

QStringList Grid(const DialogUser& dialog) {
  const QAbstractItemModel* model = dialog.Find<QTableView>("msgCampos")->model();
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

void Select(const DialogUser& dialog, int row) {
  dialog.Find<QTableView>("msgCampos")->selectRow(row);
}

void AddText(const DialogUser& dialog, const QString& text, int line, int position) {
  dialog.Press("cmdCampos_2");
  dialog.Press("optCampos_1");
  dialog.Type("txtCampos_2", text);
  dialog.Type("txtCampos_0", QString::number(line));
  dialog.Type("txtCampos_1", QString::number(position));
  dialog.Press("cmdCampos_5");
}

}  // namespace

class tst_label_fields : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Opens() {
    Sheet sheet;
    sheet.Add(u"[COLABORADORES].[NOMBRE]"_s, 1, 1, 2);
    sheet.Add(u"*Sr."_s, 1, 2);
    EXPECT_CLEAN(sheet.host, sheet.LookAt([&](const DialogUser& dialog) {
      QCOMPARE(dialog.Text(""), u"Selección de campos para la etiqueta postal"_s);
      QCOMPARE(Grid(dialog), (QStringList{u"[COLABORADORES].[NOMBRE]|1|1"_s, u"Sr.|1|2"_s}));
      const auto* model = dialog.Find<QTableView>("msgCampos")->model();
      QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), u"Campo/Texto"_s);
      QCOMPARE(model->headerData(1, Qt::Horizontal).toString(), u"Línea"_s);
      QVERIFY(dialog.Items("cboCampos_0").contains(u"Colaboradores"_s));
      for (const char* control : {"optCampos_0", "txtCampos_0", "cmdCampos_5"}) {
        QVERIFY(!dialog.IsEnabled(control));
      }
      QCOMPARE(sheet.host.desktop.pointers, (QList<int>{11, 0}));
      // Nothing was changed, so nothing is asked.
      dialog.Close();
    }));
    const QStringList log = sheet.host.Recording().Log();
    QCOMPARE(log.mid(3),
             (QStringList{u"SELECT DISTINCT TipoCamposEtiquetas.codTabla, TipoCamposEtiquetas.NombreTabla FROM "
                          "TipoCamposEtiquetas"_s,
                          u"SELECT TipoCamposEtiquetas.IDTipoCampoEtiqueta, TipoCamposEtiquetas.NombreCampo FROM "
                          "TipoCamposEtiquetas WHERE TipoCamposEtiquetas.codTabla=0"_s,
                          u"CLOSE"_s}));
  }

  void FieldsAndTextsAreAdded() {
    Sheet sheet;
    EXPECT_CLEAN(sheet.host, sheet.Use([](const DialogUser& dialog) {
      dialog.Press("cmdCampos_2");
      dialog.Choose("cboCampos_0", u"Provincias"_s);
      QCOMPARE(dialog.Items("cboCampos_1"), QStringList(u"[PROVINCIAS].[NOMBRE]"_s));
      dialog.Choose("cboCampos_0", u"Colaboradores"_s);
      dialog.Choose("cboCampos_1", u"[COLABORADORES].[CP]"_s);
      dialog.Type("txtCampos_0", u"3"_s);
      dialog.Type("txtCampos_1", u"1"_s);
      dialog.Key(Qt::Key_Return);
      AddText(dialog, u"D'en [x]"_s, 3, 2);
      AddText(dialog, u"fin"_s, 5, 5);
      QCOMPARE(Grid(dialog), (QStringList{u"[COLABORADORES].[CP]|3|1"_s, u"D'en x|3|2"_s, u"fin|5|5"_s}));
      dialog.Press("cmdCampos_0");
    }));
    QCOMPARE(sheet.Rows(), (QStringList{u"[COLABORADORES].[CP]|3|1|8"_s, u"*D'en x|3|2|0"_s, u"*fin|5|5|0"_s}));
    QCOMPARE(sheet.host.desktop.beeps, 2);
  }

  // The database's keys of entries that were stored, and what each change does to them.
  void StoredEntriesAreModifiedAndDeleted() {
    Sheet sheet;
    const int first = sheet.Add(u"[COLABORADORES].[NOMBRE]"_s, 1, 1, 2);
    const int second = sheet.Add(u"*Dos"_s, 1, 2);
    sheet.Add(u"*Tres"_s, 2, 1);
    sheet.host.driver.Answer(QMessageBox::No);
    sheet.host.driver.Answer(QMessageBox::Yes);
    EXPECT_CLEAN(sheet.host, sheet.Use([](const DialogUser& dialog) {
      Select(dialog, 0);
      dialog.Press("cmdCampos_3");
      QCOMPARE(dialog.Text("cboCampos_0"), u"Colaboradores"_s);
      QCOMPARE(dialog.Text("cboCampos_1"), u"[COLABORADORES].[NOMBRE]"_s);
      QCOMPARE(dialog.Text("txtCampos_0") + dialog.Text("txtCampos_1"), u"11"_s);
      dialog.Choose("cboCampos_1", u"[COLABORADORES].[CP]"_s);
      // Its own line and position are free.
      dialog.Press("cmdCampos_5");
      Select(dialog, 1);
      dialog.Press("cmdCampos_4");
      QCOMPARE(Grid(dialog).size(), 3);
      dialog.Press("cmdCampos_4");
      QCOMPARE(Grid(dialog), (QStringList{u"[COLABORADORES].[CP]|1|1"_s, u"Tres|2|1"_s}));
      // The place of a deleted one is free, and what was never stored goes without a trace.
      AddText(dialog, u"Nuevo"_s, 1, 2);
      AddText(dialog, u"Otro"_s, 4, 1);
      dialog.Press("cmdCampos_3");
      dialog.Type("txtCampos_0", u"5"_s);
      dialog.Press("cmdCampos_5");
      dialog.Press("cmdCampos_0");
    }));
    QCOMPARE(sheet.host.driver.Boxes(),
             QStringList(2, u"Prueba|pregunta|¿Está seguro de eliminar el elemento seleccionado?"_s));
    QCOMPARE(sheet.Written(),
             (QStringList{u"UPDATE EtiquetasCampos SET NombreCampo='[COLABORADORES].[CP]',Linea=1,Orden=1,"
                          "codTipoCampoEtiqueta=8 WHERE IDEtiquetaCampo=%1"_s.arg(first),
                          u"DELETE FROM EtiquetasCampos WHERE IDEtiquetaCampo=%1"_s.arg(second),
                          u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, "
                          "codTipoCampoEtiqueta) VALUES (%1,'*Nuevo',0,1,2,0)"_s.arg(sheet.id),
                          u"INSERT INTO EtiquetasCampos (codEtiqueta, NombreCampo, Disco, Linea, Orden, "
                          "codTipoCampoEtiqueta) VALUES (%1,'*Otro',0,5,1,0)"_s.arg(sheet.id)}));
  }

  void RefusedEntries() {
    Sheet sheet;
    sheet.Add(u"*Uno"_s, 1, 1);
    EXPECT_CLEAN(sheet.host, sheet.LookAt([&](const DialogUser& dialog) {
      const auto refused = [&](const char* button, const QString& focus) {
        sheet.host.driver.Answer(QMessageBox::Ok);
        dialog.Press(button);
        QCOMPARE(dialog.Focused(), focus);
      };
      refused("cmdCampos_3", u"cmdCampos_3"_s);
      refused("cmdCampos_4", u"cmdCampos_4"_s);
      dialog.Press("cmdCampos_2");
      refused("cmdCampos_5", u"cboCampos_1"_s);
      dialog.Press("optCampos_1");
      refused("cmdCampos_5", u"txtCampos_2"_s);
      dialog.Type("txtCampos_2", u"Dos"_s);
      refused("cmdCampos_5", u"txtCampos_0"_s);
      dialog.Type("txtCampos_0", u"1"_s);
      refused("cmdCampos_5", u"txtCampos_1"_s);
      dialog.Type("txtCampos_1", u"1"_s);
      refused("cmdCampos_5", u"txtCampos_0"_s);
      QCOMPARE(dialog.Text("txtCampos_2"), u"Dos"_s);
      // Only 1 to 5, one character, each in the place of the one before.
      sheet.host.desktop.beeps = 0;
      dialog.Keys("txtCampos_0", u"3062x5"_s);
      QCOMPARE(dialog.Text("txtCampos_0"), u"5"_s);
      QCOMPARE(sheet.host.desktop.beeps, 3);
      dialog.Press("cmdCampos_6");
      QCOMPARE(dialog.Text("txtCampos_2"), QString());
      dialog.Press("cmdCampos_1");
    }));
    const QString incomplete = u"Prueba|aviso|Debe rellenar los datos que son obligatorios para continuar"_s;
    const QString nothing = u"Prueba|aviso|No ha seleccionado ningún registro"_s;
    QCOMPARE(sheet.host.driver.Boxes(),
             (QStringList{nothing, nothing, incomplete, incomplete, incomplete, incomplete,
                          u"Prueba|aviso|La línea y orden seleccionados ya están siendo utilizados"_s}));
  }

  // Yes confirms the entry that is being edited, in the dialog's own list only: nothing reaches the sheet.
  void ClosingHandsNothingOver_data() {
    QTest::addColumn<int>("answer");
    QTest::newRow("yes") << int(QMessageBox::Yes);
    QTest::newRow("no") << int(QMessageBox::No);
  }
  void ClosingHandsNothingOver() {
    QFETCH(int, answer);
    Sheet sheet;
    sheet.Add(u"*Uno"_s, 1, 1);
    sheet.host.driver.Answer(QMessageBox::Cancel);
    sheet.host.driver.Answer(answer);
    EXPECT_CLEAN(sheet.host, sheet.Use([](const DialogUser& dialog) {
      AddText(dialog, u"Dos"_s, 2, 1);
      dialog.Press("cmdCampos_2");
      dialog.Press("optCampos_1");
      dialog.Type("txtCampos_2", u"Tres"_s);
      dialog.Type("txtCampos_0", u"3"_s);
      dialog.Type("txtCampos_1", u"1"_s);
      dialog.Close();
      QVERIFY(dialog.Dialog()->isVisible());
      dialog.Close();
    }));
    QCOMPARE(sheet.Rows(), QStringList(u"*Uno|1|1|0"_s));
    QCOMPARE(sheet.host.driver.Boxes(),
             QStringList(2, u"Prueba|pregunta|¿Desea guardar los cambios efectuados en el formulario?"_s));
  }

  // Yes over an entry that is not complete: the user is told, and the dialog closes all the same.
  void ClosingWithAnIncompleteEntry() {
    Sheet sheet;
    sheet.Add(u"*Uno"_s, 1, 1);
    sheet.host.driver.Answer(QMessageBox::Yes);
    sheet.host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(sheet.host, sheet.Use([](const DialogUser& dialog) {
      dialog.Press("cmdCampos_2");
      dialog.Type("txtCampos_0", u"3"_s);
      dialog.Close();
    }));
    QCOMPARE(sheet.Rows(), QStringList(u"*Uno|1|1|0"_s));
  }

  // What is accepted is there again when the fields are opened a second time, and new identifiers go on.
  void OpenedTwice() {
    Sheet sheet;
    sheet.host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      dialog.Press("cmdSeleccionar_1");
      dialog.Press("cmdSeleccionar_1");
      dialog.Press("cmdSeleccionar_2");
    });
    sheet.host.driver.On("frmEtiquetas2", [](const DialogUser& dialog) {
      AddText(dialog, u"Uno"_s, 1, 1);
      dialog.Press("cmdCampos_0");
    });
    sheet.host.driver.On("frmEtiquetas2", [](const DialogUser& dialog) {
      QCOMPARE(Grid(dialog), QStringList(u"Uno|1|1"_s));
      AddText(dialog, u"Dos"_s, 1, 2);
      dialog.Press("cmdCampos_0");
    });
    EXPECT_CLEAN(sheet.host, sheet.host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet.id));
    QCOMPARE(sheet.Rows(), (QStringList{u"*Uno|1|1|0"_s, u"*Dos|1|2|0"_s}));
  }

  // The catalogue lost a field that the sheet uses: the row keeps its stored name, also when its line changes.
  void AFieldThatTheCatalogueLost() {
    Sheet sheet;
    sheet.Add(u"[VIEJA].[CAMPO]"_s, 1, 1, 9999);
    sheet.Add(u"[VIEJA].[OTRO]"_s, 1, 2, 9998);
    EXPECT_CLEAN(sheet.host, sheet.Use([](const DialogUser& dialog) {
      Select(dialog, 0);
      dialog.Press("cmdCampos_3");
      QCOMPARE(dialog.Text("cboCampos_1"), u"[VIEJA].[CAMPO]"_s);
      dialog.Type("txtCampos_0", u"4"_s);
      // Not in reach while an entry is edited: they would drop it.
      QVERIFY(!dialog.IsEnabled("cmdCampos_0"));
      QVERIFY(!dialog.IsEnabled("cmdCampos_1"));
      dialog.Press("cmdCampos_5");
      QVERIFY(dialog.IsEnabled("cmdCampos_1"));
      dialog.Press("cmdCampos_0");
    }));
    QCOMPARE(sheet.Rows(), (QStringList{u"[VIEJA].[OTRO]|1|2|9998"_s, u"[VIEJA].[CAMPO]|4|1|9999"_s}));
  }

  // More than the dialog's grid of places holds, beyond its lines, two at one place.
  void FiftyFields() {
    Sheet sheet;
    for (int i = 0; i < 50; ++i) {
      sheet.Add(u"*Texto %1"_s.arg(i), i / 7 + 1, i % 7 + 1);
    }
    sheet.Add(u"*Doble"_s, 1, 1);
    EXPECT_CLEAN(sheet.host, sheet.Use([](const DialogUser& dialog) {
      QCOMPARE(Grid(dialog).size(), 51);
      Select(dialog, 49);
      dialog.Press("cmdCampos_3");
      QCOMPARE(dialog.Text("txtCampos_0"), u"8"_s);
      dialog.Press("cmdCampos_5");
      dialog.Press("cmdCampos_0");
    }));
    QCOMPARE(sheet.Rows().size(), 51);
    QCOMPARE(sheet.Written().size(), 1);
  }

  // A text that can't be selected, widths that can't be kept: told under the procedure's name.
  void ServicesThatFail() {
    Sheet sheet;
    sheet.Add(u"*Uno"_s, 1, 1);
    sheet.host.driver.On("frmEtiquetas1", [&](const DialogUser& dialog) {
      automation::RegisterClass(u"KelAPI.cPrincipal"_s, [&] { return std::make_unique<Failing>(sheet.host.session); });
      dialog.Find("txtMedidas_3")->setFocus();
      dialog.Press("cmdSeleccionar_1");
      host::RegisterClasses(sheet.host.session);
      dialog.Press("cmdSeleccionar_2");
    });
    sheet.host.driver.On("frmEtiquetas2", [](const DialogUser& dialog) {
      Select(dialog, 0);
      dialog.Press("cmdCampos_3");
      dialog.Press("cmdCampos_5");
      dialog.Press("cmdCampos_0");
    });
    for (int i = 0; i < 4; ++i) {
      sheet.host.driver.Answer(QMessageBox::Ok);
    }
    EXPECT_CLEAN(sheet.host, sheet.host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet.id));
    QStringList origins = sheet.host.driver.Boxes();
    for (QString& box : origins) {
      box = box.mid(box.indexOf(u"Kel"_s));
    }
    QCOMPARE(origins, (QStringList{u"KelConfiguracion / frmEtiquetas1 / SeleccionarTexto"_s,
                                   u"KelConfiguracion / frmEtiquetas2 / AnchosColumnasGrid"_s,
                                   u"KelConfiguracion / frmEtiquetas2 / SeleccionarTexto"_s,
                                   u"KelConfiguracion / frmEtiquetas2 / AnchosColumnasGrid"_s}));
    QCOMPARE(sheet.Written().size(), 1);
  }

  // Without the list helper the dialog can't work: it says so, and is not shown.
  void ADialogThatCannotContinue() {
    Sheet sheet;
    sheet.Add(u"*Uno"_s, 1, 1);
    sheet.host.driver.On("frmEtiquetas1", [](const DialogUser& dialog) {
      automation::UnregisterClass(u"KelApi.cListas"_s);
      dialog.Press("cmdSeleccionar_1");
      dialog.Press("cmdSeleccionar_2");
    });
    sheet.host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(sheet.host, sheet.host.PasarDatos(node.Etiquetas(), action.Modificar(), sheet.id));
    QCOMPARE(sheet.host.driver.Boxes(),
             QStringList(u"Prueba|critico|No se podrán hacer efectivos los cambios que usted haya realizado para "
                         "asegurar la integridad de los datos existentes. Salga y vuelva a intentar"_s));
    QCOMPARE(sheet.Rows(), QStringList(u"*Uno|1|1|0"_s));
  }

  // Lists that can't be filled: the dialog says so and stays usable.
  void ListsThatCannotBeFilled() {
    Sheet sheet;
    sheet.Add(u"*Uno"_s, 1, 1);
    sheet.host.Recording().SetHook([](const QString& entry) {
      if (entry.contains(u"codTabla=") && !entry.contains(u"codTabla FROM")) {
        throw automation::Error(1234, u"propio"_s);
      }
    });
    sheet.host.driver.Answer(QMessageBox::Ok);
    EXPECT_CLEAN(sheet.host, sheet.Use([](const DialogUser& dialog) {
      AddText(dialog, u"Dos"_s, 2, 2);
      dialog.Press("cmdCampos_0");
    }));
    const QString box = sheet.host.driver.Boxes().value(0);
    QVERIFY2(box.contains(u"KelConfiguracion / frmEtiquetas2 / RellenarComboAPI"_s), qPrintable(box));
    QCOMPARE(sheet.Rows().size(), 2);
  }

  void ColumnWidthsAreKept() {
    Sheet sheet;
    for (const bool again : {false, true}) {
      EXPECT_CLEAN(sheet.host, sheet.LookAt([again](const DialogUser& dialog) {
        auto* grid = dialog.Find<QTableView>("msgCampos");
        if (again) {
          QCOMPARE(grid->columnWidth(0), 321);
        }
        grid->setColumnWidth(0, 321);
        dialog.Press("cmdCampos_1");
      }));
    }
    QFile settings(sheet.host.session.settingsFile);
    QVERIFY(settings.open(QIODevice::ReadOnly));
    const QByteArray stored = QByteArray::fromPercentEncoding(settings.readAll().replace("%25", "%"));
    QVERIFY2(stored.contains("Prueba\\Impresi") && stored.contains("\\msgCampos|frmEtiquetas2|msgCampos"),
             stored.constData());
  }
};

KEL_TEST(tst_label_fields);
#include "tst_label_fields.moc"
