#pragma once

#include "database/ConnectionString.h"
#include "database/Maintenance.h"

namespace database {

/// CopyDatabase of a server into a file, whose path is absolute.
CopySize CopyFromServer(const ConnectionString& server, const QString& file, const Stop& stop);

/// RestoreDatabase of a file into a server.
QString RestoreToServer(const ConnectionString& copy, const ConnectionString& server);

}  // namespace database
