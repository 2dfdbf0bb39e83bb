#include "database/sqlite/SqliteConnection.h"
#include "host/records/ChangeLog.h"
#include "host/records/OfficeConnection.h"
#include "host/records/RecordLoader.h"
#include "host/records/SeenNotes.h"
#include "host/records/Session.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/contract/cConstNodo.h"
#include "support/ErrorOf.h"
#include "support/RecordingConnection.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;

/// What the host's own connection notes of the writes that pass it, and batches.
class tst_office_connection : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void Notes_data();
  void Notes();
  void NotesGoWithTheirTransaction();
  void WhatFailsLeavesNothing();
  void AKilledProgramLeavesBothOrNothing_data();
  void AKilledProgramLeavesBothOrNothing();
  void WhoWhenAndHowLong();
  void WatchesSeeWhatIsCommitted();
  void LateNotesAreSeen();
  void ListsAreReadOverOneConnection();
  void ABatchIsOneTransaction();
  void ALostBatchDoesNothingMore();

 private:
  QStringList NotesNow() const;
  QString Count(const QString& table) const;

  std::unique_ptr<TestDatabase> m_database;
  host::Session m_session;
  std::unique_ptr<host::OfficeConnection> m_office;
};

namespace {

const QString insertBank = u"INSERT INTO Bancos(Numero,Nombre) VALUES('0100','Uno')"_s;

QString TextOf(const host::Change& change) {
  constexpr const char* kinds[] = {"?", "added", "changed", "deleted", "recovered", "several"};
  QStringList columns;
  for (const host::ColumnChange& column : change.columns) {
    columns.append(u"%1:%2>%3"_s.arg(column.column, column.before, column.after));
  }
  return u"%1 %2 %3 «%4» %5 %6"_s.arg(QLatin1StringView(kinds[static_cast<int>(change.kind)]), change.table,
                                      QString::number(change.key), change.name, QString::number(change.rows),
                                      columns.join(u' '));
}

// Hands everything on to an engine of its own, and ends the program without a word before the entry of that number.
class Deadly : public support::RecordingConnection {
 public:
  Deadly(const QString& text, int lastEntry) : Deadly(database::CreateConnection(text), lastEntry) {}

 private:
  Deadly(std::unique_ptr<adodb::Connection> engine, int lastEntry)
      : RecordingConnection(*engine), m_engine(std::move(engine)) {
    SetHook([left = lastEntry](const QString& entry) mutable {
      if (left-- == 0) {
        std::puts(qPrintable(entry));
        std::fflush(stdout);
        raise(SIGKILL);
      }
    });
  }

  std::unique_ptr<adodb::Connection> m_engine;
};

// Two banks, in transactions of their own, in one, or in a batch.
int WriteAsHelper(const QStringList& arguments) {
  const QString& way = arguments[1];
  host::Session session;
  host::OfficeConnection office(std::make_unique<Deadly>(arguments[0], arguments[2].toInt()), session);
  session.connection = &office;
  session.office = &office;
  if (way == u"batch"_s) {
    office.BeginBatch({u"Bancos"_s});
  } else {
    office.Open();
  }
  if (way == u"transaction"_s) {
    office.BeginTrans();
  }
  office.Execute(u"INSERT INTO Bancos(Numero) VALUES('1')"_s);
  office.Execute(u"INSERT INTO Bancos(Numero) VALUES('2')"_s);
  if (way == u"transaction"_s) {
    office.CommitTrans();
  } else if (way == u"batch"_s) {
    office.CommitBatch();
    office.EndBatch();
  }
  return 0;
}

}  // namespace

void tst_office_connection::init() {
  m_database = std::make_unique<TestDatabase>();
  m_session.userId = 1;
  m_session.userName = u"ana"_s;
  m_office = std::make_unique<host::OfficeConnection>(m_database->Connect(), m_session);
  m_session.connection = m_office.get();
  m_session.office = m_office.get();
}

