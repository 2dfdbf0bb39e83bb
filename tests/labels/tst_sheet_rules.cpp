#include "labels/SheetRules.h"
#include "platform/automation/Error.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

using namespace labels;

namespace {

// A sheet that passes every check.
SheetTexts Good() {
  return {.boxes = {u"Hoja"_s, u"0"_s},
          .captions = {u"(*) Referencia:"_s, u"10"_s},
          .totals = u"40"_s,
          .perRow = u"4"_s,
          .rows = u"10"_s,
          .width = u"7"_s,
          .height = u"3,7"_s};
}

template <typename Work>
int ErrorNumber(Work work) {
  try {
    work();
  } catch (const automation::Error& error) {
    return error.Number();
  }
  return 0;
}

}  // namespace

class tst_sheet_rules : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Bounds_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<QString>("becomes");
    QTest::newRow("within") << u"7,5"_s << 6 << 20 << u"7,5"_s;
    QTest::newRow("at the bounds") << u"20"_s << 20 << 20 << u"20"_s;
    QTest::newRow("above") << u"41"_s << 1 << 40 << u"40"_s;
    QTest::newRow("a ten-thousandth above") << u"20,0001"_s << 6 << 20 << u"20"_s;
    QTest::newRow("less than that is cut off first") << u"20,00001"_s << 6 << 20 << u"20,00001"_s;
    QTest::newRow("below") << u"5,9999"_s << 6 << 20 << u"6"_s;
    QTest::newRow("empty is 0") << u""_s << 6 << 20 << u"6"_s;
    QTest::newRow("empty may be 0") << u""_s << 0 << 10 << u""_s;
    QTest::newRow("a comma is 0, too") << u","_s << 0 << 10 << u","_s;
    QTest::newRow("an exponent is a number") << u"1e5"_s << 0 << 10 << u"10"_s;
    QTest::newRow("too large for any amount") << QString(20, u'9') << 0 << 10 << u"10"_s;
    QTest::newRow("no number") << u"5,,5"_s << 6 << 20 << u"5,,5"_s;
  }
  void Bounds() {
    QFETCH(QString, text);
    QFETCH(int, min);
    QFETCH(int, max);
    QTEST(BoundFor(text, {min, max}).value_or(text), "becomes");
  }

  void RowCounts_data() {
    QTest::addColumn<QString>("totals");
    QTest::addColumn<QString>("perRow");
    QTest::addColumn<QString>("rows");
    QTest::newRow("remainder") << u"13"_s << u"4"_s << u"4"_s;
    QTest::newRow("none") << u"12"_s << u"4"_s << u"3"_s;
    QTest::newRow("40 by 3") << u"40"_s << u"3"_s << u"14"_s;
    QTest::newRow("no label per row") << u"40"_s << u"0"_s << u"0"_s;
    QTest::newRow("no total") << u""_s << u"4"_s << u""_s;
    QTest::newRow("nothing per row") << u"40"_s << u""_s << u""_s;
    QTest::newRow("whole numbers first, halves to even") << u"12,5"_s << u"4"_s << u"3"_s;
    QTest::newRow("16 bits") << u"32767"_s << u"1"_s << u"32767"_s;
  }
  void RowCounts() {
    QFETCH(QString, totals);
    QFETCH(QString, perRow);
    QTEST(RowCount(totals, perRow), "rows");
  }

  void CountsThatDoNotFit() {
    QCOMPARE(ErrorNumber([] { RowCount(u"32768"_s, u"4"_s); }), 6);
    QCOMPARE(ErrorNumber([] { RowCount(u"4"_s, u"5,,5"_s); }), 13);
    for (const QString& text : {u"32768"_s, u"5,,5"_s, u","_s}) {
      QVERIFY2(!IsCount(text), qPrintable(text));
    }
    QVERIFY(IsCount(u"32767"_s) && IsCount(u""_s));
  }

  void MoreInARowThanInAll() {
    QVERIFY(ExceedsTotal(u"4"_s, u"3"_s));
    QVERIFY(!ExceedsTotal(u"4"_s, u"4"_s));
    QVERIFY(!ExceedsTotal(u"4"_s, u"32768"_s));
    QVERIFY(!ExceedsTotal(u"4"_s, u""_s));
    QVERIFY(!ExceedsTotal(u"4"_s, u"5,,5"_s));
  }

  void StoredNumbers() {
    const QList<std::pair<QString, QString>> cases{
        {u"6,5"_s, u"6,5"_s}, {u"6,"_s, u"6"_s},           {u"06,50"_s, u"6,5"_s},
        {u",5"_s, u"0,5"_s},  {u"2,97555"_s, u"2,9756"_s}, {u","_s, u"0"_s},
    };
    for (const auto& [text, stored] : cases) {
      QCOMPARE(StoredNumber(text), stored);
    }
    QCOMPARE(ErrorNumber([] { StoredNumber(u"5,,5"_s); }), 13);
  }

  void Refusals_data() {
    using Change = std::function<void(SheetTexts&)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<int>("box");
    const auto row = [](const char* name, const Change& change, int first, int second, SheetBox box) {
      QTest::newRow(name) << change << first << second << int(box);
    };
    row(
        "good", [](SheetTexts&) {}, 0, 0, SheetBox::None);
    row(
        "empty box", [](SheetTexts& t) { t.boxes[1] = u""_s; }, 10018, 0, SheetBox::None);
    row(
        "box of one blank", [](SheetTexts& t) { t.boxes[0] = u" "_s; }, 10018, 0, SheetBox::None);
    row(
        "two blanks are a text", [](SheetTexts& t) { t.boxes[0] = u"  "_s; }, 0, 0, SheetBox::None);
    row(
        "empty label", [](SheetTexts& t) { t.captions[1] = u""_s; }, 10018, 0, SheetBox::None);
    row(
        "totals of 0", [](SheetTexts& t) { t.totals = u"0"_s; }, 10019, 10020, SheetBox::Totals);
    row(
        "none per row", [](SheetTexts& t) { t.perRow = u"0"_s; }, 10019, 10021, SheetBox::PerRow);
    row(
        "11 rows", [](SheetTexts& t) { t.rows = u"11"_s; }, 10019, 10022, SheetBox::Totals);
    row(
        "width 5,5 rounds to 6", [](SheetTexts& t) { t.width = u"5,5"_s; }, 0, 0, SheetBox::None);
    row(
        "width 5,4", [](SheetTexts& t) { t.width = u"5,4"_s; }, 10023, 10024, SheetBox::Width);
    row(
        "height 1,5 rounds to 2", [](SheetTexts& t) { t.height = u"1,5"_s; }, 0, 0, SheetBox::None);
    row(
        "height 1,4: texts that don't belong together", [](SheetTexts& t) { t.height = u"1,4"_s; }, 10026, 10027,
        SheetBox::Height);
    row(
        "the first failure is told",
        [](SheetTexts& t) {
          t.rows = u"14"_s;
          t.width = u"1"_s;
          t.height = u"1"_s;
        },
        10019, 10022, SheetBox::Totals);
  }
  void Refusals() {
    QFETCH(std::function<void(SheetTexts&)>, change);
    SheetTexts texts = Good();
    change(texts);
    const SheetRefusal refusal = RefusalOf(texts).value_or(SheetRefusal());
    QTEST(refusal.firstString, "first");
    QTEST(refusal.secondString, "second");
    QTEST(int(refusal.box), "box");
  }
};

KEL_TEST(tst_sheet_rules);
#include "tst_sheet_rules.moc"
