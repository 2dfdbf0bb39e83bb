#pragma once

#include "host/records/Session.h"
#include "moving/Import.h"

#include <QString>

namespace host {

/// Where data come in, and for whom.
struct MovingPlace {
  QString connectionString;
  QString copies;  ///< The folder of copies; made when it is first needed.
  int userId = 0;
  QString userName;
  bool isAdministrator = false;
  bool readOnly = false;
};

/// `usualFolder` is where copies of a database on a server go.
MovingPlace PlaceFor(const Session& session, const QString& connectionString, const QString& usualFolder);

/// What was done.
struct Brought {
  moving::ImportReport report;
  QString copy;        ///< The copy of before, by which everything can be undone; empty where nothing was written.
  QString reportFile;  ///< The report beside it.
};

/// Raises 5 unless an administrator asks, the database can be written, and nobody has a record open.
void RequireMayBring(const MovingPlace& place, adodb::Connection& connection);

/// Gives the wishes what the host knows: tax identifiers, letters, sheets. Letters need a QGuiApplication.
void AddKnowledge(moving::ImportWishes& wishes);

/// Imports the file on a connection of its own: may it, then the copy, the import, the report beside the copy. A trial
/// asks and makes none of these. Raises what they raise; where nothing was written no copy stays.
Brought BringIn(const QString& file, const MovingPlace& place, const moving::ImportWishes& wishes);

/// Writes a report; raises 5 where the file can't be written.
void WriteReport(const QString& path, const QString& text);

}  // namespace host
