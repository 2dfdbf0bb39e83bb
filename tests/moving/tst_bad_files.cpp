#include "database/Maintenance.h"
#include "moving/Import.h"
#include "moving/ZipPacking.h"
#include "platform/automation/Error.h"
#include "support/DesktopFile.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using D = support::DesktopFile;

namespace {

QByteArray Zip(const std::vector<moving::ZipPart>& parts) {
  QBuffer buffer;
  return buffer.open(QIODevice::WriteOnly) && moving::Pack(parts, buffer) ? buffer.data() : QByteArray();
}

/// A workbook with one sheet, "Bancos".
QByteArray Workbook(const QByteArray& rows, const QByteArray& before = {}) {
  return Zip({{"xl/workbook.xml",
               "<workbook xmlns:r=\"u:r\"><sheets><sheet name=\"Bancos\" r:id=\"a\"/></sheets>"
               "</workbook>"},
              {"xl/_rels/workbook.xml.rels", "<R><R Id=\"a\" Target=\"worksheets/s1.xml\"/></R>"},
              {"xl/worksheets/s1.xml", before + "<worksheet><sheetData>" + rows + "</sheetData></worksheet>"}});
}

/// A row of such a sheet: texts, and what begins with "<" as it stands.
QByteArray SheetRow(const QByteArrayList& cells) {
  QByteArray row = "<row>";
  for (const QByteArray& cell : cells) {
    row += cell.startsWith('<') ? cell : "<c t=\"inlineStr\"><is><t>" + cell + "</t></is></c>";
  }
  return row + "</row>";
}

QByteArray OpenDocument(const QByteArray& kind, const QByteArray& manifest = {}) {
  return Zip({{.name = "mimetype", .content = "application/vnd.oasis.opendocument." + kind, .isCompressed = false},
              {"content.xml", "<o xmlns:table=\"u:t\"><table:table table:name=\"Bancos\"/></o>"},
              {"META-INF/manifest.xml", manifest}});
}

const QList<D::Column> bankColumns = {{u"IDBanco"_s, D::Long}, {u"Numero"_s, D::Text}, {u"Nombre"_s, D::Text}};

/// A database with this one table.
QByteArray TableOf(const QString& name, const QList<D::Column>& columns, const QList<D::Row>& rows, int said = -1,
                   D::Kind kind = D::Kind::Mdb) {
  D file(kind);
  file.AddTable(name, columns);
  for (const D::Row& row : rows) {
    file.AddRow(row);
  }
  if (said >= 0) {
    file.SayCount(said);
  }
  return file.Bytes();
}

QByteArray Banks(const QList<D::Row>& rows, int said = -1, D::Kind kind = D::Kind::Mdb) {
  return TableOf(u"Bancos"_s, bankColumns, rows, said, kind);
}

/// People with letters and donations, as damage finds them.
QByteArray Office() {
  D file;
  file.AddTable(u"Bancos"_s, bankColumns);
  for (int i = 1; i < 60; ++i) {
    file.AddRow({i, u"%1"_s.arg(i), u"Banco %1"_s.arg(i)});
  }
  file.AddTable(u"Colaboradores"_s,
                {{u"IDColaborador"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"CodProvincia"_s, D::Long}});
  for (int i = 1; i < 60; ++i) {
    file.AddRow({i, u"Ana %1"_s.arg(i), i % 70});
  }
  file.AddTable(u"Donativos"_s, {{u"IDDonativo"_s, D::Long}, {u"CodColaborador"_s, D::Long}, {u"Importe"_s, D::Money}});
  for (int i = 1; i < 60; ++i) {
    file.AddRow({i, 60 - i, qint64(i) * 10'001});
  }
  file.AddTable(u"CartasModelo"_s, {{u"IDCartaModelo"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Contenido"_s, D::Memo}});
  file.AddRow({1, u"Gracias"_s, u"{\\rtf1 "_s + u"á"_s.repeated(10'000) + u"}"_s});
  return file.Bytes();
}

QByteArray Damaged(QByteArray bytes, quint32 seed) {
  QRandomGenerator random(seed);
  for (int i = 0; i < 30; ++i) {
    bytes[qsizetype(random.bounded(quint32(bytes.size())))] = char(random.generate());
  }
  return bytes;
}

/// A letter whose chain of pages leads nowhere.
QByteArray BrokenLetter() {
  QByteArray bytes =
      TableOf(u"CartasModelo"_s, {{u"IDCartaModelo"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Contenido"_s, D::Memo}},
              {{1, u"Rota"_s, u"{\\rtf1 "_s + u"á"_s.repeated(10'000) + u"}"_s}, {2, u"Sana"_s, u"{\\rtf1 }"_s}});
  const QByteArray begin("{\0\\\0r\0t\0f\0", 10);
  const qsizetype compressed = bytes.indexOf("{\\rtf1 ");
  const qsizetype at = compressed >= 0 ? compressed - 2 : bytes.indexOf(begin);
  return bytes.replace(at - 4, 4, "\xFF\xFF\xFF\x7F");
}

/// All that is in a database: the bytes of a file, the rows of one on a server.
QByteArray Content(const support::TestDatabase& database) {
  QByteArray content;
  if (database.Server() == nullptr) {
    for (const QString& ending : {QString(), u"-wal"_s}) {
      QFile file(database.Path() + ending);
      content += file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    return content;
  }
  for (const moving::TableRule& rule : moving::TableRules()) {
    content += database
                   .Query(u"SELECT * FROM [{}] ORDER BY [{}]", adodb::Verbatim{rule.table->name},
                          adodb::Verbatim{rule.table->columns.front().name})
                   .join(u'\n')
                   .toUtf8() +
               '\n';
  }
  return content;
}

qint64 Rows(const support::TestDatabase& database) {
  qint64 rows = 0;
  for (const moving::TableRule& rule : moving::TableRules()) {
    rows += database.Id(u"SELECT COUNT(*) FROM [{}]", adodb::Verbatim{rule.table->name});
  }
  return rows;
}

struct Result {
  moving::ImportReport report;
  QString said;  ///< The report, or the error.
};

Result Import(const support::TestDatabase& database, const QString& path, bool isTrial, bool acceptsLosses) {
  moving::ImportWishes wishes;
  wishes.isTrial = isTrial;
  wishes.acceptsLosses = acceptsLosses;
  try {
    const moving::ImportReport report = moving::Import(path, database.Connection(), wishes);
    return {report, report.Text().replace(u"Se han traído."_s, u"No se ha escrito nada."_s)};
  } catch (const automation::Error& error) {
    return {{}, u"error %1: %2"_s.arg(error.Number()).arg(error.Description())};
  }
}

void Lists() {
  const auto row = [](const char* name, const QByteArray& bytes, const QString& said) {
    QTest::newRow(name) << u"Bancos.csv"_s << bytes << said;
  };
  row("list: row too long", "Numero;Nombre\n1;Uno\n2;Dos;3\n3;Tres;;\n", u"Fila 2 (0002 · Dos): no entra: tiene 3"_s);
  row("list: row too short", "Numero;Nombre;Eliminado\n1;Uno\n",
      u"Fila 1 (0001 · Uno): tiene 2 celdas, y los títulos son 3"_s);
  row("list: headings twice", "Numero;Nombre;NOMBRE\n1;Uno;Otro\n", u"columnas que no se traen: NOMBRE"_s);
  row("list: another column", "Numero;Nombre;Color\n1;Uno;rojo\n", u"columnas que no se traen: Color"_s);
  row("list: no headings", "1;Uno\n2;Dos\n", u"Ninguna tabla del archivo"_s);
  row("list: too many columns", "Numero;Nombre" + QByteArray(300, ';') + "x\n1;Uno\n", u"demasiadas columnas"_s);
  row("list: two encodings",
      "Numero;Nombre\n1;Pe\xC3\xB1"
      "a\n2;Pe\xF1"
      "a\n",
      u"Línea 3 de la lista: sus acentos"_s);
  row("list: NUL", QByteArray("Numero;Nombre\n1;\0\n", 18), u"Línea 2 de la lista: no es texto"_s);
  row("list: open quote", "Numero;Nombre\n1;\"Uno\n2;Dos\n", u"Línea 2 de la lista: unas comillas"_s);
  row("list: only headings", "Numero;Nombre\n", u"0 registros leídos"_s);
  row("list: not a word", "Numero;Nombre;Eliminado\n1;Uno;quizá\n", u"«quizá» no sirve como «Eliminado»"_s);
}

void Sheets() {
  const auto row = [](const char* name, const QByteArray& bytes, const QString& said) {
    QTest::newRow(name) << u"libro.xlsx"_s << bytes << said;
  };
  const QByteArray headings = SheetRow({"Numero", "Nombre"});
  row("sheet: a title above", Workbook(SheetRow({"Bancos y cajas"}) + "<row/>" + headings + SheetRow({"49", "Uno"})),
      u"1 registro leído, 1 nuevo"_s);
  row("sheet: an error", Workbook(headings + SheetRow({"49", "<c t=\"e\"><v>#N/A</v></c>"})),
      u"Fila 1 (0049): «Nombre» es un error"_s);
  row("sheet: nothing calculated", Workbook(headings + SheetRow({"49", "<c><f>A1</f><v></v></c>"})),
      u"«Nombre» es un error o una fórmula sin calcular"_s);
  row("sheet: beside the headings", Workbook(headings + SheetRow({"49", "Uno", "llamar"})),
      u"a la derecha de los títulos no se trae: «llamar»"_s);
  row("sheet: entities", Workbook(headings, "<!DOCTYPE a [<!ENTITY b \"c\">]>"), u"está dañado"_s);
  row("sheet: a document", OpenDocument("text"), u"no una hoja de cálculo"_s);
  row("sheet: another archive", Zip({{"word/document.xml", "<d/>"}}), u"no una hoja de cálculo"_s);
  row("sheet: encrypted", OpenDocument("spreadsheet", "<m:encryption-data/>"), u"protegido"_s);
  row("sheet: encrypted workbook", "\xD0\xCF\x11\xE0", u"quítele la contraseña"_s);
  row("sheet: cut", Workbook(headings).chopped(100), u"está dañado"_s);
}

void Databases() {
  const auto row = [](const char* name, const QByteArray& bytes, const QString& said) {
    QTest::newRow(name) << u"donantes.mdb"_s << bytes << said;
  };
  row("database: rows missing", Banks({{1, u"0001"_s, u"Uno"_s}}, 3), u"faltan 2 registros"_s);
  row("database: no rows", Banks({}), u"0 registros leídos"_s);
  row("database: no key", TableOf(u"Bancos"_s, {{u"Nombre"_s, D::Text}}, {{u"Uno"_s}}), u"Bancos no entra"_s);
  row("database: cut", Banks({{1, u"0001"_s, u"Uno"_s}}).chopped(5000), u""_s);
  row("database: a letter is broken", BrokenLetter(),
      u"IDCartaModelo 1 (Rota): no entra: «Contenido» no se puede leer"_s);
  row("database: encrypted", QByteArray(Banks({}, -1, D::Kind::Accdb)).replace(4096, 90'000, QByteArray(90'000, 'x')),
      u"protegido"_s);
  row("database: numbers twice, negative, none",
      Banks({{5, u"0001"_s, u"Uno"_s},
             {5, u"0002"_s, u"Dos"_s},
             {-3, u"0003"_s, u"Tres"_s},
             {QVariant(), u"4"_s, u"C"_s}}),
      u"números nuevos desde el 1"_s);
  row("database: owners that are not there",
      TableOf(u"Donativos"_s, {{u"IDDonativo"_s, D::Long}, {u"CodColaborador"_s, D::Long}, {u"Importe"_s, D::Money}},
              {{1, 5, qint64(1)}}),
      u"IDDonativo 1: no entra: el registro del que depende no existe"_s);
  row("database: references to nothing",
      TableOf(u"Colaboradores"_s, {{u"IDColaborador"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"CodProvincia"_s, D::Long}},
              {{1, u"Ana"_s, 999}}),
      u"«CodProvincia» apunta a un registro que no existe y queda en blanco (1)"_s);
  row("database: long texts, what no column holds",
      TableOf(u"Bancos"_s,
              {{u"IDBanco"_s, D::Long}, {u"Numero"_s, D::Text}, {u"Nombre"_s, D::Text}, {u"Eliminado"_s, D::Ole}},
              {{1, u"0001"_s, u"x"_s.repeated(200), QByteArray("abc")}}),
      u"entra entero (1)"_s);
  D two;
  two.AddTable(u"Bancos"_s, bankColumns);
  two.AddRow({1, u"0001"_s, u"Uno"_s});
  two.AddTable(u"tblBanco"_s, bankColumns);
  two.AddRow({1, u"0002"_s, u"Dos"_s});
  row("database: two for one", two.Bytes(), u"tblBanco no entra: otra tabla del archivo ocupa su sitio"_s);
  D linked;
  linked.AddLinkedTable(u"Bancos"_s);
  row("database: only linked", linked.Bytes(), u"Bancos está en otro archivo"_s);
  const QByteArray office = Office();
  for (quint32 seed = 0; seed < 12; ++seed) {
    row(qPrintable(u"database: damaged %1"_s.arg(seed)), Damaged(office, seed), QString());
  }
}

}  // namespace

/// Whatever a file is: a trial writes nothing, and what it says is what the import does.
class tst_bad_files : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TheTrialIsTheImport_data();
  void TheTrialIsTheImport();
  void AnotherFileThanWasSeen();
};

void tst_bad_files::TheTrialIsTheImport_data() {
  QTest::addColumn<QString>("name");
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<QString>("said");
  Lists();
  Sheets();
  Databases();
}

void tst_bad_files::TheTrialIsTheImport() {
  QFETCH(QString, name);
  QFETCH(QByteArray, bytes);
  QFETCH(QString, said);
  const support::TestDatabase database;
  const QTemporaryDir folder;
  QFile file(folder.filePath(name));
  QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  file.close();
  QVERIFY(database.Connection().State() != 0);
  const qint64 rows = Rows(database);
  const QByteArray before = Content(database);

  const Result trial = Import(database, file.fileName(), true, true);
  QVERIFY2(trial.said.contains(said), qPrintable(trial.said));
  QVERIFY(Content(database) == before);
  if (trial.report.HasLosses()) {
    QVERIFY(!Import(database, file.fileName(), false, false).report.isWritten);
    QVERIFY(Content(database) == before);
  }
  const Result import = Import(database, file.fileName(), false, true);
  QCOMPARE(import.said, trial.said);
  QCOMPARE(import.report.seal, trial.report.seal);
  QCOMPARE(Rows(database) - rows, trial.report.Sum(&moving::TableReport::created));
  if (import.report.isWritten) {
    QVERIFY(database::CheckDatabase(database.ConnectionString()).IsSound());
  } else {
    QVERIFY(Content(database) == before);
  }
}

// The same rows with other values.
void tst_bad_files::AnotherFileThanWasSeen() {
  const support::TestDatabase database;
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"Bancos.csv"_s));
  moving::ImportWishes wishes;
  for (const char* text : {"Numero;Nombre\n1;Uno\n", "Numero;Nombre\n1;Dos\n"}) {
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
    file.close();
    wishes.isTrial = wishes.seen.isEmpty();
    try {
      wishes.seen = moving::Import(file.fileName(), database.Connection(), wishes).seal;
      QVERIFY(wishes.isTrial);
    } catch (const automation::Error& error) {
      QVERIFY2(error.Description().contains(u"han cambiado desde que se vio"_s), error.what());
    }
  }
  QCOMPARE(database.Query(u"SELECT Nombre FROM Bancos"), QStringList());
}

KEL_TEST(tst_bad_files);

#include "tst_bad_files.moc"
