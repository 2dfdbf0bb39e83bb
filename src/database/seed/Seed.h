#pragma once

#include "platform/adodb/Connection.h"

namespace database {

/// Fills an empty database with the reference data: countries (España is 35), provinces with their postcode
/// prefixes, communities with the tax agency's codes, dioceses, deduction percentages, kinds of subscription,
/// headings, the catalogue of label fields, the communities of provinces, the configuration row and an administrator.
void SeedReference(adodb::Connection& connection);

/// Gives a database that was of `fromVersion` the reference data of tables that came later. What the office changed
/// stays.
void SeedWhatIsNew(adodb::Connection& connection, int fromVersion);

/// Adds an invented organisation to the reference data: banks and branches, presenters, issuers, accounts,
/// collectors, some three hundred collaborators with donations and subscriptions, couples and institutions among them,
/// publications, disks, label sheets, headers, letters and a selection of all people. The same every time; no real
/// person or bank.
void SeedDemonstration(adodb::Connection& connection);

}  // namespace database
