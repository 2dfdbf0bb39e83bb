#include "host/desktop/RecordList.h"
#include "host/records/RecordData.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QtTest>

using namespace Qt::StringLiterals;

using host::ColumnKind;
using host::RecordData;
using host::SortedRecords;

namespace {

RecordData Numbered(int from, int to) {
  RecordData records({{u"Nombre"_s}});
  for (int id = from; id <= to; ++id) {
    records.Append(id, {u"registro %1"_s.arg(id, 4, 10, QChar(u'0'))});
  }
  return records;
}

}  // namespace

class tst_record_list : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void SortingKeepsTheSelectedRecord_data();
  void SortingKeepsTheSelectedRecord();
  void RefreshKeepsSelectionAndPlace();
  void AnotherOrderWhileTheRecordsAreRead();
  void DeletedSelectionGivesItsPlaceToTheNext();
  void SearchKeepsTheSelectedRecord();
  void TypingFindsByTheName_data();
  void TypingFindsByTheName();
  void KeysOfTheList();
  void OnlyChosenWidthsAreRemembered();
  void ColumnsAreChosen();
};

void tst_record_list::SortingKeepsTheSelectedRecord_data() {
  QTest::addColumn<int>("count");
  QTest::newRow("at once") << 50;
  QTest::newRow("beside the window") << 6000;
}