QStringList tst_office_connection::NotesNow() const {
  QStringList notes;
  for (const host::Change& change : host::ChangesAfter(m_database->Connection(), 0, 100)) {
    notes.append(TextOf(change).trimmed());
  }
  return notes;
}

QString tst_office_connection::Count(const QString& table) const {
  return Outcome(m_database->Connection(), u"SELECT COUNT(*) FROM "_s + table);
}

void tst_office_connection::Notes_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("note");
  QTest::addColumn<int>("affected");
  const auto row = [](const char* statement, const char* note, int affected) {
    QTest::newRow(statement) << QString::fromUtf8(statement) << QString::fromUtf8(note) << affected;
  };
  row("INSERT INTO Bancos(Numero,Nombre) VALUES('0049','Almendro')",
      "added Bancos 1 «0049 Almendro» 1 Numero:>0049 Nombre:>Almendro", 1);
  row("INSERT INTO Provincias(IDProvincia,Nombre,CodPais) VALUES(900,'Nueva',35)",
      "added Provincias 900 «Nueva» 1 CodPais:>35 Nombre:>Nueva", 1);
  row("UPDATE Paises SET Nombre='Hispania' WHERE IDPais=35", "changed Paises 35 «España» 1 Nombre:España>Hispania", 1);
  row("UPDATE Paises SET Nombre='España' WHERE IDPais=35", "", 1);
  row("UPDATE paises SET nombre='x' WHERE idpais=35 AND Eliminado=-1", "", 0);
  row("UPDATE Paises SET Nombre='x' WHERE IDPais=9999", "", 0);
  row("UPDATE Paises SET Eliminado=-1 WHERE IDPais=35", "deleted Paises 35 «España» 1", 1);
  row("DELETE FROM Paises WHERE IDPais=35", "deleted Paises 35 «España» 1", 1);
  row("UPDATE Provincias SET Prefijo='0' & Prefijo WHERE CodPais=35 AND Prefijo<'03'",
      "several Provincias 0 «CodPais=35 AND Prefijo<'03'» 2", 2);
  row("UPDATE Provincias SET Prefijo='' WHERE CodPais=9999", "", 0);
  row("INSERT INTO Cabeceras(Nombre) SELECT Nombre FROM Paises WHERE IDPais<3", "several Cabeceras 0 «» 2", 2);
  row("INSERT INTO CartasModelo(Nombre,Contenido) VALUES('Carta','{\\rtf1 secreto}')",
      "added CartasModelo 2 «Carta» 1 Nombre:>Carta Contenido:>15", 1);
  row("UPDATE CartasModelo SET contenido='otra cara' WHERE IDCartaModelo=1",
      "changed CartasModelo 1 «Vieja» 1 Contenido:9>9", 1);
  row("UPDATE CartasModelo SET Nombre='Vieja' WHERE IDCartaModelo=1", "", 1);
  row("INSERT INTO BloqueoRegistros(codUsuario,campoID,ValorID) VALUES(1,'IDPais',35)", "", 1);
  row("INSERT INTO Claves(codUsuario,Hash) VALUES(1,'secreto')", "", 1);
  row("SELECT Nombre FROM Paises WHERE IDPais=35", "", 0);
}

void tst_office_connection::Notes() {
  QFETCH(const QString, statement);
  m_database->Execute(u"INSERT INTO CartasModelo(Nombre,Contenido) VALUES('Vieja','una carta')");
  m_office->Execute(statement);
  QTEST(NotesNow().join(u'/'), "note");
  QTEST(static_cast<int>(m_office->RecordsAffected()), "affected");
}

