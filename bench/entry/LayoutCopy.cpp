#include "entry/LayoutCopy.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QWidget>

namespace bench {

LayoutCopy::LayoutCopy(const QLayout& original, const QList<QWidget*>& children)
    : m_margins(original.contentsMargins()), m_spacing(original.spacing()) {
  const auto* grid = qobject_cast<const QGridLayout*>(&original);
  const auto* box = qobject_cast<const QBoxLayout*>(&original);
  if (grid == nullptr && box == nullptr) {
    qFatal("a layout that is no box and no grid");
  }
  m_isGrid = grid != nullptr;
  for (int i = 0; i < original.count(); ++i) {
    Item item = Read(*original.itemAt(i), children);
    if (grid != nullptr) {
      grid->getItemPosition(i, &item.row, &item.column, &item.rows, &item.columns);
    } else {
      item.stretch = box->stretch(i);
    }
    m_items.push_back(item);
  }
  if (grid == nullptr) {
    m_direction = box->direction();
    return;
  }
  m_spacing = grid->horizontalSpacing();
  m_verticalSpacing = grid->verticalSpacing();
  for (int row = 0; row < grid->rowCount(); ++row) {
    m_rowStretch.append(grid->rowStretch(row));
  }
  for (int column = 0; column < grid->columnCount(); ++column) {
    m_columnStretch.append(grid->columnStretch(column));
  }
}

LayoutCopy::Item LayoutCopy::Read(QLayoutItem& original, const QList<QWidget*>& children) const {
  Item item;
  item.alignment = original.alignment();
  if (original.widget() != nullptr) {
    item.child = static_cast<int>(children.indexOf(original.widget()));
    if (item.child < 0) {
      qFatal("a layout holds an unknown control");
    }
  } else if (original.layout() != nullptr) {
    item.layout = std::make_shared<LayoutCopy>(*original.layout(), children);
  } else if (original.spacerItem() != nullptr) {
    item.spacer = std::make_shared<QSpacerItem>(*original.spacerItem());
  }
  return item;
}

QLayout* LayoutCopy::Make(QWidget* parent, const QList<QWidget*>& made) const {
  if (m_isGrid) {
    auto* grid = new QGridLayout(parent);
    grid->setContentsMargins(m_margins);
    Fill(*grid, made);
    return grid;
  }
  auto* box = new QBoxLayout(static_cast<QBoxLayout::Direction>(m_direction), parent);
  box->setContentsMargins(m_margins);
  box->setSpacing(m_spacing);
  Fill(*box, made);
  return box;
}

void LayoutCopy::Fill(QBoxLayout& box, const QList<QWidget*>& made) const {
  for (const Item& item : m_items) {
    if (item.child >= 0) {
      box.addWidget(made[item.child], item.stretch, item.alignment);
    } else if (item.layout) {
      box.addLayout(item.layout->Make(nullptr, made), item.stretch);
    } else {
      box.addItem(new QSpacerItem(*item.spacer));
      box.setStretch(box.count() - 1, item.stretch);
    }
  }
}

void LayoutCopy::Fill(QGridLayout& grid, const QList<QWidget*>& made) const {
  grid.setHorizontalSpacing(m_spacing);
  grid.setVerticalSpacing(m_verticalSpacing);
  for (const Item& item : m_items) {
    if (item.child >= 0) {
      grid.addWidget(made[item.child], item.row, item.column, item.rows, item.columns, item.alignment);
    } else if (item.layout) {
      grid.addLayout(item.layout->Make(nullptr, made), item.row, item.column, item.rows, item.columns, item.alignment);
    } else {
      grid.addItem(new QSpacerItem(*item.spacer), item.row, item.column, item.rows, item.columns, item.alignment);
    }
  }
  for (int row = 0; row < m_rowStretch.size(); ++row) {
    grid.setRowStretch(row, m_rowStretch[row]);
  }
  for (int column = 0; column < m_columnStretch.size(); ++column) {
    grid.setColumnStretch(column, m_columnStretch[column]);
  }
}

}  // namespace bench
