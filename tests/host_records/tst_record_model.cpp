#include "host/records/RecordModel.h"
#include "platform/automation/Conversion.h"
#include "support/TestProgram.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using host::ColumnKind;
using host::RecordData;

namespace {

RecordData Named(const QStringList& names) {
  RecordData records({{u"Nombre"_s}});
  int id = 0;
  for (const QString& name : names) {
    records.Append(++id, {name});
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

class tst_record_model : public QObject {
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
  void ALongListIsSortedBeside();
};

void tst_record_model::Search_data() {
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

void tst_record_model::Search() {
  QFETCH(QString, text);
  QFETCH(QString, typed);
  host::RecordModel model;
  model.SetRecords(Named({text}));
  model.SetFilter(typed);
  QTEST(model.rowCount() == 1, "found");
}

void tst_record_model::SearchDoesNotCrossColumns() {
  RecordData records({{u"A"_s}, {u"B"_s}});
  records.Append(1, {u"pan"_s, u"ama"_s});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  model.SetFilter(u"panama"_s);
  QCOMPARE(model.rowCount(), 0);
}

void tst_record_model::TextsSortBySpanishRules() {
  host::RecordModel model;
  model.SetRecords(Named({u"Zamora"_s, u"ñandú"_s, u"Ávila"_s, u"nube"_s, u"álava"_s, u"Ñora"_s, u"oca"_s}));
  const QStringList expected = {u"álava"_s, u"Ávila"_s, u"nube"_s, u"ñandú"_s, u"Ñora"_s, u"oca"_s, u"Zamora"_s};
  QCOMPARE(Shown(model), expected);
}

void tst_record_model::NumbersSortAsNumbers() {
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

void tst_record_model::ForeignValuesAreShownAsNothing() {
  RecordData records({{u"N"_s, ColumnKind::Number}, {u"S"_s, ColumnKind::YesNo}, {u"T"_s}});
  records.Append(1, {u"doce"_s, QVariant(true), u"a\nb"_s});
  records.Append(2, {});
  host::RecordModel model;
  model.SetRecords(std::move(records));
  QCOMPARE(Shown(model, 0), QStringList({QString(), QString()}));
  QCOMPARE(Shown(model, 1), QStringList({u"Sí"_s, QString()}));
  QCOMPARE(Shown(model, 2), QStringList({u"a b"_s, QString()}));
}

void tst_record_model::ReadAnewInItsPlace_data() {
  QTest::addColumn<int>("column");
  QTest::addColumn<Qt::SortOrder>("order");
  QTest::addColumn<QStringList>("expected");
  QTest::newRow("names") << 0 << Qt::AscendingOrder << QStringList({u"Álava"_s, u"Lugo"_s, u"ñu"_s, u"oca"_s});
  QTest::newRow("names, descending") << 0 << Qt::DescendingOrder
                                     << QStringList({u"oca"_s, u"ñu"_s, u"Lugo"_s, u"Álava"_s});
  QTest::newRow("numbers") << 1 << Qt::AscendingOrder << QStringList({u"Lugo"_s, u"oca"_s, u"Álava"_s, u"ñu"_s});
}

void tst_record_model::ReadAnewInItsPlace() {
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

// Meanwhile it is searched and brought up to date as it stands, and of several orders only the last one counts.
void tst_record_model::ALongListIsSortedBeside() {
  constexpr int count = 6000;
  const QList<host::ListColumn> columns = {{u"Nombre"_s}, {u"N"_s, ColumnKind::Number}};
  RecordData records(columns);
  for (int id = 1; id <= count; ++id) {
    records.Append(id, {QString::number(10 * count + id), id % 1000});
  }
  host::RecordModel model;
  model.SetRecords(std::move(records));
  model.sort(1, Qt::AscendingOrder);
  model.sort(1, Qt::DescendingOrder);
  QVERIFY(model.IsSorting());
  QCOMPARE(model.SortOrder(), Qt::DescendingOrder);
  QCOMPARE(model.IdAt(0), 1);
  RecordData read(columns);
  read.Append(9, {u"0"_s, 5000});
  model.Update({5, 9}, read);
  QCOMPARE(model.RowOf(9), 0);
  model.SetFilter(u"7"_s);
  QTRY_VERIFY(!model.IsSorting());
  model.SetFilter({});
  QCOMPARE(model.IdAt(0), 9);
  QCOMPARE(model.rowCount(), count - 1);
  QCOMPARE(Shown(model, 1).mid(1, 7),
           QStringList({u"999"_s, u"999"_s, u"999"_s, u"999"_s, u"999"_s, u"999"_s, u"998"_s}));
  // Records that come meanwhile bring their order along.
  model.sort(0, Qt::DescendingOrder);
  model.SetRecords(Named({u"b"_s, u"a"_s}));
  QVERIFY(!model.IsSorting());
  QTest::qWait(50);
  QCOMPARE(Shown(model), QStringList({u"a"_s, u"b"_s}));
}

KEL_TEST(tst_record_model);
#include "tst_record_model.moc"
