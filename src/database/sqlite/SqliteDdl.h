#pragma once

#include "database/Schema.h"

#include <QByteArrayList>

namespace database {

/// The statements that bring a database from `fromVersion` (0 for an empty one) to `toVersion`, in order.
QByteArrayList SchemaStatements(const Schema& schema, int fromVersion, int toVersion);

}  // namespace database
