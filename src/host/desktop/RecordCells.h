#pragma once

#include <QStyledItemDelegate>

namespace host {

/// Draws the cells of a list: numbers stand at the right with room between them and the next column, marked
/// records are bold.
class RecordCells : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace host
