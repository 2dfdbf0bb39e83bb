#pragma once

#include "database/Export.h"

#include <QString>

namespace database {

/// Where a database is, as far as a program must know besides the connection string. Whether it may be written says
/// MayBeWritten of database/Maintenance.h.
struct Place {
  QString shown;  ///< The database as messages and titles name it: the file, or base, server and user.
  QString file;   ///< The absolute path of a file; empty on a server.

  bool IsFile() const { return !file.isEmpty(); }
};

/// Opens nothing. Raises InvalidConnectionString.
KELDATOS_EXPORT Place PlaceOf(const QString& connectionString);

}  // namespace database
