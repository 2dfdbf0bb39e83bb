#include "Colleague.h"
#include "FakeComponent.h"
#include "TestDesktop.h"
#include "support/TestProgram.h"

#include "host/desktop/RecordPage.h"
#include "host/records/AffectedRecords.h"
#include "host/records/ChangeLog.h"
#include "host/records/ChangeWatch.h"
#include "host/records/RecordReader.h"
#include "host/records/RecordReferences.h"
#include "platform/contract/cConstNodo.h"

#include <QDeadlineTimer>
#include <QDialog>
#include <QMenu>
#include <QScrollBar>
#include <QTreeWidget>
#include <QtTest>

#include <algorithm>
#include <chrono>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

// What another program writes is seen within two seconds; a loaded machine gets some more.
constexpr int soon = 5000;

QStringList Names(const host::RecordList& list) {
  QStringList names;
  for (int row = 0; row < list.Records().rowCount(); ++row) {
    names.append(list.Records().LineAt(row));
  }
  return names;
}

// Which a loaded machine does not lengthen.
std::chrono::nanoseconds ProcessorOfThisThread() {
  timespec time = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

// How many events of a kind an object gets, or the whole program.
class EventCount : public QObject {
 public:
  EventCount(QObject& watched, QEvent::Type type) : m_type(type) { watched.installEventFilter(this); }
  int Take() { return std::exchange(m_count, 0); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    m_count += event->type() == m_type ? 1 : 0;
    return false;
  }

 private:
  QEvent::Type m_type;
  int m_count = 0;
};

}  // namespace

class tst_live_records : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void OthersChangesAppear();
  void AnUpdateOfEverythingIsOneNote();
  void TheTreeCounts();
  void PlaceIsKept();
  void NothingMovesBehindADialog();
  void AReadingIsOvertakenByADialog();
  void WantedColumnsFollow();
  void UsesAreTheSameEverywhere();
  void NobodyIsWokenForNothing();
  void OnlyWhatLooksOtherwiseIsRead_data();
  void OnlyWhatLooksOtherwiseIsRead();
};

void tst_live_records::OthersChangesAppear() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Provincias SET Eliminado=-1 WHERE IDProvincia={}", id);
  });
  desktop.ChooseNode(cConstNodo().Provincias());
  const int total = desktop.List().Records().TotalCount();
  lorenzo.Execute(u"UPDATE Provincias SET Nombre='Zzz' WHERE IDProvincia=1");
  QTRY_VERIFY_WITH_TIMEOUT(Names(desktop.List()).constLast().startsWith(u"Zzz"_s), soon);
  QVERIFY(desktop.List().IsMarked(total - 1) && !desktop.List().IsMarked(0));
  adodb::Execute(desktop.Office(), u"UPDATE Provincias SET Nombre='000' WHERE IDProvincia=2");
  QTRY_VERIFY_WITH_TIMEOUT(Names(desktop.List()).constFirst().startsWith(u"000"_s), soon);
  QVERIFY(!desktop.List().IsMarked(0));
  QTRY_VERIFY_WITH_TIMEOUT(!desktop.List().IsMarked(total - 1), soon);
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Ítaca',35)");
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Feacia',35)");
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), total + 2, soon);
  const int newest = desktop.database.Id(u"SELECT MAX(IDProvincia) FROM Provincias");
  QCOMPARE(lorenzo.Delete(cConstNodo().Provincias(), newest, u"Feacia"_s), QString());
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), total + 1, soon);
  // A record that is shown in the rows of others.
  lorenzo.Execute(u"UPDATE Paises SET Nombre='Hispania' WHERE IDPais=35");
  QTRY_VERIFY_WITH_TIMEOUT(Names(desktop.List()).constLast().contains(u"Hispania"_s), soon);
  // The node of deletions has another table than what is deleted.
  desktop.ChooseNode(host::deletedRecordsNode);
  QCOMPARE(desktop.List().Records().TotalCount(), 1);
  QCOMPARE(lorenzo.Delete(cConstNodo().Provincias(), newest - 1, u"Ítaca"_s), QString());
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), 2, soon);
  // The notes themselves.
  desktop.ChooseNode(host::changesNode);
  const int noted = desktop.List().Records().TotalCount();
  lorenzo.Execute(u"UPDATE Provincias SET Nombre='Yyy' WHERE IDProvincia=1");
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), noted + 1, soon);
}

