#pragma once

#include "platform/adodb/Connection.h"

namespace database {

class EngineConnection;

/// The connection of this library that works beneath the layers of `connection`; nullptr for one that is not of this
/// library.
EngineConnection* EngineBeneath(adodb::Connection& connection);

}  // namespace database
