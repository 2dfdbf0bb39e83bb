#include "host/desktop/RecordCells.h"

#include "host/desktop/RecordList.h"

#include <QApplication>

namespace host {

namespace {

int Room(const QStyleOptionViewItem& option) {
  return option.fontMetrics.averageCharWidth() * 2;
}

}  // namespace

void RecordCells::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  if (const auto* list = qobject_cast<const RecordList*>(cell.widget); list != nullptr && list->IsMarked(index.row())) {
    cell.font.setBold(true);
  }
  const QStyle* style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
  if (cell.displayAlignment & Qt::AlignRight) {
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    cell.rect.adjust(0, 0, -Room(option), 0);
  }
  style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
}

QSize RecordCells::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  return QStyledItemDelegate::sizeHint(option, index) + QSize(Room(option), 0);
}

}  // namespace host
