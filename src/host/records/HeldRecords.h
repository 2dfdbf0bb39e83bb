#pragma once

#include "host/records/Session.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace host {

/// A held record as a user knows it.
struct HeldRecord {
  LockHolder holder;
  QString kind;           ///< "Bancos"; the key column of a record that no node has.
  QString name;           ///< The number of a record that no list has.
  bool hasEnded = false;  ///< The program that took the lock runs no more; the next who asks gets the record.

  /// What a list says of it, and the titles over that: kind, record, user, machine, since when, state.
  QStringList Columns() const;
  static QStringList Titles();
};

/// Takes the lock from whoever holds it, in the name of the session's user, and notes that in the change log, where the
/// holder's program looks for it. False when the holder let go meanwhile. Errors of the database leave it.
bool TakeLockFrom(Session& session, const HeldRecord& record);

/// Every lock of the session's database, the oldest first. Errors of the database leave it.
QList<HeldRecord> HeldRecords(Session& session);

}  // namespace host
