#include "database/Schema.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QTest>

#include <algorithm>

using adodb::Verbatim;
using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// The dialect of the statements: text in, rows or errors out, on a real file.
class tst_dialect : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void Statements_data();
  void Statements();
  void Conversions_data();
  void Conversions();
  void Refusals_data();
  void Refusals();
  void LongLists();
  void TextsAreKept_data();
  void TextsAreKept();
  void LongTextsFit();
  void Labels();
  void TypesOfValues();

 private:
  std::unique_ptr<TestDatabase> m_database;
};

namespace {

void Row(const char* name, const char* statements, const char* rows) {
  QTest::newRow(name) << QString::fromUtf8(statements).split(u" ;; "_s) << QString::fromUtf8(rows);
}

// A unique one, or one over more than the text and the mark of deletion.
bool IsInWideIndex(const database::Table& table, const database::Column& column) {
  return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const database::Index& index) {
    const qsizetype others = index.columns.size() - (index.columns.contains(u"Eliminado") ? 2 : 1);
    return index.columns.contains(column.name) && (index.unique || others > 0);
  });
}

}  // namespace

void tst_dialect::Statements_data() {
  QTest::addColumn<QStringList>("statements");
  QTest::addColumn<QString>("rows");
  Row("home country", "SELECT IDPais FROM Paises WHERE Paises.Eliminado=0 AND Paises.Nombre='España'", "35");
  Row("ucase", "SELECT idpais FROM paises WHERE eliminado=false AND ucase(Nombre)='ESPAÑA'", "35");
  Row("ucase as a value", "SELECT ucase(Nombre) FROM Paises WHERE IDPais=35", "ESPAÑA");
  Row("province of the country",
      "SELECT Provincias.IDProvincia FROM Provincias INNER JOIN Paises ON Provincias.codPais=Paises.IDPais WHERE "
      "Provincias.Eliminado=0 AND Paises.Eliminado=0 AND Provincias.Nombre='Madrid' AND Provincias.codPais=35",
      "28");
  Row("accents count, case does not", "SELECT IDProvincia FROM Provincias WHERE Nombre='ALAVA' OR Nombre='áLAVA'", "1");
  Row("trailing blanks don't count", "SELECT IDProvincia FROM Provincias WHERE Nombre='madrid   '", "28");
  Row("names of any case", "select IDPROVINCIA from [provincias] where [PROVINCIAS].[nombre]='Soria'", "42");
  Row("spanish order",
      "INSERT INTO Cabeceras(Nombre) VALUES('ñu') ;; INSERT INTO Cabeceras(Nombre) VALUES('nz') ;; "
      "INSERT INTO Cabeceras(Nombre) VALUES('oso') ;; INSERT INTO Cabeceras(Nombre) VALUES('Árbol') ;; "
      "INSERT INTO Cabeceras(Nombre) VALUES('arco') ;; INSERT INTO Cabeceras(Nombre) VALUES('ARBUSTO') ;; "
      "SELECT Nombre FROM Cabeceras ORDER BY Nombre",
      "Árbol/ARBUSTO/arco/nz/ñu/oso");
  Row("order of an expression",
      "INSERT INTO Cabeceras(Nombre) VALUES('ñu') ;; INSERT INTO Cabeceras(Nombre) VALUES('Oso') ;; "
      "INSERT INTO Cabeceras(Nombre) VALUES('n') ;; SELECT Nombre FROM Cabeceras ORDER BY Nombre & 'x' DESC",
      "Oso/ñu/n");
  Row("union without duplicates",
      "SELECT IDPais FROM Paises WHERE IDPais=35 UNION SELECT CodPais FROM Provincias WHERE CodPais=35", "35");
  Row("union all keeps equal rows",
      "SELECT CodPais FROM Provincias WHERE IDProvincia<3 UNION ALL SELECT IDPais FROM Paises WHERE IDPais=35",
      "35/35/35");
  Row("union in order",
      "SELECT 'b' AS t FROM Paises WHERE IDPais=35 UNION SELECT 'a' FROM Paises WHERE IDPais=35 ORDER BY t", "a/b");
  Row("the selects of a union all in turn, each in its table's order",
      "UPDATE Provincias SET Nombre=Nombre & 'x' WHERE Prefijo='01' ;; "
      "SELECT Prefijo FROM Provincias WHERE Prefijo<'04' UNION ALL SELECT Nombre FROM Provincias WHERE Prefijo<'03'",
      "01/02/03/Álavax/Albacete");
  Row("what is alike in a union's order goes by the other columns",
      "SELECT CodPais AS a, IDProvincia FROM Provincias WHERE Prefijo IN ('02','05') UNION ALL "
      "SELECT CodPais, IDProvincia FROM Provincias WHERE Prefijo IN ('04','01') ORDER BY a",
      "35|1/35|2/35|4/35|5");
  Row("a collaborator without a country is neither at home nor abroad",
      "INSERT INTO Colaboradores(Nombre) VALUES('Sin') ;; INSERT INTO Colaboradores(Nombre,codpais) VALUES('No',NULL) "
      ";; INSERT INTO Colaboradores(Nombre,codpais) VALUES('Fuera',1) ;; "
      "SELECT Nombre FROM Colaboradores WHERE CodPais = 35 OR CodPais <> 35",
      "Fuera");
  Row("a deleted bank's number is free",
      "INSERT INTO Bancos(Numero,Eliminado) VALUES('0001',-1) ;; INSERT INTO Bancos(Numero) VALUES('0001') ;; "
      "SELECT COUNT(*) FROM Bancos WHERE Numero='0001'",
      "2");
  Row("booleans",
      "INSERT INTO TipoDonativos (Nombre, TipoA, Modelo182, GenerarRecibo) VALUES (\"a \"\"b\"\"\", -1, True, 7) ;; "
      "SELECT Nombre, TipoA, Modelo182, GenerarRecibo, Eliminado FROM TipoDonativos WHERE Modelo182=-1 AND "
      "GenerarRecibo=True AND TipoA<>false AND Eliminado=False",
      "a \"b\"|Verdadero|Verdadero|Verdadero|Falso");
  Row("double quotes are texts", "SELECT COUNT(*) FROM Paises WHERE Nombre=\"Nombre\"", "0");
  Row("number glued to a keyword", "SELECT COUNT(*) AS n FROM Provincias WHERE CodPais=35GROUP BY CodPais", "52");
  Row("number glued to AND", "SELECT Nombre FROM Provincias WHERE IDProvincia=5AND CodPais=35", "Ávila");
  Row("text against a key", "SELECT Nombre FROM Provincias WHERE IDProvincia='5'", "Ávila");
  Row("position in ORDER BY", "SELECT TOP 2 IDProvincia, Nombre FROM Provincias ORDER BY 1 DESC",
      "52|Melilla/51|Ceuta");
  // Statements of one shape share what was prepared for the first, but for what belongs to the statement itself.
  Row("another position in ORDER BY",
      "SELECT IDProvincia, Nombre FROM Provincias WHERE IDProvincia IN (28,33) ORDER BY 1 ;; "
      "SELECT IDProvincia, Nombre FROM Provincias WHERE IDProvincia IN (28,33) ORDER BY 2",
      "33|Asturias/28|Madrid");
  Row("the same position, other values",
      "SELECT IDProvincia, Nombre FROM Provincias WHERE IDProvincia IN (28,33) ORDER BY 2 ;; "
      "SELECT IDProvincia, Nombre FROM Provincias WHERE IDProvincia IN (8,1) ORDER BY 2",
      "1|Álava/8|Barcelona");
  Row("another position in the ORDER BY of a union",
      "SELECT IDPais, Nombre FROM Paises WHERE IDPais=35 UNION SELECT IDProvincia, Nombre FROM Provincias WHERE "
      "IDProvincia=28 ORDER BY 1 ;; SELECT IDPais, Nombre FROM Paises WHERE IDPais=35 UNION SELECT IDProvincia, Nombre "
      "FROM Provincias WHERE IDProvincia=28 ORDER BY 2",
      "35|España/28|Madrid");
  Row("another position in GROUP BY",
      "SELECT Linea1, COUNT(*) FROM Cabeceras GROUP BY 1 ;; SELECT Linea1, COUNT(*) FROM Cabeceras GROUP BY 3",
      "error -2147217900");
  Row("groups of an expression with values in it",
      "SELECT LEFT(Nombre, 1) & '-', COUNT(*) FROM Provincias WHERE IDProvincia<30 GROUP BY LEFT(Nombre, 1) & '-' "
      "HAVING LEFT(Nombre, 1) & '-'<>'A-' AND COUNT(*)>1 ORDER BY COUNT(*) DESC, LEFT(Nombre, 1) & '-'",
      "C-|6/G-|4/L-|4/B-|3/Á-|2/H-|2/M-|2");
  Row("groups of one shape with other values",
      "SELECT MAX(IDProvincia), LEFT(Prefijo, 1) FROM Provincias GROUP BY LEFT(Prefijo, 1) ;; "
      "SELECT MAX(IDProvincia), LEFT(Prefijo, 2) FROM Provincias GROUP BY LEFT(Prefijo, 1)",
      "error -2147217900");
  Row("distinct in the order of an expression",
      "SELECT DISTINCT IDPais MOD 3 FROM Paises WHERE IDPais<>3 ORDER BY IDPais MOD 3 DESC", "2/1/0");
  Row("another number of rows",
      "SELECT TOP 2 IDProvincia FROM Provincias ORDER BY IDProvincia ;; "
      "SELECT TOP 3 IDProvincia FROM Provincias ORDER BY IDProvincia",
      "1/2/3");
  Row("another sign, another kind of number",
      "SELECT COUNT(*) FROM Provincias WHERE IDProvincia>=-1 ;; SELECT COUNT(*) FROM Provincias WHERE "
      "IDProvincia>=-1.5 "
      ";; SELECT COUNT(*) FROM Provincias WHERE IDProvincia>='51,5'",
      "1");
  Row("alias in ORDER BY", "SELECT IDProvincia AS n FROM Provincias WHERE IDProvincia<3 ORDER BY n DESC", "2/1");
  Row("distinct", "SELECT DISTINCT CodPais AS Pais FROM Provincias", "35");
  Row("maximum of an empty table", "SELECT MAX(Bancos.IDBanco) AS MaxID FROM Bancos", "NULL");
  Row("trailing semicolon", "SELECT 1 ; ", "1");
  Row("in and between",
      "SELECT IDProvincia FROM Provincias WHERE Nombre IN ('MADRID','soria') AND IDProvincia "
      "BETWEEN 1 AND '50' ORDER BY IDProvincia",
      "28/42");
  Row("a backslash in LIKE is a backslash",
      "INSERT INTO Cabeceras(Nombre) VALUES('a\\b') ;; SELECT COUNT(*) FROM Cabeceras WHERE Nombre LIKE '%a\\b' AND "
      "Nombre LIKE 'a\\_'",
      "1");
  Row("divided by zero is Null", "SELECT 1/(IDPais-35), 7\\(IDPais-35), 7 MOD (IDPais-35) FROM Paises WHERE IDPais=35",
      "NULL|NULL|NULL");
  Row("like folds every case", "SELECT IDPais FROM Paises WHERE Nombre LIKE '%PAÑ%'", "35");
  Row("like one character", "SELECT IDPais FROM Paises WHERE Nombre LIKE 'ESPAÑ_' OR Nombre LIKE 'españa_'", "35");
  Row("a value before its column", "SELECT IDProvincia FROM Provincias WHERE 51<IDProvincia", "52");
  Row("texts of a subquery",
      "SELECT COUNT(*) FROM Usuarios WHERE (SELECT Nombre FROM Paises WHERE IDPais=35) IN ('ESPAÑA ') AND "
      "(SELECT Nombre FROM Paises WHERE IDPais=35) BETWEEN 'ESPAÑA' AND 'españa' AND "
      "(SELECT Nombre FROM Paises WHERE IDPais=35)='ESPAÑA'",
      "1");
  Row("not", "SELECT COUNT(*) FROM Provincias WHERE NOT Eliminado AND NOT (IDProvincia<>5)", "1");
  Row("a Boolean alone is a condition",
      "INSERT INTO Cabeceras(Nombre,Eliminado) VALUES('a',-1) ;; INSERT INTO Cabeceras(Nombre) VALUES('b') ;; "
      "SELECT (SELECT MAX(Nombre) FROM Cabeceras WHERE Eliminado), Nombre FROM Cabeceras WHERE NOT Eliminado",
      "a|b");
  Row("exists", "SELECT IDPais FROM Paises WHERE EXISTS (SELECT IDProvincia FROM Provincias WHERE CodPais=IDPais)",
      "35");
  Row("a key is never used twice",
      "INSERT INTO Bancos(Nombre) VALUES('a') ;; DELETE FROM Bancos ;; INSERT INTO Bancos(Nombre) VALUES('b') ;; "
      "SELECT MAX(IDBanco) FROM Bancos",
      "2");
  Row("money sums exactly",
      "INSERT INTO Donativos(Importe) VALUES('0,1') ;; INSERT INTO Donativos(Importe) VALUES('0,2') ;; "
      "INSERT INTO Donativos(Importe) VALUES('1.000,0001') ;; SELECT SUM(Importe) AS s FROM Donativos WHERE "
      "(SELECT SUM(Importe) FROM Donativos)='1.000,3001'",
      "1000,3001");
  Row("counts and sums of groups",
      "INSERT INTO Suscripciones(CodTipoSuscripcion,Importe) VALUES(2,'1,5') ;; "
      "INSERT INTO Suscripciones(CodTipoSuscripcion,Importe) VALUES(2,'2') ;; "
      "INSERT INTO Suscripciones(CodTipoSuscripcion,Importe) VALUES(1,'7') ;; "
      "SELECT CodTipoSuscripcion, COUNT(*) AS Contador, SUM(Importe) AS Total FROM Suscripciones WHERE Eliminado = "
      "0GROUP BY CodTipoSuscripcion HAVING COUNT(*)>1",
      "2|2|3,5");
  Row("the sum of no amounts",
      "SELECT SUM(Importe) FROM Paises LEFT JOIN Donativos ON Donativos.CodColaborador=Paises.IDPais", "NULL");
  Row("arithmetic with a text",
      "INSERT INTO Suscripciones(NumeroEjemplares) VALUES(3) ;; UPDATE Suscripciones SET Importe = NumeroEjemplares * "
      "'1.234,10' WHERE IDSuscripcion IN (SELECT IDSuscripcion FROM Suscripciones) ;; SELECT Importe FROM "
      "Suscripciones "
      "WHERE Importe=3702.3",
      "3702,3");
  Row("insert from a select",
      "INSERT INTO Cabeceras(Nombre, Linea1) SELECT Nombre, IDPais FROM Paises WHERE IDPais=35 ;; "
      "SELECT Nombre, Linea1 FROM Cabeceras",
      "España|35");
  Row("a text column into a number",
      "INSERT INTO Cabeceras(Nombre) VALUES('1.234,5') ;; INSERT INTO Donativos(Importe) SELECT Nombre FROM Cabeceras "
      ";; SELECT Importe FROM Donativos",
      "1234,5");
  Row("plus joins texts", "SELECT Nombre + ' y ' + 'más' FROM Paises WHERE IDPais=35", "España y más");
  Row("null in a concatenation", "SELECT Nombre & NULL & 5, NULL & Nombre FROM Paises WHERE IDPais=35",
      "España5|España");
  Row("iif and nz",
      "SELECT IIF(IDPais=35, 'sí', 'no'), NZ(NULL, 'vacío'), LEN(Nombre), LEFT(Nombre, 2) FROM Paises "
      "WHERE IDPais=35",
      "sí|vacío|6|Es");
  Row("alternatives have the type that fits all of them",
      "SELECT IIF(IDPais=35, 35, Eliminado), IIF(IDPais=1, Eliminado, 35), NZ(NULL, 35), COALESCE(Eliminado, 7, 1.5), "
      "IIF(IDPais=35, Eliminado, NULL), NZ(NULL, True), IIF(IDPais=35, 35, 'x') & '', ABS(1=1), ABS('-6,5') FROM "
      "Paises "
      "WHERE IDPais=35",
      "35|35|35|0|Falso|Verdadero|35|1|6,5");
  Row("a condition is -1 or 0 among numbers", "SELECT NZ(1=1, 5), NZ(1=2, 5), ABS(1=1) FROM Paises WHERE IDPais=35",
      "-1|0|1");
  Row("texts without a column compare by the same rules",
      "SELECT COUNT(*) FROM Paises WHERE IDPais=35 AND NZ(NULL,'ÁRBOL ')='árbol' AND 'A' & 'b'='aB'", "1");
  Row("alternatives of texts join",
      "SELECT IIF(IDPais=35, 'a', Nombre) + NZ(NULL, 'b') FROM Paises WHERE IDPais=35 AND IIF(IDPais=1, 'x', 35)='35'",
      "ab");
  Row("a sum of alternatives stays an exact amount",
      "INSERT INTO Donativos(Importe) VALUES('0,1') ;; INSERT INTO Donativos(Importe) VALUES('0,2') ;; "
      "SELECT SUM(IIF(Eliminado, 0, Importe)) FROM Donativos WHERE (SELECT SUM(NZ(Importe, 0)) FROM Donativos)='0,3'",
      "0,3");
  Row("a union of Booleans and numbers is of numbers",
      "SELECT Eliminado AS n FROM Paises WHERE IDPais=35 UNION ALL SELECT IDPais FROM Paises WHERE IDPais=35 ORDER BY "
      "n",
      "0/35");
  Row("a union of Booleans stays one",
      "SELECT Eliminado, NULL FROM Paises WHERE IDPais=35 UNION SELECT NULL, True FROM Paises WHERE IDPais=35",
      "Falso|NULL/NULL|Verdadero");
  Row("values in another order than their places",
      "SELECT TOP 1 IIF('a'=Nombre, 1, 2) & MID('abcdef', 3, 2) AS t, '?7' AS [a\"?1] FROM Provincias WHERE "
      "51<IDProvincia AND Nombre<>'x'",
      "2cd|?7");
  Row("the outer table of a join",
      "SELECT Paises.Nombre AS Pais, Provincias.Nombre FROM (Paises LEFT JOIN Provincias ON Paises.IDPais="
      "Provincias.codPais) LEFT JOIN Diocesis ON Diocesis.CodProvincia=Provincias.IDProvincia WHERE "
      "(Provincias.Eliminado=0 OR Provincias.Eliminado IS NULL) AND Paises.Nombre='Francia'",
      "Francia|NULL");
}

