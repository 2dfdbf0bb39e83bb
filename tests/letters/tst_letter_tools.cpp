// What the editor has beyond its oldest menus: formats, fields, pictures, replacing, pages before and on paper.

#include "LetterOffice.h"
#include "documents/rtf/Rtf.h"
#include "letters/editor/Formatting.h"
#include "letters/editor/LetterPage.h"
#include "paper/LetterPages.h"
#include "paper/Output.h"
#include "paper/PageView.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QTextBlock>
#include <QTextList>
#include <QTimer>

#include <sys/resource.h>

#include <csignal>
#include <functional>

using namespace Qt::StringLiterals;

using letters::Attribute;
using letters::LetterEdit;
using letters::ListKind;
using support::action;
using support::DialogUser;
using support::node;

namespace {

/// Opens a letter, does something with it, and closes it without saving.
void WithALetter(LetterOffice& host, const QString& content, const std::function<void(const DialogUser&)>& script) {
  const int id = host.AddLetter(u"Carta"_s, content);
  host.driver.On("frmCartaModelo", [script](const DialogUser& dialog) {
    script(dialog);
    dialog.Close();
  });
  host.driver.Answer(QMessageBox::No);
  EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Modificar(), id));
}

void Select(LetterEdit& letter, int start, int end) {
  QTextCursor cursor(letter.document());
  cursor.setPosition(start);
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  letter.setTextCursor(cursor);
}

/// Presses a key where the keyboard is.
void Key(const DialogUser& dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  dialog.Keys("rtfCarta", {});
  QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void ChooseFile(const DialogUser& dialog, const QString& file) {
  dialog.Find<QLineEdit>("fileNameEdit")->setText(file);
  dialog.Dialog()->accept();
}

QImage Picture(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::red);
  return image;
}

QByteArray Encoded(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, format);
  return bytes;
}

/// Rows with dark dots, from each blank one to the next: how high the lines' letters are.
QList<int> HeightsOf(const QTextDocument& letter) {
  const paper::LetterPages pages(letter, {});
  QImage image(1191, 1684, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  pages.Paint(painter, 0);
  painter.end();
  QList<int> heights;
  int height = 0;
  for (int y = 0; y < image.height(); ++y) {
    bool isDark = false;
    for (int x = 0; x < image.width() && !isDark; ++x) {
      isDark = qGray(image.pixel(x, y)) < 128;
    }
    if (!isDark && height > 0) {
      heights.append(height);
    }
    height = isDark ? height + 1 : 0;
  }
  return heights;
}

/// While it lives, files of this program grow to a kilobyte and no more, as on a full disk.
class NoRoom {
 public:
  NoRoom() : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_usual);
    const rlimit least{.rlim_cur = 1024, .rlim_max = m_usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &least);
  }
  NoRoom(const NoRoom&) = delete;
  NoRoom& operator=(const NoRoom&) = delete;
  ~NoRoom() {
    setrlimit(RLIMIT_FSIZE, &m_usual);
    std::signal(SIGXFSZ, m_handler);
  }

 private:
  rlimit m_usual{};
  void (*m_handler)(int);
};

QString TextOf(const QString& pdf) {
  QProcess reader;
  reader.start(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
  return reader.waitForFinished() ? QString::fromUtf8(reader.readAllStandardOutput()) : QString();
}

}  // namespace

