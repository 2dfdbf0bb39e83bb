#pragma once

#include "database/Notices.h"
#include "host/desktop/RecordList.h"
#include "host/records/ChangeWatch.h"
#include "host/records/ComponentBridge.h"
#include "host/records/DatabaseThread.h"
#include "host/records/RecordLoader.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

namespace host {

/// Keeps the shown list as the database is: hears from a server when somebody wrote, looks at a file now and then, and
/// reads again just the records that look otherwise now. Selection, place and search stay. It waits while a dialog, a
/// box or a menu is open or the mouse is held, and never says a word of an error.
class LiveRecords : public QObject {
  Q_OBJECT

 public:
  /// Borrows all but the string; `loader` is the one that fills the list.
  LiveRecords(ComponentBridge& bridge, DatabaseThread& thread, const RecordLoader& loader, RecordList& list,
              const QString& connectionString, QObject* parent = nullptr);

  /// The node whose records the list shows from now on; nullptr while it shows none.
  void Follow(const Node* node);

 Q_SIGNALS:
  /// The list was brought up to date.
  void Updated();
  /// Something was written, by this program or another.
  void Noticed(const host::SeenChanges& changes);
  /// Another program may have written, and the list is too long to be read anew for that.
  void MayHaveChanged();

 private:
  /// What became of the records that look otherwise now; nothing where all are to be read anew.
  struct ChangedRecords {
    std::optional<QList<int>> ids;
    RecordData records;
  };

  void HearOf(const QStringList& tables);
  void Tick();
  void TakeNote(const SeenChanges& changes);
  void Apply();
  void ReadChanged();
  void TakeChanged(const ChangedRecords& changed);
  /// Until a later tick.
  void PutOff(const QList<Change>& changes);
  void TickOn();
  QList<int> WrittenByOthers(const QList<Change>& changes) const;
  void ReadAnew();
  bool MayDisturb() const;

  ComponentBridge& m_bridge;
  const RecordLoader& m_loader;
  RecordList& m_list;
  const Node* m_node = nullptr;
  const Node* m_readNode = nullptr;  ///< Of the reading under way.
  RecordLoader m_reader;
  Reading<ChangedRecords> m_changed;
  std::unique_ptr<database::Notices> m_notices;
  ChangeWatch m_watch;
  QTimer m_timer;  ///< On a server only while something waits.
  QTimer m_soon;
  bool m_mustLook = true;
  QList<Change> m_pending;
  QList<Change> m_beingRead;  ///< What m_changed was asked for.
  bool m_unknown = false;
  bool m_maybeOurs = false;  ///< A dialog was open since the last look: what left no note may be its locks.
};

}  // namespace host
