#include "host/desktop/NodeTree.h"

#include "host/look/SelectionTone.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTreeWidgetItemIterator>

#include <algorithm>

namespace host {

namespace {

constexpr int nodeRole = Qt::UserRole;

bool IsHeading(const QModelIndex& index) {
  return index.isValid() && !index.parent().isValid();
}

}  // namespace

NodeTree::NodeTree(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  new SelectionTone(this);
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

QModelIndex NodeTree::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  QModelIndex to = QTreeWidget::moveCursor(action, modifiers);
  const bool up = action == MoveUp || action == MovePageUp || action == MovePrevious || action == MoveEnd;
  while (IsHeading(to)) {
    // Above the first node there is only its heading.
    if (action == MoveLeft || (up && !indexAbove(to).isValid())) {
      return currentIndex();
    }
    to = up ? indexAbove(to) : indexBelow(to);
  }
  return to;
}

void NodeTree::mousePressEvent(QMouseEvent* event) {
  const QModelIndex pressed = indexAt(event->pos());
  if (IsHeading(pressed)) {
    setExpanded(pressed, !isExpanded(pressed));
    return;
  }
  QTreeWidget::mousePressEvent(event);
}

void NodeTree::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Q_EMIT ListWanted();
    return;
  }
  QTreeWidget::keyPressEvent(event);
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
