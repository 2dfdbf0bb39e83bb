#include "database/ErrorNumbers.h"
#include "database/TestDatabase.h"
#include "database/sqlite/SqliteConnection.h"
#include "support/TestProgram.h"

#include <QTest>

/// The connection and its recordsets: states, transactions, several at once, faults of the engine.
class tst_connection : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void connectionStrings_data();
  void connectionStrings();
  void statesOfTheConnection();
  void recordsetErrors();
  void recordsetsCloseWithTheirConnection();
  void twoRecordsetsOfOneShape();
  void readingGoesOnWhileWriting();
  void transactions();
  void aFailureLeavesTheTransactionOpen();
  void closingRollsBack();
  void aLostTransactionIsNotCommitted();
  void aLockedDatabaseIsRefused();
  void aStaleReadDoesNotBlockAWrite();
  void affectedRows();
  void repeatedLabels();
  void constraints();
  void hugeStatements_data();
  void hugeStatements();
  void manyShapes();

 private:
  std::unique_ptr<TestDatabase> m_database;
};

namespace {

const QString insertBank = QStringLiteral("INSERT INTO Bancos(Nombre) VALUES('Uno')");
const QString countBanks = QStringLiteral("SELECT COUNT(*) FROM Bancos");

}  // namespace

void tst_connection::connectionStrings_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<int>("number");
  const auto row = [](const char* text, int number) { QTest::newRow(text) << QString::fromUtf8(text) << number; };
  row("Motor=sqlite;Archivo=/tmp/a.db", 0);
  row(" ARCHIVO = '/tmp/a;b=c''d.db' ; motor=SQLite;;", 0);
  row("Archivo=/tmp/a.db;Espera=100;Acceso=lectura", 0);
  row("", database::InvalidConnectionString);
  row("Motor=sqlite", database::InvalidConnectionString);
  row("Motor=otro;Archivo=a", database::InvalidConnectionString);
  row("Archivo=a;Archivo=b", database::InvalidConnectionString);
  row("Archivo=\"a", database::InvalidConnectionString);
  row("Archivo=\"a\"b", database::InvalidConnectionString);
  row("Archivo", database::InvalidConnectionString);
  row("Archivo=a;Clave=b", database::InvalidConnectionString);
  row("Archivo=a;Espera=mucho", database::InvalidConnectionString);
}

void tst_connection::connectionStrings() {
  QFETCH(const QString, text);
  QTEST(ErrorOf([&] { database::CreateConnection(text); }), "number");
}

void tst_connection::statesOfTheConnection() {
  auto connection = database::CreateConnection(m_database->Text());
  QCOMPARE(connection->State(), int(adodb::StateClosed));
  QCOMPARE(ErrorOf([&] { connection->Execute(countBanks); }), 3704);
  QCOMPARE(ErrorOf([&] { connection->BeginTrans(); }), 3704);
  QCOMPARE(ErrorOf([&] { connection->Close(); }), 3704);
  connection->Open(QString(), QString(), QString(), -1);
  QCOMPARE(connection->State(), int(adodb::StateOpen));
  QCOMPARE(ErrorOf([&] { connection->Open(); }), 3705);
  connection->Close();
  connection->Open();
  QCOMPARE(Rows(*connection, countBanks), QStringLiteral("0"));
  auto missing = database::CreateConnection(m_database->Text().replace(QStringLiteral("kel.db"), QStringLiteral("x")));
  QCOMPARE(ErrorOf([&] { missing->Open(); }), int(database::CannotOpen));
  QCOMPARE(missing->State(), int(adodb::StateClosed));
}