void tst_office_connection::NotesGoWithTheirTransaction() {
  m_office->BeginTrans();
  QCOMPARE(ErrorOf([&] { m_office->BeginTrans(); }), int(adodb::TransactionActive));
  m_office->Execute(insertBank);
  m_office->RollbackTrans();
  QCOMPARE(NotesNow(), QStringList());
  m_office->BeginTrans();
  m_office->Execute(insertBank);
  m_office->Execute(u"UPDATE Paises SET Nombre='x' WHERE IDPais=35"_s);
  QCOMPARE(NotesNow(), QStringList());
  m_office->Close();
  QCOMPARE(Count(u"Bancos"_s), u"0"_s);
  m_office->Open();
  m_office->BeginTrans();
  m_office->Execute(insertBank);
  // What another program adds now is not what the component asks for.
  const QString first = Outcome(*m_office, u"SELECT MAX(IDBanco) AS N FROM Bancos"_s);
  m_office->CommitTrans();
  m_office->Execute(u"INSERT INTO Bancos(Numero) VALUES('0200')"_s);
  m_database->Execute(u"INSERT INTO Bancos(Numero) VALUES('7')");
  const QString second = Outcome(*m_office, u"SELECT MAX(IDBanco) AS N FROM Bancos"_s);
  QCOMPARE(m_database->Query(u"SELECT Numero FROM Bancos WHERE IDBanco IN ({},{}) ORDER BY IDBanco",
                             adodb::Verbatim{first}, adodb::Verbatim{second}),
           (QStringList{u"0100"_s, u"0200"_s}));
  QCOMPARE(NotesNow().size(), 2);
}

void tst_office_connection::WhatFailsLeavesNothing() {
  m_office->Execute(insertBank);
  QCOMPARE(ErrorOf([&] { m_office->Execute(insertBank); }), int(adodb::ConstraintViolation));
  QCOMPARE(ErrorOf([&] { m_office->Execute(u"UPDATE Bancos SET Nada=1 WHERE IDBanco=1"_s); }),
           int(adodb::NoSuchColumn));
  QCOMPARE(ErrorOf([&] { m_office->Execute(u"DROP TABLE Bancos"_s); }), int(adodb::StatementRefused));
  QCOMPARE(NotesNow().size(), 1);
  // Without a note there is no change, either.
  m_database->Execute(u"DELETE FROM Cambios");
  if (const support::ServerDatabase* server = m_database->Server()) {
    server->Run(u"ALTER TABLE kel.cambios RENAME TO otra"_s);
  } else {
    static_cast<database::SqliteConnection&>(m_database->Connection())
        .Handle()
        .Run("ALTER TABLE Cambios RENAME TO Otra");
  }
  QCOMPARE(ErrorOf([&] { m_office->Execute(u"UPDATE Bancos SET Nombre='x' WHERE IDBanco=1"_s); }),
           int(adodb::NoSuchTable));
  QCOMPARE(Outcome(m_database->Connection(), u"SELECT Nombre FROM Bancos"_s), u"Uno"_s);
}

void tst_office_connection::AKilledProgramLeavesBothOrNothing_data() {
  QTest::addColumn<int>("together");
  QTest::newRow("alone") << 1;
  QTest::newRow("transaction") << 2;
  QTest::newRow("batch") << 2;
}

// Killed before whatever it asks the engine for, one after the other, until nothing is left to be asked.
void tst_office_connection::AKilledProgramLeavesBothOrNothing() {
  QFETCH(const int, together);
  int betweenBoth = 0;
  bool wasKilled = true;
  for (int asked = 0; wasKilled; ++asked) {
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QCoreApplication::applicationFilePath(),
                  {u"--write"_s, m_database->ConnectionString(), QString::fromUtf8(QTest::currentDataTag()),
                   QString::number(asked)});
    QVERIFY(program.waitForFinished());
    wasKilled = program.exitStatus() == QProcess::CrashExit;
    const QByteArray entry = program.readAllStandardOutput();
    QCOMPARE(m_database->Query(u"SELECT Numero FROM Bancos WHERE IDBanco NOT IN (SELECT ValorID FROM Cambios)"),
             QStringList());
    QCOMPARE(m_database->Query(u"SELECT ValorID FROM Cambios WHERE ValorID NOT IN (SELECT IDBanco FROM Bancos)"),
             QStringList());
    const int written = m_database->Id(u"SELECT COUNT(*) FROM Bancos");
    QVERIFY2(written % together == 0 && (wasKilled || written == 2), entry.constData());
    betweenBoth += entry.startsWith("INSERT INTO Cambios") ? 1 : 0;
    m_database->Execute(u"DELETE FROM Bancos");
    m_database->Execute(u"DELETE FROM Cambios");
  }
  QCOMPARE(betweenBoth, 2);
}

