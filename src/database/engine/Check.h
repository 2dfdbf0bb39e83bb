#pragma once

#include "database/Maintenance.h"
#include "database/Schema.h"
#include "platform/adodb/Connection.h"

#include <QStringList>

namespace database {

/// Looks at what every engine keeps alike: missing tables and indexes, references, lengths. `present` are the names of
/// the tables and indexes that the database has, `version` is that of its schema. Raises the engine's refusals, with
/// what was found so far in `findings`.
void CheckContents(adodb::Connection& connection, const QStringList& present, int version, Findings& findings);

}  // namespace database
