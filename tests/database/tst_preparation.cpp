#include "database/Maintenance.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqlitePreparation.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/ErrorOf.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

using adodb::Verbatim;
using support::ErrorOf;
using support::Outcome;
using support::TestDatabase;
using namespace Qt::StringLiterals;

/// Creating, migrating and refusing database files, and what faults of files do.
class tst_preparation : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { m_folder = std::make_unique<QTemporaryDir>(); }
  void ReferenceData_data();
  void ReferenceData();
  void DemonstrationIsConsistent();
  void AnOlderOneIsMigrated_data();
  void AnOlderOneIsMigrated();
  void EachHasItsIdentity();
  void ANewerOneIsLeftUntouched();
  void ForeignFiles_data();
  void ForeignFiles();
  void ADamagedPageIsReported();
  void TriggersOfAHostileFileDoNotRun();
  void AnImpossibleFolder();
  void WithoutPermission_data();
  void WithoutPermission();
  void PrivateWhateverTheMask();
  void TwoProcessesPrepareTheSame();
  void AKilledProgramLeavesNothingHalfWritten();
  void OtherOrderingRulesRebuildTheIndexes();
  void ReadOnlyAccess();
  void AwkwardPaths_data();
  void AwkwardPaths();
  void PreparingAgainChangesNothing();

 private:
  QString Path(const QString& name = u"kel.db"_s) const { return m_folder->path() + u'/' + name; }
  QString Text() const { return database::ConnectionStringForFile(Path()) + u";Espera=3000"_s; }
  int Prepare() const {
    return ErrorOf([&] { database::PrepareDatabase(Text(), database::Content::Reference); });
  }

  QStringList Files() const { return QDir(m_folder->path()).entryList(QDir::Files, QDir::Name); }

  std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const QString& path, const QByteArray& contents) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
    qFatal("cannot write a test file");
  }
}

database::SqliteHandle OpenRaw(const QString& path) {
  return database::SqliteHandle(database::ConnectionString(database::ConnectionStringForFile(path)),
                                database::SqliteHandle::Missing::Create);
}

QString RowsOf(const QString& text, const QString& statement) {
  const auto connection = database::CreateConnection(text);
  const int error = ErrorOf([&] { connection->Open(); });
  return error != 0 ? u"error %1"_s.arg(error) : Outcome(*connection, statement);
}

}  // namespace

void tst_preparation::ReferenceData_data() {
  QTest::addColumn<QString>("statement");
  QTest::addColumn<QString>("rows");
  const auto row = [](const char* statement, const char* rows) {
    QTest::newRow(statement) << QString::fromUtf8(statement) << QString::fromUtf8(rows);
  };
  row("SELECT IDPais FROM Paises WHERE Nombre='España'", "35");
  row("SELECT COUNT(*) FROM Paises WHERE Eliminado=0", "249");
  row("SELECT COUNT(*), MIN(Prefijo), MAX(Prefijo) FROM Provincias WHERE CodPais=35", "52|01|52");
  row("SELECT Prefijo FROM Provincias WHERE Nombre='Madrid'", "28");
  row("SELECT Codigo FROM ComunidadAutonoma WHERE Nombre='Cataluña'", "09");
  row("SELECT COUNT(*) FROM ComunidadAutonoma", "19");
  row("SELECT Provincias.Nombre FROM Diocesis INNER JOIN Provincias ON CodProvincia=IDProvincia WHERE "
      "Diocesis.Nombre='Tui-Vigo'",
      "Pontevedra");
  row("SELECT COUNT(*) FROM Diocesis LEFT JOIN Provincias ON CodProvincia=IDProvincia WHERE IDProvincia IS NULL", "0");
  row("SELECT Porcentaje FROM TipoDeducciones WHERE Eliminado=0 ORDER BY Porcentaje",
      "10/15/20/25/30/35/40/45/50/75/80");
  row("SELECT Tipo, velumar FROM configuracion", "0|Falso");
  row("SELECT Administrador FROM Usuarios WHERE IDUsuario=1", "Verdadero");
  row("SELECT COUNT(*) FROM TipoCamposEtiquetas WHERE NombreCampo='[COLABORADORES].[NOMBRE]' AND "
      "NombreTabla='Colaboradores'",
      "1");
  row("SELECT COUNT(*) FROM Colaboradores", "0");
}

