#pragma once

#include "host/desktop/LiveRecords.h"
#include "host/desktop/MailingOpener.h"
#include "host/desktop/RecordDialogs.h"
#include "host/records/ComponentBridge.h"
#include "host/records/Deletion.h"
#include "host/records/DeletionLog.h"
#include "host/records/NodeCatalog.h"
#include "host/records/RecordLoader.h"
#include "host/services/Rescue.h"

#include <QMainWindow>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QAction;

namespace Ui {
class MainWindow;
}

namespace host {

/// What the window says of the session.
struct WindowTexts {
  QString title;               ///< Of the window and of its message boxes.
  QString user;                ///< The signed-in user's name.
  QString database;            ///< The database, as the user knows it.
  QString helpFile;            ///< Opened by F1; empty for none.
  bool readOnly = false;       ///< Records can be looked at, nothing can be changed.
  bool demonstration = false;  ///< The data are invented.
  bool onServer = false;
};

/// The host's window: the tree of the nodes, the records of the chosen one, and what can be done with them. Lists are
/// read beside the window's own work. Every change is made by the component through the bridge; the window reads the
/// records concerned again afterwards.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// Borrows the bridge, which must outlive the window. `connectionString` is of the bridge's database.
  MainWindow(ComponentBridge& bridge, const QString& connectionString, WindowTexts texts, QWidget* parent = nullptr);
  /// Remembers how the window looked.
  ~MainWindow() override;

  /// Shows the records of a node; a number that the tree does not have changes nothing.
  void ChooseNode(int nodeId);
  /// Offers what the object keeps, now and later. It outlives the window.
  void Offer(Rescue& rescue);
  /// False while the list is being read.
  bool IsListRead() const { return !m_loader.IsLoading(); }

 Q_SIGNALS:
  /// The page of the menus' keys is to be shown, in HTML.
  void ShortcutsWanted(const QString& page);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void SetUpActions();
  void SetUpStatusBar();
  void SetUpStrips();
  /// Says in the status line what was done, for a while.
  void Announce(const QString& news);
  void ShowNode(const Node& node);
  void Add();
  void Modify();
  void Delete();
  void UndoDelete();
  void RecoverSelected();
  void ShowLocks();
  void CalibratePrinter();
  MailingContext ContextForMailing(const QString& connectionString);
  void ShowHistory();
  void NewBranch();
  void Refresh();
  void Search(const QString& typed);
  void UpdateState();
  void StoreLayout() const;

  void Open(const Node& node, int id, const QString& name);
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
  /// The only selected record, 0 when there are more or none.
  int SelectedId() const;
  QString EmptyText() const;

  ComponentBridge& m_bridge;
  const std::vector<Node> m_nodes;
  WindowTexts m_texts;
  std::unique_ptr<Ui::MainWindow> m_ui;
  RecordLoader m_loader;
  std::unique_ptr<LiveRecords> m_live;
  RecordDialogs m_dialogs;
  MailingOpener m_mailing;
  const Node* m_node = nullptr;
  bool m_shown = false;  ///< The node's records have been in the list.
  bool m_readFailed = false;
  QList<QList<int>> m_deletions;  // the notes of each deletion of this window that can be undone, the last one last
  QList<int> m_selectWhenRead;
};

}  // namespace host
