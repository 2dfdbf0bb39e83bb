#include "database/ChangeClock.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <latch>
#include <thread>

using adodb::Verbatim;
using support::ErrorOf;
using support::Outcome;
using support::Rows;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// What only a server does: several writers, its refusals in Spanish, and that texts mean on both engines the same.
class tst_postgres : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void TextsMeanTheSameOnBothEngines();
  void AmountsAreExact();
  void RefusalsNameWhatIsConcerned_data();
  void RefusalsNameWhatIsConcerned();
  void AnOpenRowIsWaitedFor();
  void ADeadlockLosesTheTransaction();
  void ACutLineLosesTheTransaction();
  void AClosedOneKeepsItsLine();
  void TheClockMissesNoLateCommit();
  void KeysGoOnBehindGivenOnes();
  void RowsComeInTheOrderOfTheirKeys();
  void ProgramsPrepareOneDatabase();
  void ForeignAndNewerDatabasesAreRefused();
  void ConnectingFailsClearly_data();
  void ConnectingFailsClearly();
  void MissingRightsAreNamed();
  void AnOutdatedPlanIsMadeAnew();
  void LongReadsStandInNobodysWay();

 private:
  const support::ServerDatabase& Server() const { return *m_database->Server(); }
  void CutLines() const {
    Server().Run(
        u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE application_name LIKE 'kel %' AND "
        "datname=current_database()"_s);
  }

  std::unique_ptr<TestDatabase> m_database;
};

namespace {

QString MessageOf(adodb::Connection& connection, const QString& statement) {
  try {
    connection.Execute(statement);
  } catch (const automation::Error& error) {
    return u"%1 %2"_s.arg(error.Number()).arg(error.Description());
  }
  return {};
}

// Names of countries and provinces, and texts whose comparison is a matter of rules.
QStringList Words(adodb::Connection& connection) {
  QStringList words = Rows(connection, u"SELECT TOP 120 Nombre FROM Paises ORDER BY IDPais"_s) +
                      Rows(connection, u"SELECT Nombre FROM Provincias ORDER BY IDProvincia"_s);
  words +=
      QString::fromUtf8(
          "ana|Ana|ANA|Ana  | "
          "ana|áná|aná|ñu|nu|Ñu|nz|n|ñ|N|Ñ|o|ch|cz|da|Ch|ll|lz|ma|ç|c|Ç|cedilla|ß|ss|SS|æ|ae|AE|œ|oe|"
          "ü|u|ú|Ú|u\u0308|n\u0303u|a\u0301na|e\u0301|é|É|1|01|10|2|a-b|ab|a b|a.b|a'b|a,b|a_b|a%b|a\\b|*|?|😀|😁|ﬁn|fin|"
          "ª|º|½|²|2ª|x\u00a0y|x y|Ω|ω|я|Я|日本|ĳ|ij|Å|å|A\u030a|-|--| |.|€|¿que?|que|¡ay!|ay|Peña|peña|Pena|PEÑA|"
          "Núñez|nunez|Muñoz|muñoz|MUÑOZ|Munoz")
          .split(u'|');
  return words;
}

QStringList TextReport(adodb::Connection& connection, const QStringList& words) {
  QStringList report;
  for (const QString& word : words) {
    adodb::Execute(connection, u"INSERT INTO Cabeceras(Nombre) VALUES('{}')", word);
    report +=
        u"unique "_s + word + u": "_s +
        QString::number(ErrorOf([&] { adodb::Execute(connection, u"INSERT INTO Bancos(Numero) VALUES('{}')", word); }));
  }
  report += Rows(connection, u"SELECT Nombre FROM Cabeceras ORDER BY Nombre, IDCabecera"_s);
  for (const QString& word : words) {
    const auto count = [&](const char16_t* form) {
      return Outcome(connection,
                     adodb::StatementText(u"SELECT COUNT(*), SUM(IDCabecera) FROM Cabeceras WHERE Nombre {} '{}'",
                                          Verbatim{QString::fromUtf16(form)}, word));
    };
    report += word + u" = "_s + count(u"=") + u" < "_s + count(u"<") + u" like "_s + count(u"LIKE");
    report +=
        word + u" inside "_s +
        Outcome(connection, adodb::StatementText(u"SELECT COUNT(*) FROM Cabeceras WHERE Nombre LIKE '%{}%'", word));
  }
  return report;
}

}  // namespace

