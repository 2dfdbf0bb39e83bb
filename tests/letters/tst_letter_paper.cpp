// Measures and printing: the page on the ground, the lines on the paper.

#include "LetterOffice.h"
#include "documents/rtf/Rtf.h"
#include "letters/editor/LetterPage.h"
#include "letters/editor/MarginText.h"
#include "letters/editor/PageGeometry.h"
#include "letters/editor/cRichTextJustify.h"
#include "paper/LetterPages.h"
#include "paper/Output.h"
#include "support/ErrorOf.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTextBlock>

using namespace Qt::StringLiterals;

using letters::cRichTextJustify;
using letters::Margins;
using letters::Page;
using letters::Twips;
using support::DialogUser;
using support::node;

namespace {

QString Prose(int paragraphs) {
  QString text;
  for (int i = 0; i < paragraphs; ++i) {
    text +=
        u"Le agradecemos de coraz\\'f3n {\\b su donativo} de [Importe del donativo] euros para la casa de acogida, "
        "que sigue abierta {\\i todos los d\\'edas} del a\\'f1o gracias a personas como usted (n\\'famero %1).\\par "_s
            .arg(i);
  }
  return u"{\\rtf1\\ansi{\\fonttbl{\\f0 DejaVu Serif;}}\\f0\\fs23\\qj "_s + text + u'}';
}

/// The lines of a document as they are laid out.
QStringList Lines(const QTextDocument& document) {
  QStringList lines;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    document.documentLayout()->blockBoundingRect(block);
    for (int i = 0; i < block.layout()->lineCount(); ++i) {
      const QTextLine line = block.layout()->lineAt(i);
      lines.append(block.text().mid(line.textStart(), line.textLength()).simplified());
    }
  }
  return lines;
}

QString TextOf(const QString& pdf) {
  QProcess reader;
  reader.start(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
  return reader.waitForFinished() ? QString::fromUtf8(reader.readAllStandardOutput()) : QString();
}

std::unique_ptr<QPrinter> PdfPrinter(const QString& file) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setPageSize(QPageSize(QPageSize::A4));
  printer->setOutputFormat(QPrinter::PdfFormat);
  printer->setOutputFileName(file);
  return printer;
}

/// The first page of the host's "carta.pdf", ten dots a millimetre.
QImage FirstPage(const LetterOffice& host) {
  QProcess::execute(u"pdftoppm"_s, {u"-r"_s, u"254"_s, u"-png"_s, u"-singlefile"_s, host.Path(u"carta.pdf"_s),
                                    host.Path(u"pagina"_s)});
  return QImage(host.Path(u"pagina.png"_s));
}

}  // namespace

