// The editor's window: menus, tool bars, boxes, scroll bars, the menu of markers.

#include "LetterOffice.h"
#include "documents/markers/Markers.h"
#include "letters/editor/FieldMenu.h"
#include "letters/editor/MergeFields.h"
#include "resources/StringTable.h"

#include <QApplication>
#include <QColorDialog>
#include <QFontDialog>
#include <QMenuBar>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextList>
#include <QTimer>
#include <QWheelEvent>

#include <functional>

using namespace Qt::StringLiterals;

using letters::LetterEdit;
using support::action;
using support::DialogUser;
using support::node;

namespace {

/// Opens an empty letter, does something with it, and closes it without saving.
void WithALetter(LetterOffice& host, const std::function<void(const DialogUser&)>& script) {
  host.driver.On("frmCartaModelo", [script](const DialogUser& dialog) {
    script(dialog);
    dialog.Close();
  });
}

void TypeLines(const DialogUser& dialog, const QStringList& lines) {
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (i > 0) {
      QTest::keyClick(Letter(dialog), Qt::Key_Return);
    }
    dialog.Keys("rtfCarta", lines[i]);
  }
}

/// A key that the window must hear, which is active again after a box.
void Key(const DialogUser& dialog, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  dialog.Keys("rtfCarta", {});
  QTest::keyClick(Letter(dialog), key, modifiers);
}

void Select(const DialogUser& dialog, int start, int end) {
  QTextCursor cursor(Letter(dialog)->document());
  cursor.setPosition(start);
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  Letter(dialog)->setTextCursor(cursor);
}

/// The items of a menu as a person sees them, submenus in brackets, separators as dashes.
QString Shown(const QMenu* menu) {
  QStringList items;
  for (const QAction* item : menu->actions()) {
    if (!item->isVisible()) {
      continue;
    }
    items.append(item->isSeparator()       ? u"-"_s
                 : item->menu() != nullptr ? item->text() + u'(' + Shown(item->menu()) + u')'
                                           : item->text());
  }
  return items.join(u", "_s);
}

QString Pressed(const DialogUser& dialog) {
  QStringList pressed;
  for (const char* key : {"negrita", "cursiva", "subrayado", "left", "center", "right", "Justify"}) {
    if (IsPressed(dialog, QByteArray("tlbFormato_").append(key))) {
      pressed.append(QString::fromLatin1(key));
    }
  }
  return pressed.join(u' ');
}

QString Alignments(const DialogUser& dialog) {
  QString alignments;
  for (QTextBlock block = Letter(dialog)->document()->begin(); block.isValid(); block = block.next()) {
    const int alignment = int(block.blockFormat().alignment() & Qt::AlignHorizontal_Mask);
    alignments += alignment == Qt::AlignJustify   ? u'j'
                  : alignment == Qt::AlignRight   ? u'r'
                  : alignment == Qt::AlignHCenter ? u'c'
                                                  : u'l';
  }
  return alignments;
}

int LeftIndentTwips(const DialogUser& dialog) {
  return qRound(Letter(dialog)->textCursor().blockFormat().leftMargin() * 10);
}

}  // namespace

