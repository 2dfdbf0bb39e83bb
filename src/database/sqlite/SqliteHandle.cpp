#include "database/sqlite/SqliteHandle.h"

#include "database/Errors.h"
#include "database/sqlite/SpanishCollation.h"
#include "database/sqlite/SqliteErrors.h"
#include "database/sqlite/SqliteFunctions.h"
#include "platform/process/PrivateFiles.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace database {

namespace {

// The longest text or row, in bytes.
constexpr int longestValue = 200'000'000;

void RefuseMissingFile(const QString& path) {
  const QFileInfo info(path);
  if (info.isDir()) {
    throw automation::Error(adodb::CannotOpen,
                            u"«%1» es una carpeta, no una base de datos. Elija un archivo."_s.arg(path));
  }
  if (!info.exists()) {
    throw automation::Error(adodb::CannotOpen,
                            u"No existe la base de datos «%1». Compruebe el nombre del "
                            "archivo y que su disco está conectado."_s.arg(path));
  }
}

bool HasLog(const QString& path) {
  return QFileInfo(path + u"-wal"_s).size() > 0;
}

bool IsWritable(const QString& path) {
  return process::MayWrite(path) && process::MayWrite(QFileInfo(path).path());
}

// A file that this process can't write and that nobody has open is taken as it stands: the engine could not keep its
// log beside it. Somebody with more rights who opens it meanwhile may make a look-up fail; the next opening sees it
// right.
bool IsToBeTakenAsItStands(const ConnectionString& target, const QString& path) {
  return target.ReadOnly() && !HasLog(path) && !IsWritable(path);
}

// The engine would open it for reading, and leave a log beside it that can't be written either.
void RefuseUnwritable(const ConnectionString& target, const QString& path) {
  if (!target.ReadOnly() && QFileInfo::exists(path) && !IsWritable(path)) {
    throw EngineError(nullptr, SQLITE_READONLY, target);
  }
}

QByteArray AsUri(const QString& path) {
  return "file:" + QFile::encodeName(path).toPercentEncoding("/") + "?immutable=1";
}

}  // namespace

void SqliteDeleter::operator()(sqlite3* engine) const {
  sqlite3_close_v2(engine);
}

void SqliteDeleter::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

SqliteHandle::SqliteHandle(const ConnectionString& target, Missing missing) : m_target(target) {
  // The absolute path keeps the engine from reading special names (":memory:", URIs) into it.
  const QString path = QFileInfo(target.File()).absoluteFilePath();
  if (missing == Missing::Refuse || QFileInfo(path).isDir()) {
    RefuseMissingFile(path);
  }
  RefuseUnwritable(target, path);
  int flags = target.ReadOnly() ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  if (missing == Missing::Create && !target.ReadOnly()) {
    // The engine gives its log the mode of the file.
    process::CreatePrivateFile(path);
    flags |= SQLITE_OPEN_CREATE;
  }
  const bool takenAsItStands = IsToBeTakenAsItStands(target, path);
  // A log is left alone until it is known whose it is.
  const bool hadLog = HasLog(path);
  if (takenAsItStands) {
    OpenAsItStands(path);
  } else {
    OpenEngine(QFile::encodeName(path), flags);
    if (LacksRoom() && !HasLog(path)) {
      OpenAsItStands(path);
    }
  }
  Configure();
  SetCheckpointOnClose(!hadLog);
}

void SqliteHandle::OpenEngine(const QByteArray& name, int flags) {
  sqlite3* engine = nullptr;
  const int code = sqlite3_open_v2(name, &engine, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  m_engine.reset(engine);
  Check(code);
}

void SqliteHandle::OpenAsItStands(const QString& path) {
  OpenEngine(AsUri(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
}

// On a full disk the engine can't make the files that its log needs, not even for reading.
bool SqliteHandle::LacksRoom() const {
  // Who finds the file busy now waits at the first use.
  const int code = sqlite3_exec(Engine(), "PRAGMA schema_version", nullptr, nullptr, nullptr);
  return code == SQLITE_IOERR_SHMSIZE || code == SQLITE_IOERR_SHMOPEN || code == SQLITE_FULL;
}

void SqliteHandle::Configure() const {
  sqlite3* engine = Engine();
  constexpr int switches[][2] = {
      {SQLITE_DBCONFIG_DQS_DML, 0},
      {SQLITE_DBCONFIG_DQS_DDL, 0},
      {SQLITE_DBCONFIG_DEFENSIVE, 1},
      {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
      {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
      {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
      {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
  };
  for (const auto& [option, value] : switches) {
    Check(sqlite3_db_config(engine, option, value, nullptr));
  }
  sqlite3_limit(engine, SQLITE_LIMIT_LENGTH, longestValue);
  sqlite3_limit(engine, SQLITE_LIMIT_ATTACHED, 0);
  Check(SpanishCollation::Instance().Register(engine));
  Check(RegisterFunctions(engine));
  SetWait(m_target.WaitMilliseconds());
  Run("PRAGMA cell_size_check=ON; PRAGMA synchronous=FULL; PRAGMA cache_size=-16000; "
      "PRAGMA journal_size_limit=67108864; PRAGMA analysis_limit=1000;");
}

void SqliteHandle::Run(const QByteArray& sql) const {
  Check(sqlite3_exec(Engine(), sql.constData(), nullptr, nullptr, nullptr));
}

QByteArray SqliteHandle::Value(const QByteArray& sql) const {
  const SqliteStatement statement = Prepare(sql);
  const int code = sqlite3_step(statement.get());
  if (code != SQLITE_ROW) {
    Check(code == SQLITE_DONE ? SQLITE_OK : code);
    return {};
  }
  return {reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)),
          sqlite3_column_bytes(statement.get(), 0)};
}

SqliteStatement SqliteHandle::Prepare(const QByteArray& sql) const {
  sqlite3_stmt* statement = nullptr;
  Check(sqlite3_prepare_v3(Engine(), sql.constData(), static_cast<int>(sql.size() + 1), SQLITE_PREPARE_PERSISTENT,
                           &statement, nullptr));
  return SqliteStatement(statement);
}

void SqliteHandle::Check(int code) const {
  if (code != SQLITE_OK) {
    throw EngineError(Engine(), code, m_target);
  }
}

bool SqliteHandle::IsReadOnly() const {
  return sqlite3_db_readonly(Engine(), "main") != 0;
}

bool SqliteHandle::IsAutocommit() const {
  return sqlite3_get_autocommit(Engine()) != 0;
}

void SqliteHandle::SetWait(int milliseconds) const {
  sqlite3_busy_timeout(Engine(), milliseconds);
}

void SqliteHandle::SetCheckpointOnClose(bool enabled) const {
  sqlite3_db_config(Engine(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, enabled ? 0 : 1, nullptr);
}

}  // namespace database
