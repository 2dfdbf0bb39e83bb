#include "host_moving/ImportProgram.h"

#include "database/Maintenance.h"
#include "host/moving/BringIn.h"
#include "moving/NameMemory.h"
#include "moving/TableRules.h"
#include "support/DesktopFile.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;
using support::DesktopFile;

namespace {

QByteArray Office() {
  using D = DesktopFile;
  D file;
  file.AddTable(u"Bancos"_s, {{u"IDBanco"_s, D::Long}, {u"Numero"_s, D::Text}, {u"Nombre"_s, D::Text}});
  file.AddRow({70, u"0777"_s, u"Banco del Olivar"_s});
  file.AddRow({71, u"777"_s, u"Caja de la Ribera"_s});
  file.AddTable(u"CartasModelo"_s, {{u"IDCartaModelo"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Contenido"_s, D::Memo}});
  file.AddRow({5, u"Buena"_s, u"{\\rtf1 [Nombre]}"_s});
  file.AddRow({6, u"Rara"_s, u"{\\rtf1 [Nombrre]}"_s});
  file.AddRow({7, u"Texto"_s, u"hola"_s});
  file.AddTable(u"ETIQUETAS"_s, {{u"IDETIQUETA"_s, D::Long},
                                 {u"NOMBRE"_s, D::Text},
                                 {u"NETIQUETASTOTAL"_s, D::Long},
                                 {u"NETIQUETASANCHO"_s, D::Long},
                                 {u"ANCHOETIQUETA"_s, D::Double},
                                 {u"ALTOETIQUETA"_s, D::Double},
                                 {u"ANCHOSEPARACION"_s, D::Double},
                                 {u"ALTOSEPARACION"_s, D::Double},
                                 {u"ANCHO1ETIQUETA"_s, D::Double},
                                 {u"ALTO1ETIQUETA"_s, D::Double}});
  file.AddRow({9, u"Ancha"_s, 8, 4, 12.0, 3.0, 0.0, 0.0, 0.0, 0.0});
  file.AddRow({10, u"Sin medidas"_s, 8, 2, QVariant(), 1.0, 0.0, 0.0, 0.0, 0.0});
  file.AddTable(u"Sucursales"_s, {{u"IDSucursal"_s, D::Long}, {u"codBanco"_s, D::Long}, {u"Codigo"_s, D::Text}});
  file.AddRow({1, 70, u"0001"_s});
  file.AddRow({2, 999, u"0001"_s});
  return file.Bytes();
}

/// Every row of every table, but for the locks.
QStringList Dump(const support::TestDatabase& database) {
  QStringList lines;
  for (const moving::TableRule& rule : moving::TableRules()) {
    const adodb::Verbatim name{rule.table->name};
    lines += rule.table->name;
    lines +=
        database.Query(u"SELECT * FROM [{}] ORDER BY [{}]", name, adodb::Verbatim{rule.table->columns.front().name});
  }
  return lines;
}

}  // namespace

/// kel-host importar, from the shell.
class tst_import_command : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Ends();
  void UndoneByItsCopy();
  void NewRecordsHaveHigherKeys();
};

void tst_import_command::Ends() {
  const support::TestDatabase database;
  WriteFile(database.Path(u"a.mdb"_s), Office());
  WriteFile(database.Path(u"respuestas.txt"_s), "# todos\nBancos * numero=unir\n");
  WriteFile(database.Path(u"vacio.csv"_s), "Numero;Nombre\n");
  WriteFile(database.Path(u"lista.csv"_s), "Listado;2026\nClave;Raz\xC3\xB3n\n0049;Puente\n");
  WriteFile(database.Path(u"cerrado.csv"_s), "Numero;Nombre\n49;Puente\n");
  QVERIFY(QFile::setPermissions(database.Path(u"cerrado.csv"_s), {}));
  {
    QSettings settings(database.Path(u"dicho.conf"_s), QSettings::IniFormat);
    moving::NameMemory(settings).Keep({u"x"_s, {}, {{u"CLAVE"_s}, {u"razon"_s}}},
                                      {{{u"x"_s, u"Bancos"_s}}, {{u"x.CLAVE"_s, u"Numero"_s}, {u"x.razon"_s, u"-"_s}}});
  }
  const auto count = [&] { return database.Query(u"SELECT COUNT(*) FROM Bancos").constFirst(); };
  struct Step {
    QString arguments;
    int code;
    QStringList said;
    QString banks;
  };
  const QList<Step> steps = {
      {u"importar|no-hay.mdb"_s, 1, {u"no-hay.mdb"_s}, u"0"_s},
      {u"importar|a.mdb|--separador|x"_s, 2, {u"«x» no sirve"_s}, u"0"_s},
      {u"exportar|a.ods|--hoja|1"_s, 2, {u"sólo sirve"_s}, u"0"_s},
      {u"importar|a.mdb|--prueba|--hoja|bancos"_s, 0, {u"1 tabla, 2 registros"_s}, u"0"_s},
      {u"importar|lista.csv|--titulos|0"_s, 2, {u"«0» no sirve"_s}, u"0"_s},
      {u"importar|lista.csv|--titulos|4|--tabla|Bancos"_s, 1, {u"no tiene tantas filas"_s}, u"0"_s},
      {u"importar|lista.csv|--correspondencia|no-hay"_s, 1, {u"No se puede leer el archivo de"_s}, u"0"_s},
      {u"importar|lista.csv|--prueba|--titulos|lista=2|--correspondencia|dicho.conf"_s,
       0,
       {u"1 registro leído, 1 nuevo"_s, u"columnas que no se traen: Razón"_s},
       u"0"_s},
      {u"importar|lista.csv|--prueba|--titulos|2|--correspondencia|dicho.conf|--tabla|Diocesis"_s,
       1,
       {u"Ninguna tabla del archivo"_s},
       u"0"_s},
      {u"importar|cerrado.csv"_s, 1, {u"Compruebe sus permisos"_s}, u"0"_s},
      {u"importar|vacio.csv|--tabla|Bancos"_s, 3, {u"No hay nada que traer"_s}, u"0"_s},
      {u"importar|a.mdb"_s, 3, {u"IDSucursal 2 (0001): no entra"_s, u"No se ha escrito nada"_s}, u"0"_s},
      {u"importar|a.mdb|--prueba|--aunque-falten|--informe|i.txt"_s,
       0,
       {u"[Bancos 71 numero=eliminado]"_s, u"marcas que no se conocen: [Nombrre]"_s,
        u"IDCartaModelo 7 (Texto): la carta no es RTF"_s, u"IDETIQUETA 9 (Ancha): la hoja no cabe en A4"_s,
        u"a la hoja le faltan medidas"_s, u"Era una prueba"_s},
       u"0"_s},
      {u"importar|a.mdb|--aunque-falten|--respuestas|respuestas.txt"_s, 0, {u"[Bancos 71 numero=unir]"_s}, u"1"_s},
      {u"importar|a.mdb|--aunque-falten|--respuestas|respuestas.txt"_s, 0, {u"0 nuevos. Se han traído"_s}, u"1"_s}};
  for (const Step& step : steps) {
    const Ended ended = Run(database, step.arguments);
    QVERIFY2(ended.code == step.code, qPrintable(step.arguments + u'\n' + ended.said));
    for (const QString& said : step.said) {
      QVERIFY2(ended.said.contains(said), qPrintable(said + u'\n' + ended.said));
    }
    QCOMPARE(count(), step.banks);
  }
  QVERIFY(QFile::exists(database.Path(u"i.txt"_s)));
}

void tst_import_command::UndoneByItsCopy() {
  support::TestDatabase database(database::Content::Demonstration);
  WriteFile(database.Path(u"a.mdb"_s), Office());
  WriteFile(database.Path(u"Bancos.csv"_s), ManyBanks(3000));
  const QStringList before = Dump(database);
  const host::MovingPlace place = {database.ConnectionString(), database.Path(u"copias"_s), 1, u"ana"_s, true, false};
  moving::ImportWishes wishes;
  host::AddKnowledge(wishes);
  wishes.acceptsLosses = true;
  const host::Brought brought = host::BringIn(database.Path(u"a.mdb"_s), place, wishes);
  const host::Brought list = host::BringIn(database.Path(u"Bancos.csv"_s), place, wishes);
  QVERIFY(brought.report.isWritten && list.report.isWritten && brought.copy != list.copy);
  QVERIFY(Dump(database) != before);
  QFile report(brought.reportFile);
  QVERIFY(report.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(report.readAll());
  QVERIFY(text.contains(brought.copy) && text.contains(u"«ana»"_s) && text.contains(brought.report.digest));
  QVERIFY(database::CheckDatabase(database.ConnectionString()).IsSound());
  database.Disconnect();
  database::RestoreDatabase(brought.copy, database.ConnectionString());
  QCOMPARE(Dump(database), before);
}

// What a dialog adds is found by the highest key, on any engine.
void tst_import_command::NewRecordsHaveHigherKeys() {
  const support::TestDatabase database;
  WriteFile(database.Path(u"a.mdb"_s), Office());
  moving::ImportWishes wishes;
  wishes.acceptsLosses = true;
  QVERIFY(moving::Import(database.Path(u"a.mdb"_s), database.Connection(), wishes).isWritten);
  for (const moving::TableRule& rule : moving::TableRules()) {
    const adodb::Verbatim table{rule.table->name};
    const adodb::Verbatim key{rule.table->columns.front().name};
    const database::Column& column = rule.table->columns[1];
    if (!rule.settings.isEmpty()) {
      continue;
    }
    const int highest =
        database.Query(u"SELECT [{}] FROM [{}] ORDER BY [{}] DESC", key, table, key).value(0, u"0"_s).toInt();
    const bool isNumber = database::IsNumericType(column.type);
    database.Connection().Execute(adodb::StatementText(u"INSERT INTO [{}] ([{}]) VALUES ({})", table,
                                                       adodb::Verbatim{column.name},
                                                       adodb::Verbatim{isNumber ? u"0"_s : u"'nuevo'"_s}));
    QVERIFY2(database.Id(u"SELECT MAX([{}]) FROM [{}]", key, table) > highest, qPrintable(rule.table->name));
  }
}

KEL_TEST(tst_import_command);

#include "tst_import_command.moc"
