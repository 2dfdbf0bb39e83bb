#include "database/Maintenance.h"
#include "database/Presence.h"
#include "database/Schema.h"
#include "database/sqlite/SqliteCopy.h"
#include "database/sqlite/SqlitePreparation.h"
#include "database/sqlite/SqliteTransfer.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

using adodb::Verbatim;
using support::ErrorOf;
using support::Outcome;
using support::Rows;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// Copies of a server in files, and back; the check of a server.
class tst_server_copies : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_database = std::make_unique<TestDatabase>(); }
  void ThereAndBackItIsTheSame();
  void AnOlderFileMovesToAnEmptyServer();
  void OnlyWhatIsSoundAndFreeIsReplaced();
  void ACopyIsOfOneMoment();
  void WhatArrivesOtherwiseIsRefused();
  void TheCheckNamesWhatIsWrong();

 private:
  QString Text() const { return m_database->ConnectionString(); }
  QString Path(const QString& name) const { return m_folder.filePath(name); }
  QString AtPath(const QString& name) const { return database::ConnectionStringForFile(Path(name)); }
  const support::ServerDatabase& Server() const { return *m_database->Server(); }

  QTemporaryDir m_folder;
  std::unique_ptr<TestDatabase> m_database;
};

namespace {

// All rows of all tables but the locks, as the layer reads them.
QStringList Contents(const QString& connectionString) {
  const TestDatabase database(connectionString);
  QStringList contents;
  for (const database::Table& table : database::Schema::Current().Tables()) {
    if (table.name != u"BloqueoRegistros" && table.name != u"Claves") {
      contents += u"== "_s + table.name;
      contents +=
          Rows(database.Connection(), adodb::StatementText(u"SELECT * FROM [{}] ORDER BY 1", Verbatim{table.name}));
    }
  }
  return contents;
}

}  // namespace

// Twice there and once back, with what engines hold in different ways, keys of rows that are gone, a lock and a
// password.
void tst_server_copies::ThereAndBackItIsTheSame() {
  adodb::Connection& connection = m_database->Connection();
  const QString odd = u"a\tb\\N\nc\r\\' "_s + QChar(0) + QChar(0xFEFF) + QString::fromUcs4(U"😀", 1) + u"  "_s;
  adodb::Execute(connection, u"INSERT INTO Bancos(IDBanco,Numero,Nombre) VALUES(70,'','{}')", odd);
  connection.Execute(u"INSERT INTO Donativos(Importe) VALUES('-99.999.999.999,9999')"_s);
  connection.Execute(u"INSERT INTO TipoDeducciones(Porcentaje) VALUES(0.1)"_s);
  connection.Execute(u"INSERT INTO TipoDeducciones(Porcentaje) VALUES(-1.5E-300)"_s);
  connection.Execute(u"INSERT INTO Paises(IDPais) VALUES(900)"_s);
  connection.Execute(u"DELETE FROM Paises WHERE IDPais=900"_s);
  connection.Execute(u"INSERT INTO BloqueoRegistros(campoID,ValorID) VALUES('IDPais',1)"_s);
  const QStringList before = Contents(Text());
  connection.Execute(u"INSERT INTO Claves(codUsuario,Hash) VALUES(1,'de un archivo')"_s);
  const database::CopySize size = database::CopyDatabase(Text(), Path(u"copia.db"_s));
  QVERIFY(size.rows > 300 && size.bytes > 0);
  QCOMPARE(Contents(AtPath(u"copia.db"_s)), before);
  QCOMPARE(ErrorOf([&] { database::CopyDatabase(Text(), Path(u"copia.db"_s)); }), int(adodb::CannotOpen));

  connection.Execute(u"DELETE FROM Bancos"_s);
  const QStringList emptied = Contents(Text());
  Server().Run(u"SELECT 1"_s);
  m_database->Disconnect();
  const QString kept = database::RestoreDatabase(Path(u"copia.db"_s), Text());
  QCOMPARE(Contents(Text()), before);
  const TestDatabase restored(Text());
  for (const char* table : {"Paises", "Bancos"}) {
    const QString key = QString::fromLatin1(table) == u"Paises" ? u"IDPais"_s : u"IDBanco"_s;
    const QString name = QString::fromLatin1(table);
    const QString newKey = QString::number(name == u"Paises" ? 901 : 71);
    for (const QString& place : {AtPath(u"copia.db"_s), Text()}) {
      const auto added = TestDatabase(place).Connect();
      adodb::Execute(*added, u"INSERT INTO {}(Nombre) VALUES('nuevo')", Verbatim{name});
      QCOMPARE(Outcome(*added, adodb::StatementText(u"SELECT MAX({}) FROM {}", Verbatim{key}, Verbatim{name})), newKey);
    }
  }
  QCOMPARE(Outcome(restored.Connection(), u"SELECT COUNT(*) FROM BloqueoRegistros"_s), u"0"_s);
  QCOMPARE(Outcome(restored.Connection(), u"SELECT COUNT(*) FROM Claves"_s), u"0"_s);

  // What was replaced is there, and comes back by its name.
  Server().Run(u"ALTER SCHEMA kel RENAME TO otra; ALTER SCHEMA %1 RENAME TO kel"_s.arg(kept));
  QCOMPARE(Contents(Text()), emptied);
}

