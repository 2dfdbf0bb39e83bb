#include "labels/SheetPicture.h"

#include <QPainter>

using documents::Sheet;

namespace labels {

namespace {

// A sheet that does not fit shows this much of what is beyond the paper's edges.
constexpr double surroundings = 0.4;

// It is a paper: its colours hold in dark themes, too.
constexpr QRgb paper = 0xFFFFFFFF;
constexpr QRgb edge = 0xFF808080;
constexpr QRgb labelFill = 0xFFDCEBF5;
constexpr QRgb labelEdge = 0xFF2F6F8F;
constexpr QRgb excessFill = 0xFFF6C9C4;
constexpr QRgb excessEdge = 0xFFB3261E;

QPen Line(QRgb colour) {
  QPen pen{QColor(colour)};
  pen.setCosmetic(true);
  return pen;
}

QSizeF ShownSize(const std::optional<Sheet>& sheet, const documents::Paper& onPaper) {
  const double factor = sheet && !Fits(*sheet, onPaper) ? 1 + surroundings : 1;
  return QSizeF(onPaper.width, onPaper.height) * factor;
}

void DrawLabels(QPainter& painter, const Sheet& sheet, const QRectF& page) {
  for (const QRectF& label : LabelRectangles(sheet)) {
    const bool fits = page.contains(label);
    painter.setPen(Line(fits ? labelEdge : excessEdge));
    painter.setBrush(QColor(fits ? labelFill : excessFill));
    painter.drawRect(label);
  }
}

}  // namespace

SheetPicture::SheetPicture(QWidget* parent) : QWidget(parent) {
  setMinimumSize(sizeHint() / 2);
}

void SheetPicture::Show(const std::optional<Sheet>& sheet) {
  m_sheet = sheet;
  update();
}

QSize SheetPicture::sizeHint() const {
  const int width = 16 * fontMetrics().height();
  return {width, static_cast<int>(width * m_paper.height / m_paper.width)};
}

void SheetPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QSizeF shown = ShownSize(m_sheet, m_paper);
  const QSizeF size = shown.scaled(QSizeF(this->size()) - QSizeF(2, 2), Qt::KeepAspectRatio);
  painter.translate((width() - size.width()) / 2, 1);
  painter.setClipRect(QRectF(QPointF(-1, -1), size + QSizeF(2, 2)));
  painter.scale(size.width() / shown.width(), size.height() / shown.height());
  const QRectF page(0, 0, m_paper.width, m_paper.height);
  painter.fillRect(page, QColor(paper));
  if (m_sheet) {
    DrawLabels(painter, *m_sheet, page);
  }
  painter.setPen(Line(edge));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(page);
}

}  // namespace labels
