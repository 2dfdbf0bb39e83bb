#include "host/desktop/NodeTree.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTreeWidgetItemIterator>

namespace host {

namespace {

constexpr int nodeRole = Qt::UserRole;

}  // namespace

NodeTree::NodeTree(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  QTreeWidgetItem* group = nullptr;
  for (const Node& node : NodeCatalog()) {
    if (group == nullptr || group->text(0) != node.group) {
      group = new QTreeWidgetItem(this, {node.group});
      group->setFlags(Qt::ItemIsEnabled);
    }
    auto* item = new QTreeWidgetItem(group, {node.title});
    item->setData(0, nodeRole, node.id);
  }
  expandAll();
  connect(this, &QTreeWidget::currentItemChanged, this, &NodeTree::Announce);
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
  const Node* node = id.isValid() ? FindNode(id.toInt()) : nullptr;
  if (node != nullptr) {
    Q_EMIT NodeChosen(*node);
  }
}

}  // namespace host
