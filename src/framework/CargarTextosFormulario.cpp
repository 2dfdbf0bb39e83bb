#include "framework/CargarTextosFormulario.h"

#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"
#include "resources/StringTable.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>

using resources::LoadResString;

namespace framework {
namespace {

QString Tag(const QObject* control) {
  return control->property("Tag").toString();
}

// Every error of one replacement is swallowed: that control is left as it is.
template <typename Replacement>
void IgnoringErrors(Replacement replacement) {
  try {
    replacement();
  } catch (const automation::Error&) {
    automation::Err().Clear();
  }
}

// Hands `set` the string that a numeric text names.
template <typename Setter>
void ReplaceNumeric(const QString& number, Setter set) {
  IgnoringErrors([&] {
    if (!number.isEmpty() && automation::IsNumeric(number)) {
      set(LoadResString(automation::CInt(number)));
    }
  });
}

// Hands `set` the string that the leading digits of a text name.
template <typename Setter>
void ReplaceLeading(const QString& text, Setter set) {
  IgnoringErrors([&] {
    const qint16 id = automation::CInt(automation::Val(text));
    if (id > 0) {
      set(LoadResString(id));
    }
  });
}

void ReplaceMenu(QMenu* menu) {
  ReplaceNumeric(menu->title(), [&](const QString& text) { menu->setTitle(text); });
  const QList<QAction*> items = menu->actions();
  for (QAction* item : items) {
    ReplaceNumeric(item->text(), [&](const QString& text) { item->setText(text); });
  }
}

void ReplaceTabs(QTabWidget* tabs) {
  for (int i = 0; i < tabs->count(); ++i) {
    ReplaceNumeric(Tag(tabs->widget(i)), [&](const QString& text) { tabs->setTabText(i, text); });
  }
}

void ReplaceColumns(QTreeWidget* list) {
  QTreeWidgetItem* header = list->headerItem();
  for (int i = 0; i < list->columnCount(); ++i) {
    ReplaceNumeric(header->data(i, Qt::UserRole).toString(), [&](const QString& text) { header->setText(i, text); });
  }
}

void SetCaption(QWidget* control, const QString& text) {
  if (auto* button = qobject_cast<QAbstractButton*>(control)) {
    button->setText(text);
  } else if (auto* group = qobject_cast<QGroupBox*>(control)) {
    group->setTitle(text);
  }
}

bool IsInToolBar(const QWidget* control) {
  for (const QWidget* widget = control; widget != nullptr; widget = widget->parentWidget()) {
    if (qobject_cast<const QToolBar*>(widget) != nullptr) {
      return true;
    }
  }
  return false;
}

void ReplaceControl(QWidget* control) {
  if (auto* label = qobject_cast<QLabel*>(control)) {
    ReplaceNumeric(Tag(label), [&](const QString& text) { label->setText(text); });
  } else if (auto* menu = qobject_cast<QMenu*>(control)) {
    ReplaceMenu(menu);
  } else if (auto* tabs = qobject_cast<QTabWidget*>(control)) {
    ReplaceTabs(tabs);
  } else if (auto* list = qobject_cast<QTreeWidget*>(control)) {
    ReplaceColumns(list);
  } else if (!IsInToolBar(control)) {
    ReplaceLeading(Tag(control), [&](const QString& text) { SetCaption(control, text); });
    ReplaceLeading(control->toolTip(), [&](const QString& text) { control->setToolTip(text); });
  }
}

}  // namespace

void CargarTextosFormulario(QWidget* form) {
  ReplaceNumeric(Tag(form), [&](const QString& text) { form->setWindowTitle(text); });
  const QList<QWidget*> controls = form->findChildren<QWidget*>();
  for (QWidget* control : controls) {
    ReplaceControl(control);
  }
}

}  // namespace framework
