#pragma once

#include <QString>
#include <QStringList>

/// The databases that this user of this machine has opened in the window, in the settings of the application.
namespace host {

struct RecentDatabases {
  QStringList strings;  ///< Connection strings, the last one first.
  int gone = 0;         ///< So many files were not there any more, and are forgotten now.
};

/// Those that are still there; a server's is taken for that.
RecentDatabases TakeRecentDatabases();
/// Says how many are gone, one at least.
QString GoneText(int gone);
/// The one that the window shows; the demonstration is none.
void NoteDatabase(const QString& connectionString);

/// The one that a start without arguments opens; empty where none was ever chosen in the program.
QString ChosenDatabase();
void ChooseDatabase(const QString& connectionString);

}  // namespace host
