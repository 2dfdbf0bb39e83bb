#pragma once

#include "host/records/LockMemory.h"
#include "host/records/ProcessIdentity.h"
#include "platform/adodb/Connection.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace host {

/// Who holds which record.
struct LockHolder {
  int number = 0;          ///< The lock's, by which it is named on the command line.
  QString keyColumn = {};  ///< The key column of the record's table.
  int key = 0;
  int userId = 0;
  QString userName = {};
  ProcessIdentity process = {};
  int presence = 0;      ///< Of the session on a server, see database/Presence.h; 0 on a file.
  QDateTime since = {};  ///< Invalid when the database does not say.
  /// Why nobody can hold it now, a sentence without its point; empty where somebody does.
  QString obstacle = {};

  /// The obstacle, or who, where, since when (local time), as a sentence without its point: "Lo está modificando «ana»
  /// en «pc3» desde las 13:03".
  QString Description() const;
};

/// The record locks of one user in this process, kept in the table BloqueoRegistros, whose unique index over
/// (campoID, ValorID) decides between two that try at once.
///
/// A lock is held by a process and a user together, on a server by a session of theirs. One whose holder has ended is
/// taken over by the next who asks: of a session the server knows it, of a process only its machine; on a file one of
/// another machine stays until it is released.
/// Where several try at once, those who lose try again and find a holder: a lost race is no error.
/// Errors of the database pass through.
class RecordLocks {
 public:
  /// `connection` must be open and outlive this object, as must `memory`, which is told what is held.
  RecordLocks(adodb::Connection& connection, int userId, QString userName, LockMemory* memory = nullptr);

  /// Takes the lock of the record whose key column `keyColumn` holds `key`. Nothing when it is held now (for the
  /// first time or again), otherwise who holds it.
  std::optional<LockHolder> Take(const QString& keyColumn, int key);

  /// Who else holds it now; nothing when Take would succeed. For what is only asked: the answer holds for no time.
  std::optional<LockHolder> HeldByAnother(const QString& keyColumn, int key) const;

  /// Whether the holder has certainly ended, so that the lock is there for the taking.
  bool HasEnded(const LockHolder& holder) const;

  /// Releases the own lock; somebody else's stays.
  void Release(const QString& keyColumn, int key);

  /// Every lock of the database, the oldest first.
  QList<LockHolder> All() const;
  /// Releases somebody's lock, exactly that one. False when its holder let go meanwhile.
  bool ReleaseOf(const LockHolder& holder);

 private:
  std::optional<LockHolder> HolderOf(const QString& keyColumn, int key) const;
  std::optional<LockHolder> TryToTake(const LockHolder& self, const QString& keyColumn, int key) const;
  /// False where somebody has it.
  bool Insert(const LockHolder& self, const QString& keyColumn, int key) const;
  bool TakeOver(const LockHolder& self, const LockHolder& ended) const;
  LockHolder Self() const;

  adodb::Connection& m_connection;
  int m_userId;
  QString m_userName;
  LockMemory* m_memory;
};

}  // namespace host
