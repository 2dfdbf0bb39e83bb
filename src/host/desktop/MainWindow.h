#pragma once

#include "host/desktop/ComponentBridge.h"
#include "host/desktop/Deletion.h"
#include "host/desktop/DeletionLog.h"
#include "host/desktop/NodeCatalog.h"
#include "host/desktop/RecordData.h"

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
  QString title;     ///< Of the window and of its message boxes.
  QString user;      ///< The signed-in user's name.
  QString database;  ///< The database, as the user knows it.
  QString helpFile;  ///< Opened by F1; empty for none.
};

/// The host's window: the tree of the nodes, the records of the chosen one, and what can be done with them. Every
/// change is made by the component through the bridge; the window reads the list again afterwards.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// Borrows the bridge, which must outlive the window.
  MainWindow(ComponentBridge& bridge, WindowTexts texts, QWidget* parent = nullptr);
  /// Remembers how the window looked.
  ~MainWindow() override;

  /// Shows the records of a node; a number that the tree does not have changes nothing.
  void ChooseNode(int nodeId);

 private:
  void SetUpActions();
  void SetUpStatusBar();
  void ShowNode(const Node& node);
  void Add();
  void Modify();
  void Delete();
  void UndoDelete();
  void RecoverSelected();
  void ShowLocks();
  void NewBranch();
  void Refresh();
  void Search(const QString& typed);
  void ShowHelp();
  void ShowAbout();
  void UpdateState();
  void StoreLayout() const;

  /// Shows the component's dialog; an error is shown, and the window goes on.
  void ShowDialog(int node, int action, int selectedId, int aux);
  void SelectAdded(int highestBefore);
  QList<DeletionTarget> SelectedTargets() const;
  void DeleteTargets(const QList<DeletionTarget>& targets);
  /// Recovers the deletions of these notes; an error is shown, and the rest stays deleted.
  QList<Recovery> Recover(const QList<int>& notes);
  std::optional<RecordData> Read();
  /// The only selected record, 0 when there are more or none.
  int SelectedId() const;
  QString EmptyText() const;

  ComponentBridge& m_bridge;
  const std::vector<Node> m_nodes;
  WindowTexts m_texts;
  std::unique_ptr<Ui::MainWindow> m_ui;
  const Node* m_node = nullptr;
  bool m_readFailed = false;
  QList<QList<int>> m_deletions;  // the notes of each deletion of this window that can be undone, the last one last
};

}  // namespace host
