#pragma once

#include "host/mailing/selection/Conditions.h"
#include "platform/adodb/Connection.h"

#include <QHash>
#include <QString>

namespace host {

/// People that were chosen under a name: those who meet the conditions, but for who was taken or left out by hand.
/// Without conditions the people taken by hand are all of them, and where nobody was taken, everybody.
struct SavedSelection {
  int id = 0;
  QString name;
  Conditions conditions;
  QHash<int, bool> people;  ///< Taken (true) or left out (false) by hand, by their keys.
};

/// The selection of that name, without regard to case: one of the user's own, or else a shared one. Raises 5 where
/// there is none, where its conditions can't be understood, and where they name a record that is gone.
SavedSelection ReadSelection(adodb::Connection& connection, const QString& name, int userId);

}  // namespace host