void tst_server_copies::AnOlderFileMovesToAnEmptyServer() {
  {
    const database::SqliteHandle old(database::ConnectionString(AtPath(u"vieja.db"_s)),
                                     database::SqliteHandle::Missing::Create);
    database::CreateTables(old, database::Schema::Current(), 1);
    old.Run("INSERT INTO Paises(IDPais,Nombre,Eliminado) VALUES(7,'Francia',-1)");
  }
  Server().Run(u"DROP SCHEMA kel CASCADE"_s);
  QCOMPARE(database::RestoreDatabase(Path(u"vieja.db"_s), Text()), QString());
  QCOMPARE(m_database->Query(u"SELECT IDPais, Nombre, Eliminado FROM Paises"), QStringList(u"7|Francia|Verdadero"_s));
  const database::SqliteHandle old(database::ConnectionString(AtPath(u"vieja.db"_s)),
                                   database::SqliteHandle::Missing::Refuse);
  QCOMPARE(old.Value("PRAGMA user_version"), "1");
}

// The last one can't be undone.
void tst_server_copies::OnlyWhatIsSoundAndFreeIsReplaced() {
  struct Obstacle {
    QString made;
    QString undone;
    int error;
  };
  const Obstacle obstacles[] = {
      {u"CREATE SCHEMA kel_nuevo"_s, u"DROP SCHEMA kel_nuevo"_s, adodb::NotOurDatabase},
      {u"UPDATE kel.kelmotor SET valor='99'"_s, u"UPDATE kel.kelmotor SET valor='%1'"_s.arg(database::SchemaVersion()),
       adodb::NewerDatabase},
      {u"DROP TABLE kel.kelmotor"_s, u"SELECT 1"_s, adodb::NotOurDatabase},
  };
  const QString copy = Path(u"otra.db"_s);
  database::CopyDatabase(Text(), copy);
  const auto restoring = [&] { return ErrorOf([&] { database::RestoreDatabase(copy, Text()); }); };
  {
    m_database->Execute(u"UPDATE Bancos SET Nombre=''");
    const auto writer = m_database->Connect();
    writer->BeginTrans();
    writer->Execute(u"UPDATE Paises SET Nombre='a' WHERE IDPais=1"_s);
    QCOMPARE(ErrorOf([&] { database::RestoreDatabase(copy, Text() + u";Espera=50"_s); }), int(adodb::DatabaseLocked));
  }
  m_database->Disconnect();
  int presence = 0;
  {
    const TestDatabase other(Text());
    presence = database::OwnPresence(other.Connection());
    try {
      database::RestoreDatabase(copy, Text());
      QFAIL("it was restored under another program");
    } catch (const automation::Error& error) {
      QCOMPARE(error.Number(), int(adodb::DatabaseLocked));
      QVERIFY2(error.Description().contains(u'@' + QSysInfo::machineHostName()), qUtf8Printable(error.Description()));
    }
  }
  QCOMPARE(restoring(), 0);
  QVERIFY(database::OwnPresence(TestDatabase(Text()).Connection()) > presence);
  for (const Obstacle& obstacle : obstacles) {
    Server().Run(obstacle.made);
    QCOMPARE(restoring(), obstacle.error);
    Server().Run(obstacle.undone);
  }
  QFile file(copy);
  QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no es una base de datos") > 0);
  file.close();
  QCOMPARE(restoring(), int(adodb::NotADatabase));
  Server().Run(
      u"DO $$BEGIN ASSERT 249 = (SELECT count(*) FROM kel.paises); "
      "ASSERT 1 = (SELECT count(*) FROM pg_namespace WHERE nspname LIKE 'kel_antes%'); END$$"_s);
}

