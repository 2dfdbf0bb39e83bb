#include "database/sqlite/SqliteErrors.h"

#include "platform/adodb/ErrorNumbers.h"
#include "platform/process/PrivateFiles.h"

#include <QFileInfo>

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace database {

using automation::Error;

namespace {

QString Locked(const ConnectionString& target) {
  return u"Otro programa está usando la base de datos «%1» y no la ha soltado en %2 s. No se ha guardado "
         "nada. Espere a que termine, o ciérrelo, y vuelva a intentarlo."_s.arg(
             target.File(), QString::number((target.WaitMilliseconds() + 999) / 1000));
}

// The engine says "UNIQUE constraint failed: Bancos.Numero".
QString ConstraintText(int code, const QString& text) {
  const QString detail = text.section(u": "_s, 1);
  switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
      return u"Ya existe un registro con los mismos valores (%1). Cambie el valor repetido."_s.arg(detail);
    case SQLITE_CONSTRAINT_NOTNULL:
      return u"Falta un valor obligatorio (%1). Rellénelo y vuelva a intentarlo."_s.arg(detail);
    default:
      return u"La base de datos no admite ese valor (%1). Corríjalo y vuelva a intentarlo."_s.arg(detail);
  }
}

// The refusals that the engine tells apart only by their texts.
Error PlainError(const QString& text, const ConnectionString& target) {
  const QString damaged =
      u"A la base de datos «%1» le falta una parte (%2): otro programa la ha cambiado. Recupere una "
      "copia de seguridad."_s.arg(target.File(), text);
  if (text.startsWith(u"no such table"_s)) {
    return Error(adodb::NoSuchTable, damaged);
  }
  if (text.startsWith(u"no such column"_s) || text.contains(u"has no column named"_s)) {
    return Error(adodb::NoSuchColumn, damaged);
  }
  if (text.contains(u"too many"_s) || text.contains(u"too large"_s) || text.startsWith(u"variable number"_s)) {
    return Error(adodb::StatementTooBig,
                 u"La instrucción SQL es demasiado grande (%1). Divídala en varias."_s.arg(text));
  }
  return Error(adodb::EngineFailure, u"La base de datos «%1» rechazó la operación: %2"_s.arg(target.File(), text));
}

// What is opened there is opened for reading.
bool IsDiskFull(const QString& file) {
  constexpr std::uintmax_t leastRoom = 64 * 1024;
  std::error_code unknown;
  const auto room = std::filesystem::space(QFileInfo(file).absolutePath().toStdString(), unknown);
  return !unknown && room.available < leastRoom;
}

// A log that was left behind is moved into the file by the first program that opens it, where that can write.
bool IsLogOutOfReach(int code, const ConnectionString& target) {
  const int plain = code & 0xFF;
  const bool refused = plain == SQLITE_CANTOPEN || plain == SQLITE_READONLY;
  const QFileInfo file(target.File());
  return refused && QFileInfo(file.filePath() + u"-wal"_s).size() > 0 && !process::MayWrite(file.absolutePath());
}

}  // namespace

Error EngineError(sqlite3* engine, int code, const ConnectionString& target) {
  const QString text = QString::fromUtf8(engine != nullptr ? sqlite3_errmsg(engine) : sqlite3_errstr(code));
  const QString& file = target.File();
  if (code == SQLITE_READONLY_DBMOVED) {
    return Error(
        adodb::DatabaseLocked,
        u"La base de datos «%1» se ha sustituido por una copia recuperada mientras se usaba. No se ha guardado "
        "nada. Vuelva a intentarlo."_s.arg(file));
  }
  if (IsLogOutOfReach(code, target)) {
    return Error(
        adodb::CannotOpen,
        u"La base de datos «%1» no se cerró bien la última vez: parte de lo guardado está solo en «%1-wal», y "
        "para recuperarlo hay que poder escribir en su carpeta. Copie los dos archivos juntos a otra carpeta y "
        "abra la base de datos allí."_s.arg(file));
  }
  const bool isReadOnly = (code & 0xFF) == SQLITE_READONLY;
  switch (isReadOnly && IsDiskFull(file) ? SQLITE_FULL : code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Error(adodb::DatabaseLocked, Locked(target));
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return Error(adodb::DatabaseReadOnly,
                   u"No se puede escribir en la base de datos «%1»: el archivo o su carpeta son de solo "
                   "lectura. Pida permiso de escritura o guárdela en otra carpeta."_s.arg(file));
    case SQLITE_FULL:
      return Error(adodb::DiskFull,
                   u"No queda sitio en el disco para la base de datos «%1». No se ha guardado "
                   "el último cambio. Libere espacio y vuelva a intentarlo."_s.arg(file));
    case SQLITE_IOERR:
      return Error(adodb::DiskFailure,
                   u"El disco falló al leer o escribir la base de datos «%1» (%2). "
                   "Compruebe el disco y haga una copia de seguridad."_s.arg(file, QString::number(code)));
    case SQLITE_CORRUPT:
      return Error(adodb::DatabaseDamaged,
                   u"La base de datos «%1» está dañada (%2). Recupere una copia de seguridad."_s.arg(file, text));
    case SQLITE_NOTADB:
      return Error(adodb::NotADatabase, u"El archivo «%1» no es una base de datos. Elija otro archivo."_s.arg(file));
    case SQLITE_CANTOPEN:
      return Error(adodb::CannotOpen,
                   u"No se puede abrir la base de datos «%1». Compruebe que el archivo existe "
                   "y que tiene permiso sobre él y sobre su carpeta."_s.arg(file));
    case SQLITE_CONSTRAINT:
      return Error(adodb::ConstraintViolation, ConstraintText(code, text));
    case SQLITE_TOOBIG:
      return Error(adodb::StatementTooBig, u"La instrucción SQL o uno de sus valores es demasiado grande."_s);
    case SQLITE_MISMATCH:
      return Error(automation::TypeMismatch, text.startsWith(automation::ErrorText(automation::TypeMismatch))
                                                 ? text
                                                 : automation::ErrorText(automation::TypeMismatch));
    case SQLITE_RANGE:
      return Error(automation::Overflow, text);
    case SQLITE_INTERRUPT:
      return Error(adodb::Stopped, u"El trabajo se ha interrumpido."_s);
    case SQLITE_NOMEM:
      return Error(7);
    default:
      return PlainError(text, target);
  }
}

}  // namespace database
