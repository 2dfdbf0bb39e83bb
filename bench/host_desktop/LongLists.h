#pragma once

#include "platform/adodb/Connection.h"

#include <memory>

namespace bench {

/// Prepares a database with 200,000 more provinces of Spain and as many headings. An open connection to it.
std::unique_ptr<adodb::Connection> MakeLongLists(const QString& connectionString);

/// How many of each.
constexpr int longList = 200'000;

}  // namespace bench
