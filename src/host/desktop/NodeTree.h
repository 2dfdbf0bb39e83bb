#pragma once

#include "host/records/NodeCatalog.h"

#include <QHash>
#include <QTreeWidget>

namespace host {

/// The tree of the nodes under their groups.
class NodeTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit NodeTree(QWidget* parent = nullptr);
  /// As wide as the longest title with its number.
  QSize sizeHint() const override;

  /// The nodes to show, grouped, behind one for the start page; they must outlive the tree.
  void SetNodes(const std::vector<Node>& nodes);
  /// Only administrators see some nodes; the one that is shown stays so until another one is chosen.
  void HideAdministration();
  /// Makes a node, or homeNode, the chosen one; a number that the tree does not have changes nothing.
  void Choose(int nodeId);
  /// Shows how many records nodes have, by their numbers; of a node that is not in it nothing changes.
  void SetCounts(const QHash<int, int>& counts);

 Q_SIGNALS:
  void NodeChosen(const host::Node& node);
  void HomeChosen();
  /// Enter on a node.
  void ListWanted();

 protected:
  void changeEvent(QEvent* event) override;
  /// Headings are no stops.
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QTreeWidgetItem* Find(int nodeId);
  void DressHeadings();
  void Announce(QTreeWidgetItem* item);

  const std::vector<Node>* m_nodes = nullptr;
};

}  // namespace host