class tst_letter_tools : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void TheBarsShowTheCaretFromTheFirstShowing() {
    LetterOffice host;
    WithALetter(host, u"{\\rtf1{\\fonttbl{\\f0 DejaVu Sans;}}\\f0\\fs28\\b\\strike\\qc uno\\par}"_s,
                [](const DialogUser& dialog) {
                  QCOMPARE(dialog.Text("cboFuentes"), u"DejaVu Sans"_s);
                  QCOMPARE(dialog.Text("cboTamaño"), u"14"_s);
                  for (const char* button : {"tlbFormato_negrita", "tlbEstandar_tachado", "tlbFormato_center"}) {
                    QVERIFY2(IsPressed(dialog, button), button);
                  }
                  QVERIFY(dialog.Find<QAction>("mnuFormatoTachado")->isChecked());
                  // What is typed after Return in the size box is the letter's.
                  auto* size = dialog.Find<QComboBox>("cboTamaño");
                  size->setFocus();
                  size->lineEdit()->setText(u"20"_s);
                  QTest::keyClick(size->lineEdit(), Qt::Key_Return);
                  QCOMPARE(dialog.Focused(), u"rtfCarta"_s);
                  QTest::keyClicks(Letter(dialog), u"x"_s);
                  QCOMPARE(Letter(dialog)->textCursor().charFormat().fontPointSize(), 20);
                });
  }

  void KeysOfAlignmentsAndRedo() {
    LetterOffice host;
    WithALetter(host, u"{\\rtf1 uno dos}"_s, [](const DialogUser& dialog) {
      QString pressed;
      for (const auto& [key, button] : std::initializer_list<std::pair<Qt::Key, const char*>>{
               {Qt::Key_E, "center"}, {Qt::Key_R, "right"}, {Qt::Key_L, "left"}, {Qt::Key_J, "Justify"}}) {
        Key(dialog, key, Qt::ControlModifier);
        pressed += IsPressed(dialog, QByteArray("tlbFormato_").append(button)) ? u'+' : u'-';
      }
      QCOMPARE(pressed, u"++++"_s);
      dialog.Keys("rtfCarta", u"x"_s);
      Do(dialog, "mnuEdicionDeshacer");
      dialog.Press("tlbEstandar_rehacer");
      QCOMPARE(Letter(dialog)->toPlainText(), u"xuno dos"_s);
    });
  }

  // What each attribute becomes in a letter, and that it goes away again.
  void Attributes_data() {
    QTest::addColumn<int>("attribute");
    QTest::addColumn<QByteArray>("word");
    QTest::newRow("strike-out") << int(Attribute::StrikeOut) << QByteArray("\\strike");
    QTest::newRow("raised") << int(Attribute::Raised) << QByteArray("\\super");
    QTest::newRow("lowered") << int(Attribute::Lowered) << QByteArray("\\sub");
    QTest::newRow("highlight") << int(Attribute::Highlight) << QByteArray("\\highlight");
  }

  void Attributes() {
    QFETCH(int, attribute);
    QFETCH(QByteArray, word);
    LetterEdit letter;
    const QString content = u"{\\rtf1 uno dos\\par}"_s;
    letter.Load(content);
    Select(letter, 0, 3);
    QVERIFY(letters::Toggle(letter, Attribute(attribute)));
    QVERIFY(letters::Has(letter, Attribute(attribute)));
    QVERIFY2(letter.Content().contains(QLatin1String(word)), qPrintable(letter.Content()));
    QVERIFY(!letters::Toggle(letter, Attribute(attribute)));
    QVERIFY2(!letter.Content().contains(QLatin1String(word + " ")), qPrintable(letter.Content()));
    letter.undo();
    letter.undo();
    QCOMPARE(letter.Content(), content);
  }

  void Numbers_data() {
    QTest::addColumn<QString>("steps");  // "12" selects from the start of one paragraph to that of another.
    QTest::addColumn<QString>("numbers");
    const auto row = [](const char* name, const QString& steps, const QString& numbers) {
      QTest::newRow(name) << steps << numbers;
    };
    row("go on from the list above", u"00n11n"_s, u"1. 2. - -"_s);
    row("of bullets by one press", u"02n22bn"_s, u"1. 2. 3. -"_s);
    row("gone by a press", u"04n22bnn"_s, u"1. 2. - 3."_s);
    row("the first of the list below", u"04n00nn"_s, u"1. 2. 3. 4."_s);
    row("the next paragraph's start", u"01n"_s, u"1. - - -"_s);
    row("an item moved", u"04n12x22v"_s, u"1. 2. 3. 4."_s);
    row("an item moved to the top", u"04n23x00v"_s, u"1. 2. 3. 4."_s);
    row("a paragraph between", u"04n11n"_s, u"1. - 2. 3."_s);
    row("nothing between two lists", u"02n33n23x"_s, u"1. 2. 1."_s);
  }

  /// What shows is what is stored.
  void Numbers() {
    QFETCH(QString, steps);
    QFETCH(QString, numbers);
    LetterEdit letter;
    const QString content = u"{\\rtf1 a\\par b\\par c\\par d\\par}"_s;
    letter.Load(content);
    for (qsizetype i = 0; i < steps.size(); ++i) {
      const int last = letter.document()->characterCount() - 1;
      switch (steps[i].unicode()) {
        case u'n':
        case u'b':
          letters::ToggleList(letter, steps[i] == u'n' ? ListKind::Numbers : ListKind::Bullets);
          break;
        case u'x':
          letter.cut();
          break;
        case u'v':
          letter.paste();
          break;
        default:
          Select(letter, 2 * steps[i].digitValue(), std::min(last, 2 * steps[i + 1].digitValue()));
          ++i;
      }
    }
    const auto shown = [](const QTextDocument& document) {
      QStringList texts;
      for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const bool isIndented = block.blockFormat().leftMargin() > 0;
        texts.append(block.textList() != nullptr && isIndented ? block.textList()->itemText(block)
                     : isIndented                              ? u"indented"_s
                                                               : u"-"_s);
      }
      return texts.join(u' ');
    };
    QCOMPARE(shown(*letter.document()), numbers);
    QTextDocument stored;
    rtf::Read(letter.Content(), stored);
    QCOMPARE(shown(stored), numbers);
    while (letter.document()->isUndoAvailable()) {
      letter.undo();
    }
    QCOMPARE(letter.Content(), content);
  }

  void SpacingOfSelectedParagraphs() {
    LetterOffice host;
    host.driver.On("dlgCarta", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Find<QDoubleSpinBox>("spnAnterior")->value(), 3);
      dialog.Choose("cboInterlineado", u"1,5 líneas"_s);
      dialog.Find<QDoubleSpinBox>("spnAnterior")->setValue(12);
      dialog.Dialog()->accept();
    });
    host.driver.On("dlgCarta", [](const DialogUser& dialog) { dialog.Dialog()->reject(); });
    WithALetter(host, u"{\\rtf1\\sb60 a\\par\\sa40 b\\par\\pard\\sl-300 c\\par}"_s, [](const DialogUser& dialog) {
      LetterEdit& letter = *Letter(dialog);
      Select(letter, 0, 3);
      Do(dialog, "mnuFormatoParrafo");
      const QString content = letter.Content();
      QCOMPARE(content.count(u"\\sb240"_s), 2);
      QCOMPARE(content.count(u"\\sl360\\slmult1"_s), 2);
      // What the dialog didn't change stays with each paragraph.
      QCOMPARE(content.count(u"\\sa40"_s), 1);
      QCOMPARE(content.count(u"\\sl-300"_s), 1);
      Do(dialog, "mnuFormatoParrafo");
      QCOMPARE(letter.Content(), content);
    });
  }

  void FieldsAreFoundByTyping() {
    LetterOffice host;
    WithALetter(host, u"{\\rtf1 a\\par}"_s, [](const DialogUser& dialog) {
      auto* words = dialog.Find<QLineEdit>("txtCampo");
      auto* fields = dialog.Find<QListWidget>("lisCampos");
      dialog.Press("tlbEstandar_campos");
      QVERIFY(words->isVisible());
      QTest::keyClicks(words, u"direccion"_s);
      QCOMPARE(fields->currentItem()->text(), u"Datos personales: Dirección"_s);
      QTest::keyClick(words, Qt::Key_Return);
      QVERIFY(!words->isVisible());
      QCOMPARE(Letter(dialog)->toPlainText(), u"[Direccion]a"_s);
      // What an installation has not is not offered; the arrows skip what doesn't fit.
      Do(dialog, "mnuInsertarCampo");
      QTest::keyClicks(words, u"suscripcion"_s);
      QCOMPARE(fields->currentItem(), nullptr);
      words->setText(u"fecha personales"_s);
      QTest::keyClick(words, Qt::Key_Return);
      QVERIFY(words->isVisible());
      words->setText(u"nomb"_s);
      QTest::keyClick(words, Qt::Key_Down);
      QCOMPARE(fields->currentItem()->text(), u"Datos personales: Nombre y apellidos"_s);
      QTest::keyClick(words, Qt::Key_Escape);
      QVERIFY(!words->isVisible());
      Letter(dialog)->undo();
      QCOMPARE(Letter(dialog)->toPlainText(), u"a"_s);
    });
  }

  void Replaces() {
    LetterOffice host;
    host.driver.On("dlgCarta", [](const DialogUser& dialog) {
      QCOMPARE(dialog.Text("txtBuscar"), u"Casa"_s);
      QCOMPARE(dialog.Text("lblVeces"), u"Está 3 veces en la carta."_s);
      dialog.Type("txtReemplazo", u"casaca"_s);
      dialog.Press("cmdReemplazar");
      QCOMPARE(dialog.Text("lblVeces"), u"Está 3 veces en la carta."_s);
      dialog.Press("cmdTodo");
      QCOMPARE(dialog.Text("lblVeces"), u"Reemplazado 3 veces. Está 3 veces en la carta."_s);
      dialog.Type("txtBuscar", u"otra"_s);
      QCOMPARE(dialog.Text("lblVeces"), u"No está en la carta."_s);
      dialog.Press("cmdCerrar");
    });
    WithALetter(host, u"{\\rtf1 Casa de la {\\b casa}\\par casa\\par}"_s, [](const DialogUser& dialog) {
      LetterEdit& letter = *Letter(dialog);
      Select(letter, 0, 4);
      Key(dialog, Qt::Key_H, Qt::ControlModifier);
      QCOMPARE(letter.toPlainText(), u"casacaca de la casaca\ncasaca"_s);
      QVERIFY(letter.Content().contains(u"\\b casaca"_s));
      letter.undo();
      QCOMPARE(letter.toPlainText(), u"casaca de la casa\ncasa"_s);
    });
  }

  void InsertsPictures() {
    LetterOffice host;
    const QString photograph = host.Path(u"foto.jpg"_s);
    QVERIFY(Picture(3000, 1500).save(photograph, "JPG"));
    QFile text(host.Path(u"texto.png"_s));
    QVERIFY(text.open(QFile::WriteOnly) && text.write("no") == 2);
    text.close();
    for (const QString& file : {photograph, text.fileName(), QString()}) {
      host.driver.On("dlgCarta", [file](const DialogUser& dialog) {
        if (file.isEmpty()) {
          dialog.Dialog()->reject();
        } else {
          ChooseFile(dialog, file);
        }
      });
    }
    host.driver.Answer(QMessageBox::Ok);
    WithALetter(host, u"{\\rtf1 ab}"_s, [](const DialogUser& dialog) {
      LetterEdit& letter = *Letter(dialog);
      Select(letter, 1, 1);
      Do(dialog, "mnuInsertarImagen");
      // As wide as the text of 16 cm, with no more dots than print shows.
      const QTextImageFormat shown =
          letter.document()->begin().begin().operator++().fragment().charFormat().toImageFormat();
      QCOMPARE(qRound(shown.width() * 15), 9070);
      QCOMPARE(qRound(shown.height() * 15), 4535);
      QVERIFY(letter.Content().contains(u"\\jpegblip"_s));
      QVERIFY(letter.Content().size() < 100'000);
      QCOMPARE(letter.document()->blockCount(), 1);
      const QString content = letter.Content();
      Do(dialog, "mnuInsertarImagen");
      Do(dialog, "mnuInsertarImagen");
      QCOMPARE(letter.Content(), content);
    });
    QVERIFY(host.driver.TakeBoxes()[0].contains(u"no es una imagen"_s));
  }

  void PastesBitmapsAndKeepsSmallFiles() {
    LetterEdit letter;
    auto* bitmap = new QMimeData;
    bitmap->setImageData(Picture(96, 48));
    // As browsers offer a picture.
    bitmap->setHtml(u"<img src='x.png'>"_s);
    QApplication::clipboard()->setMimeData(bitmap);
    QVERIFY(letter.canPaste());
    letter.paste();
    QVERIFY2(letter.Content().contains(u"\\pngblip\\picwgoal1440\\pichgoal720"_s),
             qPrintable(letter.Content().left(400)));
    // A file that is small enough is stored as it is, at the size that it says.
    QImage fine = Picture(300, 30);
    fine.setDotsPerMeterX(11811);
    fine.setDotsPerMeterY(11811);
    const QByteArray png = Encoded(fine, "PNG");
    QCOMPARE(letter.InsertPicture(png), QString());
    QVERIFY(letter.Content().contains(QString::fromLatin1(png.toHex())));
    QVERIFY(letter.Content().contains(u"\\picwgoal1440\\pichgoal144"_s));
    letter.undo();
    letter.undo();
    QCOMPARE(letter.toPlainText(), QString());
  }

  void PageNumbersAreThoseOfThePaper() {
    LetterOffice host;
    WithALetter(host, u"{\\rtf1\\ansi\\fs24\\b a\\par\\page b\\par}"_s, [&](const DialogUser& dialog) {
      LetterEdit& letter = *Letter(dialog);
      auto* pages = dialog.Find<QLabel>("lblPagina");
      QTRY_COMPARE(pages->text(), u"página 1 de 2"_s);
      letter.moveCursor(QTextCursor::End);
      QCOMPARE(pages->text(), u"página 2 de 2"_s);
      Do(dialog, "mnuInsertarPagina");
      QCOMPARE(letter.textCursor().charFormat().fontPointSize(), 12);
      // The field and what is typed behind it look like what was there.
      QTest::keyClicks(&letter, u"!"_s);
      QTextCursor at = letter.textCursor();
      QCOMPARE(at.charFormat().fontWeight(), int(QFont::Bold));
      at.movePosition(QTextCursor::PreviousCharacter);
      QCOMPARE(at.charFormat().fontWeight(), int(QFont::Bold));
      QVERIFY(at.charFormat() != letter.textCursor().charFormat());
      const QString content = letter.Content();
      QVERIFY(content.contains(u"\\fldinst PAGE"_s));
      const QString file = host.Path(u"carta.pdf"_s);
      QCOMPARE(paper::SavePdf(paper::LetterPages(*letter.document(), {}), file, u"Carta"_s), QString());
      QCOMPARE(TextOf(file).simplified(), u"a b2!"_s);
      QCOMPARE(letter.Content(), content);
      // A narrower page breaks more lines.
      dialog.Find<QLineEdit>("txtMargenIzdo")->setText(u"21"_s);
      QTRY_COMPARE(pages->text(), QString());
    });
  }

  void TodaysDate() {
    LetterOffice host;
    WithALetter(host, u"{\\rtf1 a\\par}"_s, [](const DialogUser& dialog) {
      Do(dialog, "mnuInsertarFecha");
      static const QRegularExpression date(u"^\\d{1,2} de [a-z]+ de 20\\d\\d"_s);
      QVERIFY(date.match(Letter(dialog)->toPlainText()).hasMatch());
    });
  }

  void SmallCapitalsAreFourFifths() {
    QTextDocument letter;
    const auto heights = [&](const char* formats) {
      rtf::Read("{\\rtf1\\ansi{\\fonttbl{\\f0 DejaVu Sans;}}\\f0" + QByteArray(formats) + '}', letter);
      return HeightsOf(letter);
    };
    QCOMPARE(
        heights("\\fs60 {\\scaps hh}\\par{\\scaps\\fs30 hh}\\par\\fs48 HH\\par\\fs24 HH\\par{\\scaps\\fs48 H}\\par"),
        heights("\\fs48 HH\\par\\fs24 HH\\par\\fs48 HH\\par\\fs24 HH\\par\\fs48 H\\par"));
    // In the editor as on paper, and while it is typed.
    LetterEdit edit;
    edit.Load(u"{\\rtf1{\\fonttbl{\\f0 DejaVu Sans;}}\\f0\\fs60\\scaps aa\\par}"_s);
    edit.moveCursor(QTextCursor::End);
    edit.insertPlainText(u"b"_s);
    const auto formats = edit.document()->begin().layout()->formats();
    QCOMPARE(formats.size(), 1);
    QCOMPARE(formats[0].length, 3);
    QCOMPARE(formats[0].format.fontPointSize(), 24);
  }

  // One line each, at every width, with the stop as it was in what is stored.
  void StopsBeyondTheTextKeepTheirLine() {
    const QString content =
        u"{\\rtf1\\fs24\\tqr\\tx9072 Madrid\\tab a la derecha\\par\\pard\\li400\\fi-200\\tqc\\tx12000 uno\\tab dos\\par}"_s;
    letters::LetterPage page(nullptr);
    LetterEdit& letter = *page.Letter();
    const auto lines = [&] {
      QList<int> counts;
      for (QTextBlock block = letter.document()->begin(); block.isValid(); block = block.next()) {
        letter.document()->documentLayout()->blockBoundingRect(block);
        counts.append(block.layout()->lineCount());
      }
      return counts;
    };
    letter.Load(content);
    page.Place({});
    QCOMPARE(lines(), (QList<int>{1, 1}));
    QCOMPARE(letter.Content(), content);
    QTest::keyClicks(&letter, u"x"_s);
    page.SetRightMargin({.left = 3, .right = 8});
    QCOMPARE(lines(), (QList<int>{1, 1}));
    QVERIFY(letter.Content().contains(u"\\tqr\\tx9072"_s));
    QVERIFY(letter.Content().contains(u"\\tqc\\tx12000"_s));
    // What was typed is one step, with the stops and the other way.
    QTest::keyClick(&letter, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!letter.document()->isUndoAvailable());
    QCOMPARE(letter.Content(), content);
    letter.Redo();
    QVERIFY(letter.toPlainText().startsWith(u'x') && !letter.document()->isRedoAvailable());
    QTest::keyClicks(&letter, u"y"_s);
    letter.Undo();
    QVERIFY(letter.toPlainText().startsWith(u"xM"_s));
    page.SetRightMargin({.left = 3, .right = 7});
    letter.Undo();
    QVERIFY(!letter.document()->isUndoAvailable());
    QTest::keyClicks(&letter, u"yz"_s);
    letter.Undo();
    QCOMPARE(letter.Content(), content);
    // Wide enough, the stop is where it was; and there still is nothing to undo.
    page.SetRightMargin({.left = 1, .right = 1});
    QVERIFY(!letter.document()->isUndoAvailable());
    QCOMPARE(letter.document()->begin().blockFormat().tabPositions()[0].position, 9072 / 15.0);
  }

  void LeafsAndZoomsBeforePrinting() {
    LetterOffice host;
    const QString file = host.Path(u"carta.pdf"_s);
    host.driver.On("dlgCarta", [&](const DialogUser& dialog) {
      auto* view = dialog.Find<paper::PageView>("pagPagina");
      const QString fits = dialog.Text("lblPagina");
      QVERIFY2(fits.startsWith(u" Página 1 de 3"_s), qPrintable(fits));
      QVERIFY(!dialog.IsEnabled("cmdAnterior"));
      QTest::keyClick(view, Qt::Key_PageDown);
      dialog.Press("cmdSiguiente");
      QVERIFY(dialog.Text("lblPagina").startsWith(u" Página 3 de 3"_s));
      QVERIFY(!dialog.IsEnabled("cmdSiguiente") && !dialog.IsEnabled("cmdUltima"));
      QTest::keyClick(view, Qt::Key_PageDown);
      QCOMPARE(view->Page(), 2);
      const double whole = view->Zoom();
      dialog.Press("cmdAcercar");
      QCOMPARE(view->Zoom(), whole * 1.25);
      dialog.Press("cmdPaginaEntera");
      QCOMPARE(view->Zoom(), whole);
      // The very page, on white paper.
      const QImage seen = view->viewport()->grab().toImage();
      QCOMPARE(seen.pixelColor(seen.width() / 2, seen.height() / 2), QColor(Qt::white));
      dialog.Press("cmdPdf");
      dialog.Press("cmdImprimir");
      dialog.Dialog()->reject();
    });
    host.driver.On("dlgCarta", [&](const DialogUser& dialog) { ChooseFile(dialog, file); });
    host.driver.On("dlgCarta", [](const DialogUser& dialog) {
      QVERIFY(qobject_cast<QPrintDialog*>(dialog.Dialog()) != nullptr);
      dialog.Dialog()->reject();
    });
    WithALetter(host, u"{\\rtf1 uno\\par\\page dos\\par\\page tres\\par}"_s,
                [](const DialogUser& dialog) { Do(dialog, "mnuArchivoVistaPrevia"); });
    QCOMPARE(TextOf(file).simplified(), u"uno dos tres"_s);
  }

  void APdfIsWholeOrNone() {
    const LetterOffice host;
    QTextDocument letter;
    letter.setPlainText(u"uno"_s);
    const paper::LetterPages pages(letter, {});
    const QString folder = host.Path(u"falta/carta.pdf"_s);
    QVERIFY(paper::SavePdf(pages, folder, {}).startsWith(u"No se ha podido guardar «%1»"_s.arg(folder)));
    const QString file = host.Path(u"carta.pdf"_s);
    {
      const NoRoom noRoom;
      QVERIFY(paper::SavePdf(pages, file, {}).startsWith(u"No se ha podido guardar"_s));
    }
    QVERIFY(!paper::SavePdf(paper::LetterPages(letter, {.left = 20}), file, {}).isEmpty());
    QVERIFY(!QFile::exists(file));
  }
};

KEL_TEST(tst_letter_tools);
#include "tst_letter_tools.moc"
