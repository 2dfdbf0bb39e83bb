#include "database/Maintenance.h"
#include "moving/Convert.h"
#include "moving/CsvReader.h"
#include "moving/Export.h"
#include "moving/Import.h"
#include "platform/automation/Error.h"
#include "support/DesktopFile.h"
#include "support/ErrorOf.h"
#include "support/RecordingConnection.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using support::DesktopFile;

namespace {

QString WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? path : QString();
}

moving::ImportWishes Wishes(bool acceptsLosses = false, bool isTrial = false) {
  moving::ImportWishes wishes;
  wishes.acceptsLosses = acceptsLosses;
  wishes.isTrial = isTrial;
  wishes.identifier = [](const QString& text) { return text.startsWith(u'1') ? text : QString(); };
  return wishes;
}

moving::ImportReport Import(const support::TestDatabase& database, const QString& path,
                            const moving::ImportWishes& wishes = Wishes()) {
  return moving::Import(path, database.Connection(), wishes);
}

/// Every row of every table that comes in.
QStringList Dump(const support::TestDatabase& database) {
  QStringList lines;
  for (const moving::TableRule& rule : moving::TableRules()) {
    const adodb::Verbatim name{rule.table->name};
    lines +=
        name.text + u'\n' +
        database.Query(u"SELECT * FROM [{}] ORDER BY [{}]", name, adodb::Verbatim{rule.table->columns.front().name})
            .join(u'\n');
  }
  return lines;
}

