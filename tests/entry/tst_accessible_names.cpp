#include "EveryDialog.h"

#include <QAccessible>

using namespace Qt::StringLiterals;

using support::DialogUser;
using support::TestHost;

namespace {

/// The controls that the keyboard reaches and that a reader of the screen would have no name for.
QStringList Nameless(const DialogUser& dialog) {
  QStringList names;
  const QList<QWidget*> controls = dialog.Dialog()->findChildren<QWidget*>();
  for (QWidget* control : controls) {
    const bool part = control->focusProxy() != nullptr || control->objectName().startsWith(u"qt_");
    if (control->focusPolicy() == Qt::NoFocus || part || !control->isVisibleTo(dialog.Dialog())) {
      continue;
    }
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(control);
    if (seen == nullptr || seen->text(QAccessible::Name).trimmed().isEmpty()) {
      names.append(control->objectName().isEmpty() ? QLatin1StringView(control->metaObject()->className())
                                                   : control->objectName());
    }
  }
  return names;
}

}  // namespace

/// Every control of every dialog has a name for those who hear the screen.
class tst_accessible_names : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void EveryControl_data() { AddEveryDialog(); }

  void EveryControl() {
    QFETCH(int, node);
    QFETCH(int, id);
    TestHost host;
    QStringList nameless;
    EXPECT_CLEAN(host, OpenEach(host, node, id, [&](const DialogUser& dialog) { nameless = Nameless(dialog); }));
    QCOMPARE(nameless.join(u' '), QString());
  }
};

KEL_TEST(tst_accessible_names);
#include "tst_accessible_names.moc"
