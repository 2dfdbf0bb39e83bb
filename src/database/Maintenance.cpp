#include "database/Maintenance.h"

#include "database/Engines.h"
#include "database/Errors.h"
#include "database/Place.h"
#include "database/ServerCopies.h"
#include "database/engine/KeptSessions.h"
#include "database/postgres/PostgresCheck.h"
#include "database/postgres/PostgresPreparation.h"
#include "database/sqlite/SqliteCheck.h"
#include "database/sqlite/SqliteCopy.h"
#include "platform/process/PrivateFiles.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <sys/sysmacros.h>

using namespace Qt::StringLiterals;

namespace database {

namespace {

// The locks of all processes, by device and number of the locked file (proc(5)). Where a file system calls its device
// otherwise, nobody seems to have a lock; a check too many does no harm.
bool IsLockedByAnybody(const QString& file) {
  struct stat status = {};
  QFile locks(u"/proc/locks"_s);
  if (stat(QFile::encodeName(file).constData(), &status) != 0 || !locks.open(QIODevice::ReadOnly)) {
    return false;
  }
  const auto device = [](unsigned number) { return QByteArray::number(number, 16).rightJustified(2, '0') + ':'; };
  return locks.readAll().contains(' ' + device(major(status.st_dev)) + device(minor(status.st_dev)) +
                                  QByteArray::number(static_cast<qulonglong>(status.st_ino)) + ' ');
}

ConnectionString OfFile(const QString& connectionString) {
  ConnectionString target(connectionString);
  if (target.File().isEmpty()) {
    throw BadConnectionString(
        u"esta operación es de archivos, y la base de datos «%1» está en un servidor"_s.arg(target.ShownName()));
  }
  return target;
}

ConnectionString Readable(const QString& connectionString) {
  return OfFile(MayBeWritten(connectionString) ? connectionString : ForViewing(connectionString));
}

}  // namespace

bool MayBeWritten(const QString& connectionString) {
  const ConnectionString target(connectionString);
  if (target.ReadOnly()) {
    return false;
  }
  const QString file = PlaceOf(connectionString).file;
  if (file.isEmpty()) {
    return MayWritePostgres(target);
  }
  return !QFileInfo::exists(file) || (process::MayWrite(file) && process::MayWrite(QFileInfo(file).path()));
}

QString ForViewing(const QString& connectionString) {
  return ConnectionString(connectionString).ReadOnly() ? connectionString : connectionString + u";Acceso=lectura"_s;
}

CopySize CopyDatabase(const QString& connectionString, const QString& file, const Stop& stop) {
  const QString path = QFileInfo(file).absoluteFilePath();
  const ConnectionString target = TargetOf(connectionString);
  return IsOnServer(target) ? CopyFromServer(target, path, stop) : CopySqlite(Readable(connectionString), path, stop);
}

CopyContent LookIntoCopy(const QString& copy) {
  return LookIntoSqlite(Readable(ForViewing(ConnectionStringForFile(QFileInfo(copy).absoluteFilePath()))));
}

QString RestoreDatabase(const QString& copy, const QString& connectionString) {
  KeptSessions::Instance().LetGo();
  const ConnectionString source = Readable(ConnectionStringForFile(copy));
  const ConnectionString target = TargetOf(connectionString);
  return IsOnServer(target) ? RestoreToServer(source, target) : RestoreSqlite(source, PlaceOf(connectionString).file);
}

Findings CheckDatabase(const QString& connectionString) {
  const ConnectionString target = TargetOf(connectionString);
  return IsOnServer(target) ? CheckPostgres(target) : CheckSqlite(Readable(connectionString));
}

ServerSetUp SetUpServer(const QString& connectionString, Content content) {
  const ConnectionString target = TargetOf(connectionString);
  if (!IsOnServer(target)) {
    throw BadConnectionString(u"esta operación es de servidores, y «%1» es un archivo"_s.arg(target.ShownName()));
  }
  return SetUpPostgres(target, content);
}

QStringList QuickCheck(const QString& connectionString) {
  return QuickCheckSqlite(Readable(connectionString));
}

bool WasLeftOpen(const QString& connectionString) {
  const QString file = PlaceOf(connectionString).file;
  if (file.isEmpty()) {
    return false;
  }
  const bool hasLog = QFileInfo(file + u"-wal"_s).size() > 0 || QFileInfo(file + u"-journal"_s).size() > 0;
  return hasLog && !IsLockedByAnybody(file);
}

}  // namespace database
