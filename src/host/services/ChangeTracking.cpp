#include "host/services/ChangeTracking.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QCryptographicHash>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTextEdit>

#include <vector>

namespace host {
namespace {

constexpr const char* memoryProperty = "_kel_remembered";

// Texts are hashed with their lengths, so that moving a character from one cell to the next is a change.
void AddText(QCryptographicHash& hash, QStringView text) {
  const qsizetype size = text.size();
  hash.addData(QByteArrayView(reinterpret_cast<const char*>(&size), sizeof size));
  hash.addData(QByteArrayView(reinterpret_cast<const char*>(text.utf16()), size * 2));
}

void AddRows(QCryptographicHash& hash, const QAbstractItemModel& model, const QModelIndex& parent,
             std::vector<QModelIndex>& inner) {
  const int rows = model.rowCount(parent);
  const int columns = model.columnCount(parent);
  AddText(hash, QString::number(rows) + u'x' + QString::number(columns));
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const QModelIndex index = model.index(row, column, parent);
      AddText(hash, index.data(Qt::DisplayRole).toString());
      AddText(hash, index.data(Qt::CheckStateRole).toString());
      if (column == 0 && model.hasChildren(index)) {
        inner.push_back(index);
      }
    }
  }
}

QByteArray ShownContent(const QAbstractItemModel& model) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  std::vector<QModelIndex> parents{QModelIndex()};
  while (!parents.empty()) {
    const QModelIndex parent = parents.back();
    parents.pop_back();
    AddRows(hash, model, parent, parents);
  }
  return hash.result();
}

QByteArray HashOf(const QString& text) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  AddText(hash, text);
  return hash.result();
}

// An item is known by its data: refilling a list that then selects the same record is no change.
QVariant ComboValue(const QComboBox& combo) {
  const QVariant data = combo.currentData();
  return QVariantList{data.isValid() ? data : QVariant(combo.currentIndex()), combo.currentText()};
}

// The text of a spin box stays empty until it is shown, so its value counts.
QVariant SpinValue(const QAbstractSpinBox& spin) {
  const QMetaProperty value = spin.metaObject()->userProperty();
  return value.isValid() ? value.read(&spin) : QVariant(spin.text());
}

// The value of a control that the user edits; invalid for every other object.
QVariant ValueOf(const QObject* control) {
  if (const auto* line = qobject_cast<const QLineEdit*>(control)) {
    return line->text();
  }
  if (const auto* text = qobject_cast<const QTextEdit*>(control)) {
    return HashOf(text->toHtml());
  }
  if (const auto* plain = qobject_cast<const QPlainTextEdit*>(control)) {
    return HashOf(plain->toPlainText());
  }
  if (const auto* combo = qobject_cast<const QComboBox*>(control)) {
    return ComboValue(*combo);
  }
  if (const auto* check = qobject_cast<const QCheckBox*>(control)) {
    return int(check->checkState());
  }
  if (const auto* radio = qobject_cast<const QRadioButton*>(control)) {
    return radio->isChecked();
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(control)) {
    return group->isCheckable() ? QVariant(group->isChecked()) : QVariant();
  }
  if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(control)) {
    return SpinValue(*spin);
  }
  if (const auto* slider = qobject_cast<const QAbstractSlider*>(control)) {
    return qobject_cast<const QScrollBar*>(control) == nullptr ? QVariant(slider->value()) : QVariant();
  }
  if (const auto* view = qobject_cast<const QAbstractItemView*>(control)) {
    return view->model() != nullptr ? QVariant(ShownContent(*view->model())) : QVariant();
  }
  return {};
}

// A combo's list, a spin box's line, a view's header: they belong to a control that is looked at itself.
bool IsPartOfControl(const QObject* object) {
  for (const QObject* outer = object->parent(); outer != nullptr; outer = outer->parent()) {
    if (qobject_cast<const QComboBox*>(outer) != nullptr || qobject_cast<const QAbstractSpinBox*>(outer) != nullptr ||
        qobject_cast<const QAbstractItemView*>(outer) != nullptr ||
        qobject_cast<const QCalendarWidget*>(outer) != nullptr) {
      return true;
    }
  }
  return false;
}

}  // namespace

void RememberControls(const QObjectList& controls) {
  for (QObject* control : controls) {
    if (control != nullptr && !IsPartOfControl(control)) {
      control->setProperty(memoryProperty, ValueOf(control));
    }
  }
}

bool ControlsChanged(const QObjectList& controls) {
  for (const QObject* control : controls) {
    const QVariant remembered = control != nullptr ? control->property(memoryProperty) : QVariant();
    if (remembered.isValid() && ValueOf(control) != remembered) {
      return true;
    }
  }
  return false;
}

}  // namespace host