void tst_live_records::AnUpdateOfEverythingIsOneNote() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  // Longer than a list that is read anew on a suspicion.
  desktop.database.Execute(
      u"INSERT INTO Cabeceras(Nombre) SELECT A.Nombre FROM Provincias AS A, Provincias AS B, Encabezados AS C");
  desktop.ChooseNode(cConstNodo().Cabeceras());
  const host::RecordModel& records = desktop.List().Records();
  const int total = records.TotalCount();
  QVERIFY(total > 10'000);
  const qint64 newest = host::NewestChange(desktop.database.Connection());
  lorenzo.Execute(u"UPDATE Cabeceras SET Nombre='Zzz'");
  const QList<host::Change> notes = host::ChangesAfter(desktop.database.Connection(), newest, 2);
  QCOMPARE(notes.size(), 1);
  QCOMPARE(notes.constFirst().kind, host::ChangeKind::Several);
  QCOMPARE(notes.constFirst().rows, total);
  std::chrono::nanoseconds longest{0};
  const QDeadlineTimer limit(std::chrono::milliseconds{soon});
  const auto hasFollowed = [&] { return records.LineAt(0).startsWith(u"Zzz\t"_s); };
  while (!hasFollowed() && !limit.hasExpired()) {
    const std::chrono::nanoseconds before = ProcessorOfThisThread();
    QCoreApplication::processEvents();
    longest = std::max(longest, ProcessorOfThisThread() - before);
    QThread::msleep(1);
  }
  QVERIFY(hasFollowed());
  QCOMPARE(records.TotalCount(), total);
  QCOMPARE_LT(longest, std::chrono::milliseconds{25});
}

void tst_live_records::TheTreeCounts() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  FakeComponent::Register([](adodb::Connection& connection, int id) {
    adodb::Execute(connection, u"UPDATE Provincias SET Eliminado=-1 WHERE IDProvincia={}", id);
  });
  auto* tree = desktop.Window().findChild<QTreeWidget*>(u"nodeTree"_s);
  const auto count = [tree](const QString& title) {
    return tree->findItems(title, Qt::MatchExactly | Qt::MatchRecursive).constFirst()->text(1);
  };
  desktop.ChooseNode(cConstNodo().Paises());
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Provincias"_s), u"52"_s, soon);
  QCOMPARE(count(u"Registros eliminados"_s), u"0"_s);
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Ítaca',35)");
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Provincias"_s), u"53"_s, soon);
  const int newest = desktop.database.Id(u"SELECT MAX(IDProvincia) FROM Provincias");
  QCOMPARE(lorenzo.Delete(cConstNodo().Provincias(), newest, u"Ítaca"_s), QString());
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Registros eliminados"_s), u"1"_s, soon);
  QTRY_COMPARE_WITH_TIMEOUT(count(u"Provincias"_s), u"52"_s, soon);
}

void tst_live_records::PlaceIsKept() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Provincias());
  host::RecordList& list = desktop.List();
  desktop.Window().resize(600, 400);
  desktop.SearchBox().setText(u"r"_s);
  list.SelectRecords({list.Records().IdAt(1), list.Records().IdAt(2)});
  const QList<int> selected = list.SelectedIds();
  // Scrolled away from what is selected, as a reader does.
  list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
  const int top = list.Records().IdAt(list.verticalScrollBar()->value());
  QVERIFY(list.verticalScrollBar()->value() > 5);
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('A Arr',35)");
  QTRY_COMPARE_WITH_TIMEOUT(list.Records().NameAt(0, 1), u"A Arr"_s, soon);
  QCOMPARE(list.SelectedIds(), selected);
  QCOMPARE(list.Records().IdAt(list.verticalScrollBar()->value()), top);
  QCOMPARE(desktop.SearchBox().text(), u"r"_s);
  QVERIFY(list.Records().rowCount() < list.Records().TotalCount());
}