void tst_connection::recordsetErrors() {
  const auto recordset = m_database->Connection().Execute(QStringLiteral("SELECT IDPais FROM Paises WHERE IDPais=35"));
  QCOMPARE(recordset->Field(u"idpais"), QVariant(35));
  QCOMPARE(ErrorOf([&] { recordset->Field(u"Nombre"); }), 3265);
  QCOMPARE(ErrorOf([&] { recordset->Field(1); }), 3265);
  QCOMPARE(ErrorOf([&] { recordset->Field(-1); }), 3265);
  recordset->MoveNext();
  QVERIFY(recordset->AtEnd());
  QCOMPARE(ErrorOf([&] { recordset->Field(u"IDPais"); }), 3021);
  QCOMPARE(ErrorOf([&] { recordset->MoveNext(); }), 3021);
  QCOMPARE(recordset->State(), int(adodb::StateOpen));
  recordset->Close();
  QCOMPARE(ErrorOf([&] { recordset->AtEnd(); }), 3704);
  QCOMPARE(ErrorOf([&] { recordset->Close(); }), 3704);
  const auto written = m_database->Connection().Execute(insertBank);
  QCOMPARE(written->State(), int(adodb::StateClosed));
  QCOMPARE(ErrorOf([&] { written->AtEnd(); }), 3704);
}

void tst_connection::recordsetsCloseWithTheirConnection() {
  auto connection = m_database->Connect();
  const auto recordset = connection->Execute(QStringLiteral("SELECT Nombre FROM Paises"));
  connection->Close();
  QCOMPARE(recordset->State(), int(adodb::StateClosed));
  QCOMPARE(ErrorOf([&] { recordset->Field(0); }), 3704);
  connection->Open();
  const auto second = connection->Execute(QStringLiteral("SELECT Nombre FROM Paises"));
  connection.reset();
  QCOMPARE(second->State(), int(adodb::StateClosed));
}

void tst_connection::twoRecordsetsOfOneShape() {
  const QString text = QStringLiteral("SELECT Nombre FROM Provincias WHERE IDProvincia>=%1 ORDER BY IDProvincia");
  const auto first = m_database->Connection().Execute(text.arg(28));
  const auto second = m_database->Connection().Execute(text.arg(42));
  QCOMPARE(first->Field(0).toString(), QStringLiteral("Madrid"));
  QCOMPARE(second->Field(0).toString(), QStringLiteral("Soria"));
  first->MoveNext();
  QCOMPARE(first->Field(0).toString(), QStringLiteral("Málaga"));
  QCOMPARE(second->Field(0).toString(), QStringLiteral("Soria"));
}

void tst_connection::readingGoesOnWhileWriting() {
  adodb::Connection& connection = m_database->Connection();
  const auto recordset = connection.Execute(QStringLiteral("SELECT IDPais, Nombre FROM Paises ORDER BY Nombre"));
  int rows = 0;
  for (; !recordset->AtEnd(); recordset->MoveNext(), ++rows) {
    connection.Execute(QStringLiteral("UPDATE Paises SET Nombre='zz%1' WHERE IDPais=%2")
                           .arg(rows)
                           .arg(recordset->Field(u"IDPais").toInt()));
    QVERIFY(!recordset->Field(u"Nombre").toString().startsWith(QStringLiteral("zz")));
  }
  QCOMPARE(rows, 249);
}

void tst_connection::transactions() {
  adodb::Connection& connection = m_database->Connection();
  QCOMPARE(ErrorOf([&] { connection.CommitTrans(); }), int(database::NoTransaction));
  QCOMPARE(ErrorOf([&] { connection.RollbackTrans(); }), int(database::NoTransaction));
  connection.BeginTrans();
  QCOMPARE(ErrorOf([&] { connection.BeginTrans(); }), int(database::TransactionActive));
  connection.Execute(insertBank);
  const auto other = m_database->Connect();
  QCOMPARE(Rows(*other, countBanks), QStringLiteral("0"));
  connection.CommitTrans();
  QCOMPARE(Rows(*other, countBanks), QStringLiteral("1"));
  {
    adodb::Transaction transaction(connection);
    connection.Execute(insertBank);
  }
  QCOMPARE(Rows(connection, countBanks), QStringLiteral("1"));
}

