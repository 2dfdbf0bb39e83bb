#include "host/moving/window/ChoiceDelegate.h"

#include "host/moving/window/GridModel.h"

#include <QApplication>
#include <QComboBox>
#include <QPainter>
#include <QTimer>

namespace host {

void ChoiceDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  if (!(index.flags() & Qt::ItemIsEditable)) {
    return QStyledItemDelegate::paint(painter, option, index);
  }
  QStyleOptionComboBox box;
  box.rect = option.rect;
  box.palette = option.palette;
  box.fontMetrics = option.fontMetrics;
  box.direction = option.direction;
  box.state = QStyle::State_Enabled | (option.state & QStyle::State_HasFocus);
  box.currentText = index.data().toString();
  const QWidget* view = option.widget;
  const QStyle* style = view != nullptr ? view->style() : QApplication::style();
  painter->save();
  painter->setFont(option.font);
  style->drawComplexControl(QStyle::CC_ComboBox, &box, painter, view);
  const QRect room = style->subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxEditField, view);
  box.currentText = option.fontMetrics.elidedText(box.currentText, Qt::ElideRight, room.width());
  style->drawControl(QStyle::CE_ComboBoxLabel, &box, painter, view);
  painter->restore();
}

QSize ChoiceDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  return {size.width(), qMax(size.height(), option.fontMetrics.height() * 7 / 4)};
}

QWidget* ChoiceDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                      const QModelIndex& index) const {
  auto* box = new QComboBox(parent);
  box->addItems(index.data(GridModel::choicesRole).toStringList());
  box->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
  auto* self = const_cast<ChoiceDelegate*>(this);
  connect(box, &QComboBox::activated, self, [self, box] {
    Q_EMIT self->commitData(box);
    Q_EMIT self->closeEditor(box);
  });
  // When the box has its place.
  QTimer::singleShot(0, box, &QComboBox::showPopup);
  return box;
}

void ChoiceDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (auto* box = qobject_cast<QComboBox*>(editor)) {
    box->setCurrentIndex(index.data(Qt::EditRole).toInt());
  }
}

void ChoiceDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
  const auto* box = qobject_cast<QComboBox*>(editor);
  if (box != nullptr && box->currentIndex() != index.data(Qt::EditRole).toInt()) {
    model->setData(index, box->currentIndex());
  }
}

}  // namespace host
