#include "host/cli/DatabaseChoice.h"

#include "database/Database.h"
#include "database/Maintenance.h"
#include "database/Place.h"
#include "host/cli/Startup.h"
#include "host/desktop/DatabaseDialog.h"
#include "host/desktop/RecentDatabases.h"
#include "host/services/ErrorBox.h"
#include "host/services/MessageBox.h"
#include "platform/automation/Error.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString RestoredText(const NextStart& next, const QString& kept) {
  const bool isFile = database::PlaceOf(next.connectionString).IsFile();
  const QString where = kept.isEmpty() ? QString()
                        : isFile       ? u" La base de datos que había se conserva en «%1»."_s.arg(kept)
                                 : u" Las tablas que había se conservan en el esquema «%1» del servidor."_s.arg(kept);
  return u"La copia se ha comprobado y restaurado."_s + where;
}

CommandLine With(const NextStart& next, CommandLine line) {
  line.file.clear();
  line.connectionString = next.connectionString;
  line.create = next.create;
  line.demonstration = next.demonstration;
  return line;
}

// What is wrong with a chosen database that can't be opened; empty where nothing is known to be.
QString Absence(const QString& connectionString) {
  try {
    const database::Place place = database::PlaceOf(connectionString);
    return !place.IsFile() || QFileInfo::exists(place.file)
               ? QString()
               : u"La base de datos «%1» ya no está en su sitio. ¿Con cuál quiere trabajar?"_s.arg(place.shown);
  } catch (const automation::Error& error) {
    return error.Description();
  }
}

// The file that a copy may replace; empty where there is none.
QString FileOf(const CommandLine& line) {
  try {
    const QString file = TargetOf(line).place.file;
    return line.demonstration || !QFileInfo::exists(file) ? QString() : file;
  } catch (const automation::Error&) {
    return {};
  }
}

std::optional<CommandLine> AskForDatabase(const CommandLine& line, const QString& reason, const QString& unreadable) {
  DatabaseDialog dialog(reason, UsualDatabaseFile(false), unreadable);
  return dialog.exec() == QDialog::Accepted ? std::optional(PrepareNext(dialog.Chosen(), line)) : std::nullopt;
}

}  // namespace

bool MayChooseDatabase(const CommandLine& line) {
  return line.command == Command::Window && line.file.isEmpty() && line.connectionString.isEmpty() &&
         !line.demonstration;
}

QString DatabaseOf(const CommandLine& line) {
  const Target target = TargetOf(line);
  const QFileInfo file(target.place.file);
  return target.place.IsFile()
             ? database::ConnectionStringForFile(file.exists() ? file.canonicalFilePath() : file.absoluteFilePath())
             : target.connectionString;
}

std::optional<CommandLine> FirstDatabase(const CommandLine& line) {
  if (!MayChooseDatabase(line)) {
    return line;
  }
  const QString chosen = ChosenDatabase();
  if (!chosen.isEmpty()) {
    const QString absence = Absence(chosen);
    return absence.isEmpty() ? With({.connectionString = chosen}, line) : AskForDatabase(line, absence, {});
  }
  return QFileInfo::exists(UsualDatabaseFile(false))
             ? line
             : AskForDatabase(line, u"Todavía no hay ninguna base de datos. ¿Cómo quiere empezar?"_s, {});
}

std::optional<CommandLine> OtherDatabase(const CommandLine& line, const CommandLine& failed) {
  return AskForDatabase(line, u"¿Con qué base de datos quiere trabajar?"_s, FileOf(failed));
}

CommandLine PrepareNext(const NextStart& next, const CommandLine& line) {
  if (!next.demonstration) {
    ChooseDatabase(next.connectionString);
  }
  if (!next.copy.isEmpty()) {
    try {
      const QString kept = database::RestoreDatabase(next.copy, next.connectionString);
      ShowMessage(QMessageBox::Information, RestoredText(next, kept), u"Kel"_s);
    } catch (const automation::Error& error) {
      ShowError(nullptr, u"Kel"_s, u"La copia no se ha restaurado, y la base de datos sigue como estaba."_s, error);
    }
  }
  return With(next, line);
}

}  // namespace host