void tst_office_connection::WhoWhenAndHowLong() {
  const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
  adodb::Execute(*m_office, u"INSERT INTO Bancos(Nombre) VALUES('{}')", QString(5000, u'x'));
  m_session.userName = u"berta"_s;
  m_office->Execute(u"UPDATE Bancos SET Nombre='b' WHERE IDBanco=1"_s);
  m_office->Execute(u"UPDATE Bancos SET Numero='2' WHERE IDBanco=1"_s);
  adodb::Connection& reader = m_database->Connection();
  const QList<host::Change> first = host::ChangesAfter(reader, 0, 2);
  QCOMPARE(first.size(), 2);
  QCOMPARE(first[0].userName, u"ana"_s);
  QCOMPARE(first[1].userName, u"berta"_s);
  QCOMPARE(first[1].columns.constFirst().before, QString(200, u'x'));
  QVERIFY(first[0].moment >= before && first[0].moment <= QDateTime::currentDateTimeUtc());
  const QList<host::Change> rest = host::ChangesAfter(reader, first[1].number, 100);
  QCOMPARE(rest.size(), 1);
  QCOMPARE(rest.constFirst().number, host::NewestChange(reader));
  QCOMPARE(rest.constFirst().program, m_office->Program());
  QCOMPARE(host::LastChangeOf(reader, u"Bancos"_s, 1)->columns.constFirst().after, u"2"_s);
  QVERIFY(!host::LastChangeOf(reader, u"Paises"_s, 1));
  m_database->Execute(u"UPDATE Cambios SET Fecha='2020-01-01T00:00:00Z' WHERE IDCambio<{}", first[1].number);
  host::ForgetChangesBefore(reader, before);
  QCOMPARE(NotesNow().size(), 2);
}

void tst_office_connection::WatchesSeeWhatIsCommitted() {
  const host::WriteWatch outer(*m_office);
  m_office->Execute(u"UPDATE Provincias SET Prefijo='' WHERE CodPais=35"_s);
  {
    const host::WriteWatch inner(*m_office);
    m_office->BeginTrans();
    m_office->Execute(insertBank);
    m_office->Execute(u"UPDATE Bancos SET Nombre='b' WHERE IDBanco=1"_s);
    QCOMPARE(inner.Rows().size(), 0);
    m_office->CommitTrans();
    m_office->BeginTrans();
    m_office->Execute(u"UPDATE Paises SET Nombre='x' WHERE IDPais=35"_s);
    m_office->RollbackTrans();
    m_office->Execute(u"DELETE FROM BloqueoRegistros"_s);
    m_office->Execute(u"UPDATE Paises SET Nombre='x' WHERE IDPais=1"_s);
    QCOMPARE(inner.Rows(), (QList<host::WrittenRow>{{u"Bancos"_s, 1}, {u"Paises"_s, 1}}));
  }
  QCOMPARE(outer.Rows(), (QList<host::WrittenRow>{{u"Provincias"_s, 0}, {u"Bancos"_s, 1}, {u"Paises"_s, 1}}));
}

