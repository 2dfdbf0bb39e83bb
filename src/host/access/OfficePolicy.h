#pragma once

#include "platform/adodb/Connection.h"

#include <QString>

namespace host {

/// What an administrator decides for everybody who uses a database.
struct OfficePolicy {
  static constexpr int mostMonthsOfLog = 24;
  static constexpr int fewestDaysOfCopies = 2;
  static constexpr int mostDaysOfCopies = 365;

  QString name = {};      ///< Of the organisation; may be empty.
  int idleMinutes = 0;    ///< Without use, until the program locks; 0 for never.
  int monthsOfLog = 24;   ///< How long notes of the change log are kept, at least one.
  int daysOfCopies = 14;  ///< How long the daily copies of a file are kept, fewestDaysOfCopies at least.

  bool operator==(const OfficePolicy&) const = default;
};

/// What makes no sense counts as the usual. Errors of the database leave it.
OfficePolicy ReadOfficePolicy(adodb::Connection& connection);

/// Stores what differs from `before`. UserRules asks first who wants it.
void StoreOfficePolicy(adodb::Connection& connection, const OfficePolicy& before, const OfficePolicy& wanted);

}  // namespace host
