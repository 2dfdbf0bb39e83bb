#include "database/Maintenance.h"
#include "database/engine/Check.h"
#include "database/sqlite/SqliteCheck.h"
#include "database/sqlite/SqlitePreparation.h"
#include "platform/adodb/ErrorNumbers.h"
#include "platform/process/PrivateFiles.h"
#include "support/ErrorOf.h"
#include "support/SmallDisk.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>

using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// Copies, restoring, checks, and what an unclean end leaves.
class tst_maintenance : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    m_database = std::make_unique<TestDatabase>();
    // Open, as of a program at work.
    m_database->Connection();
  }
  void ACopyIsWholeWhileOthersWrite();
  void WhereNoCopyCanBeMade();
  void ACopyCanBeStopped();
  void AFolderOfEverybody_data();
  void AFolderOfEverybody();
  void RestoringKeepsWhatWasThere();
  void RestoringWhereNothingWas();
  void OnlyASoundCopyIsRestored_data();
  void OnlyASoundCopyIsRestored();
  void ADamagedFileIsReplaced();
  void NothingIsRestoredUnderAnotherProgram();
  void Checks_data();
  void Checks();
  void AnIndexThatLiesIsFound();
  void AColumnNamesTheTableOfItsKey();
  void AnUncleanEndIsNoticed();
  void AFullDiskCanBeReadFrom();
  void ALogThatCannotBeTakenOver();
  void AFileThatWasReplaced();

 private:
  QString Path(const QString& name) const { return m_database->Path(name); }
  QString Text() const { return m_database->ConnectionString(); }
  QStringList Files() const { return QDir(Path(u"."_s)).entryList(QDir::Files, QDir::Name); }

  std::unique_ptr<TestDatabase> m_database;
};

namespace {

QString BankCount(const QString& file) {
  const auto connection = database::CreateConnection(database::ConnectionStringForFile(file));
  connection->Open();
  return Outcome(*connection, u"SELECT COUNT(*) FROM Bancos"_s);
}

void Spoil(const QString& file, const char* table) {
  int root = 0;
  {
    const database::SqliteHandle handle(database::ConnectionString(database::ConnectionStringForFile(file)),
                                        database::SqliteHandle::Missing::Refuse);
    root = handle.Value("SELECT rootpage FROM sqlite_schema WHERE name='" + QByteArray(table) + '\'').toInt();
  }
  QFile bytes(file);
  if (!bytes.open(QIODevice::ReadWrite) || !bytes.seek((root - 1) * 4096) ||
      bytes.write(QByteArray(4096, 'U')) != 4096) {
    qFatal("cannot spoil a test file");
  }
}

constexpr uid_t attackingUser = 20002;
constexpr uid_t attackedUser = 65534;
constexpr int targets = 6;

// Plants a file that all may write under a name that another program may use, and keeps it open.
int Plant(const QByteArray& path) {
  umask(0);
  return open(path.constData(), O_RDWR | O_CREAT | O_EXCL, 0666);
}

// Whether something of a database has come into the file.
bool HasLeaked(int file) {
  char first = '\0';
  return pread(file, &first, 1, 0) == 1;
}

// What somebody who may write in the folder can do there, until the process is ended; says so when a file that it holds
// or can read has got a database's bytes.
int AttackAsHelper(const QString& folder, const QString& victim) {
  std::map<QByteArray, int> planted;
  const auto plant = [&](const QByteArray& path) { planted.emplace(path, Plant(path)); };
  for (int i = 0; i < targets; ++i) {
    plant(QFile::encodeName(u"%1/copia%2.db.parte-%3"_s.arg(folder, QString::number(i), victim)));
  }
  std::puts("planted");
  std::fflush(stdout);
  for (;;) {
    const QFileInfoList found = QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : found) {
      const QByteArray path = QFile::encodeName(entry.filePath());
      if (entry.ownerId() != attackingUser && std::rename(path.constData(), (path + "-x").constData()) == 0) {
        entry.isDir() ? void(mkdir(path.constData(), 0777)) : plant(path);
      }
      const int readable = entry.ownerId() == attackingUser ? -1 : open(path.constData(), O_RDONLY);
      if (readable >= 0 && entry.isFile() && HasLeaked(readable)) {
        std::printf("read %s\n", path.constData());
      }
      close(readable);
    }
    for (const auto& [path, file] : planted) {
      if (file >= 0 && HasLeaked(file)) {
        std::printf("written %s\n", path.constData());
      }
    }
    std::fflush(stdout);
  }
}

