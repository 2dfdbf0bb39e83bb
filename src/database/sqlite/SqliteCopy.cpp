#include "database/sqlite/SqliteCopy.h"

#include "database/Database.h"
#include "database/Errors.h"
#include "database/Schema.h"
#include "database/sqlite/SqliteCheck.h"
#include "database/sqlite/SqliteErrors.h"
#include "database/sqlite/SqliteHandle.h"
#include "database/sqlite/SqlitePreparation.h"
#include "database/sqlite/SqliteTarget.h"
#include "database/sqlite/SqliteTransfer.h"
#include "platform/process/PrivateFiles.h"
#include "platform/process/UnfinishedFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <unistd.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace database {

using automation::Error;
using Engine = std::unique_ptr<sqlite3, SqliteDeleter>;

namespace {

ConnectionString At(const QString& file) {
  return ConnectionString(ConnectionStringForFile(file));
}

Error CannotCreate(const QString& file) {
  return Error(
      adodb::CannotOpen,
      u"No se puede crear el archivo «%1». Compruebe que la carpeta existe, que tiene permiso para escribir en "
      "ella y que no hay ya un archivo con ese nombre."_s.arg(file));
}

void RequireMade(bool made, const QString& file) {
  if (!made) {
    throw CannotCreate(file);
  }
}

// An engine without this program's settings: for whole files, not for rows.
Engine OpenPlain(const QString& file, int& code) {
  sqlite3* engine = nullptr;
  code = sqlite3_open_v2(QFile::encodeName(file).constData(), &engine,
                         SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  return Engine(engine);
}

void Check(const Engine& engine, int code, const QString& file) {
  if (code != SQLITE_OK) {
    throw EngineError(engine.get(), code, At(file));
  }
}

// One read transaction around all the steps: the copy is of one moment, and a writer does not make it begin anew.
void CopyPages(const SqliteHandle& source, const QString& file, const Stop& stop) {
  constexpr int pagesAtOnce = 500;
  int code = SQLITE_OK;
  const Engine engine = OpenPlain(file, code);
  Check(engine, code, file);
  source.Run("BEGIN");
  const auto end = qScopeGuard([&] { sqlite3_exec(source.Engine(), "ROLLBACK", nullptr, nullptr, nullptr); });
  source.Value("SELECT count(*) FROM sqlite_schema");
  sqlite3_backup* backup = sqlite3_backup_init(engine.get(), "main", source.Engine(), "main");
  if (backup == nullptr) {
    throw EngineError(engine.get(), sqlite3_extended_errcode(engine.get()), At(file));
  }
  bool stopped = false;
  do {
    code = sqlite3_backup_step(backup, pagesAtOnce);
    stopped = stop && stop();
  } while (code == SQLITE_OK && !stopped);
  const int finished = sqlite3_backup_finish(backup);
  if (stopped) {
    throw EngineError(nullptr, SQLITE_INTERRUPT, At(file));
  }
  Check(engine, finished, file);
}

// Copies into an empty file, which is whole in itself afterwards, without a log beside it, and checks what is there.
void CopyAndCheck(const SqliteHandle& source, const QString& file, const Stop& stop) {
  CopyPages(source, file, stop);
  const SqliteHandle copy(At(file), SqliteHandle::Missing::Refuse);
  EndWhen(copy, stop);
  copy.Run("PRAGMA journal_mode=DELETE");
  RequireSound(copy);
}

// An older file lacks the newer tables.
bool HasTable(const SqliteHandle& handle, const Table& table) {
  return handle.Value("SELECT count(*) FROM sqlite_schema WHERE name = '" + table.name.toUtf8() + '\'') != "0";
}

CopySize SizeOf(const QString& file) {
  const SqliteHandle copy(At(file), SqliteHandle::Missing::Refuse);
  CopySize size;
  size.bytes = QFileInfo(file).size();
  for (const Table& table : Schema::Current().Tables()) {
    if (HasTable(copy, table)) {
      ++size.tables;
      size.rows += copy.Value("SELECT count(*) FROM " + QuotedName(table.name).toUtf8()).toLongLong();
    }
  }
  return size;
}

// Keeps every other program away from the file until the result goes, with everything that was written in the file
// itself. Null for a file that is no sound database, which nobody can have open.
Engine HoldAlone(const QString& file) {
  int code = SQLITE_OK;
  Engine engine = OpenPlain(file, code);
  if (code == SQLITE_OK) {
    code = sqlite3_exec(engine.get(), "PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE",
                        nullptr, nullptr, nullptr);
  }
  switch (code & 0xFF) {
    case SQLITE_OK:
      return engine;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw Error(adodb::DatabaseLocked,
                  u"Algún programa tiene abierta la base de datos «%1». Ciérrelo en todos los equipos y vuelva a "
                  "intentarlo. No se ha cambiado nada."_s.arg(file));
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
      throw EngineError(engine.get(), code, At(file));
    default:
      return nullptr;
  }
}

void Rename(const QString& from, const QString& to) {
  RequireMade(std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0, to);
}

// By a second name, so that no program finds no file meanwhile and makes a new one, where the disk can do that.
void Keep(const QString& file, const QString& kept) {
  if (link(QFile::encodeName(file).constData(), QFile::encodeName(kept).constData()) != 0) {
    Rename(file, kept);
  }
}

QString KeptName(const QString& file) {
  const QString name = u"%1.antes-%2"_s.arg(file, QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s));
  QString free = name;
  for (int number = 2; QFileInfo::exists(free); ++number) {
    free = u"%1-%2"_s.arg(name, QString::number(number));
  }
  return free;
}

// A new file of that name with what `write` puts into the one that it is given.
template <typename Write>
CopySize MakeFile(const QString& file, const Write& write) {
  const process::UnfinishedFile unfinished(file);
  RequireMade(unfinished.IsValid(), file);
  write(unfinished.Path());
  // Does not replace a file that has come meanwhile.
  RequireMade(unfinished.Place(process::UnfinishedFile::Existing::Keep), file);
  return SizeOf(file);
}

void RequireNew(const QString& file) {
  if (QFileInfo::exists(file)) {
    throw Error(adodb::CannotOpen, u"Ya existe «%1». Elija otro nombre para la copia."_s.arg(file));
  }
}

}  // namespace

