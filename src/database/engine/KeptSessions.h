#pragma once

#include <QMutex>

#include <vector>

namespace database {

class EngineConnection;

/// The closed connections of the process that keep their sessions, on whatever thread; for those who need a database
/// to be open nowhere.
class KeptSessions {
 public:
  static KeptSessions& Instance();

  void Add(EngineConnection* connection);
  /// The connection goes on with its session, or ends.
  void Remove(EngineConnection* connection);
  /// Ends all of them.
  void LetGo();

 private:
  QMutex m_mutex;
  std::vector<EngineConnection*> m_connections;
};

}  // namespace database