void tst_office_connection::ABatchIsOneTransaction() {
  m_office->BeginTrans();
  QCOMPARE(ErrorOf([&] { m_office->BeginBatch({u"Bancos"_s}); }), int(adodb::TransactionActive));
  m_office->RollbackTrans();
  const host::WriteWatch watch(*m_office);
  m_office->BeginBatch({u"Bancos"_s});
  const auto other = database::CreateConnection(m_database->ConnectionString() + u";Espera=20"_s);
  other->Open();
  QCOMPARE(ErrorOf([&] { other->Execute(insertBank); }), int(adodb::DatabaseLocked));
  // As the component sees it, nothing is special.
  m_office->Close();
  QCOMPARE(m_office->State(), int(adodb::StateClosed));
  QCOMPARE(ErrorOf([&] { m_office->Execute(insertBank); }), int(adodb::ObjectClosed));
  m_office->Open();
  QCOMPARE(ErrorOf([&] { m_office->Open(); }), int(adodb::ObjectOpen));
  QCOMPARE(ErrorOf([&] { m_office->CommitTrans(); }), int(adodb::NoTransaction));
  m_office->BeginTrans();
  m_office->Execute(insertBank);
  m_office->CommitTrans();
  m_office->Close();
  QCOMPARE(Count(u"Bancos"_s), u"0"_s);
  QCOMPARE(watch.Rows().size(), 0);
  m_office->CommitBatch();
  m_office->EndBatch();
  QCOMPARE(m_office->State(), int(adodb::StateOpen));
  QCOMPARE(Count(u"Bancos"_s) + Count(u"Cambios"_s), u"11"_s);
  QCOMPARE(watch.Rows().size(), 1);
}

void tst_office_connection::ALostBatchDoesNothingMore() {
  for (const bool byTransaction : {false, true}) {
    m_office->BeginBatch({u"Bancos"_s});
    m_office->Execute(insertBank);
    if (byTransaction) {
      m_office->BeginTrans();
      m_office->RollbackTrans();
    } else {
      m_office->RollBackBatch();
    }
    QCOMPARE(ErrorOf([&] { m_office->Execute(insertBank); }), int(adodb::TransactionLost));
    QCOMPARE(ErrorOf([&] { m_office->CommitBatch(); }), int(adodb::TransactionLost));
    m_office->EndBatch();
    QCOMPARE(Count(u"Bancos"_s) + Count(u"Cambios"_s), u"00"_s);
  }
  m_office->Execute(insertBank);
  QCOMPARE(Count(u"Bancos"_s), u"1"_s);
}

// On a server the lower number may be committed later; nothing is seen twice.
void tst_office_connection::LateNotesAreSeen() {
  host::SeenNotes seen(10);
  const auto take = [&](const QList<qint64>& numbers) {
    QList<host::Change> notes;
    for (const qint64 number : numbers) {
      host::Change note;
      note.number = number;
      notes.append(note);
    }
    seen.Take(notes);
    QString taken = QString::number(seen.From());
    for (const host::Change& note : std::as_const(notes)) {
      taken += u' ' + QString::number(note.number);
    }
    return taken;
  };
  QCOMPARE(take({11, 14}), u"11 11 14"_s);
  QCOMPARE(take({14}), u"11"_s);
  QCOMPARE(take({13, 14}), u"11 13"_s);
  QCOMPARE(take({12, 13, 14, 15}), u"15 12 15"_s);
  // What was undone is not waited for for ever.
  QCOMPARE(take({17}), u"15 17"_s);
  QCOMPARE(take({1000}), u"799 1000"_s);
  constexpr qint64 afterManyYears = 1'000'000'000'000;
  QCOMPARE(take({afterManyYears}), u"999999999799 1000000000000"_s);
}

void tst_office_connection::ListsAreReadOverOneConnection() {
  int made = 0;
  qsizetype read = 0;
  host::DatabaseThread thread([&] {
    ++made;
    return database::CreateConnection(m_database->ConnectionString());
  });
  host::RecordLoader loader(thread);
  connect(&loader, &host::RecordLoader::Loaded, this,
          [&](const host::SortedRecords& records) { read = records.records.Size(); });
  const cConstNodo node;
  for (const int id : {node.Provincias(), node.Paises(), node.Provincias()}) {
    read = 0;
    loader.Load(*host::FindNode(id), 0);
    QTRY_VERIFY(read > 0);
    m_office->Execute(u"UPDATE Provincias SET Eliminado=-1 WHERE IDProvincia<3"_s);
  }
  QCOMPARE(read, 50);
  QCOMPARE(made, 1);
}

KEL_TEST(tst_office_connection);
KEL_TEST_HELPER(write, WriteAsHelper);
#include "tst_office_connection.moc"
