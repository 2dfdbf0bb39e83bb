#include "database/WrittenRecord.h"
#include "database/dialect/Lexer.h"
#include "database/dialect/StatementWriter.h"
#include "database/sqlite/SqliteTarget.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Which record a statement writes, and what its plan says of new keys.
class tst_written_record : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Statements_data();
  void Statements();
  void UnreadableStatements();
  void NewKeys_data();
  void NewKeys();
};

namespace {

QString TextOf(const database::WrittenRecord& written) {
  using Kind = database::WrittenRecord::Kind;
  const QString kind = written.kind == Kind::Inserted  ? u"inserted"_s
                       : written.kind == Kind::Deleted ? u"deleted"_s
                                                       : u"updated"_s;
  return u"%1 %2 %3"_s.arg(kind, written.table, written.key ? QString::number(*written.key) : u"-"_s);
}

database::Plan PlanOf(const QString& statement) {
  database::Lexer lexer;
  lexer.Read(statement);
  return database::Translate(database::SqliteTarget::Instance(), database::Schema::Current(), statement,
                             lexer.Tokens());
}

}  // namespace

void tst_written_record::Statements_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("written");
  const auto row = [](const char* statement, const char* written) {
    QTest::newRow(statement) << QString::fromUtf8(statement) << QString::fromUtf8(written);
  };
  row("SELECT MAX(IDBanco) FROM Bancos", "");
  row("INSERT INTO bancos (Nombre) VALUES ('5')", "inserted Bancos -");
  row("INSERT INTO Bancos (Nombre, idbanco) VALUES ('a', 7)", "inserted Bancos 7");
  row("INSERT INTO Bancos (IDBanco) VALUES (7), (8)", "inserted Bancos -");
  row("INSERT INTO Cabeceras (Nombre) SELECT Nombre FROM Paises WHERE IDPais=35", "inserted Cabeceras -");
  row("UPDATE Paises SET Nombre='1' WHERE IDPAIS=35", "updated Paises 35");
  row("UPDATE Paises SET IDPais=4 WHERE 35=[Paises].[IDPais]", "updated Paises 35");
  row("UPDATE Paises SET Nombre='a' WHERE Eliminado=0 AND (IDPais=-3 AND Nombre<>'7')", "updated Paises -3");
  row("UPDATE Paises SET Nombre='a' WHERE IDPais='35'", "updated Paises 35");
  row("UPDATE Paises SET Nombre='a' WHERE IDPais=3.5", "updated Paises -");
  row("UPDATE Paises SET Nombre='a' WHERE IDPais=35 OR Eliminado=0", "updated Paises -");
  row("UPDATE Paises SET Nombre='a' WHERE NOT IDPais=35", "updated Paises -");
  row("UPDATE Paises SET Nombre='a' WHERE IDPais>=35", "updated Paises -");
  row("UPDATE Provincias SET Nombre='a' WHERE CodPais=35", "updated Provincias -");
  row("UPDATE Sucursales SET Eliminado=-1", "updated Sucursales -");
  row("DELETE FROM Cuentas WHERE IDCuenta=2", "deleted Cuentas 2");
}

void tst_written_record::Statements() {
  QFETCH(const QString, statement);
  const std::optional<database::WrittenRecord> written = database::WrittenBy(statement);
  QTEST(written ? TextOf(*written) : QString(), "written");
}

void tst_written_record::UnreadableStatements() {
  QCOMPARE(support::ErrorOf([] { database::WrittenBy(u"DROP TABLE Paises"_s); }), int(adodb::StatementRefused));
  QCOMPARE(support::ErrorOf([] { database::WrittenBy(u"DELETE FROM Nada"_s); }), int(adodb::NoSuchTable));
}

void tst_written_record::NewKeys_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<bool>("makesKey");
  QTest::addColumn<QString>("maximumOf");
  const auto row = [](const char* statement, bool makesKey, const char* maximumOf) {
    QTest::newRow(statement) << QString::fromUtf8(statement) << makesKey << QString::fromUtf8(maximumOf);
  };
  row("INSERT INTO Bancos (Nombre) VALUES ('a')", true, "");
  row("INSERT INTO Bancos (IDBanco) VALUES (7)", false, "");
  row("INSERT INTO Bancos (Nombre) VALUES ('a'), ('b')", false, "");
  row("INSERT INTO Cabeceras (Nombre) SELECT Nombre FROM Paises", false, "");
  row("SELECT MAX(Bancos.IDBanco) AS MaxID FROM Bancos", false, "Bancos");
  row("SELECT max(idbanco) FROM bancos WHERE Eliminado=0", false, "Bancos");
  row("SELECT MAX(Numero) FROM Bancos", false, "");
  row("SELECT MIN(IDBanco) FROM Bancos", false, "");
  row("SELECT MAX(IDBanco), 1 FROM Bancos", false, "");
  row("SELECT MAX(IDBanco) FROM Bancos ORDER BY 1", false, "");
  row("SELECT MAX(IDBanco) FROM Bancos GROUP BY Nombre", false, "");
  row("SELECT MAX(IDBanco) FROM Bancos UNION SELECT 1", false, "");
  row("SELECT MAX(IDBanco) FROM Bancos, Paises", false, "");
}

void tst_written_record::NewKeys() {
  QFETCH(const QString, statement);
  const database::Effect effect = PlanOf(statement).effect;
  QTEST(effect.makesKey, "makesKey");
  QTEST(effect.maximumOf == nullptr ? QString() : effect.maximumOf->name, "maximumOf");
}

KEL_TEST(tst_written_record);
#include "tst_written_record.moc"