// Others go on while it is made; what they change is all in it or not at all.
void tst_server_copies::ACopyIsOfOneMoment() {
  int questions = 0;
  const auto change = [&] {
    if (questions++ == 0) {
      m_database->Execute(u"INSERT INTO Ajustes(IDAjuste) VALUES(1)");
    }
    return false;
  };
  m_database->Execute(u"INSERT INTO Bancos(Nombre) SELECT A.Nombre FROM Provincias AS A, Provincias AS B");
  database::CopyDatabase(Text(), Path(u"momento.db"_s), change);
  QVERIFY(questions > 0);
  QCOMPARE(TestDatabase(AtPath(u"momento.db"_s)).Query(u"SELECT COUNT(*) FROM Ajustes"), QStringList(u"0"_s));
  QCOMPARE(ErrorOf([&] { database::CopyDatabase(Text(), Path(u"nunca.db"_s), [] { return true; }); }),
           int(adodb::Stopped));
  QVERIFY(!QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden).join(u' ').contains(u"nunca"_s));
}

// Each way of losing something, one at a time.
void tst_server_copies::WhatArrivesOtherwiseIsRefused() {
  enum class Loss { None, Row, Value, Key };
  struct Loser : database::SqliteTransfer {
    struct Taker : database::RowTaker {
      Taker(std::unique_ptr<database::RowTaker> itsNext, Loss itsLoss) : next(std::move(itsNext)), loss(itsLoss) {}
      void Add(const database::CarriedRow& row) override {
        database::CarriedRow changed = row;
        changed[1].text += loss == Loss::Value ? u" " : u"";
        if (std::exchange(loss, Loss::None) != Loss::Row) {
          next->Add(changed);
        }
      }
      std::unique_ptr<database::RowTaker> next;
      Loss loss;
    };
    Loser(database::SqliteConnection& connection, Loss itsLoss) : SqliteTransfer(connection), loss(itsLoss) {}
    std::unique_ptr<database::RowTaker> Taker(const database::Table& table) const override {
      return std::make_unique<struct Taker>(SqliteTransfer::Taker(table), table.name == u"Paises" ? loss : Loss::None);
    }
    void CountOnFrom(const database::Table& table, qint64 key) const override {
      SqliteTransfer::CountOnFrom(table, loss == Loss::Key ? key + 1 : key);
    }
    Loss loss;
  };
  database::PrepareDatabase(AtPath(u"de.db"_s), database::Content::Reference);
  database::SqliteConnection from{database::ConnectionString(AtPath(u"de.db"_s))};
  from.Open();
  for (const Loss loss : {Loss::None, Loss::Row, Loss::Value, Loss::Key}) {
    const QString name = u"a%1.db"_s.arg(int(loss));
    const auto carry = [&] {
      database::MakeSqlite(Path(name),
                           [&](const database::TransferTarget& plain) {
                             auto& connection = dynamic_cast<database::SqliteConnection&>(plain.Connection());
                             database::CarryRows(database::SqliteTransfer(from), Loser(connection, loss));
                           },
                           {});
    };
    QCOMPARE(ErrorOf(carry), loss == Loss::None ? 0 : int(adodb::EngineFailure));
    QCOMPARE(QFile::exists(Path(name)), loss == Loss::None);
  }
}

void tst_server_copies::TheCheckNamesWhatIsWrong() {
  QVERIFY(database::CheckDatabase(Text()).IsSound());
  Server().Run(
      u"DROP INDEX kel.ix_bancos_nombre; DROP TABLE kel.discos;"
      "UPDATE pg_index SET indisvalid=false WHERE indexrelid='kel.ix_paises_nombre_eliminado'::regclass;"
      "UPDATE pg_collation SET collversion='1' WHERE collname='kel_es';"
      "SELECT setval('kel.paises_idpais_seq', 5);"
      "UPDATE kel.provincias SET codpais=99999, prefijo='demasiado' WHERE idprovincia=3"_s);
  const database::Findings findings = database::CheckDatabase(Text());
  QCOMPARE(findings.integrity, (QStringList{u"Los números nuevos de la tabla Paises están ya en uso: su secuencia va "
                                            "atrasada."_s,
                                            u"Falta la tabla Discos."_s}));
  QCOMPARE(findings.indexes,
           (QStringList{u"El índice «ix_paises_nombre_eliminado» está a medio hacer."_s,
                        u"Los índices de textos están hechos con otras reglas de orden: hay que ejecutar «kel-host "
                        "preparar»."_s,
                        u"Falta el índice «ix_Bancos_Nombre» de la tabla Bancos."_s}));
  QCOMPARE(findings.references, QStringList(u"Provincias.CodPais: un registro apunta a un registro de Paises que no "
                                            "existe (el primero, IDProvincia 3)."_s));
  QCOMPARE(findings.lengths.size(), 1);
}

KEL_TEST(tst_server_copies);
#include "tst_server_copies.moc"
