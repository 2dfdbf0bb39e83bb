#include "host/calibration/CalibrationPicture.h"

#include "documents/letter/HalfPoints.h"
#include "documents/letter/Paper.h"
#include "host/mailing/printing/CalibrationPage.h"

#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Millimetres, all of them.
struct Length {
  QChar name;
  QPointF from;
  QPointF to;
  QLineF help;  ///< Leads from the arrow's end to the cross that is meant.
};

const Length lengths[] = {
    {u'A', {0, 40}, {20, 40}, {20, 26, 20, 46}},
    {u'B', {40, 0}, {40, 20}, {26, 20, 46, 20}},
    {u'C', {20, 255}, {190, 255}, {}},
    {u'D', {172, 20}, {172, 270}, {}},
};
constexpr double badge = 4;

void PaintHead(QPainter& painter, QPointF tip, QPointF towards) {
  constexpr double size = 3;
  const QPointF back = towards / std::hypot(towards.x(), towards.y()) * size;
  const QPointF aside(back.y() / 3, -back.x() / 3);
  painter.drawPolygon(QPolygonF{tip, tip - back + aside, tip - back - aside});
}

void PaintLength(QPainter& painter, const Length& length, const QColor& colour) {
  const QPointF middle = (length.from + length.to) / 2;
  painter.setPen(QPen(colour, 0.3, Qt::DashLine));
  painter.drawLine(length.help);
  painter.setPen(QPen(colour, 0.5));
  painter.setBrush(colour);
  painter.drawLine(length.from, length.to);
  PaintHead(painter, length.to, length.to - length.from);
  PaintHead(painter, length.from, length.from - length.to);
  painter.setBrush(Qt::white);
  painter.drawEllipse(middle, badge, badge);
  QFont font = painter.font();
  font.setPixelSize(5);
  font.setBold(true);
  painter.setFont(font);
  painter.drawText(QRectF(middle - QPointF(badge, badge), QSizeF(2 * badge, 2 * badge)), Qt::AlignCenter, length.name);
}

}  // namespace

CalibrationPicture::CalibrationPicture(QWidget* parent) : QWidget(parent) {
  setObjectName(u"calibrationPicture"_s);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void CalibrationPicture::SetPrinter(const QString& printer) {
  m_printer = printer;
  update();
}

void CalibrationPicture::SetMarked(int length) {
  m_marked = length;
  update();
}

QSize CalibrationPicture::sizeHint() const {
  return {fontMetrics().height() * 24, fontMetrics().height() * 34};
}

// Smaller, its letters can't be read.
QSize CalibrationPicture::minimumSizeHint() const {
  return {fontMetrics().height() * 16, fontMetrics().height() * 22};
}

void CalibrationPicture::paintEvent(QPaintEvent* /*event*/) {
  constexpr double millimetresPerCentimetre = 10;
  const QSizeF paper = QSizeF(documents::InCentimetres(documents::UsualPaper().width),
                              documents::InCentimetres(documents::UsualPaper().height)) *
                       millimetresPerCentimetre;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int margin = fontMetrics().height();
  const double scale = std::min((width() - 2 * margin) / paper.width(), (height() - 2 * margin) / paper.height());
  painter.translate((width() - scale * paper.width()) / 2, (height() - scale * paper.height()) / 2);
  painter.scale(scale, scale);
  painter.setPen(QPen(palette().color(QPalette::Mid), 0.3));
  painter.setBrush(Qt::white);
  painter.drawRect(QRectF({0, 0}, paper));
  painter.save();
  constexpr double millimetresPerHalfPoint = 25.4 / documents::halfPointsPerInch;
  painter.scale(millimetresPerHalfPoint, millimetresPerHalfPoint);
  CalibrationPage(m_printer).PaintOn(painter);
  painter.restore();
  for (int i = 0; i < static_cast<int>(std::size(lengths)); ++i) {
    PaintLength(painter, lengths[i], i == m_marked ? QColor(192, 57, 43) : QColor(42, 111, 151));
  }
}

}  // namespace host
