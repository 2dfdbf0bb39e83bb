#include "paper/PageBar.h"

#include "paper/PageView.h"

#include <QLabel>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace paper {

namespace {

constexpr double zoomFactor = 1.25;

}  // namespace

PageBar::PageBar(QWidget* parent) : QToolBar(parent), m_state(new QLabel(this)) {
  m_state->setObjectName(u"lblPagina"_s);
  m_state->setTextFormat(Qt::PlainText);
}

QAction* PageBar::Add(const char* name, const QString& text, const QString& icon, const QString& brief,
                      const std::function<void()>& work) {
  QAction* action = addAction(QIcon::fromTheme(icon), brief, this, work);
  action->setToolTip(text);
  auto* button = static_cast<QToolButton*>(widgetForAction(action));
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(text);
  // Without an icon theme the text shows.
  button->setToolButtonStyle(action->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
  return action;
}

void PageBar::AddLeafing(PageView& view, const QString& nothing) {
  m_first = Add("cmdPrimera", u"Primera página"_s, u"go-first"_s, u"|<"_s, [&view] { view.SetPage(0); });
  m_previous =
      Add("cmdAnterior", u"Página anterior"_s, u"go-previous"_s, u"<"_s, [&view] { view.SetPage(view.Page() - 1); });
  m_next = Add("cmdSiguiente", u"Página siguiente"_s, u"go-next"_s, u">"_s, [&view] { view.SetPage(view.Page() + 1); });
  m_last = Add("cmdUltima", u"Última página"_s, u"go-last"_s, u">|"_s, [&view] { view.SetPage(view.PageCount() - 1); });
  addSeparator();
  Add("cmdAlejar", u"Alejar"_s, u"zoom-out"_s, u"−"_s, [&view] { view.SetZoom(view.Zoom() / zoomFactor); });
  Add("cmdAcercar", u"Acercar"_s, u"zoom-in"_s, u"+"_s, [&view] { view.SetZoom(view.Zoom() * zoomFactor); });
  Add("cmdPaginaEntera", u"Página entera"_s, u"zoom-fit-page"_s, u"Página"_s, [&view] { view.FitPage(); });
  Add("cmdAnchura", u"Anchura de la página"_s, u"zoom-fit-width"_s, u"Anchura"_s, [&view] { view.FitWidth(); });
  addSeparator();
  addWidget(m_state);
  const auto show = [this, &view, nothing] { ShowState(view, nothing); };
  connect(&view, &PageView::PageChanged, this, show);
  connect(&view, &PageView::ZoomChanged, this, show);
  show();
}

void PageBar::ShowState(const PageView& view, const QString& nothing) {
  const int count = view.PageCount();
  const int page = view.Page();
  m_state->setText(count == 0 ? nothing
                              : u" Página %1 de %2 (%3 %)"_s.arg(page + 1).arg(count).arg(qRound(view.Zoom() * 100)));
  for (QAction* action : {m_first, m_previous}) {
    action->setEnabled(page > 0);
  }
  for (QAction* action : {m_next, m_last}) {
    action->setEnabled(page + 1 < count);
  }
}

}  // namespace paper