class tst_letter_paper : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void PlacesThePage() {
    QCOMPARE(letters::PlacePage({}), (Page{.left = {1701}, .top = {1418}, .width = {8505}, .height = {15422}}));
    QCOMPARE(letters::PlacePage({.left = 12, .right = 12, .top = 0, .bottom = 40}), (Page{{6804}, {0}, {0}, {0}}));
    QCOMPARE(letters::TextWidth({.left = 1e300, .right = -1e300}).count, 11907);
    QCOMPARE(letters::WithLeftEdgeMoved({{1701}, {0}, {8505}, {1}}, {8000}), (Page{{2206}, {0}, {8000}, {1}}));
    QCOMPARE(letters::ScrollRange({8505}, {1701}, {11000}).count, 907);
    QCOMPARE(letters::ScrollRange({8505}, {1701}, {12000}).count, 0);
    QCOMPARE(letters::PlaceGround({12000}, {10000}, {900}), (letters::Ground{{910}, {11885}, {8390}}));
    QCOMPARE(letters::PlaceGround({100}, {500}, {0}), (letters::Ground{{10}, {0}, {0}}));
    QCOMPARE(letters::ScreenScale(96, 2.0).Pixels({1440}), 192);
    QCOMPARE(letters::ScreenScale(144).FromPixels(144).count, 1440);
  }

  void MarginsAsTyped_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");  // empty for a refusal
    for (const auto& [typed, stored] :
         std::initializer_list<std::pair<const char*, const char*>>{{"2.5", "2,5"},
                                                                    {"2,5", "2,5"},
                                                                    {" 2,50 ", "2,5"},
                                                                    {"-3", "-3"},
                                                                    {"2.", "2"},
                                                                    {".5", "0,5"},
                                                                    {"2,123456789", "2,123457"},
                                                                    {"1e20", "1E+20"},
                                                                    {"1e40", ""},
                                                                    {"abc", ""},
                                                                    {"", ""},
                                                                    {"1.234,5", ""}}) {
      QTest::newRow(typed) << QString::fromLatin1(typed) << QString::fromLatin1(stored);
    }
  }

  void MarginsAsTyped() {
    QFETCH(QString, typed);
    QTEST(letters::StoredMargin(typed).value_or(QString()), "stored");
  }

  void TabStops() {
    QTextEdit edit;
    edit.setPlainText(u"a\tb\nc\td"_s);
    letters::cRichTextJustify().Settabs(edit, {720, 1440}, 0, 0, 1);
    const QTextBlockFormat format = edit.document()->begin().blockFormat();
    QCOMPARE(format.tabPositions().size(), 2);
    QCOMPARE(format.tabPositions()[1].position, 96);
    QVERIFY(edit.document()->lastBlock().blockFormat().tabPositions().isEmpty());
    const auto set = [&](const QList<qint32>& stops) {
      return support::ErrorOf([&] { letters::cRichTextJustify().Settabs(edit, stops, 0, 0, 1); });
    };
    QCOMPARE(set({}), 9);
    QCOMPARE(set(QList<qint32>(32, 720)), 0);
    QCOMPARE(set(QList<qint32>(33, 720)), 9);
  }

  void LinesAreThoseOfThePaperAtAnyZoom() {
    const LetterOffice host;
    letters::LetterPage page(nullptr);
    page.Letter()->Load(Prose(20));
    page.Place({});
    const QStringList lines = Lines(*page.Letter()->document());
    QVERIFY(lines.size() > 40);
    paper::Print(paper::LetterPages(*page.Letter()->document(), {}), *PdfPrinter(host.Path(u"carta.pdf"_s)));
    QStringList printed;
    for (const QString& line : TextOf(host.Path(u"carta.pdf"_s)).split(QRegularExpression(u"[\n\f]"_s))) {
      if (!line.trimmed().isEmpty()) {
        printed.append(line.simplified());
      }
    }
    QCOMPARE(printed, lines);
    const QString content = page.Letter()->Content();
    for (const int steps : {-3, 5, 8}) {
      page.ZoomBy(steps);
      QCOMPARE(Lines(*page.Letter()->document()), lines);
    }
    QCOMPARE(page.Letter()->Content(), content);
  }

  void PrintsThroughTheDialog() {
    LetterOffice host;
    const int id = host.AddLetter(u"Carta"_s, Prose(40));
    const QString file = host.Path(u"carta.pdf"_s);
    const auto print = [&](const DialogUser& dialog, bool offersSelection) {
      auto* printing = static_cast<QPrintDialog*>(dialog.Dialog());
      QCOMPARE(printing->testOption(QAbstractPrintDialog::PrintSelection), offersSelection);
      QVERIFY(!printing->testOption(QAbstractPrintDialog::PrintPageRange));
      printing->printer()->setOutputFormat(QPrinter::PdfFormat);
      printing->printer()->setOutputFileName(file);
      printing->setPrintRange(offersSelection ? QAbstractPrintDialog::Selection : QAbstractPrintDialog::AllPages);
      printing->done(QDialog::Accepted);
    };
    QStringList printed;
    host.driver.On("frmCartaModelo", [&](const DialogUser& dialog) {
      dialog.Press("tlbEstandar_imprimir");
      printed.append(TextOf(file));
      Letter(dialog)->moveCursor(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
      Do(dialog, "mnuArchivoImprimir");
      printed.append(TextOf(file));
      Do(dialog, "mnuArchivoImprimir");
      dialog.Close();
    });
    host.driver.On("dlgCarta", [&](const DialogUser& dialog) { print(dialog, false); });
    host.driver.On("dlgCarta", [&](const DialogUser& dialog) { print(dialog, true); });
    host.driver.On("dlgCarta", [&](const DialogUser& dialog) { dialog.Dialog()->reject(); });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), support::action.Modificar(), id));
    QVERIFY(printed[0].contains(u"número 39"_s));
    QVERIFY(printed[0].count(u'\f') > 1);
    QCOMPARE(printed[1].simplified(), u"Le"_s);
  }

  void PrintsPicturesAndPageBreaks() {
    const LetterOffice host;
    QImage red(20, 20, QImage::Format_RGB32);
    red.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    red.save(&buffer, "PNG");
    letters::LetterEdit letter;
    letter.Load(u"{\\rtf1 uno\\par{\\pict\\pngblip\\picwgoal567\\pichgoal567 %1}\\par\\page dos}"_s.arg(
        QString::fromLatin1(png.toHex())));
    const QString file = host.Path(u"carta.pdf"_s);
    paper::Print(paper::LetterPages(*letter.document(), {}), *PdfPrinter(file));
    QCOMPARE(TextOf(file).simplified(), u"uno dos"_s);
    QCOMPARE(TextOf(file).count(u'\f'), 2);
    QRect picture;
    const QImage page = FirstPage(host);
    for (int y = 0; y < page.height(); ++y) {
      for (int x = 0; x < page.width(); ++x) {
        if (page.pixelColor(x, y) == QColor(Qt::red)) {
          picture |= QRect(x, y, 1, 1);
        }
      }
    }
    // A centimetre is 100 dots.
    QVERIFY2(qAbs(picture.width() - 100) <= 2 && qAbs(picture.left() - 300) <= 2, QByteArray::number(picture.width()));
  }

  // Measured on the printed page itself: its dark dots.
  void TheMarginsOfThePaper() {
    LetterOffice host;
    QTextDocument letter;
    rtf::Read(Prose(40), letter);
    const Margins margins{.left = 4, .right = 2.2, .top = 1.7, .bottom = 3.1};
    paper::Print(paper::LetterPages(letter, margins), *PdfPrinter(host.Path(u"carta.pdf"_s)));
    const QImage page = FirstPage(host);
    QRect ink;
    for (int y = 0; y < page.height(); ++y) {
      for (int x = 0; x < page.width(); ++x) {
        if (qGray(page.pixel(x, y)) < 128) {
          ink |= QRect(x, y, 1, 1);
        }
      }
    }
    // Ten dots are a millimetre; two are asked for, the side bearings of letters come on top.
    const auto near = [](int dots, double centimetres) { return qAbs(dots - centimetres * 100) <= 4; };
    QVERIFY2(near(ink.left(), 4), QByteArray::number(ink.left()));
    QVERIFY2(near(ink.right(), 21 - 2.2), QByteArray::number(ink.right()));
    QVERIFY2(ink.top() >= 170 && ink.top() < 190, QByteArray::number(ink.top()));
    QVERIFY2(ink.bottom() <= 2970 - 310 && ink.bottom() > 2970 - 310 - 60, QByteArray::number(ink.bottom()));
  }
};

KEL_TEST(tst_letter_paper);
#include "tst_letter_paper.moc"
