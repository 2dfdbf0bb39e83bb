#include "host/desktop/RecordData.h"
#include "host/desktop/RecordFilter.h"
#include "host/desktop/RecordList.h"
#include "platform/automation/Conversion.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QtTest>

using namespace Qt::StringLiterals;

using host::ColumnKind;
using host::RecordData;
using host::SortedRecords;

namespace {

RecordData Named(const QStringList& names) {
  RecordData records({{u"Nombre"_s}});
  int id = 0;
  for (const QString& name : names) {
    records.Append(++id, {name});
  }
  return records;
}

RecordData Numbered(int from, int to) {
  RecordData records({{u"Nombre"_s}});
  for (int id = from; id <= to; ++id) {
    records.Append(id, {u"registro %1"_s.arg(id, 4, 10, QChar(u'0'))});
  }
  return records;
}

QStringList Shown(const QAbstractItemModel& model, int column = 0) {
  QStringList texts;
  for (int row = 0; row < model.rowCount(); ++row) {
    texts.append(model.index(row, column).data().toString());
  }
  return texts;
}

}  // namespace

class tst_record_list : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Search_data();
  void Search();
  void SearchDoesNotCrossColumns();
  void TextsSortBySpanishRules();
  void NumbersSortAsNumbers();
  void ForeignValuesAreShownAsNothing();
  void ReadAnewInItsPlace_data();
  void ReadAnewInItsPlace();
  void SortingKeepsTheSelectedRecord();
  void RefreshKeepsSelectionAndPlace();
  void AnotherOrderWhileTheRecordsAreRead();
  void DeletedSelectionGivesItsPlaceToTheNext();
  void SearchKeepsTheSelectedRecord();
  void TypingFindsByTheName_data();
  void TypingFindsByTheName();
  void KeysOfTheList();
  void OnlyChosenWidthsAreRemembered();
};

void tst_record_list::Search_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("typed");
  QTest::addColumn<bool>("found");
  QTest::newRow("anywhere") << u"Las Palmas"_s << u"alma"_s << true;
  QTest::newRow("case and accents of the text") << u"ÁVILA"_s << u"avila"_s << true;
  QTest::newRow("case and accents typed") << u"avila"_s << u"ÁVI"_s << true;
  QTest::newRow("enye") << u"A Coruña"_s << u"coruna"_s << true;
  QTest::newRow("combining accent") << u"Le\u0301on"_s << u"léon"_s << true;
  QTest::newRow("ordinal") << u"Línea 1ª"_s << u"1a"_s << true;
  QTest::newRow("words in any order") << u"Castilla y León"_s << u"leon cast"_s << true;
  QTest::newRow("every word counts") << u"Castilla y León"_s << u"leon mancha"_s << false;
  QTest::newRow("blanks only") << u"Soria"_s << u"  "_s << true;
  QTest::newRow("a long text") << QString(62, u'Ώ') + u"ÁVILA"_s << u"ωavila"_s << true;
  QTest::newRow("a pair in a long text") << QString(63, u'Ώ') + u"𝐀ña"_s << u"ωana"_s << true;
  QTest::newRow("a combining accent in a long text") << QString(64, u'Ώ') + u"\u0301x"_s << u"ωωx"_s << true;
  QTest::newRow("more than is kept") << QString(1000, u'é') + u'z' << u"z"_s << false;
  QTest::newRow("no pattern") << u"Soria"_s << u"S*a"_s << false;
}

void tst_record_list::Search() {
  QFETCH(QString, text);
  QFETCH(QString, typed);
  host::RecordModel model;
  model.SetRecords(Named({text}));
  model.SetFilter(typed);
  QTEST(model.rowCount() == 1, "found");
}

void tst_record_list::SearchDoesNotCrossColumns() {
  RecordData records({{u"A"_s}, {u"B"_s}});
  records.Append(1, {u"pan"_s, u"ama"_s});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  model.SetFilter(u"panama"_s);
  QCOMPARE(model.rowCount(), 0);
}

void tst_record_list::TextsSortBySpanishRules() {
  host::RecordModel model;
  model.SetRecords(Named({u"Zamora"_s, u"ñandú"_s, u"Ávila"_s, u"nube"_s, u"álava"_s, u"Ñora"_s, u"oca"_s}));
  const QStringList expected = {u"álava"_s, u"Ávila"_s, u"nube"_s, u"ñandú"_s, u"Ñora"_s, u"oca"_s, u"Zamora"_s};
  QCOMPARE(Shown(model), expected);
}

