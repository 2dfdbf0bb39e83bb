#include "moving/Import.h"
#include "moving/TableWriter.h"
#include "support/Expect.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::node;
using support::TestHost;

namespace {

constexpr int imported = 1000;

/// A row for each table that comes in, under a key far above those of here; what it refers to has that key, too.
QString MakeFile(const QTemporaryDir& folder) {
  const QString path = folder.filePath(u"oficina.ods"_s);
  const auto file = moving::MakeTableWriter(path, moving::Purpose::Data);
  for (const moving::TableRule& rule : moving::TableRules()) {
    if (!rule.settings.isEmpty()) {
      continue;
    }
    QStringList names;
    QVariantList row;
    for (const database::Column& column : rule.table->columns) {
      const bool isKey = &column == &rule.table->columns.front();
      const bool refers = database::Schema::Current().ReferredTable(column) != nullptr;
      names.append(column.name);
      row.append(isKey || refers                                              ? QVariant(imported)
                 : column.type == database::ColumnType::Boolean               ? QVariant(false)
                 : database::IsNumericType(column.type)                       ? QVariant(7)
                 : column.name.compare(u"Numero"_s, Qt::CaseInsensitive) == 0 ? QVariant(u"0007"_s)
                                                                              : QVariant(u"Importado"_s));
    }
    file->Begin(rule.table->name, names);
    file->Write(row);
  }
  file->Finish();
  return path;
}

}  // namespace

/// What each dialog adds after data came in from another program gets a key above all of its table. One that adds on
/// behalf of another dialog hands it back: it finds it by the highest.
class tst_after_import : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void ANewRecord_data();
  void ANewRecord();

 private:
  QTemporaryDir m_folder;
  QString m_file;
};

void tst_after_import::ANewRecord_data() {
  m_file = MakeFile(m_folder);
  QTest::addColumn<int>("number");
  QTest::addColumn<QString>("table");
  QTest::addColumn<QStringList>("steps");
  QTest::addColumn<bool>("handsBack");
  const auto row = [](const char* dialog, int number, const char* table, const char* steps, bool handsBack = true) {
    QTest::newRow(dialog) << number << QString::fromLatin1(table) << QString::fromUtf8(steps).split(u'|') << handsBack;
  };
  row("frmPais", node.Paises(), "Paises", "txtPais=Nuevo|cmdPais_0");
  row("frmProvincia", node.Provincias(), "Provincias", "cboPais:España|txtProvincia=Nueva|cmdProvincia_0", false);
  row("frmDiocesis", node.Diocesis(), "Diocesis", "txtDiocesis=Nueva|cmdDiocesis_0");
  row("frmComunidadAutonoma", node.ComunidadAutonoma(), "ComunidadAutonoma",
      "txtComunidad=Nueva|txtCodigo=99|cmdAceptar");
  row("frmDeduccionComunidad", node.DeduccionesComunidad(), "Deduccion_Comunidad",
      "cboComunidad:La Rioja|cboDeduccion:40|cmdAceptar", false);
  row("frmTipoDeduccion", node.TipoDeduccion(), "TipoDeducciones", "txtDeduccion=66|cmdDeduccion_0");
  row("frmTipoDonativo", node.TipoDonativos(), "TipoDonativos",
      "cboTipoDonativo_0:40|cboTipoDonativo_1:50|txtTipoDonativo_0=Nuevo|cmdTipoDonativo_0");
  row("frmPresentador", node.Presentadores(), "Presentadores",
      "txtNombre=Nuevo|txtNIF=A11111119|txtSufijo=1|cboBancos:Importado|cboSucursales:Importado|cmdAceptar");
  row("frmEmisor", node.Emisores(), "Emisores",
      "txtNombre=Nuevo|txtNIF=A11111119|txtSufijo=5|cboPresentadores:Importado - Importado|cmdEmisor_0");
  row("frmCobrador", node.Cobradores(), "Cobradores", "txtCobrador_0=Nuevo|cmdCobrador_0", false);
  row("frmCabecera", node.Cabeceras(), "Cabeceras", "txtNombre=Nueva|cmdBotonera_0");
  row("frmBanco", node.Bancos(), "Bancos", "txtBanco_0=0300|txtBanco_1=Nuevo|cmdBanco_3");
  row("frmSucursal", node.Sucursales(), "Sucursales",
      "txtSucursales_0=0001|txtSucursales_1=Nueva|txtSucursales_4=28013|cmdSucursales_0");
  row("frmPublicacion", node.Publicaciones(), "TipoPublicaciones",
      "txtPublicacion=Nueva|txtPrecioNac=1|txtPrecioExt=2|cmdPublicacion_0");
  row("frmEtiquetas1", node.Etiquetas(), "ETIQUETAS",
      "txtReferencia=Nueva|txtEtiquetasTotales=40|txtEtiquetasFila=4|txtMedidas_0=7|txtMedidas_1=3,7|txtMedidas_2=0|"
      "txtMedidas_3=0|txtMedidas_4=0,5|txtMedidas_5=1,3|cmdSeleccionar_1|cmdSeleccionar_2",
      false);
  row("frmCartaModelo", node.CartasModelo(), "CartasModelo", "tlbEstandar_guardar");
}

void tst_after_import::ANewRecord() {
  QFETCH(int, number);
  QFETCH(QString, table);
  QFETCH(QStringList, steps);
  QFETCH(bool, handsBack);
  TestHost host;
  host.desktop.printers = 1;
  moving::ImportWishes wishes;
  wishes.acceptsLosses = true;
  const moving::ImportReport report = moving::Import(m_file, *host.Connect(), wishes);
  const adodb::Verbatim key{database::Schema::Current().FindTable(table)->columns.front().name};
  const auto highest = [&] { return host.Id(u"SELECT MAX([{}]) FROM [{}]", key, adodb::Verbatim{table}); };
  QVERIFY2(highest() == imported, qPrintable(report.Text()));
  host.driver.On(QTest::currentDataTag(), [&](const DialogUser& dialog) {
    for (const QString& step : steps) {
      const QByteArray control = step.section(QRegularExpression(u"[=:]"_s), 0, 0).toUtf8();
      if (step.contains(u'=')) {
        dialog.Type(control, step.section(u'=', 1));
      } else if (step.contains(u':')) {
        dialog.Choose(control, step.section(u':', 1));
      } else {
        dialog.Press(control);
      }
    }
  });
  if (number == node.Etiquetas()) {
    host.driver.On("frmEtiquetas2", [](const DialogUser& dialog) {
      dialog.Press("cmdCampos_2");
      dialog.Press("optCampos_1");
      dialog.Type("txtCampos_2", u"Nuevo"_s);
      dialog.Type("txtCampos_0", u"2"_s);
      dialog.Type("txtCampos_1", u"3"_s);
      dialog.Press("cmdCampos_5");
      dialog.Press("cmdCampos_0");
    });
  } else if (number == node.CartasModelo()) {
    host.driver.AnswerInput(u"Nueva"_s);
  }
  EXPECT_CLEAN(host, host.PasarDatos(number, handsBack ? action.Nuevo() : action.Agregar(), 0, imported));
  const int added = highest();
  QVERIFY(added > imported);
  QVERIFY(!handsBack || host.services().property("IDAux").toInt() == added);
}

KEL_TEST(tst_after_import);
#include "tst_after_import.moc"