const QString letter = u"{\\rtf1 "_s + u"á\U0001F600"_s.repeated(100'000) + u"[Marcador]}"_s;

/// An office as another program kept it: numbers shifted, negative, doubled and colliding.
QByteArray Office() {
  using D = DesktopFile;
  const QVariant none;
  D file;
  file.AddTable(u"Donativos"_s, {{u"IDDonativo"_s, D::Long},
                                 {u"CodColaborador"_s, D::Long},
                                 {u"CodTipoDonativo"_s, D::Long},
                                 {u"CodEmisor_Cuenta"_s, D::Long},
                                 {u"Importe"_s, D::Money},
                                 {u"Fecha"_s, D::Date},
                                 {u"Eliminado"_s, D::Bool}});
  file.AddRow({100, -7, 3, 0, qint64(-123'456), 37623.0, false});
  file.AddRow({100, 12, 3, 77, qint64(9'999'999'999), 37624.5, false});
  file.AddRow({101, 555, 3, 0, qint64(10'000), 37625.0, false});
  file.AddRow({102, 12, 3, 0, qint64(10'000), 37625.0, true});
  file.AddRow({103, 12, 3, 0, qint64(10'000), 37625.0, true});
  file.AddTable(u"Paises"_s,
                {{u"IDPais"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"CodigoISO"_s, D::Text}, {u"Eliminado"_s, D::Bool}});
  file.AddRow({1, u"ESPAÑA"_s, none, false});
  file.AddRow({35, u"Atlántida"_s, none, false});
  file.AddRow({2, u"Allemagne"_s, u"DE"_s, false});
  file.AddTable(
      u"tblProvincia"_s,
      {{u"IDProvincia"_s, D::Long}, {u"CodPais"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Prefijo"_s, D::Byte}});
  file.AddRow({900, 1, u"Provincia de Álava"_s, 1});
  file.AddRow({901, 35, u"Álava"_s, none});
  file.AddTable(u"BANCOS"_s, {{u"IDBanco"_s, D::Long},
                              {u"Numero"_s, D::Text},
                              {u"Nombre"_s, D::Text},
                              {u"Eliminado"_s, D::Bool},
                              {u"Color"_s, D::Text}});
  file.AddRow({17, u"0123"_s, u"Caja de Aldea Real"_s, false, u"rojo"_s});
  file.AddRow({212, u"123 "_s, u"CAJA DE ALDEA REAL"_s, false, none});
  file.AddRow({40, u"0777"_s, u"Banco del Olivar"_s, false, none});
  file.AddRow({41, u"777"_s, u"Caja de la Ribera"_s, false, none});
  file.AddTable(u"Sucursales"_s, {{u"IDSucursal"_s, D::Long},
                                  {u"codBanco"_s, D::Long},
                                  {u"Codigo"_s, D::Int},
                                  {u"Nombre"_s, D::Text},
                                  {u"CP"_s, D::Long},
                                  {u"codProvincia"_s, D::Long},
                                  {u"codPais"_s, D::Long}});
  file.AddRow({5, 212, 7, u"Plaza"_s, 1001, 900, 1});
  file.AddRow({6, 41, 7, u"Río"_s, 28001, 999, 1});
  file.AddRow({7, 4040, 1, u"Sin banco"_s, none, none, none});
  file.AddTable(u"Cuentas"_s, {{u"IDCuenta"_s, D::Long}, {u"CodSucursal"_s, D::Long}, {u"NumeroCuenta"_s, D::Text}});
  file.AddRow({8, 5, u"ES00 1"_s});
  file.AddTable(u"Emisores"_s,
                {{u"IDEmisor"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Cif"_s, D::Text}, {u"Sufijo"_s, D::Int}});
  file.AddRow({9, u"Entidad"_s, u"G1"_s, 1});
  file.AddTable(u"Emisores_Cuentas"_s,
                {{u"IDEmisor_Cuenta"_s, D::Long}, {u"CodEmisor"_s, D::Long}, {u"CodCuenta"_s, D::Long}});
  file.AddRow({77, 9, 8});
  file.AddTable(u"Colaboradores"_s, {{u"IDColaborador"_s, D::Long},
                                     {u"Nombre"_s, D::Text},
                                     {u"NIF"_s, D::Text},
                                     {u"CodProvincia"_s, D::Long},
                                     {u"codpais"_s, D::Long},
                                     {u"FechaAlta"_s, D::Text}});
  file.AddRow({-7, u"Ana"_s, u"1A"_s, 900, 35, u"1/2/2003"_s});
  file.AddRow({12, u"Luis "_s, u"1A"_s, 901, none, u"ayer"_s});
  file.AddTable(u"TipoDonativos"_s,
                {{u"IDTipoDonativo"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"GenerarRecibo"_s, D::Text}});
  file.AddRow({3, u"Cuota"_s, u"sí"_s});
  file.AddRow({4, u"Otra"_s, u"quizá"_s});
  file.AddTable(u"CartasModelo"_s, {{u"IDCartaModelo"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Contenido"_s, D::Memo}});
  file.AddRow({1, u"Gracias"_s, letter});
  file.AddTable(u"Etiquetas"_s, {{u"IDETIQUETA"_s, D::Long}, {u"NOMBRE"_s, D::Text}, {u"ALTOETIQUETA"_s, D::Double}});
  file.AddRow({1, u"Hoja"_s, 2.5});
  file.AddTable(u"TipoCamposEtiquetas"_s,
                {{u"IDTipoCampoEtiqueta"_s, D::Long}, {u"NombreTabla"_s, D::Text}, {u"NombreCampo"_s, D::Text}});
  file.AddRow({50, u"COLABORADORES"_s, u"colaboradores.nombre"_s});
  file.AddRow({51, u"COLABORADORES"_s, u"[Signo]"_s});
  file.AddTable(u"EtiquetasCampos"_s, {{u"IDEtiquetaCampo"_s, D::Long},
                                       {u"codEtiqueta"_s, D::Long},
                                       {u"NombreCampo"_s, D::Text},
                                       {u"codTipoCampoEtiqueta"_s, D::Long}});
  file.AddRow({1, 1, u"[COLABORADORES].[NOMBRE]"_s, 50});
  file.AddRow({2, 1, u"Signo"_s, 51});
  file.AddTable(
      u"Usuarios"_s,
      {{u"IDUsuario"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Administrador"_s, D::Bool}, {u"TipoUsuario"_s, D::Int}});
  file.AddRow({1, u"jefa"_s, true, 1});
  file.AddTable(u"BloqueoRegistros"_s, {{u"IDBloqueoRegistro"_s, D::Long},
                                        {u"codUsuario"_s, D::Long},
                                        {u"campoID"_s, D::Text},
                                        {u"ValorID"_s, D::Long}});
  file.AddRow({1, 1, u"IDBanco"_s, 17});
  file.AddLinkedTable(u"Recibos"_s);
  return file.Bytes();
}

}  // namespace

/// Data of another program, brought in and out again.
class tst_import : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void AnOffice();
  void Conversions_data();
  void Conversions();
  void Lists_data();
  void Lists();
  void WhatGoesOutChangesNothing();
  void ListsFromASpreadsheet();
  void WhatCanNotComeIn();
};

void tst_import::AnOffice() {
  const support::TestDatabase database;
  const QTemporaryDir folder;
  const QString path = WriteFile(folder.filePath(u"donantes.mdb"_s), Office());
  const QStringList untouched = Dump(database);

  // Something would be left out: nothing is written. The trial says what the import does.
  QVERIFY(!Import(database, path).isWritten);
  const moving::ImportReport trial = Import(database, path, Wishes(true, true));
  QCOMPARE(Dump(database), untouched);
  const moving::ImportReport report = Import(database, path, Wishes(true));
  QVERIFY(report.isWritten && !trial.isWritten);
  QCOMPARE(report.Text(), trial.Text().replace(u"No se ha escrito nada."_s, u"Se han traído."_s));

  QCOMPARE(database.Query(
               u"SELECT c.Nombre, p.Nombre, s.Nombre, d.Importe, d.Fecha, d.Eliminado FROM ((Donativos AS d INNER JOIN "
               u"Colaboradores AS c ON d.CodColaborador=c.IDColaborador) INNER JOIN Provincias AS p ON "
               u"c.CodProvincia=p.IDProvincia) LEFT JOIN Paises AS s ON c.codpais=s.IDPais ORDER BY d.IDDonativo"),
           QStringList({u"Ana|Álava|Atlántida|-12,3456|2003-01-02|Falso"_s,
                        u"Luis |Álava|NULL|999999,9999|2003-01-03|Falso"_s,
                        u"Luis |Álava|NULL|1|2003-01-04|Verdadero"_s, u"Luis |Álava|NULL|1|2003-01-04|Verdadero"_s}));
  // Álava of Spain is the one of here, the other one is not; Spain stays 35.
  QCOMPARE(database.Query(u"SELECT p.Nombre, p.CodPais FROM Colaboradores AS c INNER JOIN Provincias AS p ON "
                          u"c.CodProvincia=p.IDProvincia WHERE c.Nombre='Ana'"),
           QStringList(u"Álava|35"_s));
  QCOMPARE(database.Query(u"SELECT Nombre FROM Paises WHERE IDPais=35 OR CodigoISO='DE' ORDER BY Nombre"),
           QStringList({u"Alemania"_s, u"España"_s}));
  QCOMPARE(database.Query(u"SELECT s.Nombre, b.Nombre, b.Numero, b.Eliminado, s.Codigo, s.CP, s.codProvincia, "
                          u"s.codPais FROM Sucursales "
                          u"AS s INNER JOIN Bancos AS b ON s.codBanco=b.IDBanco ORDER BY s.IDSucursal"),
           QStringList({u"Plaza|Caja de Aldea Real|0123|Falso|0007|01001|1|35"_s,
                        u"Río|Caja de la Ribera|0777|Verdadero|0007|28001|0|35"_s}));
  QCOMPARE(
      database.Query(
          u"SELECT e.Nombre, e.Sufijo, q.NumeroCuenta, s.Nombre FROM (((Donativos AS d INNER JOIN Emisores_Cuentas AS "
          u"x "
          u"ON d.CodEmisor_Cuenta=x.IDEmisor_Cuenta) INNER JOIN Emisores AS e ON x.CodEmisor=e.IDEmisor) INNER "
          u"JOIN Cuentas AS q ON x.CodCuenta=q.IDCuenta) INNER JOIN Sucursales AS s ON q.CodSucursal=s.IDSucursal"),
      QStringList(u"Entidad|001|ES00 1|Plaza"_s));
  QCOMPARE(database.Query(u"SELECT FechaAlta FROM Colaboradores ORDER BY Nombre"),
           QStringList({u"2003-02-01"_s, u"ayer"_s}));
  QCOMPARE(database.Query(u"SELECT Contenido FROM CartasModelo"), QStringList(letter));
  QCOMPARE(database.Query(u"SELECT f.NombreCampo, f.codTipoCampoEtiqueta, h.NOMBRE, h.ALTOETIQUETA FROM "
                          u"EtiquetasCampos AS f INNER JOIN "
                          u"ETIQUETAS AS h ON f.codEtiqueta=h.IDETIQUETA ORDER BY f.IDEtiquetaCampo"),
           QStringList({u"[COLABORADORES].[NOMBRE]|2|Hoja|2,5"_s, u"*Signo|0|Hoja|2,5"_s}));
  QCOMPARE(database.Query(u"SELECT Administrador, TipoUsuario FROM Usuarios WHERE Nombre='jefa'"),
           QStringList(u"Falso|0"_s));
  QCOMPARE(database.Query(u"SELECT IDBloqueoRegistro FROM BloqueoRegistros"), QStringList());
  for (const QString& said :
       {u"IDDonativo 101 (2003-01-04): no entra"_s, u"IDSucursal 7 (0001 · Sin banco): no entra"_s,
        u"«quizá» no sirve como «GenerarRecibo»"_s, u"Recibos está en otro archivo"_s,
        u"BloqueoRegistros no entra"_s}) {
    QVERIFY2(report.Text().contains(said), qPrintable(said + u'\n' + report.Text()));
  }
  QVERIFY(database::CheckDatabase(database.ConnectionString()).IsSound());
  // The next record of a dialog has a higher key than all.
  database.Execute(u"INSERT INTO Donativos (Importe) VALUES (1)");
  QCOMPARE(database.Id(u"SELECT MAX(IDDonativo) FROM Donativos WHERE Importe=1 AND CodColaborador=0"),
           database.Id(u"SELECT MAX(IDDonativo) FROM Donativos"));
  // The same file again brings nothing.
  const QStringList whole = Dump(database);
  const moving::ImportReport again = Import(database, path, Wishes(true));
  QVERIFY2(again.Written() == 0, qPrintable(again.Text()));
  QCOMPARE(Dump(database), whole);
}

void tst_import::Conversions_data() {
  QTest::addColumn<QString>("column");
  QTest::addColumn<char>("kind");
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("literal");
  const auto row = [](const char* column, char kind, const char* text, const char* literal) {
    QTest::addRow("%s %c %s", column, kind, text)
        << QString::fromUtf8(column) << kind << QString::fromUtf8(text) << QString::fromUtf8(literal);
  };
  row("Importe", 't', "1.234,56", "'1234,56'");
  row("Importe", 't', "2.5", "'2,5'");
  row("Importe", 't', "1.234", "1234");
  row("Importe", 't', " 12 € ", "12");
  row("Importe", 't', "doce", "refused");
  row("Importe", 'n', "0.0001", "'0,0001'");
  row("Importe", 'n', "1000000000000000", "refused");
  row("Importe", 't', "", "NULL");
  row("Importe", '-', "", "NULL");
  row("Importe", '!', "", "refused");
  row("CodColaborador", 'n', "3", "3");
  row("CodColaborador", 'n', "3.5", "refused");
  row("CodColaborador", 'n', "99999999999", "refused");
  row("Eliminado", 't', "Sí", "-1");
  row("Eliminado", 't', "FALSO", "0");
  row("Eliminado", 'b', "-1", "-1");
  row("Eliminado", 't', "quizá", "refused");
  row("Fecha", 'd', "2003-01-02T12:00:00", "'2003-01-02'");
  row("Fecha", 't', "2/1/2003", "'2003-01-02'");
  row("Fecha", 't', "31/2/2003", "'31/2/2003'");
  row("TextoRecibo", 't', "O'Neill ", "'O''Neill '");
  row("TextoRecibo", 'n', "1.5", "'1,5'");
  row("TextoRecibo", 't', "", "''");
}

void tst_import::Conversions() {
  QFETCH(QString, column);
  QFETCH(char, kind);
  QFETCH(QString, text);
  QFETCH(QString, literal);
  const auto match = moving::MatchTable(
      {u"Donativos"_s,
       {},
       {{u"IDDonativo"_s}, {u"CodColaborador"_s}, {u"Importe"_s}, {u"Fecha"_s}, {u"Eliminado"_s}, {u"TextoRecibo"_s}}},
      {});
  QVERIFY(match);
  moving::SourceRow row(6);
  qsizetype at = 0;
  for (qsizetype i = 0; i < match->columns.size(); ++i) {
    at = match->columns[i]->name == column ? i : at;
  }
  row[at] = {moving::Cell(kind), text};
  const moving::ConvertedRow converted = moving::Convert(*match, row);
  const auto position = match->columns[at] - match->rule->table->columns.data();
  QCOMPARE(converted.refusal.isEmpty() ? moving::Literal(converted.values[position]) : u"refused"_s, literal);
}

void tst_import::Lists_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<QString>("rows");
  QTest::newRow("mark, semicolons, quotes") << QByteArray(
                                                   "\xEF\xBB\xBF"
                                                   "a;b\r\n\"x;\"\"y\r\nz\";2,5\r\n;\"\"\r\n")
                                            << u"a|b/x;\"y\r\nz|2,5/|"_s;
  QTest::newRow("mark, first in quotes") << QByteArray(
                                                "\xEF\xBB\xBF"
                                                "\"a;b\";c\n1;2\n")
                                         << u"a;b|c/1|2"_s;
  QTest::newRow("tabs, no mark") << QByteArray("a\tb\n\xC3\xB1\t1,5\n") << u"a|b/ñ|1,5"_s;
  QTest::newRow("commas, Windows") << QByteArray("a,b\n\x80,\xF1\n") << u"a|b/€|ñ"_s;
  QTest::newRow("bars") << QByteArray("a|b|c\n1|2|3") << u"a|b|c/1|2|3"_s;
  QTest::newRow("UTF-16") << QByteArray(
                                 "\xFF\xFE"
                                 "a\0;\0\xF1\0",
                                 8)
                          << u"a|ñ"_s;
  QTest::newRow("one column") << QByteArray("a\r\n0049\r\n") << u"a/0049"_s;
  QTest::newRow("more behind a quote") << QByteArray("a;b\n\"x\"y;\"\"\"\"z\n") << u"a|b/xy|\"z"_s;
  QTest::newRow("open quote") << QByteArray("a;b\n\"1\n2\";3\n\"x;2\n") << u"a|b/1\n2|3/Línea 4 de la lista"_s;
  QTest::newRow("NUL") << QByteArray("a;b\n\0;1\n", 8) << u"Línea 2 de la lista"_s;
}

void tst_import::Lists() {
  class Rows : public moving::SourceListener {
   public:
    void BeginTable(const moving::SourceTable& /*table*/) override {}
    void Row(const moving::SourceRow& row) override {
      QStringList cells;
      for (const moving::SourceCell& cell : row) {
        cells += cell.text;
      }
      lines += cells.join(u'|');
    }
    void EndTable(qint64 /*missing*/) override {}
    void Linked(const QString& /*name*/) override {}
    void Unreadable(const QString& /*name*/) override {}
    QStringList lines;
  };
  QFETCH(QByteArray, bytes);
  QFETCH(QString, rows);
  const QTemporaryDir folder;
  const QString path = WriteFile(folder.filePath(u"list.csv"_s), bytes);
  Rows read;
  try {
    moving::ReadCsv(path, {}, read, {});
  } catch (const automation::Error& error) {
    read.lines += error.Description().section(u':', 0, 0);
  }
  QCOMPARE(read.lines.join(u'/'), rows);
}

void tst_import::WhatGoesOutChangesNothing() {
  const support::TestDatabase database(database::Content::Demonstration);
  database.Execute(u"UPDATE Colaboradores SET Nombre='{}', Direccion='{}', Poblacion='{}' WHERE IDColaborador=1",
                   u"=1+2; \"ñ\""_s, u"a\r\nb\n c\t \U0001F600"_s, u"1.234"_s);
  database.Execute(u"UPDATE Donativos SET Importe=-0.1, Eliminado=-1 WHERE IDDonativo=1");
  const QStringList before = Dump(database);
  const QTemporaryDir folder;
  QVERIFY(QDir(folder.path()).mkdir(u"todo"_s));
  const QString sheets = folder.filePath(u"todo.ods"_s);
  QCOMPARE(moving::Export(sheets, {}, database.Connection(), {}),
           moving::Export(folder.filePath(u"todo"_s), {}, database.Connection(), {}));
  QStringList files = {sheets};
  for (const QString& name : QDir(folder.filePath(u"todo"_s)).entryList(QDir::Files)) {
    files += folder.filePath(u"todo/"_s + name);
  }
  // All tables but the settings, and the sheets.
  QCOMPARE(files.size(), qsizetype(moving::TableRules().size()));
  for (const QString& file : std::as_const(files)) {
    const moving::ImportReport report = Import(database, file);
    QVERIFY2(report.Written() == 0 && !report.HasLosses(), qPrintable(report.Text()));
  }
  QCOMPARE(Dump(database), before);
  // Into an empty office all of it comes in, and out again it is the same.
  const support::TestDatabase other;
  QVERIFY(Import(other, sheets).isWritten);
  QCOMPARE(other.Query(u"SELECT SUM(Importe), COUNT(*) FROM Donativos"),
           database.Query(u"SELECT SUM(Importe), COUNT(*) FROM Donativos"));
  QCOMPARE(other.Query(u"SELECT Contenido FROM CartasModelo ORDER BY IDCartaModelo"),
           database.Query(u"SELECT Contenido FROM CartasModelo ORDER BY IDCartaModelo"));
}

void tst_import::ListsFromASpreadsheet() {
  const support::TestDatabase database;
  const QTemporaryDir folder;
  const QString path =
      WriteFile(folder.filePath(u"lista.csv"_s),
                "\r\nNúmero;Nombre;Notas\r\n49;Banco Puente;x\r\n0049;banco puente;\r\n2038;Caja Vieja;\r\n");
  moving::ImportWishes wishes = Wishes();
  QCOMPARE(support::ErrorOf([&] { Import(database, path, wishes); }), 5);
  wishes.names.tables.insert(u"*"_s, u"Bancos"_s);
  QVERIFY(Import(database, path, wishes).isWritten);
  QCOMPARE(database.Query(u"SELECT Numero, Nombre FROM Bancos ORDER BY IDBanco"),
           QStringList({u"0049|Banco Puente"_s, u"2038|Caja Vieja"_s}));
  QCOMPARE(Import(database, path, wishes).Written(), 0);
}

void tst_import::WhatCanNotComeIn() {
  const support::TestDatabase database;
  const QTemporaryDir folder;
  const QStringList before = Dump(database);
  DesktopFile file;
  file.AddTable(
      u"Bancos"_s,
      {{u"IDBanco"_s, DesktopFile::Long}, {u"Numero"_s, DesktopFile::Text}, {u"Nombre"_s, DesktopFile::Text}});
  file.AddRow({1, u"0001"_s, u"Uno"_s});
  file.SayCount(2);
  const QString path = WriteFile(folder.filePath(u"a.mdb"_s), file.Bytes());
  // A row that the file says it has is a loss.
  QVERIFY(!Import(database, path).isWritten);
  // A refusal of the engine ends everything, and says where.
  support::RecordingConnection refusing(database.Connection());
  refusing.FailAt(u"INSERT"_s);
  try {
    moving::Import(path, refusing, Wishes(true));
    QFAIL("written");
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().startsWith(u"Bancos, IDBanco 1: "_s), error.what());
  }
  QCOMPARE(Dump(database), before);
  // Stopped wherever it asks: all or nothing.
  int stops = 0;
  for (bool isStopped = true; isStopped; ++stops) {
    moving::ImportWishes wishes = Wishes(true);
    wishes.stop = [&, asked = 0]() mutable { return ++asked > stops; };
    isStopped = support::ErrorOf([&] { Import(database, path, wishes); }) == 18;
    QCOMPARE(Dump(database) == before, isStopped);
  }
  QVERIFY(stops > 3);
}

KEL_TEST(tst_import);

#include "tst_import.moc"
