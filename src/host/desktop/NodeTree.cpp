#include "host/desktop/NodeTree.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTreeWidgetItemIterator>

#include <algorithm>

namespace host {

namespace {

constexpr int nodeRole = Qt::UserRole;

}  // namespace

NodeTree::NodeTree(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  connect(this, &QTreeWidget::currentItemChanged, this, &NodeTree::Announce);
}

void NodeTree::SetNodes(const std::vector<Node>& nodes) {
  m_nodes = &nodes;
  QTreeWidgetItem* group = nullptr;
  for (const Node& node : nodes) {
    if (group == nullptr || group->text(0) != node.group) {
      group = new QTreeWidgetItem(this, {node.group});
      group->setFlags(Qt::ItemIsEnabled);
    }
    auto* item = new QTreeWidgetItem(group, {node.title});
    item->setData(0, nodeRole, node.id);
  }
  expandAll();
}

QSize NodeTree::sizeHint() const {
  const int margins = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
  return {sizeHintForColumn(0) + margins, QTreeWidget::sizeHint().height()};
}

void NodeTree::Choose(int nodeId) {
  for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
    if ((*item)->data(0, nodeRole) == QVariant(nodeId)) {
      setCurrentItem(*item);
      return;
    }
  }
}

void NodeTree::Announce(QTreeWidgetItem* item) {
  const QVariant id = item == nullptr ? QVariant() : item->data(0, nodeRole);
  if (!id.isValid()) {
    return;
  }
  const auto node = std::ranges::find(*m_nodes, id.toInt(), &Node::id);
  if (node != m_nodes->end()) {
    Q_EMIT NodeChosen(*node);
  }
}

}  // namespace host
