#include "host/mailing/printing/CalibrationPage.h"
#include "host/mailing/printing/CalibrationRecords.h"
#include "host/mailing/printing/PrintQueues.h"
#include "host/mailing/printing/Printing.h"
#include "host_mailing/PdfWords.h"
#include "platform/automation/Error.h"
#include "support/TestDatabase.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QImage>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

using documents::Calibration;
using support::OutputOf;

namespace {

/// Parts with that many pages each, which say part and page: "2.1".
class Numbered : public host::PrintedWork {
 public:
  explicit Numbered(const QList<int>& pages) : m_pages(pages) {}
  QString Title() const override { return u"Números"_s; }
  int Count() const override { return static_cast<int>(m_pages.size()); }
  QString NameOf(int part) const override { return QString::number(part); }
  void Paint(int part, host::PaintedPages& pages) const override {
    for (int page = 1; page <= m_pages[part]; ++page) {
      QPainter& painter = pages.Next();
      painter.setFont(QFont(u"Liberation Sans"_s, 20));
      painter.drawText(100, 100, u"%1.%2"_s.arg(part + 1).arg(page));
    }
  }

 private:
  QList<int> m_pages;
};

constexpr double dotsPerMillimetre = 10;

/// Where lines cross near the place, in millimetres: the middle of what is dark in a row and a column through the
/// cross's arms.
QPointF CrossNear(const QImage& page, QPointF place) {
  constexpr double beside = 4;
  constexpr double reach = 5;
  const auto middle = [](auto&& darkness, double around) {
    double sum = 0;
    double all = 0;
    for (int i = qRound((around - reach) * dotsPerMillimetre); i < qRound((around + reach) * dotsPerMillimetre); ++i) {
      sum += darkness(i) * (i + 0.5);
      all += darkness(i);
    }
    return sum / all / dotsPerMillimetre;
  };
  const auto darknessAt = [&](int x, int y) { return 1 - qGray(page.pixel(x, y)) / 255.0; };
  const int row = qRound((place.y() + beside) * dotsPerMillimetre);
  const int column = qRound((place.x() + beside) * dotsPerMillimetre);
  return {middle([&](int x) { return darknessAt(x, row); }, place.x()),
          middle([&](int y) { return darknessAt(column, y); }, place.y())};
}

}  // namespace

/// What goes to a printer, looked at by other programs.
class tst_printing : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Pages_data();
  void Pages();
  void ACalibrationComesBack_data();
  void ACalibrationComesBack();
  void CalibrationsAreKept();
  void APrinterThatIsNotThere();

 private:
  QString Painted(const host::PrintedWork& work, const host::PrintWish& wish) {
    const QString pdf = m_database.Path(u"impresora.pdf"_s);
    QFile file(pdf);
    [&] { QVERIFY(file.open(QFile::WriteOnly)); }();
    host::PaintForPrinter(work, wish, file, m_control);
    return pdf;
  }

  support::TestDatabase m_database;
  host::RunControl m_control;
};

void tst_printing::Pages_data() {
  QTest::addColumn<int>("first");
  QTest::addColumn<int>("last");
  QTest::addColumn<bool>("bothSides");
  QTest::addColumn<QString>("expected");
  QTest::newRow("all") << 1 << 0 << false << u"1.1|2.1|2.2|2.3|3.1|3.2"_s;
  QTest::newRow("every letter begins a sheet") << 1 << 0 << true << u"1.1||2.1|2.2|2.3||3.1|3.2"_s;
  QTest::newRow("some") << 2 << 5 << false << u"2.1|2.2|2.3|3.1"_s;
  QTest::newRow("from one on") << 6 << 0 << false << u"3.2"_s;
  QTest::newRow("some on both sides") << 3 << 5 << true << u"2.2|2.3|3.1"_s;
  QTest::newRow("more than there are") << 5 << 99 << true << u"3.1|3.2"_s;
  QTest::newRow("none") << 7 << 9 << false << u"No hay página 7: el envío tiene 6."_s;
}

void tst_printing::Pages() {
  QFETCH(int, first);
  QFETCH(int, last);
  QFETCH(bool, bothSides);
  QString found;
  try {
    const QString pdf = Painted(Numbered({1, 3, 2}), {.queue = {},
                                                      .tray = {},
                                                      .bothSides = bothSides,
                                                      .pages = {.first = first, .last = last},
                                                      .copies = 1,
                                                      .calibration = {}});
    QStringList pages = OutputOf(u"pdftotext"_s, {pdf, u"-"_s}).split(u'\f');
    pages.removeLast();
    for (QString& page : pages) {
      page = page.trimmed();
    }
    found = pages.join(u'|');
  } catch (const automation::Error& error) {
    found = error.Description();
  }
  QTEST(found, "expected");
}

