#pragma once

#include "database/Export.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

namespace database {

/// What writing leaves in the files of a database: their sizes and times. A look opens nothing and takes microseconds,
/// so that a program at rest may take one in any thread and ask a ChangeClock only afterwards.
///
/// It says "ask", and it says so early: the files are written to a moment before a commit can be seen, and two writes
/// within a few milliseconds may look like one. Who heard of a movement asks the clock for a while, whatever later
/// looks say.
class KELDATOS_EXPORT FileTrace {
 public:
  /// Looks at nothing yet. Raises InvalidConnectionString.
  explicit FileTrace(const QString& connectionString);

  /// Whether the files look otherwise than at the last look; true at the first one, and always for a database on a
  /// server, which leaves no trace here. Raises nothing.
  bool HasMoved();

 private:
  QByteArrayList m_files;
  QByteArray m_seen;
};

}  // namespace database
