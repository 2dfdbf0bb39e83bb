#include "labels/FieldDialogStates.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace labels;

namespace {

// Keeps what was done, and does what a test wants it to.
class Steps : public FieldSteps {
 public:
  void Prepare() override {
    if (fails) {
      throw automation::Error(automation::KeyAlreadyUsed);
    }
    log.append(u"prepare"_s);
  }
  void ShowList() override { log.append(u"list"_s); }
  void EditNew() override { log.append(u"new"_s); }
  bool EditSelected() override { return Try(u"edit"_s); }
  bool DeleteSelected() override { return Try(u"delete"_s); }
  bool StoreNew() override { return Try(u"store new"_s); }
  bool StoreModified() override { return Try(u"store modified"_s); }
  void HandOver() override { log.append(u"hand over"_s); }
  void Leave() override { log.append(u"leave"_s); }
  void TellThatItCannotContinue() override { log.append(u"cannot"_s); }
  void Redraw() override { ++redrawn; }

  bool fails = false;
  bool succeeds = true;
  QStringList log;
  int redrawn = 0;

 private:
  bool Try(const QString& what) {
    log.append(what);
    return succeeds;
  }
};

}  // namespace

class tst_field_dialog_states : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Ways_data() {
    QTest::addColumn<QList<int>>("entered");
    QTest::addColumn<bool>("succeeds");
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("done");
    QTest::newRow("load") << QList<int>{5} << true << 6 << u"prepare list"_s;
    QTest::newRow("add") << QList<int>{6, 1} << true << 1 << u"list new"_s;
    QTest::newRow("modify") << QList<int>{6, 2} << true << 2 << u"list edit"_s;
    QTest::newRow("modify nothing") << QList<int>{6, 2} << false << 6 << u"list edit"_s;
    QTest::newRow("delete") << QList<int>{6, 3} << true << 6 << u"list delete list"_s;
    QTest::newRow("delete refused") << QList<int>{6, 3} << false << 6 << u"list delete"_s;
    QTest::newRow("confirm a new entry") << QList<int>{6, 1, 9} << true << 6 << u"list new store new list"_s;
    QTest::newRow("confirm a modified one") << QList<int>{6, 2, 9} << true << 6 << u"list edit store modified list"_s;
    QTest::newRow("confirm refused") << QList<int>{6, 1, 9} << false << 1 << u"list new store new"_s;
    QTest::newRow("confirm nothing") << QList<int>{6, 9} << true << 6 << u"list"_s;
    QTest::newRow("abandon the entry") << QList<int>{6, 1, 6} << true << 6 << u"list new list"_s;
    QTest::newRow("accept all") << QList<int>{6, 1, 7} << true << 8 << u"list new hand over leave"_s;
    QTest::newRow("close") << QList<int>{6, 8} << true << 8 << u"list leave"_s;
    QTest::newRow("cannot continue") << QList<int>{6, 255, 1, 7, 6} << true << 255 << u"list cannot"_s;
    QTest::newRow("but can be closed") << QList<int>{6, 255, 8} << true << 8 << u"list cannot leave"_s;
  }
  void Ways() {
    QFETCH(QList<int>, entered);
    QFETCH(bool, succeeds);
    Steps steps;
    steps.succeeds = succeeds;
    FieldDialogStates states(steps);
    for (const int state : entered) {
      states.Enter(FieldState(state));
    }
    QTEST(int(states.Accion()), "state");
    QTEST(steps.log.join(u' '), "done");
    QVERIFY(steps.redrawn > 0);
  }

  void ModifyRefusedInTheMiddleOfAnEntry() {
    Steps steps;
    FieldDialogStates states(steps);
    states.Enter(FieldState::Adding);
    steps.succeeds = false;
    states.Enter(FieldState::Modifying);
    states.Enter(FieldState::Deleting);
    QCOMPARE(int(states.Accion()), 1);
  }

  void LoadThatFails() {
    Steps steps;
    steps.fails = true;
    FieldDialogStates states(steps);
    states.Enter(FieldState::Loading);
    QCOMPARE(int(states.Accion()), 255);
    QCOMPARE(steps.log, QStringList(u"cannot"_s));
  }
};

KEL_TEST(tst_field_dialog_states);
#include "tst_field_dialog_states.moc"
