#include "paper/PreviewDialog.h"

#include "paper/PageView.h"
#include "paper/Pages.h"

#include <QAction>
#include <QLabel>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace paper {

namespace {

constexpr double zoomFactor = 1.25;
constexpr QSize usualSize(760, 820);

}  // namespace

PreviewDialog::PreviewDialog(const Pages& pages, const QString& title, QWidget* parent)
    : QDialog(parent), m_bar(new QToolBar(this)), m_view(new PageView(this)), m_state(new QLabel(this)) {
  setObjectName(u"dlgVistaPrevia"_s);
  setWindowTitle(u"Vista previa - %1"_s.arg(title));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  m_view->setObjectName(u"pagPagina"_s);
  m_view->setAccessibleName(u"Página"_s);
  m_state->setObjectName(u"lblPagina"_s);
  m_state->setTextFormat(Qt::PlainText);
  AddCommands();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(m_bar);
  layout->addWidget(m_view);
  connect(m_view, &PageView::PageChanged, this, &PreviewDialog::ShowState);
  connect(m_view, &PageView::ZoomChanged, this, &PreviewDialog::ShowState);
  m_view->SetPages(pages);
  m_view->setFocus();
  resize(usualSize);
}

template <typename Work>
QAction* PreviewDialog::Add(const char* name, const QString& text, const QString& icon, const QString& brief,
                            Work work) {
  QAction* action = m_bar->addAction(QIcon::fromTheme(icon), brief, this, work);
  action->setToolTip(text);
  auto* button = static_cast<QToolButton*>(m_bar->widgetForAction(action));
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(text);
  // Without an icon theme the text shows.
  button->setToolButtonStyle(action->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
  return action;
}

void PreviewDialog::AddCommands() {
  Add("cmdImprimir", u"Imprimir"_s, u"document-print"_s, u"Imprimir"_s, [this] {
    Q_EMIT PrintWanted();
  })->setShortcut(QKeySequence::Print);
  Add("cmdPdf", u"Guardar como PDF"_s, {}, u"PDF"_s, [this] { Q_EMIT PdfWanted(); });
  m_bar->addSeparator();
  m_first = Add("cmdPrimera", u"Primera página"_s, u"go-first"_s, u"|<"_s, [this] { m_view->SetPage(0); });
  m_previous = Add("cmdAnterior", u"Página anterior"_s, u"go-previous"_s, u"<"_s,
                   [this] { m_view->SetPage(m_view->Page() - 1); });
  m_next =
      Add("cmdSiguiente", u"Página siguiente"_s, u"go-next"_s, u">"_s, [this] { m_view->SetPage(m_view->Page() + 1); });
  m_last =
      Add("cmdUltima", u"Última página"_s, u"go-last"_s, u">|"_s, [this] { m_view->SetPage(m_view->PageCount() - 1); });
  m_bar->addSeparator();
  Add("cmdAlejar", u"Alejar"_s, u"zoom-out"_s, u"−"_s, [this] { m_view->SetZoom(m_view->Zoom() / zoomFactor); });
  Add("cmdAcercar", u"Acercar"_s, u"zoom-in"_s, u"+"_s, [this] { m_view->SetZoom(m_view->Zoom() * zoomFactor); });
  Add("cmdPaginaEntera", u"Página entera"_s, u"zoom-fit-page"_s, u"Página"_s, [this] { m_view->FitPage(); });
  Add("cmdAnchura", u"Anchura de la página"_s, u"zoom-fit-width"_s, u"Anchura"_s, [this] { m_view->FitWidth(); });
  m_bar->addSeparator();
  m_bar->addWidget(m_state);
}

void PreviewDialog::ShowState() {
  const int count = m_view->PageCount();
  const int page = m_view->Page();
  m_state->setText(count == 0
                       ? u" Los márgenes no dejan sitio para el texto"_s
                       : u" Página %1 de %2 (%3 %)"_s.arg(page + 1).arg(count).arg(qRound(m_view->Zoom() * 100)));
  for (QAction* action : {m_first, m_previous}) {
    action->setEnabled(page > 0);
  }
  for (QAction* action : {m_next, m_last}) {
    action->setEnabled(page + 1 < count);
  }
}

}  // namespace paper
