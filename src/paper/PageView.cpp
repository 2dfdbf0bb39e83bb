#include "paper/PageView.h"

#include "paper/Pages.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace paper {

namespace {

constexpr double leastZoom = 0.1;
constexpr double mostZoom = 5.0;
constexpr double zoomFactor = 1.25;
// Around the sheet, in pixels.
constexpr int border = 12;
constexpr int wheelNotch = 120;
constexpr int lineStep = 40;

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
  viewport()->setBackgroundRole(QPalette::Mid);
  viewport()->setAutoFillBackground(true);
  setFocusPolicy(Qt::StrongFocus);
}

void PageView::SetPages(const Pages& pages) {
  m_pages = &pages;
  m_page = 0;
  Arrange();
  Q_EMIT PageChanged();
}

int PageView::PageCount() const {
  return m_pages == nullptr ? 0 : m_pages->Count();
}

void PageView::SetPage(int page) {
  const int within = std::clamp(page, 0, std::max(0, PageCount() - 1));
  if (within == m_page) {
    return;
  }
  m_page = within;
  verticalScrollBar()->setValue(0);
  viewport()->update();
  Q_EMIT PageChanged();
}

double PageView::Zoom() const {
  return m_zoom;
}

void PageView::SetZoom(double zoom) {
  m_fit = Fit::Nothing;
  m_zoom = std::clamp(zoom, leastZoom, mostZoom);
  Arrange();
}

void PageView::FitPage() {
  SetFit(Fit::Page);
}

void PageView::FitWidth() {
  SetFit(Fit::Width);
}

void PageView::SetFit(Fit fit) {
  m_fit = fit;
  Arrange();
}

// In pixels, at the size of the print.
QSizeF PageView::SheetSize() const {
  if (m_pages == nullptr) {
    return {1, 1};
  }
  constexpr double centimetresPerInch = 2.54;
  const documents::Paper& sheet = m_pages->Sheet();
  const double pixelsPerCentimetre = logicalDpiX() / centimetresPerInch;
  return QSizeF(documents::InCentimetres(sheet.width), documents::InCentimetres(sheet.height)) * pixelsPerCentimetre;
}

void PageView::Arrange() {
  const QSizeF sheet = SheetSize();
  const QSizeF room(QSize(viewport()->size()).shrunkBy({border, border, border, border}));
  if (m_fit != Fit::Nothing) {
    const double width = room.width() / sheet.width();
    m_zoom =
        std::clamp(m_fit == Fit::Width ? width : std::min(width, room.height() / sheet.height()), leastZoom, mostZoom);
  }
  const QSize pixels = (sheet * m_zoom).toSize();
  const auto range = [](QScrollBar* bar, int length, int seen) {
    bar->setRange(0, std::max(0, length + 2 * border - seen));
    bar->setPageStep(std::max(1, seen));
    bar->setSingleStep(lineStep);
  };
  range(horizontalScrollBar(), pixels.width(), viewport()->width());
  range(verticalScrollBar(), pixels.height(), viewport()->height());
  viewport()->update();
  Q_EMIT ZoomChanged();
}

void PageView::paintEvent(QPaintEvent* /*event*/) {
  if (m_page >= PageCount()) {
    return;
  }
  const QSizeF sheet = SheetSize() * m_zoom;
  const double left = std::max<double>(border, (viewport()->width() - sheet.width()) / 2);
  const double top = std::max<double>(border, (viewport()->height() - sheet.height()) / 2);
  QPainter painter(viewport());
  painter.translate(qRound(left) - horizontalScrollBar()->value(), qRound(top) - verticalScrollBar()->value());
  painter.setPen(palette().color(QPalette::Shadow));
  painter.setBrush(Qt::white);
  painter.drawRect(QRect(QPoint(-1, -1), sheet.toSize() + QSize(1, 1)));
  const double pixelsPerHalfPoint = m_zoom * logicalDpiX() / documents::halfPointsPerInch;
  painter.scale(pixelsPerHalfPoint, pixelsPerHalfPoint);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  m_pages->Paint(painter, m_page);
}

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  Arrange();
}

// Ctrl zooms; where there is nothing left to scroll, the wheel goes to the next page.
void PageView::wheelEvent(QWheelEvent* event) {
  m_wheel += event->angleDelta().y();
  const int notches = m_wheel / wheelNotch;
  m_wheel -= notches * wheelNotch;
  QScrollBar* bar = verticalScrollBar();
  if ((event->modifiers() & Qt::ControlModifier) != 0) {
    if (notches != 0) {
      SetZoom(notches > 0 ? m_zoom * zoomFactor : m_zoom / zoomFactor);
    }
  } else if (notches != 0 && bar->value() == (notches > 0 ? bar->minimum() : bar->maximum())) {
    Leaf(notches > 0 ? -1 : 1);
  } else {
    bar->setValue(bar->value() - event->angleDelta().y());
  }
  event->accept();
}

void PageView::Leaf(int pages) {
  const int before = m_page;
  SetPage(m_page + pages);
  if (pages < 0 && m_page != before) {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
  }
}

void PageView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageDown:
      SetPage(m_page + 1);
      return;
    case Qt::Key_PageUp:
      SetPage(m_page - 1);
      return;
    case Qt::Key_Home:
      SetPage(0);
      return;
    case Qt::Key_End:
      SetPage(PageCount() - 1);
      return;
    case Qt::Key_Plus:
      SetZoom(m_zoom * zoomFactor);
      return;
    case Qt::Key_Minus:
      SetZoom(m_zoom / zoomFactor);
      return;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

}  // namespace paper
