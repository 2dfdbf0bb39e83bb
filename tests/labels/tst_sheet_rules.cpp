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

// One of a sheet's texts.
using Text = QString& (*)(SheetTexts&);

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

  // One text of a good sheet is another one.
  void Refusals_data() {
    QTest::addColumn<Text>("text");
    QTest::addColumn<QString>("is");
    QTest::addColumn<SheetRefusal>("refusal");
    const Text box = [](SheetTexts& texts) -> QString& { return texts.boxes[1]; };
    const Text caption = [](SheetTexts& texts) -> QString& { return texts.captions[1]; };
    const Text totals = [](SheetTexts& texts) -> QString& { return texts.totals; };
    const Text perRow = [](SheetTexts& texts) -> QString& { return texts.perRow; };
    const Text rows = [](SheetTexts& texts) -> QString& { return texts.rows; };
    const Text width = [](SheetTexts& texts) -> QString& { return texts.width; };
    const Text height = [](SheetTexts& texts) -> QString& { return texts.height; };
    constexpr SheetRefusal passes{};
    constexpr SheetRefusal incomplete{.firstString = 10018};
    QTest::newRow("good") << width << u"7"_s << passes;
    QTest::newRow("empty box") << box << u""_s << incomplete;
    QTest::newRow("box of one blank") << box << u" "_s << incomplete;
    QTest::newRow("two blanks are a text") << box << u"  "_s << passes;
    QTest::newRow("empty label") << caption << u""_s << incomplete;
    QTest::newRow("totals of 0") << totals << u"0"_s << SheetRefusal{10019, 10020, SheetBox::Totals};
    QTest::newRow("none per row") << perRow << u"0"_s << SheetRefusal{10019, 10021, SheetBox::PerRow};
    QTest::newRow("11 rows") << rows << u"11"_s << SheetRefusal{10019, 10022, SheetBox::Totals};
    QTest::newRow("width 5,5 rounds to 6") << width << u"5,5"_s << passes;
    QTest::newRow("width 5,4") << width << u"5,4"_s << SheetRefusal{10023, 10024, SheetBox::Width};
    QTest::newRow("height 1,5 rounds to 2") << height << u"1,5"_s << passes;
    QTest::newRow("height 1,4: texts that don't belong together")
        << height << u"1,4"_s << SheetRefusal{10026, 10027, SheetBox::Height};
  }
  void Refusals() {
    QFETCH(Text, text);
    QFETCH(QString, is);
    SheetTexts texts = Good();
    text(texts) = is;
    QTEST(RefusalOf(texts).value_or(SheetRefusal()), "refusal");
  }

  void TheFirstFailureIsTold() {
    SheetTexts texts = Good();
    texts.width = texts.height = u"1"_s;
    QCOMPARE(RefusalOf(texts).value_or(SheetRefusal()).firstString, 10023);
    texts.rows = u"14"_s;
    QCOMPARE(RefusalOf(texts).value_or(SheetRefusal()).secondString, 10022);
  }
};

KEL_TEST(tst_sheet_rules);
#include "tst_sheet_rules.moc"