void tst_preparation::ReferenceData() {
  QFETCH(const QString, statement);
  static const TestDatabase database;
  QTEST(RowsOf(database.ConnectionString(), statement), "rows");
}

void tst_preparation::DemonstrationIsConsistent() {
  const TestDatabase database(database::Content::Demonstration);
  const auto count = [&](const char* table) {
    return database.Id(u"SELECT COUNT(*) FROM {}", Verbatim{QString::fromLatin1(table)});
  };
  QVERIFY(count("Colaboradores") >= 250);
  for (const char* table : {"Bancos", "Sucursales", "Presentadores", "Emisores", "Cuentas", "Emisores_Cuentas",
                            "Cobradores", "TipoDonativos", "Donativos", "TipoPublicaciones", "Suscripciones",
                            "ETIQUETAS", "EtiquetasCampos", "CartasModelo", "Cabeceras", "Deduccion_Comunidad"}) {
    QVERIFY2(count(table) > 0, table);
  }
  QCOMPARE(count("BloqueoRegistros"), 0);
  // Every reference that is not 0 finds its row.
  for (const database::Table& table : database::Schema::Current().Tables()) {
    for (const database::Table& target : database::Schema::Current().Tables()) {
      const QString key = target.columns.front().name;
      const database::Column* column = table.FindColumn(u"Cod"_s + key.mid(2));
      if (column != nullptr && &table != &target) {
        const int lost =
            database.Id(u"SELECT COUNT(*) FROM {0} WHERE {1}<>0 AND {1} NOT IN (SELECT {2} FROM {3})",
                        Verbatim{table.name}, Verbatim{column->name}, Verbatim{key}, Verbatim{target.name});
        QVERIFY2(lost == 0, qPrintable(table.name + u'.' + column->name));
      }
    }
  }
}

void tst_preparation::AnOlderOneIsMigrated_data() {
  QTest::addColumn<int>("version");
  for (int version = 1; version < database::SchemaVersion(); ++version) {
    QTest::addRow("version %d", version) << version;
  }
}

void tst_preparation::AnOlderOneIsMigrated() {
  QFETCH(const int, version);
  const database::Schema& schema = database::Schema::Current();
  {
    const database::SqliteHandle old = OpenRaw(Path());
    database::CreateTables(old, schema, version);
    old.Run(
        "INSERT INTO BloqueoRegistros (codUsuario, campoID, ValorID) VALUES (1, 'IDPais', 5);"
        "INSERT INTO configuracion (Tipo) VALUES (1);"
        "INSERT INTO Encabezados (Nombre) VALUES ('Estimado amigo, estimada amiga:'), ('Hola:');"
        "INSERT INTO Provincias (Nombre) VALUES ('Álava'); INSERT INTO ComunidadAutonoma (IDComunidad) VALUES (16)");
  }
  QCOMPARE(ErrorOf([&] { database::CreateConnection(Text())->Open(); }), int(adodb::OlderDatabase));
  QCOMPARE(Prepare(), 0);
  QCOMPARE(RowsOf(Text(), u"SELECT Tipo, NombreEntidad FROM configuracion"_s), u"1|NULL"_s);
  // Of a lock of version 1 nobody could tell whose it was.
  QCOMPARE(RowsOf(Text(), u"SELECT COUNT(*) FROM BloqueoRegistros"_s), version == 1 ? u"0"_s : u"1"_s);
  QCOMPARE(RowsOf(Text(), u"SELECT LEN(Identidad) FROM configuracion"_s), u"36"_s);
  QCOMPARE(RowsOf(Text(), u"SELECT COUNT(*) FROM Paises"_s), u"0"_s);
  const bool isOld = version < 6;
  QCOMPARE(RowsOf(Text(), u"SELECT Nombre FROM Encabezados"_s),
           isOld ? u"Estimado/a amigo/a:/Hola:"_s : u"Estimado amigo, estimada amiga:/Hola:"_s);
  QCOMPARE(RowsOf(Text(), u"SELECT codProvincia, CodComunidad FROM ProvinciasComunidades"_s),
           isOld ? u"1|16"_s : u""_s);
  // A migrated file has the same tables as a new one.
  TestDatabase fresh;
  const QByteArray columns =
      "SELECT group_concat(n) FROM (SELECT m.name || '.' || c.name || ' ' || c.type || c.\"notnull\" AS n FROM "
      "sqlite_schema m, pragma_table_info(m.name) c ORDER BY n)";
  const QByteArray indexes = "SELECT group_concat(name) FROM (SELECT name FROM sqlite_schema ORDER BY name)";
  for (const QByteArray& query : {columns, indexes}) {
    QCOMPARE(OpenRaw(Path()).Value(query), OpenRaw(fresh.Path()).Value(query));
  }
}