CopySize CopySqlite(const ConnectionString& source, const QString& file, const Stop& stop) {
  RequireNew(file);
  const SqliteHandle handle(source, SqliteHandle::Missing::Refuse);
  return MakeFile(file, [&](const QString& path) { CopyAndCheck(handle, path, stop); });
}

CopySize MakeSqlite(const QString& file, const std::function<void(const TransferTarget&)>& fill, const Stop& stop) {
  RequireNew(file);
  return MakeFile(file, [&](const QString& path) {
    SqliteConnection connection(SqliteHandle(At(path), SqliteHandle::Missing::Refuse));
    const SqliteHandle& handle = connection.Handle();
    connection.BeginTrans();
    CreateTables(handle, Schema::Current(), Schema::Current().Version());
    fill(SqliteTransfer(connection));
    connection.CommitTrans();
    EndWhen(handle, stop);
    RequireSound(handle);
  });
}

CopyContent LookIntoSqlite(const ConnectionString& copy) {
  const SqliteHandle handle(copy, SqliteHandle::Missing::Refuse);
  CopyContent content;
  content.version = handle.Value("PRAGMA user_version").toInt();
  for (const Table& table : Schema::Current().Tables()) {
    if (table.FindColumn(u"Eliminado") != nullptr && HasTable(handle, table)) {
      content.rows.insert(
          table.name,
          handle.Value("SELECT count(*) FROM " + QuotedName(table.name).toUtf8() + " WHERE Eliminado=0").toLongLong());
    }
  }
  return content;
}

// In a copy of the user's alone, which the program may bring to its version and nobody changes meanwhile.
void ReadSqlite(const ConnectionString& source, const std::function<void(const TransferSource&)>& read) {
  RequireSound(SqliteHandle(source, SqliteHandle::Missing::Refuse));
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kel.db"_s);
  CopySqlite(source, file, {});
  PrepareSqlite(At(file), Content::Reference);
  SqliteConnection connection(At(file));
  connection.Open();
  read(SqliteTransfer(connection));
}

QString RestoreSqlite(const ConnectionString& copy, const QString& file) {
  const bool exists = QFileInfo::exists(file);
  if (exists && !process::MayWrite(file)) {
    throw EngineError(nullptr, SQLITE_READONLY, At(file));
  }
  const process::UnfinishedFile unfinished(file);
  RequireMade(unfinished.IsValid(), file);
  {
    const SqliteHandle source(copy, SqliteHandle::Missing::Refuse);
    RequireSound(source);
    CopyAndCheck(source, unfinished.Path(), {});
  }
  if (!exists) {
    RequireMade(unfinished.Place(process::UnfinishedFile::Existing::Keep), file);
    return {};
  }
  const Engine alone = HoldAlone(file);
  const QString kept = KeptName(file);
  RequireMade(unfinished.TakeRightsOf(file), file);
  for (const QString& rest : {u"-wal"_s, u"-shm"_s, u"-journal"_s}) {
    // A sound file's are empty by now, and go with its engine.
    if (alone == nullptr && QFileInfo::exists(file + rest)) {
      Rename(file + rest, kept + rest);
    }
  }
  Keep(file, kept);
  RequireMade(unfinished.Place(process::UnfinishedFile::Existing::Replace), file);
  return kept;
}

}  // namespace database