// Pairs of rows, each pair in one transaction, until the process is ended.
int WriteAsHelper(const QString& text) {
  const auto connection = database::CreateConnection(text);
  connection->Open();
  for (int i = 0; i < 100000; ++i) {
    connection->BeginTrans();
    for (int row = 0; row < 2; ++row) {
      adodb::Execute(*connection, u"INSERT INTO Bancos(Nombre) VALUES('{}')", QString(40, u'x'));
    }
    connection->CommitTrans();
    std::puts("");
    std::fflush(stdout);
  }
  return 0;
}

}  // namespace

void tst_maintenance::ACopyIsWholeWhileOthersWrite() {
  QProcess writer;
  writer.start(QCoreApplication::applicationFilePath(), {u"--write"_s, Text()});
  QVERIFY(writer.waitForReadyRead(30000));
  for (int i = 0; i < 8; ++i) {
    const QString file = Path(u"copia%1.db"_s.arg(i));
    const database::CopySize size = database::CopyDatabase(Text(), file);
    QCOMPARE(size.bytes, QFileInfo(file).size());
    QVERIFY(size.rows > 249 + 52);
    QVERIFY(!process::IsOpenToOthers(file));
    QVERIFY(database::CheckDatabase(database::ConnectionStringForFile(file)).IsSound());
    const int banks = BankCount(file).toInt();
    QVERIFY2(banks > 0 && banks % 2 == 0, qPrintable(QString::number(banks)));
  }
  writer.kill();
  QVERIFY(writer.waitForFinished());
  // A copy is one file, whole in itself.
  QCOMPARE(Files().filter(u"copia"_s).size(), 8);
}

void tst_maintenance::WhereNoCopyCanBeMade() {
  const auto copy = [this](const QString& file) { return ErrorOf([&] { database::CopyDatabase(Text(), file); }); };
  QCOMPARE(copy(Path({})), int(adodb::CannotOpen));
  QCOMPARE(copy(Path(u"no/hay/copia.db"_s)), int(adodb::CannotOpen));
  QVERIFY(!QFile::exists(Path(u"no"_s)));
  Spoil(Path({}), "Bancos");
  QCOMPARE(copy(Path(u"copia.db"_s)), int(adodb::DatabaseDamaged));
  QCOMPARE(Files().filter(u"copia"_s), QStringList());
}

void tst_maintenance::ACopyCanBeStopped() {
  const auto stop = [] { return true; };
  QCOMPARE(ErrorOf([&] { database::CopyDatabase(Text(), Path(u"copia.db"_s), stop); }), int(adodb::Stopped));
  int asked = 0;
  const auto later = [&] { return ++asked > 2; };
  QCOMPARE(ErrorOf([&] { database::CopyDatabase(Text(), Path(u"copia.db"_s), later); }), int(adodb::Stopped));
  QCOMPARE(Files().filter(u"copia"_s), QStringList());
}

void tst_maintenance::AFolderOfEverybody_data() {
  QTest::addColumn<int>("mode");
  QTest::newRow("each may change his own") << 01777;
  QTest::newRow("each may change everything") << 0777;
}

