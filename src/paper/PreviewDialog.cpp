#include "paper/PreviewDialog.h"

#include "paper/PageBar.h"
#include "paper/PageView.h"
#include "paper/Pages.h"

#include <QAction>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace paper {

namespace {

constexpr QSize usualSize(760, 820);

}  // namespace

PreviewDialog::PreviewDialog(const Pages& pages, const QString& title, QWidget* parent) : QDialog(parent) {
  auto* bar = new PageBar(this);
  auto* view = new PageView(this);
  setObjectName(u"dlgVistaPrevia"_s);
  setWindowTitle(u"Vista previa - %1"_s.arg(title));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  view->setObjectName(u"pagPagina"_s);
  view->setAccessibleName(u"Página"_s);
  bar->Add("cmdImprimir", u"Imprimir"_s, u"document-print"_s, u"Imprimir"_s, [this] { Q_EMIT PrintWanted(); })
      ->setShortcut(QKeySequence::Print);
  bar->Add("cmdPdf", u"Guardar como PDF"_s, {}, u"PDF"_s, [this] { Q_EMIT PdfWanted(); });
  bar->addSeparator();
  bar->AddLeafing(*view, u" Los márgenes no dejan sitio para el texto"_s);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(bar);
  layout->addWidget(view);
  view->SetPages(pages);
  view->setFocus();
  resize(usualSize);
}

}  // namespace paper