void tst_record_list::SortingKeepsTheSelectedRecord() {
  QFETCH(int, count);
  host::RecordList list;
  list.Show(Numbered(1, count));
  list.selectionModel()->select(QItemSelection(list.model()->index(2, 0), list.model()->index(3, 0)),
                                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  list.sortByColumn(0, Qt::DescendingOrder);
  QTRY_COMPARE(list.Records().IdAt(0), count);
  QCOMPARE(list.SelectedIds(), QList<int>({4, 3}));
}

void tst_record_list::RefreshKeepsSelectionAndPlace() {
  host::RecordList list;
  list.resize(300, 200);
  list.show();
  list.Show(Numbered(100, 900));
  list.SelectRecord(505);
  list.verticalScrollBar()->setValue(list.Records().RowOf(502));
  list.Refresh(Numbered(50, 950));
  QCOMPARE(list.SelectedIds(), QList<int>({505}));
  QCOMPARE(list.Records().IdAt(list.rowAt(0)), 502);
}

void tst_record_list::AnotherOrderWhileTheRecordsAreRead() {
  const QList<host::ListColumn> columns = {{u"Nombre"_s}, {u"N"_s, ColumnKind::Number}};
  RecordData records(columns);
  records.Append(1, {u"a"_s, 9});
  records.Append(2, {u"b"_s, 5});
  host::RecordList list;
  list.Show(records);
  list.sortByColumn(1, Qt::AscendingOrder);
  list.Refresh(SortedRecords(records, 0));
  QCOMPARE(list.Records().IdAt(0), 2);
}

void tst_record_list::DeletedSelectionGivesItsPlaceToTheNext() {
  host::RecordList list;
  list.Show(Numbered(1, 10));
  list.SelectRecord(4);
  RecordData without({{u"Nombre"_s}});
  for (const int id : {1, 2, 3, 5, 6}) {
    without.Append(id, {QString::number(id)});
  }
  list.Refresh(std::move(without));
  QCOMPARE(list.SelectedIds(), QList<int>({5}));
  list.SelectRecord(6);
  list.Refresh(Numbered(1, 3));
  QCOMPARE(list.SelectedIds(), QList<int>({3}));
  list.Refresh(Numbered(1, 0));
  QVERIFY(list.SelectedIds().isEmpty());
}

void tst_record_list::SearchKeepsTheSelectedRecord() {
  host::RecordList list;
  list.Show(Numbered(1, 300));
  list.SelectRecord(123);
  list.SetFilter(u"12"_s);
  QCOMPARE(list.SelectedIds(), QList<int>({123}));
  list.SetFilter(u"7"_s);
  QCOMPARE(list.SelectedIds().size(), 1);
  list.SetFilter({});
  QCOMPARE(list.Records().rowCount(), 300);
  list.SelectRecord(200);
  list.SetFilter(u"nada"_s);
  QVERIFY(list.SelectedIds().isEmpty());
  list.SetFilter(u"nadar"_s);
  list.SetFilter({});
  QCOMPARE(list.SelectedIds(), QList<int>({200}));
}

void tst_record_list::TypingFindsByTheName_data() {
  QTest::addColumn<QString>("keys");
  QTest::addColumn<int>("id");
  QTest::newRow("accents and case") << u"avi"_s << 2;
  QTest::newRow("accents typed") << u"ÁL"_s << 1;
  QTest::newRow("from the next row") << u"a"_s << 2;
  QTest::newRow("from the row that is chosen, around") << u"z"_s << 4;
  QTest::newRow("one letter goes on") << u"lll"_s << 6;
  QTest::newRow("blanks") << u"la r"_s << 5;
  QTest::newRow("not the other column") << u"00"_s << 1;
}

void tst_record_list::TypingFindsByTheName() {
  QFETCH(QString, keys);
  RecordData records({{u"Número"_s}, {u"Nombre"_s}});
  int id = 0;
  for (const char16_t* name : {u"Álava", u"ÁVILA", u"León", u"Zamora", u"La Rioja", u"Lugo"}) {
    records.Append(++id, {u"000%1"_s.arg(id), QString::fromUtf16(name)});
  }
  host::RecordList list;
  list.Show(std::move(records), Qt::AscendingOrder, 1);
  QTest::keyClicks(&list, keys);
  QTEST(list.SelectedIds().value(0), "id");
}

void tst_record_list::KeysOfTheList() {
  RecordData records({{u"Nombre"_s}, {u"Precio"_s, ColumnKind::Amount}});
  records.Append(1, {u"uno"_s, 1.5});
  records.Append(2, {QString(400, u'x') + u"\ndos"_s, 2});
  records.Append(3, {u"tres"_s, 3});
  host::RecordList list;
  list.Show(SortedRecords(std::move(records), 1));
  QTest::keyClick(&list, Qt::Key_End);
  QCOMPARE(list.SelectedIds(), QList<int>({3}));
  QTest::keyClick(&list, Qt::Key_Home);
  QCOMPARE(list.SelectedIds(), QList<int>({1}));
  QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
  const QString copied = u"uno\t1,50 €\n%1 dos\t2,00 €"_s.arg(QString(400, u'x'));
  list.Copy(false);
  QCOMPARE(QApplication::clipboard()->text(), copied);
  list.Copy(true);
  QCOMPARE(QApplication::clipboard()->text(), u"Nombre\tPrecio\n"_s + copied);
}

void tst_record_list::OnlyChosenWidthsAreRemembered() {
  host::RecordList list;
  list.resize(500, 300);
  list.show();
  const QList<host::ListColumn> columns = {{u"Nombre"_s}, {u"Otro"_s}};
  list.Show(RecordData(columns));
  list.SetColumnWidths({});
  list.resize(700, 300);
  list.Refresh(RecordData(columns));
  QCOMPARE(list.ChosenWidths(), QList<int>());
  list.setColumnWidth(0, 123);
  QCOMPARE(list.ChosenWidths().value(0), 123);
  list.SetColumnWidths({77, 50});
  QCOMPARE(list.ChosenWidths().value(0), 77);
}

void tst_record_list::ColumnsAreChosen() {
  const QList<host::ListColumn> columns = {{u"A"_s}, {u"B"_s}, {u"C"_s, ColumnKind::Number}};
  RecordData records(columns);
  for (int id = 1; id <= 200; ++id) {
    records.Append(id, {u"a%1"_s.arg(id), u"b%1"_s.arg(id), id});
  }
  host::RecordList list;
  list.resize(400, 200);
  list.show();
  list.Show(records);
  QCOMPARE(list.ChosenColumns(), QList<int>());
  const auto choose = [&](const QString& title) {
    list.AskForColumns({});
    auto* menu = list.findChild<QMenu*>(u"mnuColumns"_s);
    for (QAction* action : menu->actions()) {
      if (action->text() == title && action->isEnabled()) {
        action->trigger();
      }
    }
    delete menu;
  };
  choose(u"A"_s);
  list.horizontalHeader()->moveSection(list.horizontalHeader()->visualIndex(2),
                                       list.horizontalHeader()->visualIndex(1));
  QCOMPARE(list.ShownColumns(), QList<int>({2, 1}));
  // A record is still gone to, and what is read anew changes no column.
  QVERIFY(list.SelectRecord(180));
  list.Update({7}, RecordData(columns));
  list.Refresh(records);
  QVERIFY(list.viewport()->rect().intersects(list.visualRect(list.currentIndex())));
  QCOMPARE(list.ChosenColumns(), QList<int>({2, 1}));
  list.Copy(true);
  QCOMPARE(QApplication::clipboard()->text(), u"C\tB\n180\tb180"_s);
  // One stays, whatever is asked for.
  choose(u"B"_s);
  choose(u"C"_s);
  QCOMPARE(list.ShownColumns(), QList<int>({2}));
  choose(u"A"_s);
  QCOMPARE(list.ShownColumns(), QList<int>({2, 0}));
  QVERIFY(list.columnWidth(0) > 8);
  choose(u"&Como al principio"_s);
  QCOMPARE(list.ShownColumns(), QList<int>({0, 1, 2}));
}

KEL_TEST(tst_record_list);
#include "tst_record_list.moc"