void tst_maintenance::AFolderOfEverybody() {
  QFETCH(const int, mode);
  if (geteuid() != 0) {
    QSKIP("only the superuser can be two other users");
  }
  const QTemporaryDir shared;
  QVERIFY(chmod(qPrintable(shared.path()), mode_t(mode)) == 0);
  m_database->Disconnect();
  QVERIFY(chown(qPrintable(Path(u"."_s)), attackedUser, attackedUser) == 0 &&
          chown(qPrintable(Path({})), attackedUser, attackedUser) == 0);
  QProcess attacker;
  attacker.start(u"setpriv"_s, {u"--reuid=%1"_s.arg(attackingUser), u"--regid=%1"_s.arg(attackingUser),
                                u"--clear-groups"_s, QCoreApplication::applicationFilePath(), u"--attack"_s,
                                shared.path(), QString::number(QCoreApplication::applicationPid())});
  QVERIFY(attacker.waitForReadyRead(30000));
  QCOMPARE(attacker.readLine(), QByteArray("planted\n"));
  QCOMPARE(seteuid(attackedUser), 0);
  int made = 0;
  for (int i = 0; i < targets; ++i) {
    const QString file = shared.filePath(u"copia%1.db"_s.arg(i));
    made += ErrorOf([&] { database::CopyDatabase(Text(), file); }) == 0;
    made += ErrorOf([&] { database::RestoreDatabase(Path({}), database::ConnectionStringForFile(file)); }) == 0;
  }
  QCOMPARE(seteuid(0), 0);
  attacker.kill();
  QVERIFY(attacker.waitForFinished());
  QCOMPARE(attacker.readAll(), QByteArray());
  const QFileInfoList left = QDir(shared.path()).entryInfoList({u"copia*"_s}, QDir::Files);
  for (const QFileInfo& file : left) {
    QVERIFY2(file.ownerId() == attackingUser || !process::IsOpenToOthers(file.filePath()), qPrintable(file.filePath()));
  }
  // Who may change everything may also spoil everything.
  QVERIFY2(made == 2 * targets || (mode & S_ISVTX) == 0, qPrintable(QString::number(made)));
}

void tst_maintenance::RestoringKeepsWhatWasThere() {
  database::CopyDatabase(Text(), Path(u"copia.db"_s));
  m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('nuevo')");
  QVERIFY(QFile::setPermissions(Path({}), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup));
  m_database->Disconnect();
  const QString kept = database::RestoreDatabase(Path(u"copia.db"_s), Text());
  QCOMPARE(BankCount(Path({})), u"0"_s);
  QCOMPARE(BankCount(kept), u"1"_s);
  QVERIFY(QFile::permissions(Path({})) & QFile::WriteGroup);
  const QString second = database::RestoreDatabase(kept, Text());
  QVERIFY(second != kept);
  QCOMPARE(BankCount(Path({})), u"1"_s);
  QCOMPARE(Files(),
           QStringList({u"copia.db"_s, u"kel.db"_s, QFileInfo(kept).fileName(), QFileInfo(second).fileName()}));
}

void tst_maintenance::RestoringWhereNothingWas() {
  const QString target = database::ConnectionStringForFile(Path(u"nueva.db"_s));
  QCOMPARE(database::RestoreDatabase(Path({}), target), QString());
  QCOMPARE(BankCount(Path(u"nueva.db"_s)), u"0"_s);
  QVERIFY(!process::IsOpenToOthers(Path(u"nueva.db"_s)));
}

void tst_maintenance::OnlyASoundCopyIsRestored_data() {
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<int>("number");
  QTest::newRow("text") << QByteArray(5000, 'x') << int(adodb::NotADatabase);
  QTest::newRow("empty") << QByteArray() << int(adodb::NotOurDatabase);
  QTest::newRow("damaged") << QByteArray("damage") << int(adodb::DatabaseDamaged);
}

void tst_maintenance::OnlyASoundCopyIsRestored() {
  QFETCH(const QByteArray, bytes);
  const QString copy = Path(u"copia.db"_s);
  if (bytes == "damage") {
    database::CopyDatabase(Text(), copy);
    Spoil(copy, "Provincias");
  } else {
    QFile file(copy);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  }
  m_database->Disconnect();
  QTEST(ErrorOf([&] { database::RestoreDatabase(copy, Text()); }), "number");
  QCOMPARE(Files(), QStringList({u"copia.db"_s, u"kel.db"_s}));
  QVERIFY(database::CheckDatabase(Text()).IsSound());
}

void tst_maintenance::ADamagedFileIsReplaced() {
  database::CopyDatabase(Text(), Path(u"copia.db"_s));
  m_database->Disconnect();
  for (const bool wholly : {false, true}) {
    if (wholly) {
      QFile file(Path({}));
      QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(9000, 'x')) == 9000);
    } else {
      Spoil(Path({}), "Paises");
    }
    QVERIFY(QFile::exists(database::RestoreDatabase(Path(u"copia.db"_s), Text())));
    QVERIFY(database::CheckDatabase(Text()).IsSound());
  }
}

void tst_maintenance::NothingIsRestoredUnderAnotherProgram() {
  database::CopyDatabase(Text(), Path(u"copia.db"_s));
  m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('nuevo')");
  QCOMPARE(ErrorOf([&] { database::RestoreDatabase(Path(u"copia.db"_s), Text()); }), int(adodb::DatabaseLocked));
  QCOMPARE(BankCount(Path({})), u"1"_s);
  QCOMPARE(Files().filter(u"antes"_s), QStringList());
}