void tst_dialect::Statements() {
  QFETCH(const QStringList, statements);
  QString rows;
  for (const QString& statement : statements) {
    rows = Outcome(m_database->Connection(), statement);
  }
  QTEST(rows, "rows");
}

void tst_dialect::Conversions_data() {
  QTest::addColumn<QString>("column");
  QTest::addColumn<QString>("literal");
  QTest::addColumn<QString>("stored");
  const auto row = [](const char* column, const char* literal, const char* stored) {
    QTest::addRow("%s <- %s", column, literal)
        << QString::fromUtf8(column) << QString::fromUtf8(literal) << QString::fromUtf8(stored);
  };
  row("Suscripciones.Importe", "'6,5'", "6,5");
  row("Suscripciones.Importe", "'1.234,50'", "1234,5");
  row("Suscripciones.Importe", "'12,00 €'", "12");
  row("Suscripciones.Importe", "6.5", "6,5");
  row("Suscripciones.Importe", "-6.5", "-6,5");
  row("Suscripciones.Importe", "'0,00005'", "0");
  row("Suscripciones.Importe", "'0,00015'", "0,0002");
  row("Suscripciones.Importe", "'6.5'", "6,5");
  row("Suscripciones.Importe", "'-.75 €'", "-0,75");
  row("Suscripciones.Importe", "'1.234'", "1234");
  row("Suscripciones.Importe", "'1234.567'", "1234,567");
  row("Suscripciones.Importe", "'1.5,2'", "error 13");
  row("Suscripciones.NumeroEjemplares", "'2.5'", "error 13");
  row("Suscripciones.Importe", "'1.2.3'", "error 13");
  row("Suscripciones.Importe", "'abc'", "error 13");
  row("Suscripciones.Importe", "''", "error 13");
  row("Suscripciones.Importe", "'1E300'", "error 6");
  row("Suscripciones.Importe", "-922337203685477", "-922337203685477");
  row("Suscripciones.Importe", "922337203685478", "error 6");
  row("Suscripciones.Importe", "'922337203685477,5807'", "922337203685478");
  row("Suscripciones.Importe", "'922337203685477,58074'", "922337203685478");
  row("Suscripciones.Importe", "-922337203685477.5807", "-922337203685478");
  row("Suscripciones.Importe", "'922337203685477,58075'", "error 6");
  row("Suscripciones.Importe", "'99.999.999.999,9999'", "99999999999,9999");
  row("Suscripciones.Importe", "NumeroEjemplares * 99999999999.9999", "99999999999,9999");
  row("Suscripciones.Importe", "'-922.337.203.685.478'", "error 6");
  row("Suscripciones.Importe", "NumeroEjemplares * 922337203685478", "error 6");
  row("Suscripciones.Importe", "NumeroEjemplares * 0.00005", "0");
  row("Suscripciones.Importe", "NumeroEjemplares * 0.00015", "0,0002");
  row("Suscripciones.Importe", "1E999", "error 6");
  row("Suscripciones.Importe", "'9,0071992547409E9'", "9007199254,7409");
  row("Suscripciones.Importe", "-250E-6", "-0,0002");
  row("Suscripciones.Importe", "25000000000000000001E-20", "0,25");
  row("Suscripciones.Importe", "1E-999", "0");
  row("Suscripciones.Importe", "NULL", "error -2147217873");
  row("Suscripciones.NumeroEjemplares", "'2,5'", "2");
  row("Suscripciones.NumeroEjemplares", "3.5", "4");
  row("Suscripciones.NumeroEjemplares", "-2.5", "-2");
  row("Suscripciones.NumeroEjemplares", "2147483647", "2147483647");
  row("Suscripciones.NumeroEjemplares", "2147483648", "error 6");
  row("Suscripciones.NumeroEjemplares", "-2147483648", "-2147483648");
  row("Suscripciones.NumeroEjemplares", "'99999999999999999999'", "error 6");
  row("Suscripciones.NumeroEjemplares", "2000000000 * 2", "error 6");
  row("Suscripciones.NumeroEjemplares", "5 / 2", "2");
  row("Suscripciones.NumeroEjemplares", "NumeroEjemplares * 2.5", "2");
  row("Suscripciones.NumeroEjemplares", "7 \\ 2 + 7 MOD 4", "6");
  row("Suscripciones.NumeroEjemplares", "true", "-1");
  row("Suscripciones.Eliminado", "5", "Verdadero");
  row("Suscripciones.Eliminado", "'-1'", "Verdadero");
  row("Suscripciones.Eliminado", "'Verdadero'", "Verdadero");
  row("Suscripciones.Eliminado", "'quizá'", "error 13");
  row("Suscripciones.Eliminado", "0.0", "Falso");
  row("Suscripciones.Eliminado", "IDSuscripcion=1", "Verdadero");
  row("Suscripciones.TextoRecibo", "6.5", "6,5");
  row("Suscripciones.TextoRecibo", "-7", "-7");
  row("Suscripciones.TextoRecibo", "NumeroEjemplares", "1");
  row("Suscripciones.TextoRecibo", "''", "");
  row("Suscripciones.TextoRecibo", "NULL", "NULL");
  row("Suscripciones.TextoRecibo", "IIF(IDSuscripcion=1, NULL, NULL) & NULL*2 & 'x'", "x");
}

