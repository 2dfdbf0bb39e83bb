#include "letters/editor/LetterOutput.h"

#include "framework/Desktop.h"
#include "framework/Messages.h"
#include "letters/editor/CommonDialog.h"
#include "letters/editor/LetterWindow.h"
#include "paper/LetterPages.h"
#include "paper/Output.h"
#include "paper/PreviewDialog.h"
#include "platform/automation/Error.h"

#include <QPrinter>
#include <QRegularExpression>

using namespace framework;
using namespace Qt::StringLiterals;

namespace letters {

namespace {

QString FileName(QString title) {
  static const QRegularExpression unusual(u"[/\\\\:*?\"<>|\\x{0}-\\x{1F}]+"_s);
  return title.replace(unusual, u" "_s).simplified() + u".pdf"_s;
}

void Tell(const QStringList& problems) {
  if (!problems.isEmpty()) {
    ShowText(problems.join(u"\n\n"_s), vbExclamation);
  }
}

}  // namespace

void LetterOutput::Print(const documents::Margins& margins, const QString& title) const {
  try {
    const documents::Paper& sheet = m_window.picFondo->Paper();
    const QTextCursor selection = m_window.rtfCarta->textCursor();
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(sheet.PageSize());
    printer.setDocName(title);
    if (!m_window.dlgCarta->ShowPrinter(printer, selection.hasSelection())) {
      return;
    }
    if (printer.printRange() == QPrinter::Selection) {
      paper::Print(paper::LetterPages(selection, margins, sheet), printer);
    } else {
      const paper::LetterPages pages(*m_window.rtfCarta->document(), margins, sheet);
      Tell(pages.Problems());
      paper::Print(pages, printer);
    }
  } catch (const std::exception&) {
    automation::Err().Clear();
  }
}

void LetterOutput::Preview(const documents::Margins& margins, const QString& title) const {
  const paper::LetterPages pages(*m_window.rtfCarta->document(), margins, m_window.picFondo->Paper());
  m_window.dlgCarta->ShowPreview(
      pages, title, [&] { Print(margins, title); }, [&] { SavePdf(margins, title); });
}

void LetterOutput::SavePdf(const documents::Margins& margins, const QString& title) const {
  const QString file = m_window.dlgCarta->ShowSavePdf(FileName(title));
  if (file.isEmpty()) {
    return;
  }
  const paper::LetterPages pages(*m_window.rtfCarta->document(), margins, m_window.picFondo->Paper());
  Tell(pages.Problems());
  if (const QString reason = paper::SavePdf(pages, file, title); !reason.isEmpty()) {
    ShowText(reason, vbExclamation);
  }
}

}  // namespace letters