void tst_preparation::EachHasItsIdentity() {
  QCOMPARE(Prepare(), 0);
  const QString ask = u"SELECT Identidad FROM configuracion"_s;
  const QString identity = RowsOf(Text(), ask);
  QCOMPARE(identity.size(), 36);
  const QString other = database::ConnectionStringForFile(Path(u"otra.db"_s));
  database::PrepareDatabase(other, database::Content::Reference);
  QVERIFY(RowsOf(other, ask) != identity);
  // Until it ends, wherever it goes.
  QCOMPARE(Prepare(), 0);
  database::CopyDatabase(Text(), Path(u"copia.db"_s));
  QCOMPARE(RowsOf(database::ConnectionStringForFile(Path(u"copia.db"_s)), ask), identity);
}

void tst_preparation::ANewerOneIsLeftUntouched() {
  QCOMPARE(Prepare(), 0);
  OpenRaw(Path()).Run("PRAGMA user_version=" + QByteArray::number(database::SchemaVersion() + 1));
  const QByteArray before = Contents(Path());
  QCOMPARE(Prepare(), int(adodb::NewerDatabase));
  QCOMPARE(ErrorOf([&] { database::CreateConnection(Text())->Open(); }), int(adodb::NewerDatabase));
  QVERIFY(Contents(Path()) == before);
  QCOMPARE(Files(), QStringList(u"kel.db"_s));
}

void tst_preparation::ForeignFiles_data() {
  QTest::addColumn<QString>("kind");
  QTest::addColumn<int>("number");
  QTest::newRow("text") << u"text"_s << int(adodb::NotADatabase);
  QTest::newRow("another program's") << u"foreign"_s << int(adodb::NotOurDatabase);
  QTest::newRow("cut in half") << u"truncated"_s << int(adodb::DatabaseDamaged);
  QTest::newRow("a folder") << u"folder"_s << int(adodb::CannotOpen);
  QTest::newRow("empty") << u"empty"_s << 0;
}

void tst_preparation::ForeignFiles() {
  QFETCH(const QString, kind);
  if (kind == u"text") {
    Write(Path(), QByteArray(5000, 'x'));
  } else if (kind == u"foreign") {
    OpenRaw(Path()).Run("PRAGMA journal_mode=WAL; CREATE TABLE otra(a)");
  } else if (kind == u"truncated") {
    QCOMPARE(Prepare(), 0);
    const QByteArray whole = Contents(Path());
    Write(Path(), whole.left(whole.size() / 2));
  } else if (kind == u"folder") {
    QVERIFY(QDir().mkpath(Path()));
  } else {
    Write(Path(), {});
  }
  const QByteArray before = Contents(Path());
  QTEST(Prepare(), "number");
  if (kind != u"empty") {
    QVERIFY(Contents(Path()) == before);
    QTEST(ErrorOf([&] { database::CreateConnection(Text())->Open(); }), "number");
    QCOMPARE(Files(), kind == u"folder" ? QStringList() : QStringList(u"kel.db"_s));
  }
}