void tst_dialect::Conversions() {
  QFETCH(const QString, column);
  QFETCH(const QString, literal);
  adodb::Connection& connection = m_database->Connection();
  connection.Execute(u"INSERT INTO Suscripciones(NumeroEjemplares) VALUES(1)"_s);
  const QString written =
      Outcome(connection, adodb::StatementText(u"UPDATE Suscripciones SET {}={}", Verbatim{column}, Verbatim{literal}));
  const QString stored = adodb::StatementText(u"SELECT {} FROM Suscripciones", Verbatim{column});
  QTEST(written.isEmpty() ? Outcome(connection, stored) : written, "stored");
}

void tst_dialect::Refusals_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<int>("number");
  const auto row = [](const char* statement, int number) {
    QTest::newRow(QByteArray(statement).left(60).constData()) << QString::fromUtf8(statement) << number;
  };
  using namespace adodb;
  row("", StatementRefused);
  row("   ; ", StatementRefused);
  row("SELECT 1; DELETE FROM Paises", StatementRefused);
  row("DROP TABLE Paises", StatementRefused);
  row("PRAGMA user_version=9", StatementRefused);
  row("ATTACH 'x' AS y", StatementRefused);
  row("SELECT * FROM sqlite_schema", NoSuchTable);
  row("SELECT Nada FROM Paises", NoSuchColumn);
  row("SELECT Paises.Nombre FROM Provincias", NoSuchTable);
  row("SELECT Nombre FROM Paises, Provincias", NoSuchColumn);
  row("INSERT INTO Paises(Nada) VALUES(1)", NoSuchColumn);
  row("INSERT INTO Paises(Nombre) VALUES('a','b')", SyntaxError);
  row("SELECT 'abierto FROM Paises", SyntaxError);
  row("SELECT Nombre FROM Paises WHERE Nombre='O'Donnell'", SyntaxError);
  row("SELECT [Nombre FROM Paises", SyntaxError);
  row("SELECT load_extension('x')", SyntaxError);
  row("SELECT Nombre FROM Paises WHERE IDPais=?", SyntaxError);
  row("SELECT Nombre FROM Paises -- WHERE 1=1", SyntaxError);
  row("SELECT Nombre FROM Paises, Paises", SyntaxError);
  row("SELECT UCASE(Nombre, 1) FROM Paises", SyntaxError);
  row("SELECT Nombre, COUNT(*) FROM Paises", SyntaxError);
  row("SELECT * FROM Provincias GROUP BY IDProvincia", SyntaxError);
  row("SELECT CodPais FROM Provincias GROUP BY CodPais HAVING Nombre='a'", SyntaxError);
  row("SELECT CodPais FROM Provincias GROUP BY CodPais ORDER BY Nombre", SyntaxError);
  row("SELECT CodPais FROM Provincias WHERE COUNT(*)>1", SyntaxError);
  row("SELECT MAX(COUNT(*)) FROM Provincias", SyntaxError);
  row("SELECT DISTINCT Nombre FROM Provincias ORDER BY Prefijo", SyntaxError);
  row("SELECT Nombre FROM Provincias ORDER BY 2", SyntaxError);
  row("SELECT IDPais FROM Paises WHERE IDPais='abc'", automation::TypeMismatch);
  row("SELECT IDPais FROM Paises WHERE IDPais=''", automation::TypeMismatch);
  row("SELECT IDPais FROM Paises WHERE IDPais*'x'=3", automation::TypeMismatch);
  row("SELECT IDPais FROM Paises WHERE Nombre*2=3", automation::TypeMismatch);
}

