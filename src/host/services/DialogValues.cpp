#include "host/services/DialogValues.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// As often as a country may fill its provinces anew.
constexpr int passes = 3;

// A combo's line, a view's editor: they belong to a control that is looked at itself.
bool IsOwnControl(const QWidget& control) {
  const QWidget* outer = control.parentWidget();
  return !control.objectName().isEmpty() && !control.objectName().startsWith("qt_"_L1) &&
         qobject_cast<const QComboBox*>(outer) == nullptr && qobject_cast<const QAbstractSpinBox*>(outer) == nullptr;
}

bool TakesInput(const QWidget& control) {
  const QVariant readOnly = control.property("readOnly");
  return control.isEnabled() && !readOnly.toBool();
}

QAbstractButton* CheckableOf(QWidget* control) {
  auto* button = qobject_cast<QAbstractButton*>(control);
  const bool isMark = qobject_cast<QCheckBox*>(control) != nullptr || qobject_cast<QRadioButton*>(control) != nullptr;
  return isMark ? button : nullptr;
}

// Invalid for what takes no input.
QVariant ValueOf(QWidget* control) {
  if (const auto* line = qobject_cast<QLineEdit*>(control)) {
    return line->text();
  }
  if (const auto* plain = qobject_cast<QPlainTextEdit*>(control)) {
    return plain->toPlainText();
  }
  if (const auto* list = qobject_cast<QComboBox*>(control)) {
    return QStringList{list->currentData().toString(), list->currentText()};
  }
  if (const QAbstractButton* mark = CheckableOf(control)) {
    return mark->isChecked();
  }
  if (const auto* number = qobject_cast<QSpinBox*>(control)) {
    return number->value();
  }
  const auto* group = qobject_cast<QGroupBox*>(control);
  return group != nullptr && group->isCheckable() ? QVariant(group->isChecked()) : QVariant();
}

void Choose(QComboBox& list, const QStringList& item) {
  for (int i = 0; i < list.count() && !item.value(0).isEmpty(); ++i) {
    if (list.itemData(i).toString() == item.value(0)) {
      list.setCurrentIndex(i);
      return;
    }
  }
  const int byText = list.findText(item.value(1));
  if (byText >= 0 || item.value(1).isEmpty()) {
    list.setCurrentIndex(byText);
  } else if (list.isEditable()) {
    list.setEditText(item.value(1));
  }
}

void SetValue(QWidget* control, const QVariant& value) {
  if (auto* line = qobject_cast<QLineEdit*>(control)) {
    line->setText(value.toString());
  } else if (auto* plain = qobject_cast<QPlainTextEdit*>(control)) {
    plain->setPlainText(value.toString());
  } else if (auto* list = qobject_cast<QComboBox*>(control)) {
    Choose(*list, value.toStringList());
  } else if (QAbstractButton* mark = CheckableOf(control)) {
    mark->setChecked(value.toBool());
  } else if (auto* number = qobject_cast<QSpinBox*>(control)) {
    number->setValue(value.toInt());
  } else if (auto* group = qobject_cast<QGroupBox*>(control)) {
    group->setChecked(value.toBool());
  }
}

QString LabelOf(const QDialog& dialog, const QWidget& control) {
  QString text = control.accessibleName();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
    text = button->text();
  }
  const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
  for (const QLabel* label : labels) {
    if (label->buddy() == &control) {
      text = label->text();
    }
  }
  static const QRegularExpression marks(u"^\\(\\*\\)|&|:\\s*$"_s);
  text = text.remove(marks).trimmed();
  return text.isEmpty() ? control.objectName() : text;
}

QString Shown(const QVariant& value) {
  if (value.typeId() == QMetaType::Bool) {
    return value.toBool() ? u"sí"_s : u"no"_s;
  }
  return value.typeId() == QMetaType::QStringList ? value.toStringList().value(1) : value.toString();
}

bool Holds(QWidget* control, const QVariant& value) {
  const QVariant now = ValueOf(control);
  // Read from a file a list of texts is one of values.
  return value.metaType() == now.metaType() ? now == value : now.toStringList() == value.toStringList();
}

}  // namespace

QList<ControlValue> ValuesOf(const QDialog& dialog) {
  QList<ControlValue> values;
  const QList<QWidget*> controls = dialog.findChildren<QWidget*>();
  for (QWidget* control : controls) {
    const QVariant value = IsOwnControl(*control) && TakesInput(*control) ? ValueOf(control) : QVariant();
    if (value.isValid()) {
      values.append({control->objectName(), LabelOf(dialog, *control), value, Shown(value)});
    }
  }
  return values;
}

QList<ControlValue> PutBack(QDialog& dialog, const QList<ControlValue>& values) {
  QList<ControlValue> refused = values;
  for (int pass = 0; pass < passes && !refused.isEmpty(); ++pass) {
    for (const ControlValue& value : values) {
      auto* control = dialog.findChild<QWidget*>(value.control);
      if (control != nullptr && TakesInput(*control) && !Holds(control, value.value)) {
        SetValue(control, value.value);
      }
    }
    refused = values;
    refused.removeIf([&](const ControlValue& value) {
      auto* control = dialog.findChild<QWidget*>(value.control);
      return control != nullptr && Holds(control, value.value);
    });
  }
  return refused;
}

QStringList RowsOf(const QDialog& dialog) {
  QStringList rows;
  const QList<QAbstractItemView*> views = dialog.findChildren<QAbstractItemView*>();
  for (const QAbstractItemView* view : views) {
    if (view->model() == nullptr || !IsOwnControl(*view)) {
      continue;
    }
    for (int row = 0; row < view->model()->rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < view->model()->columnCount(); ++column) {
        cells.append(view->model()->index(row, column).data().toString());
      }
      rows.append(cells.join(u'\t'));
    }
  }
  return rows;
}

}  // namespace host