void tst_preparation::ADamagedPageIsReported() {
  QCOMPARE(Prepare(), 0);
  const int root = OpenRaw(Path()).Value("SELECT rootpage FROM sqlite_schema WHERE name='Paises'").toInt();
  QByteArray bytes = Contents(Path());
  bytes.replace((root - 1) * 4096, 4096, QByteArray(4096, '\x55'));
  Write(Path(), bytes);
  const QString error = u"error %1"_s.arg(int(adodb::DatabaseDamaged));
  QCOMPARE(RowsOf(Text(), u"SELECT CodigoISO FROM Paises"_s), error);
  QCOMPARE(RowsOf(Text(), u"INSERT INTO Paises(Nombre) VALUES('x')"_s), error);
}

void tst_preparation::TriggersOfAHostileFileDoNotRun() {
  QCOMPARE(Prepare(), 0);
  sqlite3* engine = nullptr;
  QCOMPARE(sqlite3_open(QFile::encodeName(Path()).constData(), &engine), SQLITE_OK);
  const int made = sqlite3_exec(engine, "CREATE TRIGGER t AFTER INSERT ON Bancos BEGIN DELETE FROM Paises; END",
                                nullptr, nullptr, nullptr);
  sqlite3_close(engine);
  QCOMPARE(made, SQLITE_OK);
  QCOMPARE(RowsOf(Text(), u"INSERT INTO Bancos(Nombre) VALUES('x')"_s), QString());
  QCOMPARE(RowsOf(Text(), u"SELECT COUNT(*) FROM Paises"_s), u"249"_s);
}

void tst_preparation::AnImpossibleFolder() {
  Write(Path(u"archivo"_s), "x");
  const QString text = database::ConnectionStringForFile(Path(u"archivo/dentro/kel.db"_s));
  QCOMPARE(ErrorOf([&] { database::PrepareDatabase(text, database::Content::Reference); }), int(adodb::CannotOpen));
  const QString nested = database::ConnectionStringForFile(Path(u"a/b/c/kel.db"_s));
  database::PrepareDatabase(nested, database::Content::Reference);
  QVERIFY(QFile::exists(Path(u"a/b/c/kel.db"_s)));
}

void tst_preparation::WithoutPermission_data() {
  QTest::addColumn<int>("file");
  QTest::addColumn<int>("folder");
  QTest::newRow("the file") << 0444 << 0777;
  QTest::newRow("the folder") << 0666 << 0555;
}