void tst_postgres::TextsMeanTheSameOnBothEngines() {
  const QTemporaryDir folder;
  const QString address = database::ConnectionStringForFile(folder.filePath(u"kel.db"_s));
  database::PrepareDatabase(address, database::Content::Reference);
  const auto file = database::CreateConnection(address);
  file->Open();
  const QStringList words = Words(*file);
  QVERIFY(words.size() >= 200);
  QCOMPARE(TextReport(m_database->Connection(), words), TextReport(*file, words));
}

void tst_postgres::AmountsAreExact() {
  adodb::Connection& connection = m_database->Connection();
  connection.Execute(u"INSERT INTO Donativos(Importe) VALUES('922.337.203.685.477,5807')"_s);
  connection.Execute(u"INSERT INTO Donativos(Importe) VALUES(-922337203685477.5806)"_s);
  connection.Execute(u"UPDATE Donativos SET Importe=Importe*1"_s);
  QCOMPARE(Outcome(connection, u"SELECT Importe & '' FROM Donativos"_s),
           u"922337203685477,5807/-922337203685477,5806"_s);
  QCOMPARE(Outcome(connection, u"SELECT SUM(Importe) FROM Donativos"_s), u"0,0001"_s);
  QCOMPARE(Outcome(connection, u"UPDATE Donativos SET Importe=Importe+0.0001 WHERE Importe>0"_s), u"error 6"_s);
}

void tst_postgres::RefusalsNameWhatIsConcerned_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<int>("number");
  QTest::addColumn<QString>("named");
  const auto row = [](const char* statement, int number, const char* named) {
    QTest::newRow(statement) << QString::fromUtf8(statement) << number << QString::fromUtf8(named);
  };
  row("INSERT INTO Bancos(IDBanco) VALUES(1)", adodb::ConstraintViolation, "mismos valores (Bancos.IDBanco)");
  row("INSERT INTO Bancos(Numero) VALUES('0001')", adodb::ConstraintViolation, "mismos valores (Bancos.Numero)");
  row("UPDATE Donativos SET Importe=NULL", adodb::ConstraintViolation, "obligatorio (Donativos.Importe)");
  row("UPDATE Donativos SET CodColaborador=CodColaborador+2000000000*2", automation::Overflow, "Desbordamiento");
  row("UPDATE Donativos SET Importe='1'*Importe*1E20", automation::Overflow, "Desbordamiento");
  row("SELECT IDPais FROM Paises WHERE Nombre*2=3", automation::TypeMismatch, "tipos");
  row("SELECT Nombre, COUNT(*) FROM Paises", adodb::SyntaxError, "GROUP BY");
}

void tst_postgres::RefusalsNameWhatIsConcerned() {
  QFETCH(const QString, statement);
  QFETCH(const int, number);
  QFETCH(const QString, named);
  adodb::Connection& connection = m_database->Connection();
  connection.Execute(u"INSERT INTO Bancos(IDBanco,Numero) VALUES(1,'0001')"_s);
  connection.Execute(u"INSERT INTO Donativos(Importe,CodColaborador) VALUES(1,1)"_s);
  // Outside a transaction, and inside one that goes on.
  for (const bool inTransaction : {false, true}) {
    if (inTransaction) {
      connection.BeginTrans();
      connection.Execute(u"UPDATE Bancos SET Nombre='a'"_s);
    }
    const QString message = MessageOf(connection, statement);
    QVERIFY2(message.startsWith(QString::number(number)) && message.contains(named), qUtf8Printable(message));
    QCOMPARE(Outcome(connection, u"SELECT Nombre FROM Bancos"_s), inTransaction ? u"a"_s : u"NULL"_s);
  }
  connection.CommitTrans();
  QCOMPARE(Outcome(connection, u"SELECT Nombre FROM Bancos"_s), u"a"_s);
}

