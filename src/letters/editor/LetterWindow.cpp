#include "letters/editor/LetterWindow.h"

#include "letters/editor/Commands.h"
#include "letters/editor/CommonDialog.h"
#include "letters/editor/EditorArea.h"
#include "letters/editor/FieldList.h"
#include "letters/editor/FieldMenu.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace letters {

namespace {

constexpr int marginCharacters = 6;
constexpr int fontCharacters = 16;
constexpr int sizeCharacters = 3;

QToolBar* NewToolBar(const QString& name, const QString& accessibleName, QWidget* parent) {
  auto* bar = new QToolBar(parent);
  bar->setObjectName(name);
  bar->setAccessibleName(accessibleName);
  // What opens the buttons that have no room. Its own picture is black on dark windows, too.
  if (auto* more = bar->findChild<QToolButton*>(u"qt_toolbar_ext_button"_s)) {
    more->setArrowType(Qt::DownArrow);
    more->setToolTip(u"Más botones"_s);
    more->setAccessibleName(u"Más botones: %1"_s.arg(accessibleName));
  }
  return bar;
}

QComboBox* NewFontBox(const QString& name, const QString& tip, int characters, QToolBar* bar) {
  auto* box = new QComboBox(bar);
  box->setObjectName(name);
  box->setToolTip(tip);
  box->setAccessibleName(tip);
  box->setProperty("Characters", characters);
  // Measuring every font's name takes long.
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  bar->addWidget(box);
  return box;
}

QLineEdit* AddMarginBox(QBoxLayout* layout, const QString& label, int stringId, const QString& name) {
  auto* caption = new QLabel(QString::number(stringId), layout->parentWidget());
  caption->setObjectName(label);
  caption->setProperty("Tag", QString::number(stringId));
  auto* box = new QLineEdit(layout->parentWidget());
  box->setObjectName(name);
  box->setProperty("Characters", marginCharacters);
  caption->setBuddy(box);
  layout->addWidget(caption);
  layout->addWidget(box);
  return box;
}

QPushButton* AddButton(QBoxLayout* layout, const QString& name, const QString& text) {
  auto* button = new QPushButton(text, layout->parentWidget());
  button->setObjectName(name);
  button->setAutoDefault(false);
  layout->addWidget(button);
  return button;
}

}  // namespace

void LetterWindow::setupUi(QDialog* window) {
  const Scale scale = ScreenScale(window->logicalDpiX());
  window->setMinimumSize(scale.Pixels(leastWindowWidth), scale.Pixels(leastWindowHeight));
  window->setWindowFlag(Qt::WindowMinMaxButtonsHint);
  auto* menus = new QMenuBar(window);
  area = new EditorArea(window);
  CreateBars(window, menus);
  picFondo = new LetterPage(area);
  rtfCarta = picFondo->Letter();
  QWidget* strip = CreateStrip();
  area->SetParts({tlbEstandar, tlbFormato}, picFondo, strip);
  dlgCarta = new CommonDialog(window);
  auto* layout = new QVBoxLayout(window);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setMenuBar(menus);
  layout->addWidget(area);
  ServeWhileHeld(*window);
  rtfCarta->setFocus();
  // A bar that waited for a key when a menu was opened by one keeps the focus otherwise.
  QObject::connect(menus, &QMenuBar::triggered, rtfCarta, [menus, letter = rtfCarta] {
    if (menus->hasFocus()) {
      letter->setFocus(Qt::MenuBarFocusReason);
    }
  });
}

// A letter that another user holds can be changed and saved as another one: the host stops nothing but Save.
void LetterWindow::ServeWhileHeld(const QDialog& window) const {
  const QList<QObject*> controls = window.findChildren<QObject*>();
  for (QObject* control : controls) {
    if (control != commands->Item(Command::Save) && control != commands->Button(Command::Save)) {
      control->setProperty("SirveEnConsulta", true);
    }
  }
}

void LetterWindow::ServeReading() const {
  using enum Command;
  for (const Command command : {Undo, Redo, Cut, Paste, Replace, Font, Colour, StrikeOut, Raised, Lowered, Highlight,
                                Numbers, Paragraph, Field, Picture, PageNumber, Today}) {
    for (QAction* action : {commands->Item(command), commands->Button(command)}) {
      if (action != nullptr) {
        action->setEnabled(false);
      }
    }
  }
  tlbFormato->setEnabled(false);
  const QList<QAction*> formats = tlbFormato->actions();
  for (QAction* format : formats) {
    format->setEnabled(false);
  }
}

void LetterWindow::CreateBars(QDialog* window, QMenuBar* menus) {
  tlbEstandar = NewToolBar(u"tlbEstandar"_s, u"Estándar"_s, area);
  tlbFormato = NewToolBar(u"tlbFormato"_s, u"Formato"_s, area);
  cboFuentes = NewFontBox(u"cboFuentes"_s, u"Fuente"_s, fontCharacters, tlbFormato);
  cboTamaño = NewFontBox(u"cboTamaño"_s, u"Tamaño de la Fuente"_s, sizeCharacters, tlbFormato);
  cboTamaño->setEditable(true);
  cboTamaño->setInsertPolicy(QComboBox::NoInsert);
  // A 7 is no beginning of 72.
  cboTamaño->setCompleter(nullptr);
  for (const int size : {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72}) {
    cboTamaño->addItem(QString::number(size));
  }
  commands = new Commands(window, menus, tlbEstandar, tlbFormato);
  mnuCampos = new FieldMenu(menus);
  lstCampos = new FieldList(*mnuCampos, window);
}

QWidget* LetterWindow::CreateStrip() {
  auto* strip = new QWidget(area);
  auto* layout = new QHBoxLayout(strip);
  layout->setContentsMargins(layout->contentsMargins().left(), 0, layout->contentsMargins().right(), 0);
  layout->addWidget(CreateMargins(strip));
  lblAviso = new QLabel(strip);
  lblAviso->setObjectName(u"lblAviso"_s);
  layout->addWidget(lblAviso);
  layout->addStretch();
  cmdRecuperar = AddButton(layout, u"cmdRecuperar"_s, {});
  cmdDescartar = AddButton(layout, u"cmdDescartar"_s, u"Descartarla"_s);
  cmdComprobar = AddButton(layout, u"cmdComprobar"_s, u"Comprobar la carta"_s);
  cmdComprobar->setToolTip(u"Busca palabras entre corchetes que no son campos (F7)"_s);
  lblPagina = new QLabel(strip);
  lblPagina->setObjectName(u"lblPagina"_s);
  layout->addWidget(lblPagina);
  lblZoom = new QLabel(strip);
  lblZoom->setObjectName(u"lblZoom"_s);
  lblZoom->setToolTip(u"Tamaño en pantalla: Ctrl y la rueda del ratón"_s);
  layout->addWidget(lblZoom);
  return strip;
}

QWidget* LetterWindow::CreateMargins(QWidget* parent) {
  auto* frame = new QFrame(parent);
  frame->setObjectName(u"framMargenes"_s);
  auto* layout = new QHBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  txtMargenIzdo = AddMarginBox(layout, u"lblMargenIzdo"_s, 3001, u"txtMargenIzdo"_s);
  txtMargenDcho = AddMarginBox(layout, u"lblMargenDcho"_s, 3002, u"txtMargenDcho"_s);
  return frame;
}

}  // namespace letters
