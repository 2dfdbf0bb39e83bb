#include "letters/editor/LetterDesk.h"

#include "documents/letter/LetterStrips.h"
#include "documents/markers/Markers.h"
#include "framework/Desktop.h"
#include "framework/Messages.h"
#include "letters/editor/CommonDialog.h"
#include "letters/editor/EditorArea.h"
#include "letters/editor/FieldList.h"
#include "letters/editor/FieldMenu.h"
#include "letters/editor/LetterSearch.h"
#include "letters/editor/LetterWindow.h"
#include "resources/StringTable.h"

#include <QAction>
#include <QComboBox>
#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QToolBar>

using resources::LoadResString;
using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {

namespace {

// No file of a picture that can be inserted is larger.
constexpr qint64 mostFileBytes = 64LL * 1024 * 1024;

}  // namespace

LetterDesk::LetterDesk(LetterWindow& window) : m_window(window), m_format(window), m_counter(window) {
  ConnectLetter();
  connect(window.mnuCampos, &FieldMenu::CutChosen, this, [this] { Run(Command::Cut); });
  connect(window.mnuCampos, &FieldMenu::CopyChosen, this, [this] { Run(Command::Copy); });
  connect(window.mnuCampos, &FieldMenu::PasteChosen, this, [this] { Run(Command::Paste); });
  connect(window.picFondo, &LetterPage::ZoomChanged, this, &LetterDesk::ShowZoom);
  ShowZoom();
}

void LetterDesk::ConnectLetter() {
  LetterEdit* letter = m_window.rtfCarta;
  const auto show = [this] { m_format.ShowSelection(); };
  connect(letter, &LetterEdit::selectionChanged, this, show);
  connect(letter, &LetterEdit::cursorPositionChanged, this, show);
  connect(letter, &LetterEdit::currentCharFormatChanged, this, show);
  // An undo of formats may leave the caret where it is.
  connect(letter, &LetterEdit::textChanged, this, show);
  connect(letter, &LetterEdit::MenuWanted, this, &LetterDesk::OpenMenu);
  connect(letter, &LetterEdit::FocusChanged, this, &LetterDesk::SetTabStops);
}

void LetterDesk::Run(Command command) {
  LetterEdit* letter = m_window.rtfCarta;
  if (m_format.Run(command)) {
    return;
  }
  switch (command) {
    case Command::Undo:
      letter->Undo();
      break;
    case Command::Redo:
      letter->Redo();
      break;
    case Command::Cut:
      letter->cut();
      break;
    case Command::Copy:
      letter->copy();
      break;
    case Command::Paste:
      letter->paste();
      break;
    case Command::SelectAll:
      letter->selectAll();
      break;
    case Command::ShowStandardBar:
    case Command::ShowFormatBar:
      ToggleBar(command);
      break;
    case Command::Find:
      BuscarTexto();
      break;
    case Command::FindAgain:
      FindAgain();
      break;
    case Command::Replace:
      m_lastSearch = m_window.dlgCarta->ShowReplace(*letter, TextToReplace());
      break;
    case Command::CheckMarkers:
      CheckMarkers();
      break;
    case Command::Field:
      OpenFields();
      break;
    case Command::Picture:
      InsertPicture();
      break;
    case Command::PageNumber:
      letter->InsertPageNumber();
      break;
    case Command::Today:
      letter->TypeText(
          QLocale(QLocale::Spanish, QLocale::Spain).toString(QDate::currentDate(), u"d 'de' MMMM 'de' yyyy"_s));
      break;
    default:
      break;
  }
}

// The menu item has changed its mark by itself.
void LetterDesk::ToggleBar(Command command) {
  QToolBar* bar = command == Command::ShowStandardBar ? m_window.tlbEstandar : m_window.tlbFormato;
  bar->setVisible(m_window.commands->Item(command)->isChecked());
  m_window.area->Arrange();
}

void LetterDesk::OpenMenu(const QPoint& at) {
  if (m_window.rtfCarta->isReadOnly()) {
    return;
  }
  m_window.mnuCampos->Track(at);
}

// While the letter has the focus no text box takes it from the Tab key, which types a tab.
void LetterDesk::SetTabStops(bool letterHasFocus) {
  const QList<QLineEdit*> boxes = m_window.area->findChildren<QLineEdit*>();
  for (QLineEdit* box : boxes) {
    if (qobject_cast<QComboBox*>(box->parentWidget()) == nullptr) {
      box->setFocusPolicy(letterHasFocus ? Qt::ClickFocus : Qt::StrongFocus);
    }
  }
}

void LetterDesk::BuscarTexto() {
  const std::optional<QString> text =
      Desktop::Current().InputBox(LoadResString(3139), objApi().tituloaplicacion(), m_lastSearch);
  if (!text) {
    return;
  }
  m_lastSearch = *text;
  if (!m_lastSearch.isEmpty()) {
    ShowFound(FindText(m_window.rtfCarta->textCursor(), m_lastSearch));
  }
}

void LetterDesk::FindAgain() {
  if (m_lastSearch.isEmpty()) {
    BuscarTexto();
  } else {
    ShowFound(FindNextText(m_window.rtfCarta->textCursor(), m_lastSearch));
  }
}

void LetterDesk::ShowFound(const QTextCursor& found) {
  if (found.isNull()) {
    ShowMessageWithBeep(3140, vbInformation);
  } else {
    m_window.rtfCarta->setTextCursor(found);
  }
}

void LetterDesk::CheckMarkers() {
  const QStringList unknown = documents::UnknownMarkers(m_window.rtfCarta->toPlainText());
  if (unknown.isEmpty()) {
    ShowText(u"Todas las palabras entre corchetes de la carta son campos conocidos."_s, vbInformation);
  } else {
    ShowText(u"Estas palabras entre corchetes no son campos y se imprimirán como están:\n\n"_s + unknown.join(u'\n'),
             vbExclamation);
  }
}

// A word that is selected, or what was looked for last.
QString LetterDesk::TextToReplace() const {
  const QString selected = m_window.rtfCarta->textCursor().selectedText();
  return selected.isEmpty() || selected.contains(QChar::ParagraphSeparator) ? m_lastSearch : selected;
}

// Below its button; the bar may be hidden.
void LetterDesk::OpenFields() {
  const QWidget* button = m_window.tlbEstandar->widgetForAction(m_window.commands->Button(Command::Field));
  const bool isSeen = button->isVisible() && m_window.tlbEstandar->rect().contains(button->geometry());
  m_window.lstCampos->Open(isSeen ? button->mapToGlobal(button->rect().bottomLeft())
                                  : m_window.picFondo->mapToGlobal(QPoint()));
}

void LetterDesk::InsertPicture() {
  const QString name = m_window.dlgCarta->ShowOpenPicture();
  if (name.isEmpty()) {
    return;
  }
  QFile file(name);
  if (!QFileInfo(file).isFile()) {
    // A pipe would be waited for without an end.
    ShowText(u"«%1» no es un archivo de imagen. Elija otro."_s.arg(name), vbExclamation);
    return;
  }
  // One byte more than is taken shows that there is more.
  const QByteArray picture = file.open(QFile::ReadOnly) ? file.read(mostFileBytes + 1) : QByteArray();
  QString reason;
  if (!file.isOpen() || file.error() != QFile::NoError) {
    reason = u"No se puede leer «%1»: %2."_s.arg(name, file.errorString());
  } else if (picture.size() > mostFileBytes) {
    reason = u"El archivo «%1» es demasiado grande. Redúzcalo con un programa de imágenes."_s.arg(name);
  } else {
    reason = m_window.rtfCarta->InsertPicture(picture);
  }
  if (!reason.isEmpty()) {
    ShowText(reason, vbExclamation);
  }
}

void LetterDesk::ShowZoom() {
  m_window.lblZoom->setText(u"%1 %"_s.arg(qRound(m_window.picFondo->Zoom() * 100)));
}

}  // namespace letters