void tst_postgres::AnOpenRowIsWaitedFor() {
  adodb::Connection& holder = m_database->Connection();
  holder.BeginTrans();
  holder.Execute(u"UPDATE Paises SET Nombre='a' WHERE IDPais=1"_s);
  const auto other = database::CreateConnection(m_database->ConnectionString() + u";Espera=50"_s);
  other->Open();
  QCOMPARE(Outcome(*other, u"UPDATE Paises SET Nombre='b' WHERE IDPais=1"_s),
           u"error %1"_s.arg(int(adodb::DatabaseLocked)));
  QCOMPARE(Outcome(*other, u"UPDATE Paises SET Nombre='b' WHERE IDPais=2"_s), QString());
  holder.CommitTrans();
  QCOMPARE(Outcome(*other, u"SELECT Nombre FROM Paises WHERE IDPais<3 ORDER BY IDPais"_s), u"a/b"_s);
}

void tst_postgres::ADeadlockLosesTheTransaction() {
  const QString update = u"UPDATE Provincias SET Prefijo='%1' WHERE IDProvincia=%2"_s;
  std::latch bothHold(2);
  std::vector<int> errors(2);
  const auto work = [&](std::size_t self) {
    const auto connection = m_database->Connect();
    connection->BeginTrans();
    connection->Execute(update.arg(self).arg(1 + self));
    bothHold.arrive_and_wait();
    errors[self] = ErrorOf([&] { connection->Execute(update.arg(self).arg(2 - self)); });
    errors[self] = errors[self] == 0 ? ErrorOf([&] { connection->CommitTrans(); }) : errors[self];
    if (errors[self] != 0) {
      QCOMPARE(ErrorOf([&] { connection->Execute(update.arg(9).arg(9)); }), int(adodb::TransactionLost));
      connection->RollbackTrans();
      QCOMPARE(Outcome(*connection, u"SELECT COUNT(*) FROM Provincias WHERE Prefijo='9'"_s), u"0"_s);
    }
  };
  std::thread first(work, 0);
  std::thread second(work, 1);
  first.join();
  second.join();
  std::sort(errors.begin(), errors.end());
  QCOMPARE(errors, (std::vector<int>{adodb::TransactionLost, 0}));
  QCOMPARE(m_database->Query(u"SELECT DISTINCT Prefijo FROM Provincias WHERE IDProvincia<3").size(), 1);
}

void tst_postgres::ACutLineLosesTheTransaction() {
  adodb::Connection& connection = m_database->Connection();
  connection.BeginTrans();
  connection.Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')"_s);
  CutLines();
  QCOMPARE(ErrorOf([&] { connection.Execute(u"INSERT INTO Bancos(Nombre) VALUES('b')"_s); }),
           int(adodb::TransactionLost));
  QCOMPARE(ErrorOf([&] { connection.CommitTrans(); }), int(adodb::TransactionLost));
  connection.Close();
  connection.Open();
  connection.BeginTrans();
  connection.Execute(u"INSERT INTO Bancos(Nombre) VALUES('c')"_s);
  CutLines();
  QCOMPARE(ErrorOf([&] { connection.CommitTrans(); }), int(adodb::TransactionLost));
  QCOMPARE(m_database->Query(u"SELECT COUNT(*) FROM Bancos"), QStringList(u"0"_s));
}