void tst_connection::aFailureLeavesTheTransactionOpen() {
  adodb::Connection& connection = m_database->Connection();
  connection.BeginTrans();
  connection.Execute(insertBank);
  QCOMPARE(ErrorOf([&] { connection.Execute(QStringLiteral("INSERT INTO Donativos(Importe) VALUES('x')")); }), 13);
  QCOMPARE(ErrorOf([&] { connection.Execute(QStringLiteral("INSERT INTO Bancos(IDBanco) VALUES(1)")); }),
           int(database::ConstraintViolation));
  connection.Execute(insertBank);
  connection.CommitTrans();
  QCOMPARE(Rows(connection, countBanks), QStringLiteral("2"));
}

void tst_connection::closingRollsBack() {
  adodb::Connection& connection = m_database->Connection();
  connection.BeginTrans();
  connection.Execute(insertBank);
  connection.Close();
  connection.Open();
  QCOMPARE(Rows(connection, countBanks), QStringLiteral("0"));
  connection.BeginTrans();
  connection.RollbackTrans();
}

void tst_connection::aLostTransactionIsNotCommitted() {
  auto& connection = dynamic_cast<database::SqliteConnection&>(m_database->Connection());
  const int pages = connection.Handle().Value("PRAGMA page_count").toInt();
  connection.Handle().Run("PRAGMA max_page_count=" + QByteArray::number(pages + 2));
  connection.BeginTrans();
  connection.Execute(insertBank);
  const QString big = QStringLiteral("INSERT INTO CartasModelo(Contenido) VALUES('%1')").arg(QString(100000, u'x'));
  QCOMPARE(ErrorOf([&] { connection.Execute(big); }), int(database::DiskFull));
  if (connection.Handle().IsAutocommit()) {
    QCOMPARE(ErrorOf([&] { connection.Execute(insertBank); }), int(database::TransactionLost));
    QCOMPARE(ErrorOf([&] { connection.CommitTrans(); }), int(database::TransactionLost));
    QCOMPARE(Rows(connection, countBanks), QStringLiteral("0"));
  } else {
    connection.CommitTrans();
    QCOMPARE(Rows(connection, countBanks), QStringLiteral("1"));
  }
  QCOMPARE(Rows(connection, QStringLiteral("SELECT COUNT(*) FROM CartasModelo")), QStringLiteral("0"));
  // The engine undoes a transaction by itself after some errors; what follows must not be written on its own.
  connection.BeginTrans();
  connection.Handle().Run("ROLLBACK");
  QCOMPARE(ErrorOf([&] { connection.Execute(insertBank); }), int(database::TransactionLost));
  QCOMPARE(ErrorOf([&] { connection.CommitTrans(); }), int(database::TransactionLost));
  QCOMPARE(ErrorOf([&] { connection.CommitTrans(); }), int(database::NoTransaction));
}

void tst_connection::aLockedDatabaseIsRefused() {
  const auto other = m_database->Connect();
  other->BeginTrans();
  other->Execute(insertBank);
  adodb::Connection& connection = m_database->Connection();
  QCOMPARE(ErrorOf([&] { connection.Execute(insertBank); }), int(database::DatabaseLocked));
  QCOMPARE(ErrorOf([&] { connection.BeginTrans(); }), int(database::DatabaseLocked));
  QCOMPARE(Rows(connection, countBanks), QStringLiteral("0"));
  other->CommitTrans();
  connection.Execute(insertBank);
  QCOMPARE(Rows(connection, countBanks), QStringLiteral("2"));
}

void tst_connection::aStaleReadDoesNotBlockAWrite() {
  adodb::Connection& connection = m_database->Connection();
  const auto open = connection.Execute(QStringLiteral("SELECT Nombre FROM Paises ORDER BY IDPais"));
  m_database->Connect()->Execute(insertBank);
  connection.Execute(insertBank);
  QCOMPARE(Rows(connection, countBanks), QStringLiteral("2"));
  QCOMPARE(open->Field(0).toString(), QStringLiteral("Afganistán"));
  open->MoveNext();
  QCOMPARE(open->Field(0).toString(), QStringLiteral("Albania"));
}