// The superuser may write everywhere, so the test gives its rights up, and the file to an ordinary user, while it
// tries.
void tst_preparation::WithoutPermission() {
  QFETCH(const int, file);
  QFETCH(const int, folder);
  QCOMPARE(Prepare(), 0);
  const QByteArray before = Contents(Path());
  const QByteArray path = QFile::encodeName(Path());
  const QByteArray folderPath = QFile::encodeName(m_folder->path());
  constexpr uid_t nobody = 65534;
  const bool isSuperuser = geteuid() == 0;
  QVERIFY(!isSuperuser ||
          (chown(path.constData(), nobody, nobody) == 0 && chown(folderPath.constData(), nobody, nobody) == 0));
  QVERIFY(chmod(path.constData(), mode_t(file)) == 0 && chmod(folderPath.constData(), mode_t(folder)) == 0);
  QVERIFY(!isSuperuser || seteuid(nobody) == 0);
  const int opened = Prepare();
  const QString written = RowsOf(Text(), u"UPDATE Paises SET Nombre='x'"_s);
  const int restored = ErrorOf([&] { database::RestoreDatabase(Path(), Text()); });
  const bool mayWrite = database::MayBeWritten(Text());
  const QString viewing = database::ForViewing(Text());
  const int prepared = ErrorOf([&] { database::PrepareDatabase(viewing, database::Content::Reference); });
  const QString viewed = RowsOf(viewing, u"SELECT COUNT(*) FROM Paises WHERE Nombre='ESPAÑA'"_s);
  const QString changed = RowsOf(viewing, u"UPDATE Paises SET Nombre='x'"_s);
  const QString hidden = database::ConnectionStringForFile(u"/nadie/puede/kel.db"_s);
  const int denied = ErrorOf([&] { database::PrepareDatabase(hidden, database::Content::Reference); });
  const QStringList left = Files();
  // What may be written again is.
  const bool mended = chmod(folderPath.constData(), 0700) == 0 && chmod(path.constData(), 0600) == 0;
  const bool unchanged = Contents(Path()) == before;
  const QString later = RowsOf(Text(), u"INSERT INTO Bancos(Nombre) VALUES('x')"_s);
  QVERIFY(!isSuperuser || seteuid(0) == 0);
  QCOMPARE(opened, int(adodb::DatabaseReadOnly));
  QCOMPARE(written, u"error %1"_s.arg(int(adodb::DatabaseReadOnly)));
  QVERIFY(restored == adodb::DatabaseReadOnly || restored == adodb::CannotOpen);
  QCOMPARE(denied, int(adodb::CannotOpen));
  QVERIFY(!mayWrite);
  QCOMPARE(prepared, 0);
  QCOMPARE(viewed, u"1"_s);
  QCOMPARE(changed, u"error %1"_s.arg(int(adodb::DatabaseReadOnly)));
  QCOMPARE(left, QStringList(u"kel.db"_s));
  QVERIFY(mended && unchanged);
  QCOMPARE(later, QString());
}

void tst_preparation::PrivateWhateverTheMask() {
  const QString file = Path(u"dentro/kel.db"_s);
  const mode_t usual = umask(0);
  database::PrepareDatabase(database::ConnectionStringForFile(file), database::Content::Reference);
  const auto connection = database::CreateConnection(database::ConnectionStringForFile(file));
  connection->Open();
  connection->Execute(u"INSERT INTO Bancos(Nombre) VALUES('x')"_s);
  umask(usual);
  const QFile::Permissions others =
      QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
  for (const QString& name : {file, file + u"-wal"_s, file + u"-shm"_s, Path(u"dentro"_s)}) {
    QVERIFY2(QFile::exists(name) && !(QFile::permissions(name) & others), qPrintable(name));
  }
}

void tst_preparation::TwoProcessesPrepareTheSame() {
  std::vector<std::unique_ptr<QProcess>> processes;
  for (int i = 0; i < 4; ++i) {
    processes.push_back(std::make_unique<QProcess>());
    processes.back()->start(QCoreApplication::applicationFilePath(), {u"--prepare"_s, Text()});
  }
  for (const auto& process : processes) {
    QVERIFY(process->waitForFinished());
    QCOMPARE(process->readAllStandardError(), QByteArray());
    QCOMPARE(process->exitCode(), 0);
  }
  QCOMPARE(RowsOf(Text(), u"SELECT COUNT(*) FROM Paises"_s), u"249"_s);
  QCOMPARE(OpenRaw(Path()).Value("PRAGMA journal_mode"), QByteArray("wal"));
}

void tst_preparation::AKilledProgramLeavesNothingHalfWritten() {
  QCOMPARE(Prepare(), 0);
  QProcess process;
  process.start(QCoreApplication::applicationFilePath(), {u"--die"_s, Text()});
  QVERIFY(process.waitForFinished());
  QCOMPARE(process.exitStatus(), QProcess::CrashExit);
  QCOMPARE(Prepare(), 0);
  QCOMPARE(RowsOf(Text(), u"SELECT Nombre FROM Bancos"_s), u"entero"_s);
  QCOMPARE(OpenRaw(Path()).Value("PRAGMA integrity_check"), QByteArray("ok"));
}

