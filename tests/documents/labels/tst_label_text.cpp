#include "documents/labels/Calibration.h"
#include "documents/labels/LabelPainter.h"
#include "documents/labels/LabelText.h"
#include "documents/labels/SheetPlaces.h"
#include "support/TestProgram.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

using documents::LabelPart;

namespace {

/// "1.1 D.ª;1.2 Ana;2.1 *C.P.;4.2 !PERÚ": line, position and value, a free text behind *, the country behind !.
QList<LabelPart> Parts(const QString& text) {
  QList<LabelPart> parts;
  for (const QString& word : text.split(u';', Qt::SkipEmptyParts)) {
    const QString value = word.section(u' ', 1);
    const bool isText = value.startsWith(u'*');
    const bool isCountry = value.startsWith(u'!');
    parts.append({word.section(u' ', 0, 0).section(u'.', 0, 0).toInt(),
                  word.section(u' ', 0, 0).section(u'.', 1).toInt(),
                  isText      ? LabelPart::Kind::Text
                  : isCountry ? LabelPart::Kind::Country
                              : LabelPart::Kind::Field,
                  isText || isCountry ? value.mid(1) : value});
  }
  return parts;
}

documents::Sheet SheetOf(int totals, int perRow) {
  return {.totals = totals, .perRow = perRow, .width = 70000, .height = 37000};
}

}  // namespace

/// What stands on a label, and on which label it stands.
class tst_label_text : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Lines_data();
  void Lines();
  void Places_data();
  void Places();
  void EveryStart();
  void Fits();
  void CalibrationComesBack();
  void MeasuresAreRefused_data();
  void MeasuresAreRefused();
};

void tst_label_text::Lines_data() {
  QTest::addColumn<QString>("parts");
  QTest::addColumn<QString>("expected");
  QTest::newRow("by line and position") << u"2.1 Mayor, 1;1.2 Ana;1.1 D.ª;3.2 Madrid;3.1 28013"_s
                                        << u"D.ª Ana/Mayor, 1/28013 Madrid"_s;
  QTest::newRow("empty fields") << u"1.1 ;1.2 Ana;1.3  ;2.1 ;3.1 Madrid"_s << u"Ana/Madrid"_s;
  QTest::newRow("texts of an empty line") << u"1.1 Ana;2.1 *C.P.;2.2 ;3.1 *Urgente"_s << u"Ana/Urgente"_s;
  QTest::newRow("punctuation") << u"1.1 Gil;1.2 *,;1.3 Ana;1.4 *(;1.5 2;1.6 *)"_s << u"Gil, Ana (2)"_s;
  QTest::newRow("country last, alone") << u"1.1 Ana;2.1 31000;2.2 !FRANCIA;2.3 Toulouse;3.1 x"_s
                                       << u"Ana/31000 Toulouse/x/FRANCIA"_s;
  QTest::newRow("country's own line") << u"1.1 Ana;4.1 *País:;4.2 !"_s << u"Ana"_s;
  QTest::newRow("several lines of a name") << u"1.1 A, B,\ny C;1.2 ;2.1 Mayor"_s << u"A, B,/y C/Mayor"_s;
  QTest::newRow("nothing") << u"1.1 ;2.1 "_s << u""_s;
}

void tst_label_text::Lines() {
  QFETCH(QString, parts);
  QTEST(documents::LabelLines(Parts(parts)).join(u'/'), "expected");
}

void tst_label_text::Places_data() {
  QTest::addColumn<int>("totals");
  QTest::addColumn<int>("first");
  QTest::addColumn<QString>("skipped");
  QTest::addColumn<int>("pieces");
  QTest::addColumn<QString>("places");
  QTest::addColumn<int>("sheets");
  const auto row = [](const char* name, int totals, int first, const QString& skipped, int pieces,
                      const QString& places,
                      int sheets) { QTest::newRow(name) << totals << first << skipped << pieces << places << sheets; };
  row("from the first", 3, 1, u""_s, 4, u"0.1 0.2 0.3 1.1"_s, 2);
  row("later", 4, 3, u""_s, 3, u"0.3 0.4 1.1"_s, 2);
  row("skipped on the first sheet only", 4, 1, u"2 4"_s, 4, u"0.1 0.3 1.1 1.2"_s, 2);
  row("exactly full", 3, 2, u""_s, 2, u"0.2 0.3"_s, 1);
  row("one label a sheet", 1, 1, u""_s, 2, u"0.1 1.1"_s, 2);
  row("nothing left", 3, 3, u"3"_s, 2, u"0.1 0.2"_s, 1);
  row("nobody", 3, 1, u""_s, 0, u""_s, 0);
}

void tst_label_text::Places() {
  QFETCH(int, totals);
  QFETCH(int, first);
  QFETCH(QString, skipped);
  QFETCH(int, pieces);
  documents::SheetStart start{.first = first, .skipped = {}};
  for (const QString& label : skipped.split(u' ', Qt::SkipEmptyParts)) {
    start.skipped.insert(label.toInt());
  }
  const documents::SheetPlaces where(SheetOf(totals, 1), start);
  QStringList places;
  for (int piece = 0; piece < pieces; ++piece) {
    places.append(u"%1.%2"_s.arg(where.Of(piece).sheet).arg(where.Of(piece).label));
  }
  QTEST(places.join(u' '), "places");
  QTEST(where.SheetsFor(pieces), "sheets");
}

