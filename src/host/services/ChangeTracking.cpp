#include "host/services/ChangeTracking.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTextEdit>

#include <bit>
#include <functional>
#include <string_view>
#include <vector>

namespace host {
namespace {

constexpr const char* memoryProperty = "_kel_remembered";

// A hash over many texts. The length of each counts, so that moving a character from one text to the next is a change.
// It tells changes of one session apart and guards against nobody, so a fast one of 64 bits does.
class TextHash {
 public:
  void Add(QStringView text) {
    constexpr quint64 odd = 0x9E3779B97F4A7C15;
    const auto size = static_cast<std::size_t>(text.size());
    const quint64 next = std::hash<std::u16string_view>()({text.utf16(), size}) + size;
    m_hash = (std::rotl(m_hash, 5) ^ next) * odd;
  }
  void Add(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) {
      Add(QStringView(*static_cast<const QString*>(value.constData())));
    } else {
      Add(QStringView(value.toString()));
    }
  }
  QVariant Result() const { return QVariant::fromValue(m_hash); }

 private:
  quint64 m_hash = 0;
};

void AddRows(TextHash& hash, const QAbstractItemModel& model, const QModelIndex& parent,
             std::vector<QModelIndex>& inner) {
  const int rows = model.rowCount(parent);
  const int columns = model.columnCount(parent);
  hash.Add(QStringView(QString::number(rows) + u'x' + QString::number(columns)));
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const QModelIndex index = model.index(row, column, parent);
      hash.Add(model.data(index, Qt::DisplayRole));
      // Asking what the cell allows costs less than asking for a state that few have.
      if (model.flags(index).testFlag(Qt::ItemIsUserCheckable)) {
        hash.Add(model.data(index, Qt::CheckStateRole));
      }
      if (column == 0 && model.hasChildren(index)) {
        inner.push_back(index);
      }
    }
  }
}

QVariant ShownContent(const QAbstractItemModel& model) {
  TextHash hash;
  std::vector<QModelIndex> parents{QModelIndex()};
  while (!parents.empty()) {
    const QModelIndex parent = parents.back();
    parents.pop_back();
    AddRows(hash, model, parent, parents);
  }
  return hash.Result();
}

QVariant HashOf(const QString& text) {
  TextHash hash;
  hash.Add(QStringView(text));
  return hash.Result();
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
    return view->model() != nullptr ? ShownContent(*view->model()) : QVariant();
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