void tst_dialect::Refusals() {
  QFETCH(const QString, statement);
  QTEST(ErrorOf([&] { m_database->Connection().Execute(statement); }), "number");
  QCOMPARE(Outcome(m_database->Connection(), u"SELECT COUNT(*) FROM Paises"_s), u"249"_s);
}

void tst_dialect::LongLists() {
  QStringList keys;
  for (int i = 0; i < 20000; ++i) {
    keys.append(QString::number(i));
  }
  for (int round = 0; round < 2; ++round) {
    QCOMPARE(Outcome(m_database->Connection(), u"SELECT COUNT(*) FROM Paises WHERE IDPais IN ("_s + keys.join(u',') +
                                                   u") AND Nombre<>'Francia'"_s),
             u"248"_s);
  }
}

void tst_dialect::TextsAreKept_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("kept");
  const auto row = [](const char* name, const QString& text, const QString& kept) {
    QTest::newRow(name) << text << kept;
  };
  const auto same = [&](const char* name, const QString& text) { row(name, text, text); };
  same("quotes", u"L'Hospitalet \"de\" 'ahí'''"_s);
  same("marks", u"100%; DROP TABLE Paises;-- ? [x] %1 \\ \t\r\n"_s);
  same("emoji", u"familia 👨‍👩‍👧 ñ é"_s);
  same("null character", u"a"_s + QChar(0) + u"b"_s);
  same("marks of the cache", u"\x01\x02"_s);
  same("long", QString(10000, u'ñ'));
  same("a mark of byte order in front", QString(2, QChar(0xFEFF)) + u"a"_s + QChar(0xFEFF));
  row("lone high surrogate", u"a"_s + QChar(0xD83D) + u"b"_s, u"a"_s + QChar(0xFFFD) + u"b"_s);
  row("high surrogates before a pair", QString(QChar(0xD83D)) + u"😀"_s, QString(QChar(0xFFFD)) + u"😀"_s);
  row("a pair the wrong way round", QString(QChar(0xDE00)) + QChar(0xD83D), QString(2, QChar(0xFFFD)));
  row("two low surrogates", QString(2, QChar(0xDE00)), QString(2, QChar(0xFFFD)));
  row("lone low surrogate", QString(QChar(0xDC00)), QString(QChar(0xFFFD)));
}

