#pragma once

#include "host/mailing/selection/Conditions.h"
#include "platform/adodb/Connection.h"

#include <QHash>
#include <QString>

namespace host {

/// People that were chosen, perhaps under a name: those who meet the conditions, but for who was taken or left out by
/// hand.
struct SavedSelection {
  int id = 0;  ///< 0 for one that nobody saved.
  QString name;
  Conditions conditions;
  QHash<int, bool> people;  ///< Taken (true) or left out (false) by hand, by their keys.
  bool onlyTaken = false;   ///< Without conditions: nobody but who was taken. So is a saved one where somebody was.

  /// Whether somebody who meets the conditions is chosen.
  bool Takes(int person) const { return people.value(person, !onlyTaken); }
  bool operator==(const SavedSelection&) const = default;
};

/// The selection of that name, without regard to case: one of the user's own, or else a shared one. Raises 5 where
/// there is none, where its conditions can't be understood, and where they name a record that is gone.
SavedSelection ReadSelection(adodb::Connection& connection, const QString& name, int userId);
/// The same by its number.
SavedSelection ReadSelection(adodb::Connection& connection, int id, int userId);

/// Raises 5, naming it, where the conditions ask for a record that is gone: they would choose nobody, or other people
/// than they say.
void RequireRecords(adodb::Connection& connection, const SavedSelection& selection);

}  // namespace host
