#include "host/moving/BringIn.h"

#include "database/Database.h"
#include "database/Maintenance.h"
#include "database/Place.h"
#include "host/moving/RecordInspection.h"
#include "host/services/TaxIdentifier.h"
#include "platform/automation/Error.h"
#include "platform/files/NewFile.h"
#include "platform/process/PrivateFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

QString MakeCopy(const MovingPlace& place, const database::Stop& stop) {
  const QDir folder(place.copies);
  if (!process::CreatePrivateFolder(folder.path())) {
    Refuse(u"No se puede usar la carpeta «%1» para la copia de antes; no se ha traído nada."_s.arg(folder.path()));
  }
  const QString moment = QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmmss"_s);
  QString copy = folder.filePath(u"kel-antes-de-traer-%1.db"_s.arg(moment));
  for (int number = 2; QFile::exists(copy); ++number) {
    copy = folder.filePath(u"kel-antes-de-traer-%1-%2.db"_s.arg(moment).arg(number));
  }
  database::CopyDatabase(place.connectionString, copy, stop);
  return copy;
}

QString Heading(const MovingPlace& place, const QString& copy) {
  return u"%1, por «%2». Copia de antes: %3 (con ella se deshace todo: kel-host restaurar).\n"_s.arg(
      QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm"_s), place.userName, copy);
}

// The data are in, whatever becomes of the report.
void KeepReport(const MovingPlace& place, Brought& brought) {
  const QFileInfo copy(brought.copy);
  const QString path = copy.dir().filePath(copy.completeBaseName() + u".txt"_s);
  try {
    WriteReport(path, Heading(place, brought.copy) + brought.report.Text());
    brought.reportFile = path;
  } catch (const automation::Error& error) {
    brought.report.warnings += u"El informe no se ha podido guardar: "_s + error.Description();
  }
}

}  // namespace

MovingPlace PlaceFor(const Session& session, const QString& connectionString, const QString& usualFolder) {
  const database::Place database = database::PlaceOf(connectionString);
  const QString folder = database.IsFile() ? QFileInfo(database.file).path() : usualFolder;
  return {connectionString, folder + u"/copias"_s,     session.userId,
          session.userName, session.IsAdministrator(), session.readOnly};
}

void RequireMayBring(const MovingPlace& place, adodb::Connection& connection) {
  if (place.readOnly) {
    Refuse(u"La base de datos sólo se puede mirar; no se puede traer nada."_s);
  }
  if (!place.isAdministrator) {
    Refuse(u"Sólo un administrador puede traer datos de otro programa."_s);
  }
  const RecordLocks locks(connection, place.userId, place.userName);
  for (const LockHolder& holder : locks.All()) {
    if (!locks.HasEnded(holder)) {
      Refuse(
          u"Hay registros abiertos, y no se ha traído nada. %1. Cierre las demás ventanas (kel-host bloqueos)."_s.arg(
              holder.Description()));
    }
  }
}

void AddKnowledge(moving::ImportWishes& wishes) {
  wishes.identifier = [](const QString& text) {
    const TaxIdentifier identifier = CheckTaxIdentifier(text);
    return identifier.verdict == TaxIdentifierVerdict::Valid ? identifier.normalised : QString();
  };
  wishes.inspect = [stop = wishes.stop](const database::Table& table, const QList<moving::Value>& values) {
    return InspectRecord(table, values, stop);
  };
}

Brought BringIn(const QString& file, const MovingPlace& place, const moving::ImportWishes& wishes) {
  // What it is comes first: nothing is opened, made or copied for a file that is none.
  moving::KindOfFile(file);
  Brought brought;
  const auto connection = database::CreateConnection(place.connectionString);
  connection->Open();
  QString copy;
  if (!wishes.isTrial) {
    RequireMayBring(place, *connection);
    copy = MakeCopy(place, wishes.stop);
  }
  auto unneededCopy = qScopeGuard([&copy] {
    if (!copy.isEmpty()) {
      QFile::remove(copy);
    }
  });
  if (!wishes.isTrial) {
    // A copy takes its time.
    RequireMayBring(place, *connection);
  }
  brought.report = moving::Import(file, *connection, wishes);
  if (brought.report.isWritten) {
    unneededCopy.dismiss();
    brought.copy = copy;
    KeepReport(place, brought);
  }
  return brought;
}

void WriteReport(const QString& path, const QString& text) {
  files::NewFile file(path);
  file.Device().write(text.toUtf8());
  file.Finish();
}

}  // namespace host