void tst_postgres::AClosedOneKeepsItsLine() {
  adodb::Connection& connection = m_database->Connection();
  const QString countBanks = u"SELECT COUNT(*) FROM Bancos"_s;
  connection.Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')"_s);
  connection.BeginTrans();
  connection.Execute(u"INSERT INTO Bancos(Nombre) VALUES('b')"_s);
  Server().Run(
      u"CREATE TABLE kel_test.lines AS SELECT pid FROM pg_stat_activity WHERE state='idle in transaction' AND "
      "datname=current_database()"_s);
  connection.Close();
  // It is there, and holds nothing open.
  Server().Run(
      u"DO $$BEGIN ASSERT (SELECT count(*) FROM kel_test.lines JOIN pg_stat_activity USING (pid) WHERE state='idle') = "
      "(SELECT count(*) FROM kel_test.lines); END$$"_s);
  connection.Open();
  QCOMPARE(Outcome(connection, countBanks), u"1"_s);
  connection.Close();
  CutLines();
  connection.Open();
  QCOMPARE(Outcome(connection, countBanks), u"1"_s);
  connection.Close();
  Server().Run(u"UPDATE kel.kelmotor SET valor='99' WHERE nombre='version'"_s);
  QCOMPARE(ErrorOf([&] { connection.Open(); }), int(adodb::NewerDatabase));
}

// The transaction that began first, and has the lower number on the server, ends last.
void tst_postgres::TheClockMissesNoLateCommit() {
  const auto early = m_database->Connect();
  early->BeginTrans();
  early->Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')"_s);
  m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('b')");
  database::ChangeClock clock(m_database->ConnectionString());
  QVERIFY(clock.HasMoved());
  QVERIFY(QTest::qWaitFor([&] { return !clock.HasMoved(); }));
  early->CommitTrans();
  QVERIFY(clock.HasMoved());
}

void tst_postgres::KeysGoOnBehindGivenOnes() {
  adodb::Connection& connection = m_database->Connection();
  for (const bool inTransaction : {false, true}) {
    if (inTransaction) {
      connection.BeginTrans();
    }
    const int given = inTransaction ? 90 : 40;
    adodb::Execute(connection, u"INSERT INTO Bancos(IDBanco,Nombre) VALUES({},'a')", given);
    connection.Execute(u"INSERT INTO Bancos(Nombre) VALUES('b')"_s);
    QCOMPARE(Outcome(connection, u"SELECT MAX(IDBanco) FROM Bancos"_s), QString::number(given + 1));
    if (inTransaction) {
      connection.CommitTrans();
    }
  }
  m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('c')");
  QCOMPARE(Outcome(connection, u"SELECT MAX(IDBanco) FROM Bancos"_s), u"92"_s);
}

void tst_postgres::RowsComeInTheOrderOfTheirKeys() {
  adodb::Connection& connection = m_database->Connection();
  connection.Execute(u"UPDATE Provincias SET Nombre='igual' WHERE IDProvincia IN (1, 7, 3)"_s);
  connection.Execute(u"UPDATE Provincias SET Prefijo='x' WHERE IDProvincia=1"_s);
  QCOMPARE(Outcome(connection, u"SELECT TOP 4 IDProvincia FROM Provincias"_s), u"1/2/3/4"_s);
  QCOMPARE(Outcome(connection, u"SELECT IDProvincia FROM Provincias WHERE Nombre='igual' ORDER BY Nombre DESC"_s),
           u"1/3/7"_s);
  QCOMPARE(Outcome(connection, u"SELECT DISTINCT Nombre FROM Provincias WHERE IDProvincia<5"_s),
           u"Albacete/Almería/igual"_s);
  QCOMPARE(Outcome(connection, u"SELECT Prefijo, COUNT(*) FROM Provincias WHERE IDProvincia<3 GROUP BY Prefijo"_s),
           u"02|1/x|1"_s);
  connection.Execute(u"UPDATE Provincias SET Prefijo=NULL WHERE IDProvincia=5"_s);
  QCOMPARE(Outcome(connection, u"SELECT IDProvincia FROM Provincias WHERE IDProvincia IN (4,5) ORDER BY Prefijo"_s),
           u"5/4"_s);
  QCOMPARE(
      Outcome(connection, u"SELECT IDProvincia FROM Provincias WHERE IDProvincia IN (4,5) ORDER BY Prefijo DESC"_s),
      u"4/5"_s);
}