void tst_maintenance::Checks_data() {
  QTest::addColumn<QByteArray>("statements");
  QTest::addColumn<QString>("found");
  const auto row = [](const char* name, const char* statements, const QString& found) {
    QTest::newRow(name) << QByteArray(statements) << found;
  };
  row("sound", "", QString());
  row("an index is missing", "DROP INDEX ix_Paises_Nombre_Eliminado",
      u"indexes: Falta el índice «ix_Paises_Nombre_Eliminado» de la tabla Paises."_s);
  row("a table is missing", "DROP TABLE Discos", u"integrity: Falta la tabla Discos."_s);
  row("a reference to nowhere", "INSERT INTO Sucursales(codProvincia) VALUES(28),(99),(98)",
      u"references: Sucursales.codProvincia: 2 registros apuntan a un registro de Provincias que no existe (el "
      u"primero, "
      "IDSucursal 2)."_s);
  row("a deleted row may point anywhere", "INSERT INTO Sucursales(codProvincia, Eliminado) VALUES(99, -1)", QString());
  row("a reference by part of a name", "INSERT INTO TipoDonativos(CodTipoDeduccionJuridica) VALUES(1),(77)",
      u"references: TipoDonativos.CodTipoDeduccionJuridica: un registro apunta a un registro de TipoDeducciones que no "
      "existe (el primero, IDTipoDonativo 2)."_s);
  row("a long text", "UPDATE Paises SET Nombre=Nombre || printf('%.60c', 'x') WHERE IDPais IN (7, 9)",
      u"lengths: Paises.Nombre: 2 textos tienen más de 50 caracteres (el primero, IDPais 7)."_s);
}

void tst_maintenance::Checks() {
  QFETCH(const QByteArray, statements);
  {
    const database::SqliteHandle handle(database::ConnectionString(Text()), database::SqliteHandle::Missing::Refuse);
    handle.Run(statements);
  }
  const database::Findings findings = database::CheckDatabase(Text());
  QStringList lines;
  const auto add = [&](const char* what, const QStringList& sentences) {
    for (const QString& sentence : sentences) {
      lines += QLatin1StringView(what) + u": "_s + sentence;
    }
  };
  add("integrity", findings.integrity);
  add("indexes", findings.indexes);
  add("references", findings.references);
  add("lengths", findings.lengths);
  QTEST(lines.join(u'/'), "found");
  QCOMPARE(database::QuickCheck(Text()), QStringList());
}

