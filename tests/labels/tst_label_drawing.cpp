#include "framework/HostServices.h"
#include "labels/BarGeometry.h"
#include "labels/LabelPreview.h"
#include "labels/SheetPicture.h"
#include "labels/ShownSheet.h"
#include "labels/cDibujar.h"
#include "support/TestHost.h"
#include "support/TestProgram.h"

#include <QMessageBox>
#include <QPainter>
#include <QTest>

using namespace framework;
using namespace Qt::StringLiterals;

using namespace labels;

using documents::Micrometres;
using documents::Sheet;

namespace {

constexpr QRect area(100, 200, 2500, 1000);
const BarGrid fiveByFive{.left = 100, .top = 200, .right = 2600, .bottom = 1200, .rows = 5, .columns = 5};

bool Shows(const QImage& image, const QColor& colour) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) == colour) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

class tst_label_drawing : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void Bars_data() {
    QTest::addColumn<BarGrid>("grid");
    QTest::addColumn<BarCell>("cell");
    QTest::addColumn<Bar>("bar");
    QTest::newRow("first cell, half") << fiveByFive << BarCell{0, 0, 50, 50} << Bar{225, 250, 475, 350};
    QTest::newRow("last cell, half") << fiveByFive << BarCell{4, 4, 50, 50} << Bar{2225, 1050, 2475, 1150};
    QTest::newRow("whole cell") << fiveByFive << BarCell{1, 2, 100, 100} << Bar{1100, 400, 1600, 600};
    QTest::newRow("no width") << fiveByFive << BarCell{0, 0, 0, 100} << Bar{350, 200, 350, 400};
    QTest::newRow("below the area") << fiveByFive << BarCell{5, 0, 100, 100} << Bar{100, 1200, 600, 1400};
    QTest::newRow("above and left of it") << fiveByFive << BarCell{-1, -2, 100, 100} << Bar{-900, 0, -400, 200};
    // Cells of 2,5 are 2 wide, of 3,5 are 4 high; a reach of 1,5 is 2.
    QTest::newRow("halves to even") << BarGrid{0, 0, 5, 7, 2, 2} << BarCell{1, 1, 50, 50} << Bar{2, 5, 4, 7};
    QTest::newRow("cells far away") << BarGrid{0, 0, 2000000000, 2000000000, 1, 1} << BarCell{-2000000000, 0, 100, 100}
                                    << Bar{0, -4000000000000000000, 2000000000, -3999999998000000000};
  }
  void Bars() {
    QFETCH(BarGrid, grid);
    QFETCH(BarCell, cell);
    QFETCH(Bar, bar);
    QVERIFY(BarIn(grid, cell) == bar);
  }

  void PropertiesKeepTheirBounds() {
    QImage image(10, 10, QImage::Format_RGB32);
    QPainter painter(&image);
    labels::cDibujar drawing;
    drawing.Init_Class(painter, area);
    QCOMPARE(drawing.Fila(), 1);
    QCOMPARE(drawing.PorcentajeAnchoLinea(), quint8(80));
    QCOMPARE(drawing.PorcentajeAltoLinea(), quint8(10));
    drawing.TotalFilas(0);
    drawing.TotalColumnas(-3);
    QCOMPARE(drawing.TotalFilas(), 1);
    QCOMPARE(drawing.TotalColumnas(), 1);
    drawing.TotalFilas(5);
    drawing.TotalColumnas(4);
    for (const auto& [value, row, column] : {std::tuple{3, 3, 3}, {5, 5, 4}, {6, 5, 4}, {-7, -7, -7}}) {
      drawing.Fila(value);
      drawing.Columna(value);
      QCOMPARE(drawing.Fila(), row);
      QCOMPARE(drawing.Columna(), column);
    }
    drawing.PorcentajeAnchoLinea(200);
    drawing.PorcentajeAltoLinea(255);
    QCOMPARE(drawing.PorcentajeAnchoLinea(), quint8(100));
    QCOMPARE(drawing.PorcentajeAltoLinea(), quint8(100));
  }

  // A whole cell is filled, and the area is the one of the first call.
  void DrawsWhereItWasFirstTold() {
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
      QPainter painter(&image);
      labels::cDibujar drawing;
      drawing.Init_Class(painter, QRect(10, 20, 40, 40));
      drawing.Init_Class(painter, QRect(0, 0, 1000, 1000));
      drawing.TotalFilas(2);
      drawing.TotalColumnas(2);
      drawing.PorcentajeAnchoLinea(100);
      drawing.PorcentajeAltoLinea(100);
      drawing.Fila(0);
      drawing.Columna(1);
      drawing.Color(255);
      drawing.DibujarLinea();
      drawing.Fila(1);
      drawing.Color(0x123456);
      drawing.DibujarLinea();
    }
    QCOMPARE(image.pixelColor(30, 20), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(49, 39), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(29, 20), QColor(Qt::white));
    QCOMPARE(image.pixelColor(30, 40), QColor(0x56, 0x34, 0x12));
  }

  void WithoutASurfaceItSaysSo() {
    support::TestHost host;
    objApi() = HostServices(&host.services());
    host.driver.Answer(QMessageBox::Ok);
    labels::cDibujar().DibujarLinea();
    QCOMPARE(host.driver.Boxes(), QStringList(u"Prueba|aviso|La clase no ha sido inicializada"_s));
    QCOMPARE(host.driver.TakeProblems(), QStringList());
    QCOMPARE(host.desktop.beeps, 1);
  }

  // The preview is a paper in any theme: the selected entry red, the others black, the deleted ones not at all.
  void PreviewInADarkTheme() {
    FieldCollection entries;
    for (const int id : {1, 2, 3}) {
      auto entry = std::make_shared<labels::cCampo>();
      entry->IDElemento = id;
      entry->Linea = quint8(id);
      entry->Orden = 1;
      entry->Estado = id == 3 ? 3 : 0;
      entries.Add(entry, QString::number(id));
    }
    LabelPreview preview;
    preview.setPalette(QPalette(Qt::black));
    preview.resize(500, 200);
    preview.Show(&entries);
    preview.Redraw(2);
    const QImage image = preview.grab().toImage();
    QCOMPARE(image.pixelColor(50, 20), QColor(Qt::black));
    QCOMPARE(image.pixelColor(50, 60), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(50, 100), QColor(Qt::white));
    // An entry that a sheet has beyond the grid disturbs nothing.
    entries.begin()->field->Linea = 200;
    QVERIFY(!Shows(preview.grab().toImage().copy(5, 5, 490, 36), Qt::black));
  }

  // Totals, labels per row, width, height, gaps, left and top offset.
  void SheetsThatFit_data() {
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("words");
    const QString fits = u"La hoja cabe en un A4."_s;
    const QString tooMuch = u"La hoja no cabe en un A4: a lo "_s;
    const QString incomplete = u"La hoja se dibuja cuando están todas las medidas."_s;
    QTest::newRow("exactly") << u"30 3 7 2,97 0 0 0 0"_s << fits;
    QTest::newRow("with gaps and offsets") << u"8 2 9 6,5 0,5 0,4 1,2 1,3"_s << fits;
    QTest::newRow("fewer labels than a row holds") << u"2 4 7 3 0 0 0 0"_s << fits;
    QTest::newRow("four of 7 cm") << u"40 4 7 2,9 0 0 0 0"_s << tooMuch + u"ancho hacen falta 28 cm y hay 21 cm."_s;
    QTest::newRow("a gap too much") << u"30 3 7 2,97 0,1 0 0 0"_s
                                    << tooMuch + u"ancho hacen falta 21,2 cm y hay 21 cm."_s;
    QTest::newRow("too high") << u"10 1 6 3 0 0 0 0"_s << tooMuch + u"alto hacen falta 30 cm y hay 29,7 cm."_s;
    QTest::newRow("both ways") << u"5 2 20 10 0 0 1 0"_s
                               << tooMuch +
                                      u"ancho hacen falta 41 cm y hay 21 cm; "
                                      "a lo alto hacen falta 30 cm y hay 29,7 cm."_s;
    QTest::newRow("a measure missing") << u"30 3 7 2  0 0 0"_s << incomplete;
    QTest::newRow("no labels") << u"0 0 7 2 0 0 0 0"_s << incomplete;
    QTest::newRow("no number") << u"30 3 5,,5 2 0 0 0 0"_s << incomplete;
  }
  void SheetsThatFit() {
    QFETCH(QString, sheet);
    SheetBoxTexts texts;
    std::ranges::copy(sheet.split(u' '), texts.begin());
    QTEST(FitText(ReadSheet(texts), documents::UsualPaper()), "words");
  }

  void LabelsOnTheirSheet() {
    const Sheet sheet{5, 2, 70000, 30000, 5000, 4000, 10000, 13000};
    const std::vector<QRectF> labels = LabelRectangles(sheet);
    QCOMPARE(labels.size(), std::size_t(5));
    QCOMPARE(labels[0], QRectF(10000, 13000, 70000, 30000));
    QCOMPARE(labels[1], QRectF(85000, 13000, 70000, 30000));
    QCOMPARE(labels[4], QRectF(10000, 81000, 70000, 30000));
    QCOMPARE(UsedWidth(sheet), Micrometres(155000));
    QCOMPARE(UsedHeight(sheet), Micrometres(111000));
  }

  // The picture shows what is too much in another colour, and holds at any scale.
  void PictureOfASheet() {
    SheetPicture picture;
    picture.resize(212, 299);
    picture.Show(Sheet{4, 2, 70000, 50000});
    QImage image = picture.grab().toImage();
    const QColor inside = image.pixelColor(35, 25);
    QCOMPARE(image.pixelColor(180, 25), QColor(Qt::white));
    QCOMPARE(image.pixelColor(35, 150), QColor(Qt::white));
    picture.Show(Sheet{4, 4, 70000, 50000});
    image = picture.grab().toImage();
    QCOMPARE(image.pixelColor(35, 15), inside);
    QVERIFY(image.pixelColor(175, 15) != inside);
  }
};

KEL_TEST(tst_label_drawing);
#include "tst_label_drawing.moc"
