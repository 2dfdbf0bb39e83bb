#pragma once

#include "database/ConnectionString.h"
#include "database/Maintenance.h"

namespace database {

/// CheckDatabase for this engine: tables, indexes, rules of order, keys that are to come, references, lengths.
Findings CheckPostgres(const ConnectionString& target);

}  // namespace database
