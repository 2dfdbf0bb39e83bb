#pragma once

#include "platform/adodb/Connection.h"

namespace host {

/// The connection, opened when it was closed. Raises 91 for none.
adodb::Connection& Opened(adodb::Connection* connection);

}  // namespace host
