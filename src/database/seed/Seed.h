#pragma once

#include "platform/adodb/Connection.h"

namespace database {

/// Fills an empty database with the reference data: countries (España is 35), provinces with their postcode
/// prefixes, communities with the tax agency's codes, dioceses, deduction percentages, kinds of subscription,
/// headings, the catalogue of label fields, the configuration row and an administrator.
void SeedReference(adodb::Connection& connection);

/// Adds an invented organisation to the reference data: banks and branches, presenters, issuers, accounts,
/// collectors, some three hundred collaborators with donations and subscriptions, publications, label sheets,
/// headers and letters. The same every time; no real person or bank.
void SeedDemonstration(adodb::Connection& connection);

}  // namespace database
