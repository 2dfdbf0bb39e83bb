#include "documents/labels/LabelPainter.h"

#include "documents/letter/HalfPoints.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace documents {

namespace {

constexpr double halfPointsPerCentimetre = halfPointsPerInch / 2.54;
constexpr double smallestScale = 0.7;
constexpr double smallestPoints = 6.5;
// Centimetres that stay free at the right edge, and above and below.
constexpr double right = 0.2;
constexpr double above = 0.1;

/// Width as designed, so that it is the same on every device.
void LayOut(QTextLayout& layout) {
  QTextOption option(Qt::AlignLeft);
  option.setWrapMode(QTextOption::NoWrap);
  option.setUseDesignMetrics(true);
  layout.setTextOption(option);
  layout.setCacheEnabled(false);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
}

double WidthOf(const QString& line, const QFont& font) {
  QTextLayout layout(line, font);
  LayOut(layout);
  return layout.lineAt(0).naturalTextWidth();
}

}  // namespace

LabelPainter::LabelPainter(const Sheet& sheet, const LabelFont& font)
    : m_font(font.family),
      m_left(font.left * halfPointsPerCentimetre),
      m_smallest(std::min(1.0, std::max(smallestScale, smallestPoints / font.points))) {
  for (const QRectF& label : LabelRectangles(sheet)) {
    constexpr double scale = halfPointsPerCentimetre / micrometresPerCentimetre;
    m_labels.emplace_back(label.topLeft() * scale, label.size() * scale);
  }
  m_font.setPixelSize(qRound(2 * font.points));
  m_font.setHintingPreference(QFont::PreferNoHinting);
  m_lineHeight = QFontMetricsF(m_font).lineSpacing();
  m_room = QSizeF(InCentimetres(sheet.width) - font.left - right, InCentimetres(sheet.height) - 2 * above) *
           halfPointsPerCentimetre;
}

std::optional<double> LabelPainter::ScaleOf(const QStringList& lines) const {
  double scale = std::min(1.0, m_room.height() / (m_lineHeight * double(lines.size())));
  for (const QString& line : lines) {
    scale = std::min(scale, m_room.width() / WidthOf(line, m_font));
  }
  return scale < m_smallest ? std::nullopt : std::optional(scale);
}

void LabelPainter::Paint(QPainter& painter, int label, const QStringList& lines) const {
  const QRectF& place = m_labels[static_cast<std::size_t>(label - 1)];
  const std::optional<double> fitting = ScaleOf(lines);
  const double scale = fitting.value_or(m_smallest);
  const double height = scale * m_lineHeight * double(lines.size());
  painter.save();
  painter.setPen(Qt::black);
  if (!fitting) {
    painter.setClipRect(place);
  }
  painter.translate(place.left() + m_left, place.top() + std::max(0.0, (place.height() - height) / 2));
  painter.scale(scale, scale);
  QPointF corner(0, 0);
  for (const QString& line : lines) {
    QTextLayout layout(line, m_font);
    LayOut(layout);
    layout.draw(&painter, corner);
    corner.ry() += m_lineHeight;
  }
  painter.restore();
}

}  // namespace documents