void tst_dialect::TextsAreKept() {
  QFETCH(const QString, text);
  QFETCH(const QString, kept);
  adodb::Connection& connection = m_database->Connection();
  QString twofold = text;
  twofold.replace(u'"', u"\"\""_s);
  adodb::Execute(connection, u"INSERT INTO CartasModelo(Contenido) VALUES('{}')", text);
  adodb::Execute(connection, u"INSERT INTO CartasModelo(Contenido) VALUES(\"{}\")", Verbatim{twofold});
  const auto recordset =
      adodb::Execute(connection, u"SELECT Contenido, Contenido & '' AS T FROM CartasModelo WHERE Contenido='{}'", text);
  for (int row = 0; row < 2; ++row, recordset->MoveNext()) {
    QVERIFY(!recordset->AtEnd());
    QCOMPARE(recordset->Field(u"CONTENIDO").toString(), kept);
    QCOMPARE(recordset->Field(u"t").toString(), kept);
  }
}

// But for the texts of unique indexes and of those over several, where a server says which column it is.
void tst_dialect::LongTextsFit() {
  adodb::Connection& connection = m_database->Connection();
  QString longText;
  for (int i = 0; longText.size() < 200000; ++i) {
    longText += QChar(0x4E00 + (i * 7919) % 20000);
  }
  QStringList refused;
  QStringList expected;
  for (const database::Table& table : database::Schema::Current().Tables()) {
    for (const database::Column& column : table.columns) {
      if (database::IsNumericType(column.type)) {
        continue;
      }
      const QString name = table.name + u'.' + column.name;
      if (IsInWideIndex(table, column)) {
        expected += name;
      }
      try {
        adodb::Execute(connection, u"INSERT INTO {} ({}) VALUES('{}')", Verbatim{table.name}, Verbatim{column.name},
                       longText);
        const auto found = adodb::Execute(connection, u"SELECT {1} FROM {0} WHERE LEN({1})=200000",
                                          Verbatim{table.name}, Verbatim{column.name});
        QVERIFY2(!found->AtEnd() && found->Field(0).toString() == longText, qUtf8Printable(name));
        found->Close();
        adodb::Execute(connection, u"DELETE FROM {} WHERE LEN({})=200000", Verbatim{table.name}, Verbatim{column.name});
      } catch (const automation::Error& error) {
        QCOMPARE(error.Number(), int(adodb::StatementTooBig));
        QVERIFY2(error.Description().contains(u'(' + name + u')'), qUtf8Printable(error.Description()));
        refused += name;
      }
    }
  }
  QCOMPARE(refused, m_database->Server() == nullptr ? QStringList() : expected);
  adodb::Execute(connection, u"INSERT INTO Bancos(Nombre) VALUES('{}')", longText);
  QCOMPARE(Outcome(connection, adodb::StatementText(u"SELECT COUNT(*) FROM Bancos WHERE Nombre='{}'", longText)),
           u"1"_s);
}

