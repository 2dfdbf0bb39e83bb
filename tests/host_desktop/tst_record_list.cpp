#include "host/desktop/RecordData.h"
#include "host/desktop/RecordFilter.h"
#include "host/desktop/RecordList.h"
#include "platform/automation/Conversion.h"
#include "support/TestProgram.h"

#include <QHeaderView>
#include <QRegularExpression>
#include <QScrollBar>
#include <QtTest>

using host::ColumnKind;
using host::RecordData;

namespace {

RecordData Named(const QStringList& names) {
  RecordData records({{QStringLiteral("Nombre")}});
  int id = 0;
  for (const QString& name : names) {
    records.Append(++id, {name});
  }
  return records;
}

RecordData Numbered(int from, int to) {
  RecordData records({{QStringLiteral("Nombre")}});
  for (int id = from; id <= to; ++id) {
    records.Append(id, {QStringLiteral("registro %1").arg(id, 4, 10, QChar(u'0'))});
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
  void init();
  void Search_data();
  void Search();
  void SearchDoesNotCrossColumns();
  void TextsSortBySpanishRules();
  void NumbersSortAsNumbers();
  void ForeignValuesAreShownAsNothing();
  void SortingKeepsTheSelectedRecord();
  void RefreshKeepsSelectionAndPlace();
  void DeletedSelectionGivesItsPlaceToTheNext();
  void SearchKeepsTheSelectedRecord();
};

void tst_record_list::init() {
  // The offscreen screen has its own, which say nothing of the program.
  QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)")));
}

void tst_record_list::Search_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("typed");
  QTest::addColumn<bool>("found");
  QTest::newRow("anywhere") << QStringLiteral("Las Palmas") << QStringLiteral("alma") << true;
  QTest::newRow("case and accents of the text") << QStringLiteral("ÁVILA") << QStringLiteral("avila") << true;
  QTest::newRow("case and accents typed") << QStringLiteral("avila") << QStringLiteral("ÁVI") << true;
  QTest::newRow("enye") << QStringLiteral("A Coruña") << QStringLiteral("coruna") << true;
  QTest::newRow("combining accent") << QStringLiteral("Le\u0301on") << QStringLiteral("léon") << true;
  QTest::newRow("ordinal") << QStringLiteral("Línea 1ª") << QStringLiteral("1a") << true;
  QTest::newRow("words in any order") << QStringLiteral("Castilla y León") << QStringLiteral("leon cast") << true;
  QTest::newRow("every word counts") << QStringLiteral("Castilla y León") << QStringLiteral("leon mancha") << false;
  QTest::newRow("blanks only") << QStringLiteral("Soria") << QStringLiteral("  ") << true;
  QTest::newRow("no pattern") << QStringLiteral("Soria") << QStringLiteral("S*a") << false;
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
  RecordData records({{QStringLiteral("A")}, {QStringLiteral("B")}});
  records.Append(1, {QStringLiteral("pan"), QStringLiteral("ama")});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  model.SetFilter(QStringLiteral("panama"));
  QCOMPARE(model.rowCount(), 0);
}

void tst_record_list::TextsSortBySpanishRules() {
  host::RecordModel model;
  model.SetRecords(
      Named({QStringLiteral("Zamora"), QStringLiteral("ñandú"), QStringLiteral("Ávila"), QStringLiteral("nube"),
             QStringLiteral("álava"), QStringLiteral("Ñora"), QStringLiteral("oca")}));
  const QStringList expected = {QStringLiteral("álava"), QStringLiteral("Ávila"), QStringLiteral("nube"),
                                QStringLiteral("ñandú"), QStringLiteral("Ñora"),  QStringLiteral("oca"),
                                QStringLiteral("Zamora")};
  QCOMPARE(Shown(model), expected);
}

void tst_record_list::NumbersSortAsNumbers() {
  RecordData records({{QStringLiteral("Precio"), ColumnKind::Amount}});
  for (const double price : {1000.0, 12.5, 0.05}) {
    records.Append(static_cast<int>(price) + 1, {price});
  }
  records.Append(9, {automation::Null()});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  const QStringList expected = {QString(), QStringLiteral("0,05 €"), QStringLiteral("12,50 €"),
                                QStringLiteral("1.000,00 €")};
  QCOMPARE(Shown(model), expected);
}

void tst_record_list::ForeignValuesAreShownAsNothing() {
  RecordData records(
      {{QStringLiteral("N"), ColumnKind::Number}, {QStringLiteral("S"), ColumnKind::YesNo}, {QStringLiteral("T")}});
  records.Append(1, {QStringLiteral("doce"), QVariant(true), QStringLiteral("a\nb")});
  records.Append(2, {});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  QCOMPARE(Shown(model, 0), QStringList({QString(), QString()}));
  QCOMPARE(Shown(model, 1), QStringList({QStringLiteral("Sí"), QString()}));
  QCOMPARE(Shown(model, 2), QStringList({QStringLiteral("a b"), QString()}));
}

void tst_record_list::SortingKeepsTheSelectedRecord() {
  host::RecordList list;
  list.Show(Numbered(1, 50), 0, Qt::AscendingOrder);
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
  list.Show(Numbered(100, 900), 0, Qt::AscendingOrder);
  list.SelectRecord(505);
  list.verticalScrollBar()->setValue(list.Records().RowOf(502));
  list.Refresh(Numbered(50, 950));
  QCOMPARE(list.SelectedIds(), QList<int>({505}));
  QCOMPARE(list.Records().IdAt(list.rowAt(0)), 502);
}

void tst_record_list::DeletedSelectionGivesItsPlaceToTheNext() {
  host::RecordList list;
  list.Show(Numbered(1, 10), 0, Qt::AscendingOrder);
  list.SelectRecord(4);
  RecordData without({{QStringLiteral("Nombre")}});
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
  list.Show(Numbered(1, 300), 0, Qt::AscendingOrder);
  list.SelectRecord(123);
  list.SetFilter(QStringLiteral("12"));
  QCOMPARE(list.SelectedIds(), QList<int>({123}));
  list.SetFilter(QStringLiteral("7"));
  QCOMPARE(list.SelectedIds().size(), 1);
  list.SetFilter({});
  QCOMPARE(list.Records().rowCount(), 300);
}

KEL_TEST(tst_record_list);
#include "tst_record_list.moc"