void tst_preparation::OtherOrderingRulesRebuildTheIndexes() {
  QCOMPARE(Prepare(), 0);
  const auto backwards = [](void*, int firstSize, const void* first, int secondSize, const void* second) {
    return -QByteArrayView(static_cast<const char*>(first), firstSize)
                .compare(QByteArrayView(static_cast<const char*>(second), secondSize));
  };
  sqlite3* engine = nullptr;
  QCOMPARE(sqlite3_open(QFile::encodeName(Path()).constData(), &engine), SQLITE_OK);
  QCOMPARE(sqlite3_create_collation(engine, "kel_es", SQLITE_UTF8, nullptr, backwards), SQLITE_OK);
  QCOMPARE(sqlite3_exec(engine, "REINDEX kel_es; UPDATE KelMotor SET Valor='0.0' WHERE Nombre='ICU'", nullptr, nullptr,
                        nullptr),
           SQLITE_OK);
  sqlite3_close(engine);
  QVERIFY(OpenRaw(Path()).Value("PRAGMA integrity_check") != "ok");
  QCOMPARE(RowsOf(Text(), u"SELECT IDPais FROM Paises WHERE Nombre='ESPAÑA'"_s), u"35"_s);
  QCOMPARE(OpenRaw(Path()).Value("PRAGMA integrity_check"), QByteArray("ok"));
}

void tst_preparation::ReadOnlyAccess() {
  QCOMPARE(Prepare(), 0);
  const QString text = Text() + u";Acceso=lectura"_s;
  database::PrepareDatabase(text, database::Content::Reference);
  QCOMPARE(RowsOf(text, u"SELECT IDPais FROM Paises WHERE Nombre='España'"_s), u"35"_s);
  QCOMPARE(RowsOf(text, u"DELETE FROM Paises"_s), u"error %1"_s.arg(int(adodb::DatabaseReadOnly)));
}

void tst_preparation::AwkwardPaths_data() {
  QTest::addColumn<QString>("name");
  for (const char* name : {"con blancos.db", "a;b=c.db", "comillas\"dobles'.db", "ñandú €.db",
                           ":memory:", "file:x?mode=ro", " blancos al final "}) {
    QTest::newRow(name) << QString::fromUtf8(name);
  }
}

void tst_preparation::AwkwardPaths() {
  QFETCH(const QString, name);
  database::PrepareDatabase(database::ConnectionStringForFile(Path(name)), database::Content::Reference);
  QVERIFY(QFile::exists(Path(name)));
  QCOMPARE(RowsOf(database::ConnectionStringForFile(Path(name)), u"SELECT COUNT(*) FROM Usuarios"_s), u"1"_s);
}

void tst_preparation::PreparingAgainChangesNothing() {
  QCOMPARE(Prepare(), 0);
  const QByteArray before = Contents(Path());
  database::PrepareDatabase(Text(), database::Content::Demonstration);
  QVERIFY(Contents(Path()) == before);
}

namespace {

int PrepareAsHelper(const QString& text) {
  try {
    database::PrepareDatabase(text, database::Content::Reference);
    return 0;
  } catch (const automation::Error& error) {
    std::fputs(error.what(), stderr);
    return 1;
  }
}

// Commits one row, writes a second one inside a transaction and dies without a word.
int DieAsHelper(const QString& text) {
  const auto connection = database::CreateConnection(text);
  connection->Open();
  connection->Execute(u"INSERT INTO Bancos(Nombre) VALUES('entero')"_s);
  connection->BeginTrans();
  connection->Execute(u"INSERT INTO Bancos(Nombre) VALUES('a medias')"_s);
  std::raise(SIGKILL);
  return 0;
}

}  // namespace

KEL_TEST(tst_preparation);
KEL_TEST_HELPER(prepare, [](const QStringList& arguments) { return PrepareAsHelper(arguments.value(0)); });
KEL_TEST_HELPER(die, [](const QStringList& arguments) { return DieAsHelper(arguments.value(0)); });

#include "tst_preparation.moc"
