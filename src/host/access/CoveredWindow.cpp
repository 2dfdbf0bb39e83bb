#include "host/access/CoveredWindow.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>

namespace host::covered {

namespace {

QWidget* CoverOf(const QWidget& widget) {
  return widget.window()->findChild<QWidget*>(coverName, Qt::FindDirectChildrenOnly);
}

/// A window with nothing but its cover in it, or something behind that.
class Behind : public QAccessibleWidget {
 public:
  explicit Behind(QWidget* widget) : QAccessibleWidget(widget, QAccessible::Grouping) {}

  int childCount() const override { return widget()->isWindow() ? 1 : 0; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 && childCount() == 1 ? QAccessible::queryAccessibleInterface(CoverOf(*widget())) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return childCount() == 1 && child != nullptr && child->object() == CoverOf(*widget()) ? 0 : -1;
  }
  QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return child(0); }
  QAccessibleInterface* focusChild() const override { return nullptr; }
  QString text(QAccessible::Text type) const override {
    return widget()->isWindow() && type == QAccessible::Name ? widget()->windowTitle() : QString();
  }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.invisible = !widget()->isWindow();
    return state;
  }
  void* interface_cast(QAccessible::InterfaceType /*type*/) override { return nullptr; }
};

QAccessibleInterface* Make(const QString& /*className*/, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  const QWidget* cover = widget == nullptr ? nullptr : CoverOf(*widget);
  return cover == nullptr || cover == widget ? nullptr : new Behind(widget);
}

void Forget(QWidget* widget) {
  if (QAccessibleInterface* told = QAccessible::queryAccessibleInterface(widget)) {
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(told));
  }
}

}  // namespace

void TellReaders() {
  QAccessible::removeFactory(Make);
  QAccessible::installFactory(Make);
}

void ForgetWhatWasTold(QWidget& window) {
  const QList<QWidget*> inside = window.findChildren<QWidget*>();
  for (QWidget* widget : inside) {
    if (widget->window() == &window) {
      Forget(widget);
    }
  }
  Forget(&window);
}

}  // namespace host::covered
