#include "letters/editor/CommonDialog.h"

#include "framework/ReturnToWindow.h"
#include "framework/Termination.h"

#include <QColorDialog>
#include <QFontDialog>
#include <QPrintDialog>
#include <QPrinter>

using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {

namespace {

bool IsAccepted(QDialog& dialog) {
  dialog.setObjectName(u"dlgCarta"_s);
  const ReturnToWindow back;
  const Termination::Watch watch;
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace

CommonDialog::CommonDialog(QWidget* owner) : QObject(owner), m_owner(owner) {
  setObjectName(u"dlgCarta"_s);
}

bool CommonDialog::ShowPrinter(QPrinter& printer, bool hasSelection) const {
  QPrintDialog dialog(&printer, m_owner);
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintCollateCopies);
  dialog.setOption(QAbstractPrintDialog::PrintSelection, hasSelection);
  return IsAccepted(dialog);
}

std::optional<QFont> CommonDialog::ShowFont(const QFont& initial) const {
  QFontDialog dialog(initial, m_owner);
  dialog.setOption(QFontDialog::DontUseNativeDialog);
  return IsAccepted(dialog) ? std::optional(dialog.selectedFont()) : std::nullopt;
}

std::optional<QColor> CommonDialog::ShowColor(const QColor& initial) const {
  QColorDialog dialog(initial, m_owner);
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  return IsAccepted(dialog) ? std::optional(dialog.selectedColor()) : std::nullopt;
}

}  // namespace letters
