#include "host/cli/MovingCommand.h"

#include "host/cli/Application.h"
#include "host/cli/Startup.h"
#include "host/moving/BringIn.h"
#include "moving/Export.h"
#include "moving/NameMemory.h"
#include "platform/automation/Error.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSettings>
#include <QTextStream>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace host {

namespace {

MovingPlace PlaceOf(const StartedSession& started) {
  return PlaceFor(started.session, started.connectionString, QFileInfo(UsualDatabaseFile(false)).path());
}

moving::ImportWishes WishesOf(const MovingOptions& options) {
  moving::ImportWishes wishes;
  wishes.names = options.names;
  if (!options.table.isEmpty()) {
    wishes.names.tables.insert(u"*"_s, options.table);
  }
  wishes.read = options.read;
  wishes.isTrial = options.isTrial;
  wishes.acceptsLosses = options.acceptsLosses;
  wishes.skipsDeleted = options.skipsDeleted;
  if (!options.answers.isEmpty()) {
    wishes.answers = moving::Answers::Read(options.answers);
  }
  AddKnowledge(wishes);
  return wishes;
}

// Null where none is named.
std::unique_ptr<QSettings> SettingsIn(const QString& file) {
  if (file.isEmpty()) {
    return nullptr;
  }
  auto settings = std::make_unique<QSettings>(file, QSettings::IniFormat);
  if (!QFileInfo(file).isReadable() || settings->status() != QSettings::NoError) {
    throw automation::Error(automation::InvalidProcedureCall,
                            u"No se puede leer el archivo de correspondencias «%1»."_s.arg(file));
  }
  return settings;
}

QString Advice(const Brought& brought, const MovingOptions& options) {
  if (brought.report.Sum(&moving::TableReport::read) == 0) {
    return u"No hay nada que traer.\n"_s;
  }
  if (brought.report.isWritten) {
    return u"Antes se ha hecho la copia «%1»: con ella se deshace todo (kel-host restaurar).\n"_s.arg(brought.copy);
  }
  if (brought.report.HasLosses() && !options.acceptsLosses) {
    return u"Hay cosas que no entrarían. Corríjalas en el archivo, o use «--aunque-falten» para traer el resto.\n"_s;
  }
  return u"Era una prueba: sin «--prueba» se traen.\n"_s;
}

}  // namespace

int RunImportCommand(const CommandLine& line, int& argc, char** argv) {
  // Letters are read into documents, which need no screen, but an application for windows.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const MovingOptions& options = line.moving;
  // What it is comes first: nothing is opened or made for a file that is none.
  moving::KindOfFile(options.file);
  moving::ImportWishes wishes = WishesOf(options);
  const std::unique_ptr<QSettings> said = SettingsIn(options.memory);
  const std::optional<moving::NameMemory> memory = said ? std::optional<moving::NameMemory>(*said) : std::nullopt;
  wishes.memory = memory ? &*memory : nullptr;
  const auto started = StartSession(line);
  if (!options.isTrial) {
    RequireMayBring(PlaceOf(*started), *started->connection);
  }
  const Brought brought = BringIn(options.file, PlaceOf(*started), wishes);
  const moving::ImportReport& report = brought.report;
  const QString text = report.Text() + Advice(brought, options);
  QTextStream(stdout) << text;
  if (!options.report.isEmpty()) {
    WriteReport(options.report, text);
  }
  const bool isLeft = report.Sum(&moving::TableReport::read) == 0 || (report.HasLosses() && !options.acceptsLosses);
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
