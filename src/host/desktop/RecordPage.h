#pragma once

#include "host/desktop/DetailPane.h"
#include "host/desktop/ListOutput.h"
#include "host/desktop/LiveRecords.h"
#include "host/desktop/RecordDialogs.h"
#include "host/records/ComponentBridge.h"
#include "host/records/Deletion.h"
#include "host/records/DeletionLog.h"
#include "host/records/NodeCatalog.h"
#include "host/records/RecordLoader.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <map>
#include <memory>

class QAction;

namespace Ui {
class RecordPage;
}

namespace host {

/// The window's actions that the page carries out, and enables as its selection allows. All are there.
struct RecordActions {
  QAction* add;
  QAction* modify;
  QAction* remove;
  QAction* undoDelete;
  QAction* recover;
  QAction* newBranch;
  QAction* history;
  QAction* writeToPeople;  ///< The page says when; the window writes.
  QAction* copy;
  QAction* copyWithHeadings;
  QAction* exportList;
  QAction* print;
  QAction* columns;
  QAction* refresh;
  QAction* find;
  QAction* detail;  ///< Checked while the pane of the chosen record is to be seen.
};

/// The records of a node: search, list, and what can be done with them. Lists are read beside the window's own work.
/// Every change is made by the component through the bridge; the page reads the records concerned again afterwards.
/// Its errors are boxes, and it goes on.
class RecordPage : public QWidget {
  Q_OBJECT

 public:
  /// Borrows bridge, thread and actions. `connectionString` is of the bridge's database; `title` is of the message
  /// boxes.
  RecordPage(ComponentBridge& bridge, DatabaseThread& thread, const QString& connectionString,
             const RecordActions& actions, QString title, bool readOnly, QWidget* parent = nullptr);
  /// Remembers how the list looked.
  ~RecordPage() override;

  /// Reads the node's records. The node must outlive the page.
  void Show(const Node& node);
  /// The page goes behind another one, and shows nothing.
  void Leave();
  /// Null where it shows nothing.
  const Node* Shown() const { return m_node; }
  /// Reads the list again.
  void Refresh();
  /// False while the list is being read.
  bool IsListRead() const { return !m_loader.IsLoading(); }
  /// Another program may have written since, and the list is too long to be read anew for that.
  bool IsInDoubt() const { return m_isInDoubt; }
  /// The only selected record, 0 when there are more or none.
  int SelectedId() const;
  /// Opens a record of any node.
  void Open(const Node& node, int id, const QString& name);
  /// Undoes the deletion of a record, and shows it.
  void RecoverRecord(const Node& node, int id);
  /// Shows the list of a node and selects these records.
  void ShowRecords(int nodeId, const QList<int>& ids);
  /// "1 de 6 seleccionado"; empty without records.
  QString SelectionText() const;
  /// Opens a dialog of any record again.
  void OpenAgain(const ComponentRequest& request);

 Q_SIGNALS:
  /// There is something to say that stays.
  void Told(const host::StripText& content);
  /// What was done, or empty when something else begins.
  void NewsChanged(const QString& news);
  /// Something was written, by this program or another.
  void Noticed(const host::SeenChanges& changes);
  /// What is selected, listed or under way is another.
  void StateChanged();
  /// The records of that node are to be shown, by Show().
  void NodeWanted(int nodeId);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ConnectActions();
  void ConnectOutput();
  void Add();
  void Modify();
  void Delete();
  void UndoDelete();
  void RecoverSelected();
  void ShowHistory();
  void Export();
  void Print();
  ListHead Head() const;
  void NewBranch();
  void Search(const QString& typed);
  void SetUpDetail();
  void ShowUses(int nodeId, const QString& table, int id);
  void ShowDetail();
  void UpdateState();
  void StoreLayout() const;
  /// Under which the lists' layouts are kept.
  QString ListScope() const;

  /// The node as the list has it that shows these columns.
  const Node* Listed(const Node& node, const QList<int>& shown);
  /// After the user has chosen columns.
  void ReadWantedColumns();
  void ShowList(SortedRecords& records);
  void ShowReadError(const automation::Error& error);
  /// Reads these records again, and selects those given.
  void ShowChanged(const QList<int>& ids, const QList<int>& selected = {});
  /// True when the list is still being read: what comes may be older than a change, so it is read from the beginning.
  bool ReadsAllAnew(const QList<int>& selected);
  void Select(const QList<int>& ids);
  QList<DeletionTarget> SelectedTargets() const;
  QString SelectedName() const;
  void DeleteTargets(const QList<DeletionTarget>& targets);
  /// Recovers the deletions of these notes; an error is shown, and the rest stays deleted.
  QList<Recovery> Recover(const QList<int>& notes);
  /// The same, and shows what is live again, in its own list.
  void RecoverAndShow(const QList<int>& notes);
  void ShowEmptyState();
  QString EmptyText() const;

  ComponentBridge& m_bridge;
  const RecordActions m_actions;
  const QString m_connectionString;
  const QString m_title;
  const bool m_readOnly;
  std::unique_ptr<Ui::RecordPage> m_ui;
  RecordLoader m_loader;
  std::unique_ptr<LiveRecords> m_live;
  RecordDialogs m_dialogs;
  DetailPane* m_detail;
  QAction* m_showAll = nullptr;  ///< Ends the search.
  const Node* m_node = nullptr;
  std::map<int, Node> m_variants;  ///< Of the nodes that were shown, by which optional columns are read.
  const Node* m_listed = nullptr;  ///< The one of m_node that the list has.
  bool m_shown = false;            ///< The node's records have been in the list.
  bool m_readFailed = false;
  bool m_isInDoubt = false;
  QList<QList<int>> m_deletions;  // the notes of each deletion of this window that can be undone, the last one last
  QList<int> m_selectWhenRead;
};

}  // namespace host