void tst_live_records::NothingMovesBehindADialog() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Paises());
  const int total = desktop.List().Records().TotalCount();
  FakeComponent::Register([&](adodb::Connection&, int) {
    lorenzo.Execute(u"INSERT INTO Paises(Nombre) VALUES('Ítaca')");
    QTest::qWait(2500);
    QCOMPARE(desktop.List().Records().TotalCount(), total);
  });
  desktop.List().SelectRecord(35);
  desktop.Action("actModify").trigger();
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), total + 1, soon);
}

// What was being read when the dialog came up is in the list when that has gone.
void tst_live_records::AReadingIsOvertakenByADialog() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Paises());
  const int total = desktop.List().Records().TotalCount();
  FakeComponent::Register([&](adodb::Connection&, int) {
    QTest::qWait(500);
    QCOMPARE(desktop.List().Records().TotalCount(), total);
  });
  auto* page = desktop.Window().findChild<host::RecordPage*>();
  // Behind the question for the records, and before its answer.
  const auto open = [&] {
    desktop.List().SelectRecord(35);
    desktop.Action("actModify").trigger();
  };
  connect(page, &host::RecordPage::Noticed, page, open,
          Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
  lorenzo.Execute(u"INSERT INTO Paises(Nombre) VALUES('Ítaca')");
  QTRY_COMPARE_WITH_TIMEOUT(FakeComponent::Requests().size(), 1, soon);
  QTRY_COMPARE_WITH_TIMEOUT(desktop.List().Records().TotalCount(), total + 1, soon);
}

// Uses and the last change: not there until they are wanted, then with what others write, and at the next start.
void tst_live_records::WantedColumnsFollow() {
  TestDesktop desktop;
  Colleague lorenzo(desktop.database);
  desktop.ChooseNode(cConstNodo().Paises());
  const auto title = [&](int column) {
    return desktop.List().Records().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().trimmed();
  };
  const auto shown = [&] {
    QStringList titles;
    const QList<int> columns = desktop.List().ShownColumns();
    for (const int column : columns) {
      titles.append(title(column));
    }
    return titles.join(u'|');
  };
  const auto cell = [&](int id, const QString& wanted) {
    const host::RecordModel& records = desktop.List().Records();
    for (int column = 0; column < records.columnCount(); ++column) {
      if (title(column) == wanted) {
        return records.index(records.RowOf(id), column).data().toString().trimmed();
      }
    }
    return u"?"_s;
  };
  const auto choose = [&](const QString& text) {
    desktop.List().AskForColumns({});
    auto* menu = desktop.List().findChild<QMenu*>(u"mnuColumns"_s);
    for (QAction* action : menu->actions()) {
      if (action->text().remove(u'&') == text) {
        action->trigger();
      }
    }
    delete menu;
    desktop.WaitForTheList();
  };
  const QString usual = shown();
  QVERIFY(!usual.contains(u"Usos"_s));
  QCOMPARE(cell(35, u"Usos"_s), QString());
  choose(u"Usos"_s);
  choose(u"Modificado"_s);
  QCOMPARE(shown(), QStringList({usual, u"Usos"_s, u"Modificado"_s}).join(u'|'));
  QCOMPARE(cell(35, u"Usos"_s), u"52"_s);
  QCOMPARE(cell(36, u"Usos"_s), u"0"_s);
  QCOMPARE(cell(36, u"Modificado"_s), QString());
  lorenzo.Execute(u"INSERT INTO Provincias(Nombre,CodPais) VALUES('Ítaca',36)");
  QTRY_COMPARE_WITH_TIMEOUT(cell(36, u"Usos"_s), u"1"_s, soon);
  lorenzo.Execute(u"UPDATE Paises SET Nombre='Feacia' WHERE IDPais=36");
  QTRY_VERIFY_WITH_TIMEOUT(!cell(36, u"Modificado"_s).isEmpty(), soon);
  QCOMPARE(cell(36, u"Usos"_s), u"1"_s);
  desktop.Restart();
  desktop.ChooseNode(cConstNodo().Paises());
  QCOMPARE(shown(), QStringList({usual, u"Usos"_s, u"Modificado"_s}).join(u'|'));
  QCOMPARE(cell(36, u"Usos"_s), u"1"_s);
  choose(u"Como al principio"_s);
  QCOMPARE(shown(), usual);
  QCOMPARE(cell(36, u"Usos"_s), QString());
}

