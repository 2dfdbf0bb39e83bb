#include "host/desktop/RecentDatabases.h"

#include "database/Place.h"
#include "platform/automation/Error.h"

#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostKept = 40;
const QString recentKey = u"Bases/Recientes"_s;
const QString chosenKey = u"Bases/Elegida"_s;

// What makes no sense was written by somebody else, and is gone, too.
bool IsThere(const QString& connectionString) {
  try {
    const database::Place place = database::PlaceOf(connectionString);
    return !place.IsFile() || QFileInfo(place.file).isFile();
  } catch (const automation::Error&) {
    return false;
  }
}

}  // namespace

RecentDatabases TakeRecentDatabases() {
  QSettings settings;
  RecentDatabases recent;
  const QStringList kept = settings.value(recentKey).toStringList().mid(0, mostKept);
  for (const QString& each : kept) {
    if (IsThere(each)) {
      recent.strings.append(each);
    }
  }
  recent.gone = static_cast<int>(kept.size() - recent.strings.size());
  if (recent.gone > 0) {
    settings.setValue(recentKey, recent.strings);
  }
  return recent;
}

QString GoneText(int gone) {
  return gone == 1
             ? u"Una base de datos que se abrió antes ya no está en su sitio, y se ha quitado de la lista."_s
             : u"%1 bases de datos que se abrieron antes ya no están en su sitio, y se han quitado de la lista."_s.arg(
                   gone);
}

void NoteDatabase(const QString& connectionString) {
  QSettings settings;
  QStringList kept = settings.value(recentKey).toStringList();
  kept.removeAll(connectionString);
  kept.prepend(connectionString);
  settings.setValue(recentKey, kept.mid(0, mostKept));
}

QString ChosenDatabase() {
  return QSettings().value(chosenKey).toString();
}

void ChooseDatabase(const QString& connectionString) {
  QSettings().setValue(chosenKey, connectionString);
}

}  // namespace host