void tst_maintenance::AnIndexThatLiesIsFound() {
  m_database->Disconnect();
  const auto backwards = [](void*, int firstSize, const void* first, int secondSize, const void* second) {
    return -QByteArrayView(static_cast<const char*>(first), firstSize)
                .compare(QByteArrayView(static_cast<const char*>(second), secondSize));
  };
  sqlite3* engine = nullptr;
  QCOMPARE(sqlite3_open(QFile::encodeName(Path({})).constData(), &engine), SQLITE_OK);
  QCOMPARE(sqlite3_create_collation(engine, "kel_es", SQLITE_UTF8, nullptr, backwards), SQLITE_OK);
  QCOMPARE(sqlite3_exec(engine, "REINDEX ix_Provincias_Nombre_Eliminado", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(engine);
  const database::Findings findings = database::CheckDatabase(Text());
  QCOMPARE(findings.integrity, QStringList());
  QVERIFY(!findings.indexes.isEmpty());
  QVERIFY2(findings.indexes.first().startsWith(u"En el índice «ix_Provincias_Nombre_Eliminado» falta la fila"_s),
           qPrintable(findings.indexes.join(u'\n')));
}

void tst_maintenance::AColumnNamesTheTableOfItsKey() {
  const database::Schema& schema = database::Schema::Current();
  QStringList none;
  for (const database::Table& table : schema.Tables()) {
    for (const database::Column& column : table.columns) {
      if (column.type == database::ColumnType::Id && schema.ReferredTable(column) == nullptr) {
        none += column.name;
      }
    }
  }
  QCOMPARE(none, QStringList({u"codDescripcion"_s, u"codTabla"_s, u"ValorID"_s, u"ValorID"_s, u"ValorID"_s}));
  const database::Table* deductions = schema.FindTable(u"Deduccion_Comunidad");
  QCOMPARE(schema.ReferredTable(*deductions->FindColumn(u"CodDeduccion"))->name, u"TipoDeducciones"_s);
  QCOMPARE(schema.ReferredTable(*schema.FindTable(u"Recibos")->FindColumn(u"CodEmisor_Cuenta"))->name,
           u"Emisores_Cuentas"_s);
}

void tst_maintenance::AnUncleanEndIsNoticed() {
  QVERIFY(!database::WasLeftOpen(Text()));
  m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')");
  // Somebody has it open.
  QVERIFY(!database::WasLeftOpen(Text()));
  m_database->Disconnect();
  QVERIFY(!database::WasLeftOpen(Text()));
  QProcess writer;
  writer.start(QCoreApplication::applicationFilePath(), {u"--write"_s, Text()});
  QVERIFY(writer.waitForReadyRead(30000));
  QVERIFY(!database::WasLeftOpen(Text()));
  writer.kill();
  QVERIFY(writer.waitForFinished());
  QVERIFY(database::WasLeftOpen(Text()));
  QCOMPARE(database::QuickCheck(Text()), QStringList());
  Spoil(Path({}), "Paises");
  QVERIFY(!database::QuickCheck(Text()).isEmpty());
}

void tst_maintenance::AFullDiskCanBeReadFrom() {
  const support::SmallDisk disk;
  if (!disk.IsThere()) {
    QSKIP("a full disk takes root's rights");
  }
  m_database->Disconnect();
  QVERIFY(QFile::copy(Path({}), disk.Path(u"kel.db"_s)));
  disk.Fill();
  const TestDatabase full(database::ConnectionStringForFile(disk.Path(u"kel.db"_s)));
  QVERIFY(Outcome(full.Connection(), u"SELECT COUNT(*) FROM Provincias"_s).toInt() > 50);
  QCOMPARE(ErrorOf([&] { full.Connection().Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')"_s); }), adodb::DiskFull);
  disk.Free();
  QCOMPARE(Outcome(*full.Connect(), u"INSERT INTO Bancos(Nombre) VALUES('a')"_s), QString());
}

void tst_maintenance::ALogThatCannotBeTakenOver() {
  const support::SmallDisk disk;
  if (!disk.IsThere()) {
    QSKIP("a disk that is closed to writing takes root's rights");
  }
  m_database->Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')");
  for (const QString& part : {u""_s, u"-wal"_s}) {
    QVERIFY(QFile::copy(Path({}) + part, disk.Path(u"kel.db"_s) + part));
  }
  disk.CloseToWriting();
  const QString text = database::ConnectionStringForFile(disk.Path(u"kel.db"_s));
  QVERIFY(!database::MayBeWritten(text));
  try {
    database::CreateConnection(database::ForViewing(text))->Open();
    QFAIL("opened");
  } catch (const automation::Error& error) {
    QCOMPARE(error.Number(), int(adodb::CannotOpen));
    QVERIFY2(error.Description().contains(u"kel.db-wal"_s), qPrintable(error.Description()));
  }
}

// Who waited for somebody that restores a copy has the file that was replaced.
void tst_maintenance::AFileThatWasReplaced() {
  m_database->Disconnect();
  sqlite3* engine = nullptr;
  QCOMPARE(sqlite3_open(QFile::encodeName(Path({})).constData(), &engine), SQLITE_OK);
  QCOMPARE(sqlite3_exec(engine, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(engine);
  const auto connection = m_database->Connect();
  QVERIFY(QFile::rename(Path({}), Path(u"antes"_s)));
  QVERIFY(QFile::copy(Path(u"antes"_s), Path({})));
  try {
    connection->Execute(u"INSERT INTO Bancos(Nombre) VALUES('a')"_s);
    QFAIL("written");
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(u"copia recuperada"_s), qPrintable(error.Description()));
  }
}

KEL_TEST(tst_maintenance);
KEL_TEST_HELPER(attack,
                [](const QStringList& arguments) { return AttackAsHelper(arguments.value(0), arguments.value(1)); });
KEL_TEST_HELPER(write, [](const QStringList& arguments) { return WriteAsHelper(arguments.value(0)); });

#include "tst_maintenance.moc"