/// Whatever is used or torn of a sheet: labels come in their order, each once, and none that is left out.
void tst_label_text::EveryStart() {
  for (int totals = 1; totals <= 40; ++totals) {
    for (int first = 1; first <= totals; ++first) {
      const documents::SheetStart start{.first = first, .skipped = {first + 1, first + 3, totals}};
      const documents::SheetPlaces where(SheetOf(totals, 1 + totals % 4), start);
      int last = 0;
      for (int piece = 0; piece < 2 * totals; ++piece) {
        const auto at = where.Of(piece);
        const int number = at.sheet * totals + at.label;
        QVERIFY(number > last && at.label <= totals);
        // A sheet with no label left is a new one.
        QVERIFY(at.sheet > 0 || first == totals || (at.label >= first && !start.skipped.contains(at.label)));
        last = number;
      }
      QCOMPARE(where.SheetsFor(2 * totals), where.Of(2 * totals - 1).sheet + 1);
    }
  }
}

void tst_label_text::Fits() {
  const documents::LabelPainter painter(SheetOf(24, 3), {.family = u"Liberation Sans"_s});
  QCOMPARE(painter.ScaleOf({u"D.ª Ana Pérez Gil"_s}).value_or(0), 1.0);
  const double wide = painter.ScaleOf({u"Parroquia de Nuestra Señora de los Remedios y San"_s}).value_or(0);
  QVERIFY2(wide > 0.7 && wide < 1, qPrintable(QString::number(wide)));
  QVERIFY(!painter.ScaleOf({QString(200, u'm')}));
  QVERIFY(painter.ScaleOf(QStringList(9, u"x"_s)).value_or(1) < 1);
  QVERIFY(!painter.ScaleOf(QStringList(14, u"x"_s)));
  // Small letters are not made much smaller.
  const documents::LabelPainter small(SheetOf(24, 3), {.family = u"Liberation Sans"_s, .points = 8});
  QVERIFY(small.ScaleOf(QStringList(12, u"x"_s)).value_or(1) < 1);
  QVERIFY(!small.ScaleOf(QStringList(14, u"x"_s)));
}

/// Measures of a page that a printer shifted and stretched, to a quarter of a millimetre: corrected, each cross is
/// where it should be within 0.3 mm.
void tst_label_text::CalibrationComesBack() {
  const QPointF scale(0.985, 1.012);
  const QPointF offset(-3.4, 4.1);
  const auto printed = [&](QPointF at) {
    return QPointF(scale.x() * at.x() + offset.x(), scale.y() * at.y() + offset.y());
  };
  const auto read = [](double length) { return QString::number(std::round(length * 4) / 4).replace(u'.', u','); };
  const QPointF first = printed(documents::firstCross);
  const QPointF last = printed(documents::firstCross + documents::crossDistance);
  const documents::CalibrationReading reading = documents::ReadCalibration(
      {read(first.x()), read(first.y()), read(last.x() - first.x()), read(last.y() - first.y())});
  QVERIFY2(reading.calibration, qPrintable(reading.refusal));
  constexpr double halfPoint = 25.4 / 144;
  for (const QPointF& cross : {documents::firstCross, documents::firstCross + documents::crossDistance}) {
    const QPointF sent = reading.calibration->Correction().map(cross / halfPoint) * halfPoint;
    const QPointF miss = printed(sent) - cross;
    QVERIFY2(std::abs(miss.x()) < 0.3 && std::abs(miss.y()) < 0.3, qPrintable(u"%1 %2"_s.arg(miss.x()).arg(miss.y())));
  }
}

void tst_label_text::MeasuresAreRefused_data() {
  QTest::addColumn<QStringList>("measures");
  QTest::addColumn<QString>("word");
  QTest::newRow("nothing") << QStringList{u""_s, u"20"_s, u"170"_s, u"250"_s} << u"no es una medida"_s;
  QTest::newRow("a letter") << QStringList{u"2O"_s, u"20"_s, u"170"_s, u"250"_s} << u"«2O»"_s;
  QTest::newRow("bare zero") << QStringList{u"0"_s, u"20"_s, u"170"_s, u"250"_s} << u"«0»"_s;
  QTest::newRow("ten times") << QStringList{u"20"_s, u"200"_s, u"170"_s, u"250"_s} << u"«200»"_s;
  QTest::newRow("swapped") << QStringList{u"169,5"_s, u"20"_s, u"20,25"_s, u"250"_s} << u"cambiadas"_s;
  QTest::newRow("too long") << QStringList{u"20"_s, u"20"_s, u"170"_s, u"265"_s} << u"«265»"_s;
  QTest::newRow("no distance") << QStringList{u"20"_s, u"20"_s, u"0"_s, u"250"_s} << u"«0»"_s;
}

void tst_label_text::MeasuresAreRefused() {
  QFETCH(QStringList, measures);
  QFETCH(QString, word);
  const documents::CalibrationReading reading =
      documents::ReadCalibration({measures[0], measures[1], measures[2], measures[3]});
  QVERIFY(!reading.calibration);
  QVERIFY2(reading.refusal.contains(word), qPrintable(reading.refusal));
}

KEL_TEST(tst_label_text);
#include "tst_label_text.moc"
