#include "host/cli/MovingCommand.h"

#include "host/cli/Application.h"
#include "host/cli/Startup.h"
#include "host/services/TaxIdentifier.h"
#include "moving/Export.h"
#include "moving/Import.h"
#include "platform/automation/Error.h"
#include "platform/files/NewFile.h"
#include "platform/process/PrivateFiles.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace host {

namespace {

[[noreturn]] void Refuse(const QString& text) {
  throw automation::Error(automation::InvalidProcedureCall, text);
}

void WriteReport(const QString& path, const QString& text) {
  files::NewFile file(path);
  file.Device().write(text.toUtf8());
  file.Finish();
}

void RequireMayBring(StartedSession& started) {
  if (started.session.readOnly) {
    Refuse(u"La base de datos sólo se puede mirar; no se puede traer nada."_s);
  }
  if (!started.session.IsAdministrator()) {
    Refuse(u"Sólo un administrador puede traer datos de otro programa."_s);
  }
  const RecordLocks locks = started.session.Locks();
  for (const LockHolder& holder : locks.All()) {
    if (!locks.HasEnded(holder)) {
      Refuse(
          u"Hay registros abiertos, y no se ha traído nada. %1. Cierre las demás ventanas (kel-host bloqueos)."_s.arg(
              holder.Description()));
    }
  }
}

// The copy before, by which everything can be undone.
QString MakeCopy(const StartedSession& started) {
  const QFileInfo database(started.place.IsFile() ? started.place.file : UsualDatabaseFile(false));
  const QDir folder(database.dir().filePath(u"copias"_s));
  if (!process::CreatePrivateFolder(folder.path())) {
    Refuse(u"No se puede usar la carpeta «%1» para la copia de antes; no se ha traído nada."_s.arg(folder.path()));
  }
  const QString moment = QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmmss"_s);
  const QString copy = folder.filePath(u"kel-antes-de-traer-%1.db"_s.arg(moment));
  database::CopyDatabase(started.connectionString, copy);
  return copy;
}

moving::ImportWishes WishesOf(const MovingOptions& options) {
  moving::ImportWishes wishes;
  wishes.names = options.names;
  if (!options.table.isEmpty()) {
    wishes.names.tables.insert(u"*"_s, options.table);
  }
  wishes.isTrial = options.isTrial;
  wishes.acceptsLosses = options.acceptsLosses;
  wishes.identifier = [](const QString& text) {
    const TaxIdentifier identifier = CheckTaxIdentifier(text);
    return identifier.verdict == TaxIdentifierVerdict::Valid ? identifier.normalised : QString();
  };
  return wishes;
}

QString Advice(const moving::ImportReport& report, const MovingOptions& options, const QString& copy) {
  if (report.Read() == 0) {
    return u"No hay nada que traer.\n"_s;
  }
  if (report.isWritten) {
    return u"Antes se ha hecho la copia «%1»: con ella se deshace todo (kel-host restaurar).\n"_s.arg(copy);
  }
  if (report.HasLosses() && !options.acceptsLosses) {
    return u"Hay cosas que no entrarían. Corríjalas en el archivo, o use «--aunque-falten» para traer el resto.\n"_s;
  }
  return u"Era una prueba: sin «--prueba» se traen.\n"_s;
}

}  // namespace

int RunImportCommand(const CommandLine& line, int& argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const MovingOptions& options = line.moving;
  // What it is comes first: nothing is opened, made or copied for a file that is none.
  moving::KindOfFile(options.file);
  const auto started = StartSession(line);
  RequireMayBring(*started);
  const QString copy = options.isTrial ? QString() : MakeCopy(*started);
  bool isWritten = false;
  const auto unneededCopy = qScopeGuard([&] {
    if (!isWritten && !copy.isEmpty()) {
      QFile::remove(copy);
    }
  });
  const auto connection = database::CreateConnection(started->connectionString);
  connection->Open();
  const moving::ImportReport report = moving::Import(options.file, *connection, WishesOf(options));
  isWritten = report.isWritten;
  const bool isLeft = report.Read() == 0 || (report.HasLosses() && !options.acceptsLosses);
  const QString text = report.Text() + Advice(report, options, copy);
  QTextStream(stdout) << text;
  if (!options.report.isEmpty()) {
    WriteReport(options.report, text);
  }
  if (isWritten) {
    WriteReport(QFileInfo(copy).dir().filePath(QFileInfo(copy).completeBaseName() + u".txt"_s), text);
  }
  return isLeft ? ExitWithLosses : ExitDone;
}

int RunExportCommand(const CommandLine& line, int& argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const Target target = TargetOf(line);
  RequireWanted(target, line);
  const auto connection = database::CreateConnection(database::ForViewing(target.connectionString));
  connection->Open();
  const qint64 rows = moving::Export(line.moving.file, line.moving.table, *connection, {});
  QTextStream(stdout) << u"Escrito «%1»: %2 registros.\n"_s.arg(QFileInfo(line.moving.file).absoluteFilePath(),
                                                                QString::number(rows));
  return ExitDone;
}

}  // namespace host
