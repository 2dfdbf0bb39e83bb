#pragma once

#include "database/ConnectionString.h"
#include "database/engine/Session.h"

#include <memory>

namespace database {

/// A connection string of an engine that this library has. Raises InvalidConnectionString for any other.
ConnectionString TargetOf(const QString& connectionString);

/// Whether the target's engine is a server's, and not one of files.
bool IsOnServer(const ConnectionString& target);

/// A session of the target's engine, not connected.
std::unique_ptr<Session> CreateSession(const ConnectionString& target);

}  // namespace database
