#pragma once

#include "database/Export.h"

#include <QString>

#include <memory>

namespace database {

class ConnectionString;
class Session;

/// Tells at next to no cost whether anybody has written to a database, so that a program looks at what changed only
/// when something did. It holds a session of its own from the first look until it goes, belongs to the thread of that
/// look, and keeps nobody from writing.
///
/// It says "look", not "changed": an engine may move it for its own housekeeping, and the commits of this program's
/// connections move it, too.
class KELDATOS_EXPORT ChangeClock {
 public:
  /// Opens nothing yet. Raises what CreateConnection raises.
  explicit ChangeClock(const QString& connectionString);
  ChangeClock(const ChangeClock&) = delete;
  ChangeClock& operator=(const ChangeClock&) = delete;
  ~ChangeClock();

  /// Whether a commit came since the last look; true at the first one, and when the database had to be opened anew
  /// because its file was replaced. Raises what opening a connection raises, and is as before its first look then.
  bool HasMoved();

 private:
  std::unique_ptr<ConnectionString> m_target;
  std::unique_ptr<Session> m_session;
  qint64 m_seen = 0;
};

}  // namespace database