void tst_printing::ACalibrationComesBack_data() {
  QTest::addColumn<Calibration>("printer");
  QTest::newRow("as it should be") << Calibration{};
  QTest::newRow("shifted") << Calibration{.offset = {6.2, -1.6}, .scale = {1, 1}};
  QTest::newRow("shrunk and shifted") << Calibration{.offset = {-2.3, 3.1}, .scale = {0.97, 1.02}};
}

/// The page is printed, measured with a ruler, and printed again: crosses stand where they should.
void tst_printing::ACalibrationComesBack() {
  QFETCH(Calibration, printer);
  const auto printed = [&](QPointF at) {
    return QPointF(at.x() * printer.scale.x(), at.y() * printer.scale.y()) + printer.offset;
  };
  const auto print = [&](const Calibration& calibration) {
    const QString pdf =
        Painted(host::CalibrationPage(u"Oficina-2"_s),
                {.queue = {}, .tray = {}, .bothSides = false, .pages = {}, .copies = 1, .calibration = calibration});
    OutputOf(u"pdftoppm"_s, {u"-r"_s, u"254"_s, u"-gray"_s, u"-png"_s, u"-singlefile"_s, pdf, pdf});
    const QImage page(pdf + u".png"_s);
    QImage paper(page.size(), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(printer.offset * dotsPerMillimetre);
    painter.scale(printer.scale.x(), printer.scale.y());
    painter.drawImage(0, 0, page);
    return paper;
  };
  // A ruler is read to a quarter of a millimetre.
  const auto read = [](double length) { return QString::number(std::round(length * 4) / 4).replace(u'.', u','); };
  const QImage first = print({});
  const QPointF corner = CrossNear(first, printed({20, 20}));
  const documents::CalibrationReading reading =
      documents::ReadCalibration({.left = read(corner.x()),
                                  .top = read(corner.y()),
                                  .right = read(CrossNear(first, printed({190, 20})).x() - corner.x()),
                                  .down = read(CrossNear(first, printed({20, 270})).y() - corner.y())});
  QVERIFY2(reading.calibration, qPrintable(reading.refusal));
  const QImage second = print(*reading.calibration);
  for (const QPointF wanted : {QPointF(20, 20), QPointF(190, 270)}) {
    const QPointF miss = CrossNear(second, wanted) - wanted;
    QVERIFY2(std::abs(miss.x()) < 0.3 && std::abs(miss.y()) < 0.3, qPrintable(u"%1 %2"_s.arg(miss.x()).arg(miss.y())));
  }
}

void tst_printing::CalibrationsAreKept() {
  adodb::Connection& connection = m_database.Connection();
  const host::PrinterTray tray{.printer = u"Oficina '2'"_s, .tray = u"tray-1"_s};
  QVERIFY(!host::FindCalibration(connection, tray));
  host::KeepCalibration(connection, tray, {.offset = {1, 1}, .scale = {1, 1}}, u"ana"_s);
  host::KeepCalibration(connection, tray, {.offset = {-1.2345, 0.5}, .scale = {0.997655, 1.01}}, u"luis"_s);
  QVERIFY(!host::FindCalibration(connection, {.printer = tray.printer, .tray = {}}));
  const auto kept = host::FindCalibration(connection, tray);
  QVERIFY(kept);
  QCOMPARE(kept->calibration.offset, QPointF(-1.2345, 0.5));
  QCOMPARE(kept->calibration.scale, QPointF(0.997655, 1.01));
  QCOMPARE(kept->user, u"luis"_s);
  QCOMPARE(kept->date, QDate::currentDate().toString(u"dd/MM/yyyy"_s));
  m_database.Execute(u"UPDATE ImpresorasCalibracion SET EscalaY=0");
  QVERIFY_THROWS_EXCEPTION(automation::Error, host::FindCalibration(connection, tray));
  host::DropCalibration(connection, tray);
  QVERIFY(!host::FindCalibration(connection, tray));
}

void tst_printing::APrinterThatIsNotThere() {
  try {
    host::Print(Numbered({1}),
                {.queue = u"No existe"_s, .tray = {}, .bothSides = false, .pages = {}, .copies = 1, .calibration = {}},
                m_control);
    QFAIL("printed");
  } catch (const automation::Error& error) {
    QVERIFY2(error.Description().contains(u"«No existe»"_s), qPrintable(error.Description()));
  }
}

KEL_TEST(tst_printing);
#include "tst_printing.moc"