// The same number as the detail pane and a deletion say, for every record of the demonstration.
void tst_live_records::UsesAreTheSameEverywhere() {
  const support::TestDatabase database(database::Content::Demonstration);
  int used = 0;
  for (const host::Node& node : host::NodeCatalog()) {
    for (const bool velumar : {false, true}) {
      const QHash<int, int> uses = host::UsesOf(database.Connection(), node.id, {}, velumar);
      const host::RecordData records = host::ReadRecords(database.Connection(), node);
      for (int row = 0; row < records.Size() && host::HasUses(node.id); ++row) {
        int expected = 0;
        for (const host::RowCount& count : host::CountUses(database.Connection(), node.id, records.Id(row), velumar)) {
          expected += count.count;
        }
        QCOMPARE(uses.value(records.Id(row)), expected);
        used += expected;
        if (row % 50 == 0) {
          const QString only = u"=%1"_s.arg(records.Id(row));
          QCOMPARE(host::UsesOf(database.Connection(), node.id, only, velumar).value(records.Id(row)), expected);
        }
      }
    }
  }
  QVERIFY(used > 100);
}

// A file is only looked at from outside while nobody writes, and a server tells.
void tst_live_records::NobodyIsWokenForNothing() {
  if (TestDesktop desktop; desktop.database.Server() != nullptr) {
    desktop.ChooseNode(cConstNodo().Paises());
    EventCount timers(*qApp, QEvent::Timer);
    const auto areStill = [&] {
      timers.Take();
      QTest::qWait(3500);
      return timers.Take() == 0;
    };
    QVERIFY(areStill() || areStill());
    return;
  }
  const support::TestDatabase database;
  host::ChangeWatch watch(database.ConnectionString(), 0, true);
  EventCount answers(watch, QEvent::MetaCall);
  QSignalSpy seen(&watch, &host::ChangeWatch::Seen);
  const auto answersTo = [&](int looks) {
    answers.Take();
    for (; looks > 0 && QTest::qWaitFor([&] { return watch.Look(); }, soon); --looks) {
    }
    return looks > 0 ? -1 : answers.Take();
  };
  QCOMPARE_GT(answersTo(50), 0);
  QCOMPARE(answersTo(200), 0);
  database.Execute(u"UPDATE Paises SET Nombre='Zzz' WHERE IDPais=35");
  // Where a commit is long in coming it is not the first question that finds it.
  QCOMPARE_GT(answersTo(200), 5);
  QCOMPARE(seen.size(), 1);
}

void tst_live_records::OnlyWhatLooksOtherwiseIsRead_data() {
  QTest::addColumn<int>("node");
  QTest::addColumn<QString>("table");
  QTest::addColumn<int>("key");
  QTest::addColumn<int>("records");  // -1 for the whole list
  QTest::newRow("the record") << cConstNodo().Provincias() << u"Provincias"_s << 7 << 1;
  QTest::newRow("what it shows") << cConstNodo().Provincias() << u"Paises"_s << 35 << 52;
  QTest::newRow("what nobody shows") << cConstNodo().Provincias() << u"Paises"_s << 36 << 0;
  QTest::newRow("another table") << cConstNodo().Provincias() << u"Bancos"_s << 1 << 0;
  QTest::newRow("several rows") << cConstNodo().Provincias() << u"Provincias"_s << 0 << -1;
  QTest::newRow("several rows of what it shows") << cConstNodo().Provincias() << u"Paises"_s << 0 << -1;
  QTest::newRow("several rows of another table") << cConstNodo().Provincias() << u"Bancos"_s << 0 << 0;
}

void tst_live_records::OnlyWhatLooksOtherwiseIsRead() {
  QFETCH(int, node);
  QFETCH(QString, table);
  QFETCH(int, key);
  static const support::TestDatabase database;
  host::Change change;
  change.table = table;
  change.key = key;
  const auto ids = host::AffectedRecords(database.Connection(), *host::FindNode(node), {change});
  QTEST(ids ? static_cast<int>(ids->size()) : -1, "records");
}

KEL_TEST(tst_live_records);
#include "tst_live_records.moc"
