#pragma once

#include "database/Maintenance.h"
#include "database/Schema.h"
#include "platform/adodb/Connection.h"

#include <QStringList>

namespace database {

/// The table whose rows a column of identifiers names: CodPais those of the key IDPais, CodTipoDeduccionFisica those of
/// IDTipoDeduccion, CodDeduccion, too. nullptr for a column that names none.
const Table* ReferredTable(const Schema& schema, const Column& column);

/// Looks at what every engine keeps alike: missing tables and indexes, references, lengths. `present` are the names of
/// the tables and indexes that the database has, `version` is that of its schema. Raises the engine's refusals, with
/// what was found so far in `findings`.
void CheckContents(adodb::Connection& connection, const QStringList& present, int version, Findings& findings);

}  // namespace database