void tst_record_list::NumbersSortAsNumbers() {
  RecordData records({{u"Precio"_s, ColumnKind::Amount}});
  for (const double price : {1000.0, 12.5, 0.05}) {
    records.Append(static_cast<int>(price) + 1, {price});
  }
  records.Append(9, {automation::Null()});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  const QStringList expected = {QString(), u"0,05 €"_s, u"12,50 €"_s, u"1.000,00 €"_s};
  QCOMPARE(Shown(model), expected);
}

void tst_record_list::ForeignValuesAreShownAsNothing() {
  RecordData records({{u"N"_s, ColumnKind::Number}, {u"S"_s, ColumnKind::YesNo}, {u"T"_s}});
  records.Append(1, {u"doce"_s, QVariant(true), u"a\nb"_s});
  records.Append(2, {});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  QCOMPARE(Shown(model, 0), QStringList({QString(), QString()}));
  QCOMPARE(Shown(model, 1), QStringList({u"Sí"_s, QString()}));
  QCOMPARE(Shown(model, 2), QStringList({u"a b"_s, QString()}));
}

void tst_record_list::ReadAnewInItsPlace_data() {
  QTest::addColumn<int>("column");
  QTest::addColumn<Qt::SortOrder>("order");
  QTest::addColumn<QStringList>("expected");
  QTest::newRow("names") << 0 << Qt::AscendingOrder << QStringList({u"Álava"_s, u"Lugo"_s, u"ñu"_s, u"oca"_s});
  QTest::newRow("names, descending") << 0 << Qt::DescendingOrder
                                     << QStringList({u"oca"_s, u"ñu"_s, u"Lugo"_s, u"Álava"_s});
  QTest::newRow("numbers") << 1 << Qt::AscendingOrder << QStringList({u"Lugo"_s, u"oca"_s, u"Álava"_s, u"ñu"_s});
}

void tst_record_list::ReadAnewInItsPlace() {
  QFETCH(int, column);
  QFETCH(Qt::SortOrder, order);
  const QList<host::ListColumn> columns = {{u"Nombre"_s}, {u"N"_s, ColumnKind::Number}};
  RecordData records(columns);
  records.Append(1, {u"Zamora"_s, 5});
  records.Append(2, {u"nube"_s, 6});
  records.Append(3, {u"Lugo"_s, 7});
  records.Append(4, {u"oca"_s, 8});
  host::RecordModel model;
  model.SetRecords({std::move(records), column}, order);
  RecordData read(columns);
  read.Append(1, {u"Álava"_s, 20});
  read.Append(3, {u"Lugo"_s, automation::Null()});
  read.Append(9, {u"ñu"_s, 30});
  model.Update({1, 2, 3}, read);
  QTEST(Shown(model), "expected");
  QCOMPARE(model.TotalCount(), 4);
  QCOMPARE(model.IdAt(model.RowOf(9)), 9);
  model.sort(0, Qt::AscendingOrder);
  QCOMPARE(Shown(model).constFirst(), u"Álava"_s);
  model.SetFilter(u"alav"_s);
  model.Update({1}, RecordData(columns));
  QCOMPARE(model.rowCount(), 0);
  QCOMPARE(model.TotalCount(), 3);
}

void tst_record_list::SortingKeepsTheSelectedRecord() {
  host::RecordList list;
  list.Show(Numbered(1, 50));
  list.selectionModel()->select(QItemSelection(list.model()->index(2, 0), list.model()->index(3, 0)),
                                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  list.sortByColumn(0, Qt::DescendingOrder);
  QCOMPARE(list.SelectedIds(), QList<int>({4, 3}));
  QCOMPARE(list.Records().IdAt(0), 50);
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
  QCOMPARE(Shown(list.Records()), QStringList({u"b"_s, u"a"_s}));
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
  QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
  QCOMPARE(QApplication::clipboard()->text(), u"uno\t1,50 €\n%1 dos\t2,00 €"_s.arg(QString(400, u'x')));
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

KEL_TEST(tst_record_list);
#include "tst_record_list.moc"
