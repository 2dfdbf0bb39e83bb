#pragma once

#include "host/records/ChangeLog.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QThread>

#include <memory>

namespace database {
class ChangeClock;
}

namespace host {

/// What a look at the database found.
struct SeenChanges {
  QList<Change> notes;
  /// Something was written that left no note: by another program, by our own housekeeping, or too much to list.
  bool isUnknown = false;
  /// It may have been no more than locks that were taken or released.
  bool mayBeLocks = false;
};

/// Looks, on a thread of its own, at what was written to the database since the last look, by this program and by
/// others. A look where nothing was costs next to nothing.
class ChangeWatch : public QObject {
  Q_OBJECT

 public:
  /// `newest` is the note from which on changes are of interest. Connects at the first look.
  ChangeWatch(QString connectionString, qint64 newest, QObject* parent = nullptr);
  /// Ends a look in progress.
  ~ChangeWatch() override;

  /// Seen follows where there is something new. A look that fails, or comes while another is under way, is silent: a
  /// later one finds what it would have found.
  void Look();

 Q_SIGNALS:
  void Seen(const host::SeenChanges& changes);

 private:
  void Run();
  SeenChanges Read();

  const QString m_connectionString;
  QThread m_thread;
  QObject* m_worker;
  bool m_looking = false;

  // The worker's.
  std::unique_ptr<database::ChangeClock> m_clock;
  qint64 m_newest;
  QString m_locks;
  bool m_isFirst = true;
  bool m_mustRead = false;  ///< What the clock told of has not been read yet.
};

}  // namespace host