void tst_postgres::ProgramsPrepareOneDatabase() {
  Server().Run(u"DROP SCHEMA kel CASCADE"_s);
  std::vector<std::thread> programs;
  std::vector<int> errors(8);
  for (int& error : errors) {
    programs.emplace_back([&] {
      error = ErrorOf([&] { database::PrepareDatabase(m_database->ConnectionString(), database::Content::Reference); });
    });
  }
  for (std::thread& program : programs) {
    program.join();
  }
  QCOMPARE(errors, std::vector<int>(errors.size()));
  QCOMPARE(m_database->Query(u"SELECT COUNT(*), MAX(IDPais) FROM Paises"), QStringList(u"249|249"_s));
}

void tst_postgres::ForeignAndNewerDatabasesAreRefused() {
  const auto opening = [&] { return ErrorOf([&] { m_database->Connect(); }); };
  const auto preparing = [&] {
    return ErrorOf([&] { database::PrepareDatabase(m_database->ConnectionString(), database::Content::Reference); });
  };
  Server().Run(u"UPDATE kel.kelmotor SET valor='99' WHERE nombre='version'"_s);
  QCOMPARE(opening(), int(adodb::NewerDatabase));
  QCOMPARE(preparing(), int(adodb::NewerDatabase));
  Server().Run(u"DROP TABLE kel.kelmotor"_s);
  QCOMPARE(opening(), int(adodb::NotOurDatabase));
  QCOMPARE(preparing(), int(adodb::NotOurDatabase));
  Server().Run(u"DROP SCHEMA kel CASCADE"_s);
  QCOMPARE(opening(), int(adodb::OlderDatabase));
  const QString forReading = m_database->ConnectionString() + u";Acceso=lectura"_s;
  QCOMPARE(ErrorOf([&] { database::PrepareDatabase(forReading, database::Content::Reference); }),
           int(adodb::OlderDatabase));
}

void tst_postgres::ConnectingFailsClearly_data() {
  QTest::addColumn<QString>("change");
  QTest::addColumn<QString>("with");
  QTest::addColumn<QString>("said");
  QTest::newRow("no such base") << u"Base=.*"_s << u"Base=nada"_s << u"no existe la base de datos «nada en"_s;
  QTest::newRow("no such user") << u"Usuario=\\w+"_s << u"Usuario=nadie"_s << u"no reconoce al usuario"_s;
  QTest::newRow("wrong password") << u"Usuario=\\w+"_s << u"Usuario=con_clave"_s << u"no reconoce al usuario"_s;
  QTest::newRow("too many sessions") << u"Usuario=\\w+"_s << u"Usuario=llena"_s << u"no admite más conexiones"_s;
  QTest::newRow("no server") << u"Servidor=[^;]*"_s << u"Servidor=127.0.0.1;Puerto=1"_s << u"No hay conexión"_s;
}

void tst_postgres::ConnectingFailsClearly() {
  QFETCH(const QString, change);
  QFETCH(const QString, with);
  QFETCH(const QString, said);
  for (const QString& role : {u"con_clave LOGIN PASSWORD 'suya'"_s, u"llena LOGIN CONNECTION LIMIT 0"_s}) {
    Server().Run(
        u"DO $$BEGIN CREATE ROLE %1; EXCEPTION WHEN duplicate_object OR unique_violation THEN NULL; END$$"_s.arg(role));
  }
  qputenv("PGPASSWORD", "otra");
  const auto restore = qScopeGuard([] { qunsetenv("PGPASSWORD"); });
  QString address = m_database->ConnectionString();
  const auto connection = database::CreateConnection(address.replace(QRegularExpression(change), with));
  try {
    connection->Open();
    QFAIL("it opened");
  } catch (const automation::Error& error) {
    QCOMPARE(error.Number(), int(adodb::CannotOpen));
    QVERIFY2(error.Description().contains(said), qUtf8Printable(error.Description()));
  }
}

