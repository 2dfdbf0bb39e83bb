#include "database/Schema.h"
#include "entry/Dispatch.h"
#include "platform/adodb/ErrorNumbers.h"
#include "support/Expect.h"
#include "support/TrapFile.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QMessageBox>
#include <QSet>
#include <QToolTip>

using namespace Qt::StringLiterals;

using support::action;
using support::DialogUser;
using support::TestHost;

namespace {

/// Gives every text of the database that may have it the name.
void FillWith(const TestHost& host, const QString& name) {
  for (const database::Table& table : database::Schema::Current().Tables()) {
    for (const database::Column& column : table.columns) {
      const bool isText = column.type == database::ColumnType::Text || column.type == database::ColumnType::LongText;
      if (!isText || table.name == u"BloqueoRegistros"_s) {
        continue;
      }
      try {
        host.Execute(u"UPDATE {} SET {}='{}'", adodb::Verbatim{table.name}, adodb::Verbatim{column.name}, name);
      } catch (const automation::Error& error) {
        // Two rows may not have it.
        if (error.Number() != adodb::ConstraintViolation) {
          throw;
        }
      }
    }
  }
}

constexpr qsizetype longestTag = 80;

/// Looks at everything: the window, its tips, its lists, what is said while a list is searched.
void LookAround(const DialogUser& dialog) {
  dialog.Dialog()->grab();
  const QList<QWidget*> controls = dialog.Dialog()->findChildren<QWidget*>();
  for (QWidget* control : controls) {
    QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), control->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(control, &help);
    auto* list = qobject_cast<QComboBox*>(control);
    if (list != nullptr && list->isEnabled() && list->isVisible() && list->itemText(0).contains(u'<')) {
      list->setFocus();
      QTest::keyClicks(list, list->itemText(0).left(longestTag));
      list->showPopup();
      list->view()->grab();
      list->hidePopup();
    }
  }
  QToolTip::hideText();
}

}  // namespace

/// A name that is HTML is shown as it stands in every dialog and box, and nothing that it names is opened.
class tst_hostile_names : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void InEveryDialog_data() {
    QTest::addColumn<int>("node");
    QSet<QString> known;
    for (const ::entry::dispatch::Entry& entry : ::entry::dispatch::Table()) {
      if (entry.create != nullptr && !known.contains(entry.dialog)) {
        known.insert(entry.dialog);
        QTest::newRow(qPrintable(entry.dialog)) << entry.node.toInt();
      }
    }
  }

  void InEveryDialog() {
    QFETCH(int, node);
    support::TrapFile trap;
    TestHost host(database::Content::Demonstration);
    host.desktop.printers = 1;
    FillWith(host, trap.Name());
    host.session.title = trap.Name();
    for (const int how : {action.Modificar(), action.Agregar()}) {
      bool shown = false;
      host.driver.On(QTest::currentDataTag(), [&shown](const DialogUser& dialog) {
        shown = true;
        LookAround(dialog);
        dialog.Close();
      });
      // Whether it asks before it closes depends on the dialog.
      host.driver.Answer(QMessageBox::No);
      host.PasarDatos(node, how, 1, 1);
      QVERIFY(shown);
      QVERIFY(!trap.WasOpened());
      host.driver.TakeProblems();
    }
  }
};

KEL_TEST(tst_hostile_names);
#include "tst_hostile_names.moc"
