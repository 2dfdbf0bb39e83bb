#include "framework/Desktop.h"

#include "framework/ReturnToWindow.h"
#include "framework/Termination.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrinterInfo>
#include <QUrl>

namespace framework {
namespace {

Desktop* installed = nullptr;

QMessageBox::StandardButtons Buttons(int style) {
  switch (style & 15) {
    case 1:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case 2:
      return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case vbYesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case vbYesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case 5:
      return QMessageBox::Retry | QMessageBox::Cancel;
    default:
      return QMessageBox::Ok;
  }
}

QMessageBox::Icon Icon(int style) {
  switch (style & 112) {
    case vbCritical:
      return QMessageBox::Critical;
    case vbQuestion:
      return QMessageBox::Question;
    case vbExclamation:
      return QMessageBox::Warning;
    case vbInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

int Answer(QMessageBox::StandardButton button, QMessageBox::StandardButtons offered) {
  switch (button) {
    case QMessageBox::Ok:
      return vbOK;
    case QMessageBox::Yes:
      return vbYes;
    case QMessageBox::No:
      return vbNo;
    case QMessageBox::Abort:
      return vbAbort;
    case QMessageBox::Retry:
      return vbRetry;
    case QMessageBox::Ignore:
      return vbIgnore;
    case QMessageBox::Cancel:
      return vbCancel;
    default:
      break;
  }
  return offered & QMessageBox::Cancel ? vbCancel : offered & QMessageBox::No ? vbNo : vbOK;
}

}  // namespace

Desktop::~Desktop() = default;

Desktop& Desktop::Current() {
  static Desktop real;
  return installed != nullptr ? *installed : real;
}

void Desktop::Install(Desktop* desktop) {
  installed = desktop;
}

int Desktop::MsgBox(const QString& text, int style, const QString& title) {
  const ReturnToWindow back;
  const QMessageBox::StandardButtons buttons = Buttons(style);
  QMessageBox box(Icon(style), title, text, buttons, QApplication::activeModalWidget());
  box.setTextFormat(Qt::PlainText);
  // Without an escape button the box could not be closed by the keyboard; it answers as its documentation says.
  if (buttons & QMessageBox::No && !(buttons & QMessageBox::Cancel)) {
    box.setEscapeButton(QMessageBox::No);
  }
  const Termination::Watch watch;
  box.exec();
  return Answer(box.standardButton(box.clickedButton()), buttons);
}

std::optional<QString> Desktop::InputBox(const QString& prompt, const QString& title, const QString& initial) {
  const ReturnToWindow back;
  bool accepted = false;
  const QString text =
      QInputDialog::getText(QApplication::activeModalWidget(), title, prompt, QLineEdit::Normal, initial, &accepted);
  return accepted ? std::optional(text) : std::nullopt;
}

void Desktop::Beep() {
  QApplication::beep();
}

int Desktop::PrinterCount() {
  return static_cast<int>(QPrinterInfo::availablePrinterNames().size());
}

void Desktop::SetMousePointer(MousePointer pointer) {
  if (pointer == vbHourglass) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void Desktop::DoEvents() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Desktop::ShowHelp(const QString& file, const QString& title) {
  if (!QFileInfo(file).isFile()) {
    MsgBox(QStringLiteral("No se encuentra el archivo de ayuda «%1». Compruebe la instalación del programa.").arg(file),
           vbExclamation, title);
  } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()))) {
    MsgBox(QStringLiteral("No hay ningún programa con el que abrir el archivo de ayuda «%1».").arg(file), vbExclamation,
           title);
  }
}

Hourglass::Hourglass() {
  Desktop::Current().SetMousePointer(vbHourglass);
}

Hourglass::~Hourglass() {
  Desktop::Current().SetMousePointer(vbDefault);
}

}  // namespace framework