// A user without rights and a session for reading are told whom to ask.
void tst_postgres::MissingRightsAreNamed() {
  const auto forReading = database::CreateConnection(m_database->ConnectionString() + u";Acceso=lectura"_s);
  forReading->Open();
  QVERIFY(MessageOf(*forReading, u"DELETE FROM Bancos"_s).startsWith(QString::number(adodb::DatabaseReadOnly)));
  QCOMPARE(Outcome(*forReading, u"SELECT COUNT(*) FROM Paises"_s), u"249"_s);
  Server().Run(
      u"DO $$BEGIN CREATE ROLE lectora LOGIN; EXCEPTION WHEN duplicate_object THEN NULL; END$$; "
      "GRANT USAGE ON SCHEMA kel TO lectora; GRANT SELECT ON ALL TABLES IN SCHEMA kel TO lectora; "
      "REVOKE SELECT ON kel.provincias FROM lectora"_s);
  const auto reader =
      database::CreateConnection(m_database->ConnectionString().replace(u"Usuario=postgres"_s, u"Usuario=lectora"_s));
  reader->Open();
  const QString writing = MessageOf(*reader, u"UPDATE Bancos SET Nombre='a'"_s);
  const QString reading = MessageOf(*reader, u"SELECT Nombre FROM Provincias"_s);
  for (const QString& message : {writing, reading}) {
    QVERIFY2(message.startsWith(QString::number(adodb::DatabaseReadOnly)) && message.contains(u"usuario lectora"_s),
             qUtf8Printable(message));
  }
  QVERIFY2(writing.contains(u"(Bancos)"_s) && reading.contains(u"(Provincias)"_s), qUtf8Printable(writing + reading));
}

// Somebody changes the database under statements that are prepared.
void tst_postgres::AnOutdatedPlanIsMadeAnew() {
  adodb::Connection& connection = m_database->Connection();
  const QString select = u"SELECT CodigoISO FROM Paises WHERE IDPais=35"_s;
  for (const bool inTransaction : {false, true}) {
    if (inTransaction) {
      connection.BeginTrans();
      connection.Execute(u"UPDATE Paises SET Nombre='a' WHERE IDPais=1"_s);
    }
    QCOMPARE(Outcome(connection, select), u"ES"_s);
    if (!inTransaction) {
      Server().Run(u"ALTER TABLE kel.paises ALTER COLUMN codigoiso TYPE varchar(2)"_s);
      QCOMPARE(Outcome(connection, select), u"ES"_s);
    }
  }
  connection.CommitTrans();
  QCOMPARE(Outcome(connection, u"SELECT Nombre FROM Paises WHERE IDPais=1"_s), u"a"_s);
}

// A recordset that is left early gives the line back at once, and one that stays open keeps its rows.
void tst_postgres::LongReadsStandInNobodysWay() {
  adodb::Connection& connection = m_database->Connection();
  const QString many = u"SELECT A.IDPais FROM Paises AS A, Paises AS B, Provincias WHERE A.IDPais>0"_s;
  auto left = connection.Execute(many);
  left->MoveNext();
  left.reset();
  const auto kept = connection.Execute(u"SELECT A.Nombre FROM Provincias AS A, Provincias AS B"_s);
  connection.BeginTrans();
  connection.Execute(u"UPDATE Provincias SET Nombre='otra'"_s);
  connection.CommitTrans();
  int rows = 0;
  for (; !kept->AtEnd(); kept->MoveNext(), ++rows) {
    QVERIFY(kept->Field(0).toString() != u"otra");
  }
  QCOMPARE(rows, 52 * 52);
}

KEL_TEST(tst_postgres);
#include "tst_postgres.moc"
