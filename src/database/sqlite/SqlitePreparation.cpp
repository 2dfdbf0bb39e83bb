#include "database/sqlite/SqlitePreparation.h"

#include "database/Errors.h"
#include "database/engine/Preparation.h"
#include "database/sqlite/SpanishCollation.h"
#include "database/sqlite/SqliteConnection.h"
#include "database/sqlite/SqliteDdl.h"
#include "database/sqlite/SqliteTarget.h"
#include "platform/process/PrivateFiles.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace database {

using automation::Error;

namespace {

// The header's mark of this program's files.
constexpr int applicationId = 0x4B454C31;

DatabaseState ReadState(const SqliteHandle& handle) {
  DatabaseState state;
  state.version = handle.Value("PRAGMA user_version").toInt();
  state.isOurs = handle.Value("PRAGMA application_id").toInt() == applicationId;
  state.isEmpty = handle.Value("SELECT count(*) FROM sqlite_schema").toInt() == 0;
  return state;
}

QByteArray CollationVersion() {
  return SpanishCollation::Instance().Version();
}

bool HasCurrentCollation(const SqliteHandle& handle) {
  return handle.Value("SELECT Valor FROM KelMotor WHERE Nombre = 'ICU'") == CollationVersion();
}

void WriteCollationVersion(const SqliteHandle& handle) {
  handle.Run("INSERT OR REPLACE INTO KelMotor (Nombre, Valor) VALUES ('ICU', '" + CollationVersion() + "')");
}

// An index sorted by other rules would lose rows.
void RebuildIndexes(const SqliteHandle& handle) {
  handle.Run("BEGIN IMMEDIATE");
  try {
    if (!HasCurrentCollation(handle)) {
      handle.Run("REINDEX " + sqlite::collation.toLatin1());
      WriteCollationVersion(handle);
    }
    handle.Run("COMMIT");
  } catch (...) {
    sqlite3_exec(handle.Engine(), "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

void CreateFolder(const QString& file) {
  const QString folder = QFileInfo(file).absolutePath();
  if (!process::CreatePrivateFolder(folder)) {
    throw Error(adodb::CannotOpen,
                u"No se puede crear la carpeta «%1». Compruebe el nombre y los permisos, o "
                "elija otra carpeta."_s.arg(folder));
  }
}

// The engine needs the file for itself for a moment and does not wait for that by itself. Failing is harmless:
// the next one that opens the file tries again.
void UseWriteAheadLog(const SqliteHandle& handle) {
  constexpr int longest = 2000;
  constexpr int pause = 20;
  if (handle.IsReadOnly() || handle.Value("PRAGMA journal_mode") == "wal") {
    return;
  }
  const QDeadlineTimer deadline(longest);
  while (sqlite3_exec(handle.Engine(), "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr) == SQLITE_BUSY &&
         !deadline.hasExpired()) {
    QThread::msleep(pause);
  }
}

void SetVersion(const SqliteHandle& handle, int version) {
  handle.Run("PRAGMA user_version=" + QByteArray::number(version) +
             "; PRAGMA application_id=" + QByteArray::number(applicationId));
}

class PreparedFile : public PreparedDatabase {
 public:
  explicit PreparedFile(const SqliteHandle& handle) : m_handle(handle) {}

  QString ShownName() const override { return m_handle.Target().File(); }
  DatabaseState State() const override { return ReadState(m_handle); }
  void Create(const Schema& schema) const override { CreateTables(m_handle, schema, schema.Version()); }
  void Migrate(const Schema& schema, int fromVersion) const override { MigrateTables(m_handle, schema, fromVersion); }

 private:
  const SqliteHandle& m_handle;
};

}  // namespace

void CreateTables(const SqliteHandle& handle, const Schema& schema, int version) {
  for (const QByteArray& statement : SchemaStatements(SqliteDdl(), schema, 0, version)) {
    handle.Run(statement);
  }
  handle.Run("CREATE TABLE KelMotor (Nombre TEXT PRIMARY KEY, Valor TEXT) STRICT, WITHOUT ROWID");
  WriteCollationVersion(handle);
  SetVersion(handle, version);
}

void MigrateTables(const SqliteHandle& handle, const Schema& schema, int fromVersion) {
  for (const QByteArray& statement : SchemaStatements(SqliteDdl(), schema, fromVersion, schema.Version())) {
    handle.Run(statement);
  }
  // A lock of version 1 does not say whose process it was, so that nothing could tell when to take it over.
  constexpr int firstWithProcesses = 2;
  if (fromVersion < firstWithProcesses) {
    handle.Run("DELETE FROM BloqueoRegistros");
  }
  SetVersion(handle, schema.Version());
}

void RequireKnownDatabase(const SqliteHandle& handle) {
  const DatabaseState state = ReadState(handle);
  RefuseForeign(state, handle.Target().File());
  if (!state.isOurs) {
    throw Error(adodb::NotOurDatabase,
                u"«%1» está vacío: no es una base de datos del programa."_s.arg(handle.Target().File()));
  }
}

void RequireCurrentDatabase(const SqliteHandle& handle) {
  const DatabaseState state = ReadState(handle);
  RefuseForeign(state, handle.Target().File());
  if (state.version < SchemaVersion()) {
    throw OlderDatabaseError(handle.Target().File());
  }
  handle.SetCheckpointOnClose(true);
  if (!HasCurrentCollation(handle)) {
    RebuildIndexes(handle);
  }
}

void PrepareSqlite(const ConnectionString& target, Content content) {
  if (!target.ReadOnly()) {
    CreateFolder(target.File());
  }
  SqliteHandle handle(target, target.ReadOnly() ? SqliteHandle::Missing::Refuse : SqliteHandle::Missing::Create);
  const DatabaseState state = ReadState(handle);
  RefuseForeign(state, target.File());
  handle.SetCheckpointOnClose(true);
  if (state.version == SchemaVersion()) {
    UseWriteAheadLog(handle);
    return;
  }
  if (target.ReadOnly()) {
    throw OlderDatabaseError(target.File());
  }
  SqliteConnection connection(std::move(handle));
  BringUpToDate(connection, PreparedFile(connection.Handle()), content);
  UseWriteAheadLog(connection.Handle());
  connection.Handle().Run("ANALYZE");
}

}  // namespace database
