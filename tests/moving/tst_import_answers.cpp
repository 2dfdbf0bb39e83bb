#include "moving/Import.h"
#include "moving/NameMatch.h"
#include "platform/automation/Error.h"
#include "support/DesktopFile.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using support::DesktopFile;

namespace {

QString WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? path : QString();
}

/// What a table of the file has to say, a line each.
QString Lines(const moving::ImportReport& report, const QString& table) {
  QStringList lines;
  for (const moving::TableReport& each : report.tables) {
    for (const moving::Finding& finding : each.findings) {
      lines += each.here == table ? finding.Line() : QString();
    }
  }
  lines.removeAll(QString());
  return lines.join(u'\n');
}

QString Counts(const moving::ImportReport& report) {
  const auto count = [&](qint64 moving::TableReport::*which) { return QString::number(report.Sum(which)); };
  using T = moving::TableReport;
  return u"%1 new, %2 known, %3 changed, %4 revived, %5 out, %6 skipped"_s.arg(count(&T::created), count(&T::known),
                                                                               count(&T::changed), count(&T::revived),
                                                                               count(&T::leftOut), count(&T::skipped));
}

/// What a person is asked about: two banks with one number, a name that is taken, a country under another name, an
/// administrator, somebody alike.
QByteArray Doubts() {
  using D = DesktopFile;
  D file;
  file.AddTable(u"Paises"_s, {{u"IDPais"_s, D::Long}, {u"Nombre"_s, D::Text}});
  file.AddRow({7, u"Holanda"_s});
  file.AddTable(u"Provincias"_s, {{u"IDProvincia"_s, D::Long}, {u"CodPais"_s, D::Long}, {u"Nombre"_s, D::Text}});
  file.AddRow({70, 7, u"Frisia"_s});
  file.AddTable(u"Bancos"_s, {{u"IDBanco"_s, D::Long}, {u"Numero"_s, D::Text}, {u"Nombre"_s, D::Text}});
  file.AddRow({40, u"0777"_s, u"Banco del Olivar"_s});
  file.AddRow({41, u"777"_s, u"Caja de la Ribera"_s});
  file.AddTable(u"Sucursales"_s,
                {{u"IDSucursal"_s, D::Long}, {u"codBanco"_s, D::Long}, {u"Codigo"_s, D::Text}, {u"Nombre"_s, D::Text}});
  file.AddRow({5, 41, u"0001"_s, u"Plaza"_s});
  file.AddTable(u"Usuarios"_s, {{u"IDUsuario"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Administrador"_s, D::Bool}});
  file.AddRow({9, u"jefa"_s, true});
  file.AddTable(u"TipoDonativos"_s, {{u"IDTipoDonativo"_s, D::Long}, {u"Nombre"_s, D::Text}});
  file.AddRow({3, u"Obras"_s});
  file.AddTable(u"Colaboradores"_s,
                {{u"IDColaborador"_s, D::Long}, {u"Nombre"_s, D::Text}, {u"Apellido1"_s, D::Text}, {u"CP"_s, D::Text}});
  file.AddRow({12, u"LUIS"_s, u"Peña"_s, u"28001"_s});
  return file.Bytes();
}

}  // namespace

/// Questions of an import, their answers, and what else a person says about a file.
class tst_import_answers : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Questions_data();
  void Questions();
  void FilesOfAnswers_data();
  void FilesOfAnswers();
  void ListsChangeWhatIsHere();
  void WhatIsDeletedThere();
  void TheKindOfOffice();
  void SheetsAndForms();
  void WhatWasSeenIsWhatComesIn();
};

void tst_import_answers::Questions_data() {
  QTest::addColumn<QStringList>("answers");
  QTest::addColumn<QString>("result");
  const QString untouched = u"Holanda|0777|-|Falso|OBRAS,Obras (2)|2"_s;
  QTest::newRow("as proposed") << QStringList() << untouched;
  QTest::newRow("the same number is one bank")
      << QStringList{u"Bancos 41 numero=unir"_s} << u"Holanda|0777|Banco del Olivar|Falso|OBRAS,Obras (2)|2"_s;
  QTest::newRow("a country has another name here")
      << QStringList{u"Paises 7 igual=NL"_s} << u"Países Bajos|0777|-|Falso|OBRAS,Obras (2)|2"_s;
  QTest::newRow("an administrator") << QStringList{u"Usuarios 9 administrador=si"_s}
                                    << u"Holanda|0777|-|Verdadero|OBRAS,Obras (2)|2"_s;
  QTest::newRow("the same name is the same")
      << QStringList{u"TipoDonativos * igual=HERE"_s} << u"Holanda|0777|-|Falso|OBRAS|2"_s;
  QTest::newRow("who is alike is the same")
      << QStringList{u"Colaboradores 12 igual=HERE"_s} << u"Holanda|0777|-|Falso|OBRAS,Obras (2)|1"_s;
  QTest::newRow("no such answer") << QStringList{u"Bancos 41 numero=nunca"_s} << u"error 5"_s;
}

void tst_import_answers::Questions() {
  QFETCH(QStringList, answers);
  QFETCH(QString, result);
  const support::TestDatabase database;
  database.Execute(u"INSERT INTO TipoDonativos (Nombre) VALUES ('obras')");
  database.Execute(u"UPDATE TipoDonativos SET Nombre='OBRAS'");
  database.Execute(u"INSERT INTO Colaboradores (Nombre, Apellido1, CP) VALUES ('Luis', 'peña', '28001')");
  const int dutch = database.Id(u"SELECT IDPais FROM Paises WHERE CodigoISO='NL'");
  const QString path = WriteFile(database.Path(u"a.mdb"_s), Doubts());
  moving::ImportWishes wishes;
  for (const QString& line : std::as_const(answers)) {
    QString answer = line.section(u'=', 1);
    answer = answer == u"NL"     ? QString::number(dutch)
             : answer == u"HERE" ? QString::number(database.Id(u"SELECT MIN(IDTipoDonativo) FROM TipoDonativos"))
                                 : answer;
    wishes.answers.Give(line.section(u'=', 0, 0), answer);
  }
  if (const int error = support::ErrorOf([&] { moving::Import(path, database.Connection(), wishes); }); error != 0) {
    QCOMPARE(u"error %1"_s.arg(error), result);
    return;
  }
  const auto first = [](const QStringList& rows) { return rows.isEmpty() ? u"-"_s : rows.join(u','); };
  const QStringList facts = {
      first(database.Query(u"SELECT p.Nombre FROM Provincias AS v INNER JOIN Paises AS p ON v.CodPais=p.IDPais WHERE "
                           u"v.Nombre='Frisia'")),
      first(database.Query(u"SELECT Numero FROM Bancos WHERE Eliminado=0")),
      first(database.Query(u"SELECT b.Nombre FROM Sucursales AS s INNER JOIN Bancos AS b ON s.codBanco=b.IDBanco WHERE "
                           u"b.Eliminado=0")),
      first(database.Query(u"SELECT Administrador FROM Usuarios WHERE Nombre='jefa'")),
      first(database.Query(u"SELECT Nombre FROM TipoDonativos ORDER BY IDTipoDonativo")),
      first(database.Query(u"SELECT COUNT(*) FROM Colaboradores"))};
  QCOMPARE(facts.join(u'|'), result);
}

void tst_import_answers::FilesOfAnswers_data() {
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<QString>("answer");
  QTest::newRow("a row") << QByteArray("# remark\n\n  Bancos 41 numero = unir \r\n") << u"unir"_s;
  QTest::newRow("all rows, any case") << QByteArray("bancos * NUMERO=eliminado") << u"eliminado"_s;
  QTest::newRow("a row before all") << QByteArray("Bancos 41 numero=unir\nBancos * numero=eliminado") << u"unir"_s;
  QTest::newRow("another row") << QByteArray("Bancos fila-41 numero=unir") << QString();
  QTest::newRow("no question") << QByteArray("Bancos 41 nombre=unir") << u"error 5"_s;
  QTest::newRow("no answer") << QByteArray("Bancos 41 numero=") << u"error 5"_s;
}

void tst_import_answers::FilesOfAnswers() {
  QFETCH(QByteArray, text);
  QFETCH(QString, answer);
  const QTemporaryDir folder;
  const QString path = WriteFile(folder.filePath(u"respuestas.txt"_s), text);
  QString read;
  const int error = support::ErrorOf([&] { read = moving::Answers::Read(path).Of(u"Bancos"_s, u"41"_s, u"numero"_s); });
  QCOMPARE(error == 0 ? read : u"error %1"_s.arg(error), answer);
}

void tst_import_answers::ListsChangeWhatIsHere() {
  const support::TestDatabase database;
  database.Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES ('0001', 'Banco Viejo')");
  database.Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES ('0002', 'Banco Igual')");
  database.Execute(u"INSERT INTO TipoSuscripciones (Nombre, Eliminado) VALUES ('Bienal', -1)");
  const QString path = WriteFile(database.Path(u"bancos.csv"_s),
                                 "Numero;Nombre\n1;Banco Nuevo\n0002;Banco Igual\n3;Otro\n0001;Banco Tercero\n2;\n");
  // A list with nothing in it but one other value is looked at, too.
  const QString other = WriteFile(database.Path(u"otro.csv"_s), "Numero;Nombre\n1;Banco Nuevo\n");
  moving::ImportWishes trial;
  trial.isTrial = true;
  trial.names.tables.insert(u"*"_s, u"Bancos"_s);
  QCOMPARE(Counts(moving::Import(other, database.Connection(), trial)),
           u"0 new, 1 known, 1 changed, 0 revived, 0 out, 0 skipped"_s);
  moving::ImportWishes wishes;
  wishes.answers.Give(u"Bancos fila-1 cambios"_s, u"aqui"_s);
  const moving::ImportReport kept = moving::Import(path, database.Connection(), wishes);
  QCOMPARE(Counts(kept), u"1 new, 4 known, 0 changed, 0 revived, 0 out, 0 skipped"_s);
  const moving::ImportReport report = moving::Import(path, database.Connection(), {});
  QCOMPARE(Counts(report), u"0 new, 5 known, 1 changed, 0 revived, 0 out, 0 skipped"_s);
  QCOMPARE(
      Lines(report, u"Bancos"_s),
      u"Fila 1 (0001 · Banco Nuevo): Nombre «Banco Nuevo»; aquí, Nombre «Banco Viejo»; toma lo del archivo [Bancos "
      "fila-1 cambios=archivo]\nFila 4 (0001 · Banco Tercero): está dos veces en el archivo; vale la primera\n"
      "Fila 5 (0002): está dos veces en el archivo; vale la primera"_s);
  QCOMPARE(database.Query(u"SELECT Numero, Nombre FROM Bancos ORDER BY Numero"),
           QStringList({u"0001|Banco Nuevo"_s, u"0002|Banco Igual"_s, u"0003|Otro"_s}));
  QCOMPARE(moving::Import(path, database.Connection(), {}).Written(), 0);
  // An empty cell changes nothing.
  const QString empty = WriteFile(database.Path(u"vacia.csv"_s), "Numero;Nombre\n2;\n");
  moving::ImportWishes banks;
  banks.names.tables.insert(u"*"_s, u"Bancos"_s);
  QCOMPARE(moving::Import(empty, database.Connection(), banks).Written(), 0);
  // What is deleted here stays so, unless somebody says otherwise.
  const QString kinds = WriteFile(database.Path(u"TipoSuscripciones.csv"_s), "Nombre;Otra\nBienal;x\n");
  moving::ImportWishes back;
  back.names.tables.insert(u"TipoSuscripciones"_s, u"TipoSuscripciones"_s);
  QCOMPARE(Counts(moving::Import(kinds, database.Connection(), back)),
           u"0 new, 1 known, 0 changed, 0 revived, 0 out, 0 skipped"_s);
  back.answers.Give(u"TipoSuscripciones * estado"_s, u"vuelve"_s);
  moving::Import(kinds, database.Connection(), back);
  QCOMPARE(database.Query(u"SELECT Eliminado FROM TipoSuscripciones WHERE Nombre='Bienal'"), QStringList(u"Falso"_s));
}

void tst_import_answers::WhatIsDeletedThere() {
  using D = DesktopFile;
  D file;
  const QList<D::Column> bank = {
      {u"IDBanco"_s, D::Long}, {u"Numero"_s, D::Text}, {u"Nombre"_s, D::Text}, {u"Eliminado"_s, D::Bool}};
  file.AddTable(u"Bancos"_s, bank);
  file.AddRow({1, u"0001"_s, u"Usado"_s, true});
  file.AddRow({2, u"0002"_s, u"Sin uso"_s, true});
  file.AddRow({3, u"0003"_s, u"Vivo"_s, false});
  file.AddRow({4, u"0004"_s, u"De una eliminada"_s, true});
  file.AddTable(
      u"Sucursales"_s,
      {{u"IDSucursal"_s, D::Long}, {u"codBanco"_s, D::Long}, {u"Codigo"_s, D::Text}, {u"Eliminado"_s, D::Bool}});
  file.AddRow({1, 1, u"0001"_s, false});
  file.AddRow({2, 4, u"0001"_s, true});
  const support::TestDatabase database;
  const QString path = WriteFile(database.Path(u"a.mdb"_s), file.Bytes());
  moving::ImportWishes wishes;
  wishes.skipsDeleted = true;
  QCOMPARE(Counts(moving::Import(path, database.Connection(), wishes)),
           u"3 new, 0 known, 0 changed, 0 revived, 0 out, 3 skipped"_s);
  QCOMPARE(database.Query(u"SELECT Nombre FROM Bancos ORDER BY Nombre"), QStringList({u"Usado"_s, u"Vivo"_s}));
  QCOMPARE(Counts(moving::Import(path, database.Connection(), {})),
           u"3 new, 3 known, 0 changed, 0 revived, 0 out, 0 skipped"_s);
}

void tst_import_answers::TheKindOfOffice() {
  using D = DesktopFile;
  const support::TestDatabase database;
  const QStringList before = database.Query(u"SELECT Tipo, velumar, NombreEntidad FROM configuracion");
  D file;
  file.AddTable(
      u"configuracion"_s,
      {{u"IDConfiguracion"_s, D::Long}, {u"Tipo"_s, D::Int}, {u"velumar"_s, D::Bool}, {u"NombreEntidad"_s, D::Text}});
  file.AddRow({9, 1, true, u"Otra"_s});
  const QString path = WriteFile(database.Path(u"a.mdb"_s), file.Bytes());
  const auto now = [&] { return database.Query(u"SELECT Tipo, velumar FROM configuracion").join(u'/'); };
  // Who has worked here says so.
  database.Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES ('0001', 'Uno')");
  QCOMPARE(moving::Import(path, database.Connection(), {}).Written(), 0);
  QCOMPARE(database.Query(u"SELECT Tipo, velumar, NombreEntidad FROM configuracion"), before);
  moving::ImportWishes wishes;
  wishes.answers.Give(u"configuracion 9 cambios"_s, u"archivo"_s);
  const moving::ImportReport report = moving::Import(path, database.Connection(), wishes);
  QVERIFY2(report.Text().contains(u"columnas que no se traen: NombreEntidad"_s), qPrintable(report.Text()));
  QCOMPARE(now(), u"1|Verdadero"_s);
  // It is proposed while nobody has.
  database.Execute(u"UPDATE configuracion SET Tipo=0, velumar=0");
  database.Execute(u"DELETE FROM Bancos");
  moving::Import(path, database.Connection(), {});
  QCOMPARE(now(), u"1|Verdadero"_s);
}

void tst_import_answers::SheetsAndForms() {
  using D = DesktopFile;
  D file;
  file.AddTable(u"Bancos"_s, {{u"IDBanco"_s, D::Long}, {u"Numero"_s, D::Text}, {u"Nombre"_s, D::Text}});
  file.AddRow({1, u"0001"_s, u"Uno"_s});
  file.AddTable(u"Diocesis"_s, {{u"IDDiocesis"_s, D::Long}, {u"Nombre"_s, D::Text}});
  file.AddRow({1, u"Una"_s});
  const support::TestDatabase database;
  const QString path = WriteFile(database.Path(u"a.mdb"_s), file.Bytes());
  moving::ImportWishes wishes;
  wishes.isTrial = true;
  for (const QString& sheet : {u"bancos"_s, u"1"_s}) {
    wishes.read.sheet = sheet;
    const moving::ImportReport report = moving::Import(path, database.Connection(), wishes);
    QCOMPARE(report.tables.size(), 1);
    QCOMPARE(report.tables.constFirst().here, u"Bancos"_s);
  }
  wishes.read.sheet = u"3"_s;
  QCOMPARE(support::ErrorOf([&] { moving::Import(path, database.Connection(), wishes); }), 5);
  // A name that another program leaves beside a file that it has open.
  wishes.read.sheet.clear();
  QVERIFY(moving::Import(path, database.Connection(), wishes).warnings.isEmpty());
  WriteFile(database.Path(u"a.ldb"_s), "x");
  QCOMPARE(moving::Import(path, database.Connection(), wishes).warnings.size(), 1);

  // A list is read as a person says, whatever it looks like.
  const QString list = WriteFile(database.Path(u"Bancos.csv"_s), "Numero,Nombre\n1,Peña\n");
  moving::ImportWishes form;
  form.read.list = {u"windows-1252"_s, u','};
  moving::Import(list, database.Connection(), form);
  QCOMPARE(database.Query(u"SELECT Numero, Nombre FROM Bancos"), QStringList(u"0001|PeÃ±a"_s));
  form.read.list.separator = u';';
  QCOMPARE(support::ErrorOf([&] { moving::Import(list, database.Connection(), form); }), 5);
  form.read.list.separator = u',';
  // Nothing of a table that does not come in, though its name fits.
  form.names.tables.insert(u"Bancos"_s, u"-"_s);
  QCOMPARE(support::ErrorOf([&] { moving::Import(list, database.Connection(), form); }), 5);
}

void tst_import_answers::WhatWasSeenIsWhatComesIn() {
  const support::TestDatabase database;
  const QString path = WriteFile(database.Path(u"a.mdb"_s), Doubts());
  moving::ImportWishes wishes;
  wishes.isTrial = true;
  const QString seal = moving::Import(path, database.Connection(), wishes).seal;
  wishes.isTrial = false;
  wishes.seen = seal;
  // Somebody added what the file has, too.
  database.Execute(u"INSERT INTO Bancos (Numero, Nombre) VALUES ('0777', 'Banco del Olivar')");
  const auto import = [&] { return support::ErrorOf([&] { moving::Import(path, database.Connection(), wishes); }); };
  QCOMPARE(import(), 5);
  QCOMPARE(database.Query(u"SELECT Nombre FROM Usuarios WHERE Nombre='jefa'"), QStringList());
  database.Execute(u"DELETE FROM Bancos");
  // Or took a number of the file.
  database.Execute(u"INSERT INTO Colaboradores (IDColaborador, Nombre) VALUES (12, 'Otra')");
  QCOMPARE(import(), 5);
  database.Execute(u"DELETE FROM Colaboradores");
  // Another answer is another import, too.
  wishes.answers.Give(u"Usuarios * administrador"_s, u"si"_s);
  QCOMPARE(import(), 5);
  wishes.answers = {};
  // So is another file, though every row in it has the same fate.
  const QByteArray before = Doubts();
  WriteFile(path, QByteArray(before).replace("Plaza", "Playa"));
  QCOMPARE(import(), 5);
  WriteFile(path, before);
  QCOMPARE(import(), 0);
  QCOMPARE(database.Query(u"SELECT Administrador FROM Usuarios WHERE Nombre='jefa'"), QStringList(u"Falso"_s));
}

KEL_TEST(tst_import_answers);

#include "tst_import_answers.moc"
