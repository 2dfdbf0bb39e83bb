#pragma once

#include "host/records/ChangeLog.h"

#include <QList>
#include <QSet>

namespace host {

/// Which notes of the change log have been seen. On a server a lower number may come later: a note gets its number when
/// it is written, and is there for others when its transaction ends.
class SeenNotes {
 public:
  /// All up to that number count as seen.
  explicit SeenNotes(qint64 newest) : m_newest(newest) {}

  /// Those behind this number may be new.
  qint64 From() const;
  /// Leaves the unseen ones among them, which are seen now.
  void Take(QList<Change>& notes);

 private:
  qint64 m_newest;
  QSet<qint64> m_missing;  ///< Lower numbers that nobody has seen, of the last few hundred.
};

}  // namespace host
