#include "letters/editor/CommonDialog.h"

#include "framework/ReturnToWindow.h"
#include "framework/Termination.h"
#include "letters/editor/ReplaceDialog.h"
#include "letters/editor/SpacingDialog.h"
#include "paper/PreviewDialog.h"

#include <QColorDialog>
#include <QFileDialog>
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

std::optional<Spacing> CommonDialog::ShowSpacing(const Spacing& initial) const {
  SpacingDialog dialog(initial, m_owner);
  return IsAccepted(dialog) ? std::optional(dialog.Chosen()) : std::nullopt;
}

QString CommonDialog::ShowOpenPicture() const {
  QFileDialog dialog(m_owner, u"Insertar una imagen"_s);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters({u"Imágenes (*.png *.jpg *.jpeg *.bmp *.gif)"_s, u"Todos los archivos (*)"_s});
  return IsAccepted(dialog) ? dialog.selectedFiles().value(0) : QString();
}

QString CommonDialog::ShowSavePdf(const QString& initialName) const {
  QFileDialog dialog(m_owner, u"Guardar como PDF"_s);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilter(u"Documentos PDF (*.pdf)"_s);
  dialog.setDefaultSuffix(u"pdf"_s);
  dialog.selectFile(initialName);
  return IsAccepted(dialog) ? dialog.selectedFiles().value(0) : QString();
}

void CommonDialog::ShowPreview(const paper::Pages& pages, const QString& title, const std::function<void()>& print,
                               const std::function<void()>& savePdf) const {
  paper::PreviewDialog dialog(pages, title, m_owner);
  connect(&dialog, &paper::PreviewDialog::PrintWanted, &dialog, print);
  connect(&dialog, &paper::PreviewDialog::PdfWanted, &dialog, savePdf);
  IsAccepted(dialog);
}

QString CommonDialog::ShowReplace(LetterEdit& letter, const QString& text) const {
  ReplaceDialog dialog(letter, text, m_owner);
  IsAccepted(dialog);
  return dialog.SoughtText();
}

}  // namespace letters
