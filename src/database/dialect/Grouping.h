#pragma once

#include "database/dialect/Scope.h"

namespace database {

/// Whether a call of an aggregate function is in it, subqueries not counted.
bool HasAggregate(const Expression& expression);

/// Whether the select's rows are each one of several that it reads: by groups, or all of them.
bool IsGrouped(const Select& select);

/// Refuses what has no one value, and what engines would take in different ways: in a select that groups, a value that
/// is neither grouped nor aggregated; without duplicates, an order by something else than what is selected; an
/// aggregate where rows are chosen. A column by its position must be there. Raises SyntaxError with a place in
/// `statement`.
void RequireGroupable(const Select& select, const Scope& scope, QStringView statement);

}  // namespace database
