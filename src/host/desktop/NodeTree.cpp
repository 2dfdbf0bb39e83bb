#include "host/desktop/NodeTree.h"

#include "host/look/SelectionTone.h"

#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTreeWidgetItemIterator>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int nodeRole = Qt::UserRole;

constexpr int countColumn = 1;

bool IsHeading(const QModelIndex& index) {
  return index.isValid() && !index.data(nodeRole).isValid();
}

QString CountText(int count) {
  return QLocale().toString(count);
}

}  // namespace

NodeTree::NodeTree(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIndentation(fontMetrics().height());
  setAllColumnsShowFocus(true);
  setColumnCount(2);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  header()->setSectionResizeMode(countColumn, QHeaderView::ResizeToContents);
  header()->setMinimumSectionSize(1);
  new SelectionTone(this);
  connect(this, &QTreeWidget::currentItemChanged, this, &NodeTree::Announce);
}

void NodeTree::SetNodes(const std::vector<Node>& nodes) {
  m_nodes = &nodes;
  auto* home = new QTreeWidgetItem(this, {u"Inicio"_s});
  home->setData(0, nodeRole, homeNode);
  home->setIcon(0, QIcon::fromTheme(u"go-home"_s));
  QTreeWidgetItem* group = nullptr;
  for (const Node& node : nodes) {
    if (group == nullptr || group->text(0) != node.group) {
      group = new QTreeWidgetItem(this, {node.group});
      group->setFlags(Qt::ItemIsEnabled);
      group->setFirstColumnSpanned(true);
    }
    auto* item = new QTreeWidgetItem(group, {node.title});
    item->setData(0, nodeRole, node.id);
    item->setIcon(0, QIcon::fromTheme(node.icon));
    item->setTextAlignment(countColumn, Qt::AlignRight | Qt::AlignVCenter);
  }
  DressHeadings();
  expandAll();
}

void NodeTree::HideAdministration() {
  for (const Node& node : *m_nodes) {
    QTreeWidgetItem* item = node.administratorsOnly ? Find(node.id) : nullptr;
    if (item != nullptr) {
      item->setHidden(true);
    }
  }
}

QSize NodeTree::sizeHint() const {
  const int margins = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
  const int count = fontMetrics().horizontalAdvance(CountText(99'999)) + fontMetrics().height();
  return {sizeHintForColumn(0) + count + margins, QTreeWidget::sizeHint().height()};
}

QTreeWidgetItem* NodeTree::Find(int nodeId) {
  QTreeWidgetItemIterator item(this, QTreeWidgetItemIterator::NotHidden);
  while (*item != nullptr && (*item)->data(0, nodeRole) != QVariant(nodeId)) {
    ++item;
  }
  return *item;
}

void NodeTree::Choose(int nodeId) {
  if (QTreeWidgetItem* item = Find(nodeId)) {
    setCurrentItem(item);
  }
}

void NodeTree::SetCounts(const QHash<int, int>& counts) {
  const QColor quiet = palette().color(QPalette::PlaceholderText);
  for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
    const auto count = counts.find((*item)->data(0, nodeRole).toInt());
    if (count != counts.end()) {
      (*item)->setText(countColumn, CountText(*count));
      (*item)->setForeground(countColumn, quiet);
    }
  }
}

// Headings are there for the eye that looks for a place, and else in nobody's way.
void NodeTree::DressHeadings() {
  QFont small = font();
  small.setPointSizeF(small.pointSizeF() * 0.85);
  small.setBold(true);
  small.setCapitalization(QFont::AllUppercase);
  const QSize row(0, fontMetrics().height() * 3 / 2);
  for (int i = 0; i < topLevelItemCount(); ++i) {
    QTreeWidgetItem* item = topLevelItem(i);
    item->setSizeHint(0, row);
    if (IsHeading(indexFromItem(item))) {
      item->setFont(0, small);
      item->setForeground(0, palette().color(QPalette::PlaceholderText));
    }
  }
}

void NodeTree::changeEvent(QEvent* event) {
  QTreeWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) {
    DressHeadings();
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
  if (id == QVariant(homeNode)) {
    Q_EMIT HomeChosen();
    return;
  }
  const auto node = std::ranges::find(*m_nodes, id.toInt(), &Node::id);
  if (node != m_nodes->end()) {
    Q_EMIT NodeChosen(*node);
  }
}

}  // namespace host
