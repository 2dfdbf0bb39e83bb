#pragma once

#include "host/verification/CheckBench.h"

namespace host {

/// The statements of `statements.txt`, a check each, to be run in this order; what one finds the next ones use. The
/// connection is open, and its database a scratch one, which has the tables of the schema: rows stay behind. Raises an
/// error before anything is written when one of the tables that are written to holds a row already.
std::vector<MemberCheck> ConnectionChecks(adodb::Connection& connection);

}  // namespace host
