#pragma once

#include "database/FileTrace.h"
#include "host/records/SeenNotes.h"

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
/// others. Where nothing was written to a file for a while, a look wakes no other thread and nothing comes back.
class ChangeWatch : public QObject {
  Q_OBJECT

 public:
  /// `newest` is the note from which on changes are of interest. Connects at the first look. `byClock` says that it
  /// looks often and asks a clock first; otherwise somebody tells when there is something, and only notes are of
  /// interest.
  ChangeWatch(QString connectionString, qint64 newest, bool byClock, QObject* parent = nullptr);
  /// Ends a look in progress.
  ~ChangeWatch() override;

  /// Seen follows where there is something new. A look that fails is silent: a later one finds what it would have
  /// found. False while another is under way.
  bool Look();

 Q_SIGNALS:
  void Seen(const host::SeenChanges& changes);

 private:
  bool MustAsk();
  void Run();
  SeenChanges Read();
  bool HasMoved();

  const QString m_connectionString;
  const bool m_byClock;
  QThread m_thread;
  QObject* m_worker;
  bool m_looking = false;
  database::FileTrace m_trace;
  int m_asksLeft = 0;

  // The worker's.
  std::unique_ptr<database::ChangeClock> m_clock;
  std::unique_ptr<adodb::Connection> m_connection;
  SeenNotes m_seen;
  QString m_locks;
  bool m_isFirst = true;
  bool m_mustRead = false;  ///< What the clock told of has not been read yet.
};

}  // namespace host
