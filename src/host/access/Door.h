#pragma once

#include "platform/adodb/Connection.h"

#include <QDateTime>
#include <QHash>
#include <QString>

#include <chrono>
#include <functional>

namespace host {

/// How long nobody gets in by a name after so many wrong passwords in a row: not at all up to two, then 2, 4, 8 ... 60
/// seconds. Nobody is shut out for good.
std::chrono::seconds WaitAfter(int failures);

/// Counts wrong passwords. Each try counts as wrong from its beginning until it turns out right, in the database, so
/// that several programs that guess at once share one count and a restart forgets nothing. A clock that was set back
/// makes no wait shorter, nor longer than it was in full. What can't be counted in the database (a name that no user
/// has, a file that can't be written) is counted by this object. No password comes in here.
class Door {
 public:
  using Clock = std::function<QDateTime()>;

  explicit Door(Clock clock = QDateTime::currentDateTimeUtc) : m_clock(std::move(clock)) {}

  struct Try {
    QString name;
    int userId = 0;                ///< 0 where nobody may enter by that name.
    QString hash = {};             ///< What the password has to fit; empty where nobody may enter.
    std::chrono::seconds wait{0};  ///< Not 0: it is too early, and this try does not count.
  };

  /// Errors of the database leave it, but for those of a file that can't be written.
  Try Begin(adodb::Connection& connection, const QString& name);
  /// The password was right: the count begins anew, and the entry is noted.
  void Succeed(adodb::Connection& connection, const Try& done);
  /// How long the next try by that name has to wait.
  std::chrono::seconds Wait(adodb::Connection& connection, const QString& name);

  /// A try without the database, for the user who is at work.
  Try BeginAlone(const QString& name);
  void SucceedAlone(const QString& name);

 private:
  struct Count {
    int failures = 0;
    QDateTime until;
  };

  std::chrono::seconds Remaining(Count& count) const;
  /// One more failure, unless it is too early.
  std::chrono::seconds Add(Count& count) const;

  Clock m_clock;
  QHash<QString, Count> m_counts;  ///< By folded names.
};

}  // namespace host