void tst_dialect::Labels() {
  const auto recordset = m_database->Connection().Execute(
      u"SELECT Provincias.codPAIS, MAX(IDProvincia) AS maxID, COUNT(*) FROM Provincias GROUP BY codpais"_s);
  QStringList names;
  for (int i = 0; i < recordset->FieldCount(); ++i) {
    names += recordset->FieldName(i);
  }
  QCOMPARE(names.join(u','), u"codPAIS,maxID,Expr1002"_s);
  QCOMPARE(recordset->Field(u"MAXID").toInt(), 52);
  const auto all = m_database->Connection().Execute(u"SELECT * FROM paises WHERE IDPAIS=35"_s);
  QCOMPARE(all->FieldName(1), u"Nombre"_s);
  QCOMPARE(all->Field(u"eliminado"), QVariant(false));
}

// Whatever computed them.
void tst_dialect::TypesOfValues() {
  adodb::Connection& connection = m_database->Connection();
  connection.Execute(u"INSERT INTO Suscripciones(NumeroEjemplares,Importe) VALUES(4,8)"_s);
  const auto values = connection.Execute(
      u"SELECT NumeroEjemplares, NumeroEjemplares*2, NumeroEjemplares/2, NumeroEjemplares\\2, -NumeroEjemplares, "
      "IDSuscripcion=1, Importe, Importe*2, ABS(Importe), NZ(Importe,0), ROUND(NumeroEjemplares), ROUND(Importe,1), "
      "LEN('abc'), '7', 7, 7.0, 3000000000, Eliminado, FechaAlta, NULL, '2'*3, 1.5*2, '2,5'*2 FROM Suscripciones"_s);
  const auto totals = connection.Execute(
      u"SELECT COUNT(*), SUM(NumeroEjemplares), AVG(NumeroEjemplares), MAX(Importe), SUM(Importe), AVG(Importe), "
      "SUM(Importe*2), MIN(Eliminado) FROM Suscripciones"_s);
  QStringList types;
  for (adodb::Recordset* rows : {values.get(), totals.get()}) {
    for (int i = 0; i < rows->FieldCount(); ++i) {
      types += QString::fromLatin1(rows->Field(i).typeName());
    }
  }
  QCOMPARE(
      types.join(u' '),
      u"int int double int int bool double double double double double double int QString int double qlonglong bool "
      "std::nullptr_t std::nullptr_t int double double int int double double double double double int"_s);
}

KEL_TEST(tst_dialect);
#include "tst_dialect.moc"