class tst_letter_window : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void MenusAndBars() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      QStringList menus;
      for (const QAction* menu : dialog.Find<QMenuBar>("")->actions()) {
        if (menu->isVisible()) {
          menus.append(menu->text() + u'(' + Shown(menu->menu()) + u')');
        }
      }
      QCOMPARE(menus.join(u"; "_s),
               u"&Archivo(&Guardar, G&uardar como..., &Imprimir, &Salir, &Vista previa, Guardar como P&DF...); "
               "&Edicion(&Deshacer                    Ctrl+Z, Cor&tar                         Ctrl+X, "
               "&Copiar                         Ctrl+C, &Pegar                          Ctrl+V, Seleccionar todo, "
               "&Rehacer, &Buscar siguiente, R&eemplazar...); "
               "&Ver(&Barras de herramientas(&Estandar, &Formato)); &Formato(&Fuente, &Color fuente, &Resaltado, "
               "&Numeración, &Párrafo..., &Tachado, &Superíndice, Su&bíndice); Ay&uda(&Contenido); "
               "&Insertar(&Campo..., &Imagen..., &Número de página, &Fecha de hoy)"_s);
      QStringList tips;
      for (const QToolButton* button : dialog.Dialog()->findChildren<QToolButton*>()) {
        if (button->objectName().startsWith(u"tlb"_s)) {
          tips.append(button->objectName().section(u'_', 1) + u'=' + button->toolTip().section(u" ("_s, 0, 0));
        }
      }
      QCOMPARE(tips.join(u','),
               u"guardar=Guardar,imprimir=Imprimir,cortar=Cortar,copiar=Copiar,pegar=Pegar,buscar=Buscar,"
               "deshacer=Deshacer,rehacer=Rehacer,vista_previa=Vista previa,reemplazar=Reemplazar,"
               "campos=Insertar un campo,imagen=Insertar una imagen,resaltado=Resaltado,ordenada=Numeración,"
               "parrafo=Interlineado y espacio del párrafo,tachado=Tachado,superindice=Superíndice,"
               "subindice=Subíndice,negrita=Negrita,cursiva=Cursiva,subrayado=Subrayado,left=Alinear a la izquierda,"
               "center=Centrar,right=Alinear a la derecha,Justify=Justificar,desordenada=Viñetas,"
               "indent=Disminuir sangría,outdent=Aumentar sangría,color_letra=Color de la fuente"_s);
      const int top = dialog.Find("picFondo")->y();
      Do(dialog, "mnuVerBarraDeHerramientasFormato");
      QVERIFY(!dialog.IsVisible("tlbFormato"));
      QVERIFY(dialog.Find("picFondo")->y() < top);
      Key(dialog, Qt::Key_B, Qt::ControlModifier);
      QVERIFY(Letter(dialog)->currentCharFormat().fontWeight() > QFont::Normal);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void FormatsOfTheSelection() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      dialog.Keys("rtfCarta", u"uno dos"_s);
      Select(dialog, 0, 3);
      dialog.Press("tlbFormato_negrita");
      QCOMPARE(Pressed(dialog), u"negrita left"_s);
      Select(dialog, 0, 7);
      QCOMPARE(Pressed(dialog), u"left"_s);
      dialog.Press("tlbFormato_negrita");
      QCOMPARE(Pressed(dialog), u"negrita left"_s);
      dialog.Press("tlbFormato_negrita");
      dialog.Press("tlbFormato_subrayado");
      dialog.Press("tlbFormato_right");
      QCOMPARE(Pressed(dialog), u"subrayado right"_s);
      dialog.Choose("cboFuentes", u"DejaVu Sans"_s);
      dialog.Choose("cboTamaño", u"14"_s);
      dialog.Find<QComboBox>("cboTamaño")->lineEdit()->setText(u"10,5"_s);
      QTest::keyClick(dialog.Find<QComboBox>("cboTamaño")->lineEdit(), Qt::Key_Return);
      const QTextCharFormat format = Letter(dialog)->textCursor().charFormat();
      QCOMPARE(format.fontFamilies().toStringList(), QStringList(u"DejaVu Sans"_s));
      QCOMPARE(format.fontPointSize(), 10.5);
      // Every step of it can be taken back, and nothing more.
      for (int step = 0; step < 7; ++step) {
        dialog.Press("tlbEstandar_deshacer");
      }
      QCOMPARE(Letter(dialog)->document()->begin().begin().fragment().charFormat().fontWeight(), int(QFont::Bold));
      dialog.Press("tlbEstandar_deshacer");
      QCOMPARE(Letter(dialog)->document()->begin().begin().fragment().length(), 7);
      Key(dialog, Qt::Key_Y, Qt::ControlModifier);
      QCOMPARE(Letter(dialog)->document()->begin().begin().fragment().length(), 3);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  // Whatever tells that a font or a size was chosen, it counts once, for the whole selection.
  void FontBoxesServeTheWholeSelection() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      LetterEdit* letter = Letter(dialog);
      auto* size = dialog.Find<QComboBox>("cboTamaño");
      dialog.Keys("rtfCarta", u"uno dos"_s);
      Select(dialog, 4, 7);
      dialog.Choose("cboFuentes", u"DejaVu Sans"_s);
      dialog.Choose("cboTamaño", u"14"_s);
      Select(dialog, 0, 7);
      const auto font = [letter] {
        const QTextCharFormat format = letter->document()->begin().begin().fragment().charFormat();
        return format.fontFamilies().toStringList().value(0) + u' ' + QString::number(format.fontPointSize());
      };
      // The boxes show the caret's already.
      dialog.Choose("cboFuentes", u"DejaVu Sans"_s);
      dialog.Choose("cboTamaño", u"14"_s);
      QCOMPARE(font(), u"DejaVu Sans 14"_s);
      const int steps = letter->document()->availableUndoSteps();
      size->setFocus();
      size->lineEdit()->selectAll();
      QTest::keyClicks(size, u"7"_s);
      QCOMPARE(font(), u"DejaVu Sans 14"_s);
      QTest::keyClick(size, Qt::Key_Return);
      QCOMPARE(font(), u"DejaVu Sans 7"_s);
      size->setFocus();
      size->lineEdit()->selectAll();
      QTest::keyClicks(size, u"11"_s);
      Do(dialog, "mnuEdicionCopiar");
      QCOMPARE(font(), u"DejaVu Sans 11"_s);
      dialog.Press("tlbEstandar_deshacer");
      size->setCurrentText(u"20"_s);
      QCOMPARE(font(), u"DejaVu Sans 20"_s);
      dialog.Press("tlbEstandar_deshacer");
      dialog.Press("tlbEstandar_deshacer");
      QCOMPARE(letter->document()->availableUndoSteps(), steps);
      QCOMPARE(size->currentText(), u"14"_s);
      // Who only passes through the box changes nothing.
      Select(dialog, 0, 3);
      dialog.Choose("cboTamaño", u"9"_s);
      Select(dialog, 0, 7);
      size->setFocus();
      letter->setFocus();
      QCOMPARE(font(), u"DejaVu Sans 9"_s);
      // The caret stays where it is.
      Select(dialog, 7, 7);
      dialog.Press("tlbFormato_center");
      dialog.Press("tlbEstandar_deshacer");
      QCOMPARE(Pressed(dialog), u"left"_s);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void JustifiesWhatIsLeftAligned() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      TypeLines(dialog, {u"uno"_s, u"dos"_s, u"tres"_s});
      Select(dialog, 4, 4);
      dialog.Press("tlbFormato_center");
      // The caret stays in its paragraph.
      dialog.Press("tlbEstandar_deshacer");
      dialog.Press("tlbEstandar_rehacer");
      QCOMPARE(Letter(dialog)->textCursor().position(), 4);
      dialog.Press("tlbEstandar_deshacer");
      dialog.Press("tlbFormato_center");
      Letter(dialog)->selectAll();
      dialog.Press("tlbFormato_Justify");
      QCOMPARE(Alignments(dialog), u"jcj"_s);
      QCOMPARE(Pressed(dialog), u"Justify"_s);
      QCOMPARE(Letter(dialog)->textCursor().position(), 0);
      QVERIFY(!Letter(dialog)->textCursor().hasSelection());
      Select(dialog, 4, 4);
      dialog.Press("tlbFormato_Justify");
      QCOMPARE(Alignments(dialog), u"jcj"_s);
      Letter(dialog)->selectAll();
      Letter(dialog)->insertPlainText(QString(32768, u'x'));
      dialog.Press("tlbFormato_Justify");
      QCOMPARE(Alignments(dialog), u"j"_s);
    });
    host.driver.Answer(QMessageBox::Ok);
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
    QVERIFY2(host.driver.TakeBoxes()[0].contains(u"Error 6"_s), "overflow");
  }

  void AMenuLeavesTheFocusInTheLetter() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      QWidget* window = Letter(dialog)->window();
      QVERIFY(QTest::qWaitForWindowActive(window));
      QTest::keyClick(window, Qt::Key_E, Qt::AltModifier);
      QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
      QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
      QTest::keyClick(window, Qt::Key_F, Qt::AltModifier);
      QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
      QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_N);
      QTRY_VERIFY(Letter(dialog)->textCursor().currentList() != nullptr);
      QVERIFY(Letter(dialog)->hasFocus());
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void IndentsAndBullets() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      dialog.Keys("rtfCarta", u"uno"_s);
      dialog.Press("tlbFormato_indent");
      QCOMPARE(LeftIndentTwips(dialog), 0);
      for (int i = 0; i < 15; ++i) {
        dialog.Press("tlbFormato_outdent");
      }
      QCOMPARE(LeftIndentTwips(dialog), 13 * 737);
      dialog.Press("tlbFormato_indent");
      QCOMPARE(LeftIndentTwips(dialog), 12 * 737);
      dialog.Press("tlbFormato_desordenada");
      QVERIFY(Letter(dialog)->textCursor().currentList() != nullptr);
      QCOMPARE(LeftIndentTwips(dialog), 12 * 737 + 360);
      // Return in an empty item ends the list.
      QTest::keyClick(Letter(dialog), Qt::Key_Return);
      QVERIFY(Letter(dialog)->textCursor().currentList() != nullptr);
      QTest::keyClick(Letter(dialog), Qt::Key_Return);
      QCOMPARE(Letter(dialog)->textCursor().currentList(), nullptr);
      QCOMPARE(Letter(dialog)->document()->blockCount(), 2);
      QCOMPARE(LeftIndentTwips(dialog), 12 * 737);
      Letter(dialog)->selectAll();
      dialog.Press("tlbFormato_desordenada");
      dialog.Press("tlbFormato_desordenada");
      QCOMPARE(Letter(dialog)->document()->begin().textList(), nullptr);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void FontAndColourDialogs() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      Do(dialog, "mnuFormatoFuente");
      QCOMPARE(dialog.Text("cboTamaño"), u"8"_s);
      Do(dialog, "mnuFormatoFuente");
      dialog.Press("tlbFormato_color_letra");
      dialog.Keys("rtfCarta", u"x"_s);
      const QTextCharFormat format = Letter(dialog)->textCursor().charFormat();
      QCOMPARE(format.fontFamilies().toStringList(), QStringList(u"DejaVu Serif"_s));
      QCOMPARE(dialog.Text("cboFuentes"), u"DejaVu Serif"_s);
      QCOMPARE(dialog.Text("cboTamaño"), u"13"_s);
      QCOMPARE(format.foreground().color(), QColor(Qt::darkRed));
    });
    host.driver.On("dlgCarta", [](const DialogUser& dialog) { dialog.Dialog()->reject(); });
    host.driver.On("dlgCarta", [](const DialogUser& dialog) {
      static_cast<QFontDialog*>(dialog.Dialog())->setCurrentFont(QFont(u"DejaVu Serif"_s, 13));
      dialog.Dialog()->accept();
    });
    host.driver.On("dlgCarta", [](const DialogUser& dialog) {
      static_cast<QColorDialog*>(dialog.Dialog())->setCurrentColor(Qt::darkRed);
      dialog.Dialog()->accept();
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void TheMarginsMoveThePage() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      QWidget* page = Letter(dialog);
      auto* sideways = dialog.Find<QScrollBar>("hsbCarta");
      QCOMPARE(sideways->value(), 850);
      sideways->setValue(0);
      QCOMPARE(page->geometry(), QRect(113, 95, 567, 1028));
      dialog.Find("txtMargenDcho")->setFocus();
      QCOMPARE(dialog.Find<QLineEdit>("txtMargenDcho")->selectedText(), u"3"_s);
      dialog.Paste("txtMargenIzdo", u"4.5"_s);
      QCOMPARE(page->x(), 170);
      QCOMPARE(page->width(), 510);
      dialog.Paste("txtMargenDcho", u"30"_s);
      QCOMPARE(page->width(), 0);
      QCOMPARE(page->x(), 170);
      dialog.Paste("txtMargenDcho", u"3"_s);
      QCOMPARE(page->width(), 510);
      dialog.Find<QScrollBar>("vsbCarta")->setValue(150);
      QCOMPARE(page->pos(), QPoint(170, 85));
      // In a window that is made smaller than it may be the boxes stand apart, too.
      dialog.Dialog()->setFixedSize(300, 300);
      QApplication::sendPostedEvents();
      const auto place = [&](const char* name) {
        const QWidget* box = dialog.Find(name);
        return QRect(box->mapTo(dialog.Dialog(), QPoint()), box->size());
      };
      QVERIFY(place("lblMargenIzdo").right() < place("txtMargenIzdo").left());
      QVERIFY(place("txtMargenIzdo").right() < place("lblMargenDcho").left());
      QVERIFY(place("lblMargenDcho").right() < place("txtMargenDcho").left());
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void ThePageFollowsTheCaretAndTheWheel() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      LetterEdit* letter = Letter(dialog);
      auto* down = dialog.Find<QScrollBar>("vsbCarta");
      TypeLines(dialog, QStringList(100, u"línea"_s));
      const QWidget* ground = dialog.Find("picFondo");
      const auto caretSeen = [&] { return ground->rect().contains(letter->CaretRect().translated(letter->pos())); };
      QVERIFY(caretSeen());
      QVERIFY(down->value() > 0);
      QTest::keyClick(letter, Qt::Key_PageUp);
      QVERIFY(caretSeen());
      QTest::keyClick(letter, Qt::Key_Home, Qt::ControlModifier);
      QVERIFY(caretSeen());
      const int before = down->value();
      const auto turn = [&](Qt::KeyboardModifiers modifiers) {
        QWheelEvent event(QPointF(5, 5), letter->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(letter->viewport(), &event);
      };
      turn(Qt::NoModifier);
      QVERIFY(down->value() > before);
      const QString content = letter->Content();
      turn(Qt::ControlModifier);
      turn(Qt::ControlModifier);
      QCOMPARE(dialog.Text("lblZoom"), u"80 %"_s);
      QCOMPARE(letter->width(), 454);
      QCOMPARE(letter->Content(), content);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void TabTypesATabAndControlTabLeaves() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      QTest::keyClick(Letter(dialog), Qt::Key_Tab);
      QCOMPARE(Letter(dialog)->toPlainText(), u"\t"_s);
      QCOMPARE(dialog.Find("txtMargenIzdo")->focusPolicy() & Qt::TabFocus, 0);
      QTest::keyClick(Letter(dialog), Qt::Key_Tab, Qt::ControlModifier);
      QVERIFY(dialog.Focused() != u"rtfCarta"_s);
      QVERIFY((dialog.Find("txtMargenIzdo")->focusPolicy() & Qt::TabFocus) != 0);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void Finds() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      const auto found = [&] { return Letter(dialog)->textCursor().selectionStart(); };
      dialog.Keys("rtfCarta", u"Casa de la casa"_s);
      dialog.Press("tlbEstandar_buscar");
      QCOMPARE(found(), 0);
      Key(dialog, Qt::Key_F3);
      QCOMPARE(found(), 11);
      Key(dialog, Qt::Key_F3);
      QCOMPARE(found(), 0);
      Select(dialog, 5, 13);
      dialog.Press("tlbEstandar_buscar");
      QCOMPARE(found(), 5);
      dialog.Press("tlbEstandar_buscar");
    });
    host.driver.AnswerInput(u"casa"_s);
    host.driver.AnswerInput(u"casa"_s);
    host.driver.Answer(QMessageBox::Ok);
    host.driver.AnswerInput(u""_s);
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
    QCOMPARE(host.driver.TakeBoxes()[2], u"Prueba|informacion|No se ha encontrado el texto."_s);
    QCOMPARE(host.desktop.beeps, 2);
  }

  void HelpIsTheHosts() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) { Do(dialog, "mnuAyudaContenido"); });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
    QCOMPARE(host.desktop.helpShown, QStringList(u"/ayuda/kel.html"_s));
  }

  // What the menu types, from the string table, is what letters are searched for.
  void MarkersOfTheMenu() {
    QStringList typed;
    for (const letters::FieldItem& item : letters::FieldItems()) {
      for (const int id : {item.marker, item.velumarMarker}) {
        typed.append(id == 0 ? QStringList() : QStringList(resources::LoadResString(id)));
      }
    }
    typed.removeDuplicates();
    QStringList known;
    for (int marker = 0; marker < documents::markerCount; ++marker) {
      known.append(documents::TextOf(documents::Marker(marker)));
    }
    typed.sort();
    known.sort();
    QCOMPARE(known, typed);
  }

  void MarkersOfAnInstallation_data() {
    QTest::addColumn<bool>("velumar");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("typed");
    QTest::newRow("usual")
        << false << 0
        << u"Cortar, Copiar, Pegar, -, Datos personales(Tratamiento, Nombre, Apellidos, Nombre y "
           "apellidos, Apellidos y nombre, NIF, Cod. Benefactor, -, Dirección, Población, Provincia, "
           "C.P., País), -, Fechas(Fecha (dd/mm/aaaa), Fecha (día de Mes de Año), Fecha y hora "
           "(dd/mm/aaaa/ hh:mm)), -, Datos del donativo(Finalidad, Importe, Periodicidad de pago, "
           "Texto del recibo, Fecha), -, Encabezado, -, Modelo 182(Finalidad, Importe total, Deducción "
           "física, Deducción jurídica)"_s
        << u"[Finalidad del donativo][Importe del donativo][Periodicidad del donativo][Fecha del "
           "donativo]"_s;
    QTest::newRow("velumar, one name")
        << true << 1
        << u"Cortar, Copiar, Pegar, -, Datos personales(Tratamiento, Título, Nombre y apellidos, NIF, Cod. Benefactor, "
           u"-, "
           "Dirección, Población, Provincia, C.P., País), -, Fechas(Fecha (dd/mm/aaaa), Fecha (día de Mes de Año), "
           "Fecha y "
           "hora (dd/mm/aaaa/ hh:mm)), -, Datos del donativo(Finalidad del donativo, Importe del donativo, "
           "Periodicidad de "
           "pago del donativo, Fecha del donativo), -, Datos de la suscripción(Publicación de la suscripción, Importe "
           "de la "
           "suscripción, Periodicidad de pago de la suscripción, Nombre completo del bienhechor receptor), -, Modelo "
           "182(Finalidad, Importe total, Deducción física, Deducción jurídica)"_s
        << u"[Finalidad de la suscripcion][Importe de la suscripcion][Periodicidad de la suscripcion][Fecha de la "
           "suscripcion]"_s;
  }

  void MarkersOfAnInstallation() {
    QFETCH(bool, velumar);
    QFETCH(int, kind);
    QFETCH(QString, menu);
    QFETCH(QString, typed);
    LetterOffice host;
    host.session.velumar = velumar;
    host.Query(u"UPDATE configuracion SET Tipo={}", kind);
    WithALetter(host, [&](const DialogUser& dialog) {
      QCOMPARE(Shown(dialog.Find<QMenu>("mnuCampos")), menu);
      for (const char* item : {"mnuEmergenteFinalidadDonativo", "mnuEmergenteImporteDonativo",
                               "mnEmergentePeriodicidadDonativo", "mnEmergenteFechaDonativo"}) {
        Do(dialog, item);
      }
      QCOMPARE(Letter(dialog)->toPlainText(), typed);
      // The installation is asked at every click.
      host.session.velumar = !velumar;
      Letter(dialog)->selectAll();
      Do(dialog, "mnuEmergenteNombreCompleto");
      Do(dialog, "mnEmergenteFechaDonativo");
      QCOMPARE(Letter(dialog)->toPlainText(), velumar ? u"[Nombre y apellidos][Fecha del donativo]"_s
                                                      : u"[Nombre y apellidos][Fecha de la suscripcion]"_s);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void TheMenuOfMarkersOpensByTheRightButton() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      const auto* bar = dialog.Find<QMenuBar>("");
      auto* menu = dialog.Find<QMenu>("mnuCampos");
      QStringList seen;
      // Chooses an item while the menu is open.
      const auto use = [&](const char* item, const std::function<void()>& open) {
        QTimer::singleShot(0, menu, [&, item] {
          seen.append(menu->isVisible() ? bar->actions()[5]->text() + u'|' : u"closed"_s);
          dialog.Find<QAction>(item)->trigger();
          menu->close();
        });
        open();
        QCoreApplication::processEvents();
      };
      QWidget* paper = Letter(dialog)->viewport();
      dialog.Keys("rtfCarta", u"ab"_s);
      dialog.Press("tlbFormato_cursiva");
      Select(dialog, 0, 1);
      use("mnuEmergenteNIF", [&] { QTest::mouseClick(paper, Qt::RightButton, {}, {2, 2}); });
      QCOMPARE(Letter(dialog)->toPlainText(), u"[NIF]b"_s);
      use("mnuEmergenteCP", [&] { QTest::keyClick(Letter(dialog), Qt::Key_Menu); });
      use("mnuEmergenteCP", [&] { QTest::mouseClick(paper, Qt::MiddleButton, {}, {2, 2}); });
      QCOMPARE(seen, (QStringList{u"|"_s, u"|"_s, u"closed"_s}));
      QVERIFY(!menu->menuAction()->isVisible());
      Letter(dialog)->undo();
      Letter(dialog)->undo();
      Letter(dialog)->undo();
      QCOMPARE(Letter(dialog)->toPlainText(), u"ab"_s);
    });
    host.driver.Answer(QMessageBox::No);
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
  }

  void ChecksTheMarkers() {
    LetterOffice host;
    WithALetter(host, [](const DialogUser& dialog) {
      dialog.Keys("rtfCarta", u"[NIF] y [dd/mm/aaaa hh:mm]"_s);
      dialog.Press("cmdComprobar");
      TypeLines(dialog, {u" [Pais] [País] [nif] [abierto"_s, u"[País]"_s});
      Key(dialog, Qt::Key_F7);
    });
    for (const auto button : {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::No}) {
      host.driver.Answer(button);
    }
    EXPECT_CLEAN(host, host.PasarDatos(node.CartasModelo(), action.Agregar()));
    const QStringList boxes = host.driver.TakeBoxes();
    QVERIFY(boxes[0].startsWith(u"Prueba|informacion|"_s));
    QVERIFY(boxes[1].endsWith(u"\n\n[País]\n[nif]"_s));
  }
};

KEL_TEST(tst_letter_window);
#include "tst_letter_window.moc"