void tst_connection::affectedRows() {
  adodb::Connection& connection = m_database->Connection();
  connection.Execute(QStringLiteral("UPDATE Provincias SET Eliminado=0 WHERE IDProvincia<=10"));
  QCOMPARE(connection.RecordsAffected(), 10);
  connection.Execute(QStringLiteral("DELETE FROM Bancos"));
  QCOMPARE(connection.RecordsAffected(), 0);
}

void tst_connection::repeatedLabels() {
  const auto recordset = m_database->Connection().Execute(
      QStringLiteral("SELECT Paises.Nombre, Provincias.Nombre, IDProvincia FROM Paises INNER JOIN Provincias ON "
                     "Provincias.CodPais=Paises.IDPais WHERE IDProvincia=42"));
  for (int i = 0; i < 3; ++i) {
    QCOMPARE(recordset->Field(u"Nombre").toString(), QStringLiteral("España"));
  }
  QCOMPARE(recordset->Field(1).toString(), QStringLiteral("Soria"));
}

void tst_connection::constraints() {
  adodb::Connection& connection = m_database->Connection();
  const QString lock = QStringLiteral("INSERT INTO BloqueoRegistros(codUsuario,campoID,ValorID) VALUES(1,'%1',7)");
  connection.Execute(lock.arg(QStringLiteral("IDPais")));
  QCOMPARE(ErrorOf([&] { connection.Execute(lock.arg(QStringLiteral("idpais"))); }),
           int(database::ConstraintViolation));
  connection.Execute(lock.arg(QStringLiteral("IDBanco")));
}

void tst_connection::hugeStatements_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("rows");
  const auto repeated = [](const char* piece, int times) { return QString::fromUtf8(piece).repeated(times); };
  const QString start = QStringLiteral("SELECT COUNT(*) FROM Provincias WHERE ");
  QTest::newRow("a long OR") << start + repeated("IDProvincia=1 OR ", 5000) + QStringLiteral("IDProvincia=2")
                             << QStringLiteral("2");
  QTest::newRow("a long IN") << start + QStringLiteral("IDProvincia IN (") + repeated("1,", 20000) +
                                    QStringLiteral("2)")
                             << QStringLiteral("2");
  const QString refused = QStringLiteral("error %1").arg(int(database::SyntaxError));
  QTest::newRow("deep parentheses") << start + repeated("(", 100000) + u'1' + repeated(")", 100000) << refused;
  QTest::newRow("many NOTs") << start + repeated("NOT ", 100000) + u'1' << refused;
  QTest::newRow("many signs") << start + repeated("- ", 100000) + u'1' << refused;
  QTest::newRow("a long sum") << start + repeated("1+", 100000) + u'1' << refused;
  QTest::newRow("many unions") << repeated("SELECT 1 UNION ", 100000) + QStringLiteral("SELECT 1") << refused;
  QTest::newRow("many parentheses around tables")
      << QStringLiteral("SELECT 1 FROM ") + repeated("(", 100000) << refused;
  QTest::newRow("too many values") << start + QStringLiteral("IDProvincia IN (") + repeated("1,", 260000) +
                                          QStringLiteral("2)")
                                   << QStringLiteral("error %1").arg(int(database::StatementTooBig));
}

void tst_connection::hugeStatements() {
  QFETCH(const QString, statement);
  QTEST(Rows(m_database->Connection(), statement), "rows");
}

void tst_connection::manyShapes() {
  adodb::Connection& connection = m_database->Connection();
  const auto open = connection.Execute(QStringLiteral("SELECT Nombre FROM Paises ORDER BY IDPais"));
  for (int i = 0; i < 1000; ++i) {
    QCOMPARE(Rows(connection, QStringLiteral("SELECT IDPais AS n%1 FROM Paises WHERE IDPais=35").arg(i)),
             QStringLiteral("35"));
  }
  open->MoveNext();
  QCOMPARE(open->Field(u"nombre").toString(), QStringLiteral("Albania"));
}

KEL_TEST(tst_connection);
#include "tst_connection.moc"
