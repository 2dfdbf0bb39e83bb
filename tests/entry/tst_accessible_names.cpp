#include "entry/Dispatch.h"
#include "support/Expect.h"

#include <QAccessible>
#include <QMessageBox>
#include <QSet>

using namespace Qt::StringLiterals;

using support::action;
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
  void EveryControl_data() {
    QTest::addColumn<int>("node");
    QTest::addColumn<int>("id");
    QSet<QString> known;
    for (const entry::dispatch::Entry& entry : entry::dispatch::Table()) {
      if (entry.create != nullptr && !known.contains(entry.dialog)) {
        known.insert(entry.dialog);
        QTest::newRow(qPrintable(entry.dialog))
            << entry.node.toInt() << (entry.opening == entry::dispatch::Opening::GuardedLoadOfARecord ? 1 : 0);
      }
    }
  }

  void EveryControl() {
    QFETCH(int, node);
    QFETCH(int, id);
    TestHost host;
    host.Execute(u"INSERT INTO Bancos(IDBanco,Numero,Nombre) VALUES(1,'0001','Uno')");
    host.desktop.printers = 1;
    if (node == support::node.CartasModelo()) {
      // The editor always asks before it closes.
      host.driver.Answer(QMessageBox::No);
    }
    QStringList nameless{u"not shown"_s};
    host.driver.On(QTest::currentDataTag(), [&](const DialogUser& dialog) {
      nameless = Nameless(dialog);
      dialog.Close();
    });
    EXPECT_CLEAN(host, host.PasarDatos(node, id == 0 ? action.Agregar() : action.Modificar(), id, 1));
    QCOMPARE(nameless.join(u' '), QString());
  }
};

KEL_TEST(tst_accessible_names);
#include "tst_accessible_names.moc"
