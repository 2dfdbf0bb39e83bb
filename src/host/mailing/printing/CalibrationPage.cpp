#include "host/mailing/printing/CalibrationPage.h"

#include "documents/labels/Calibration.h"
#include "documents/letter/HalfPoints.h"
#include "documents/people/SpanishDates.h"

#include <QDate>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Millimetres.
constexpr double arm = 6;
constexpr double lineWidth = 0.15;
constexpr QPointF middle = {105, 140};
constexpr QSizeF rulers = {180, 135};

void PaintCross(QPainter& painter, QPointF at) {
  painter.drawLine(at - QPointF(arm, 0), at + QPointF(arm, 0));
  painter.drawLine(at - QPointF(0, arm), at + QPointF(0, arm));
}

double TickLength(int millimetre) {
  return millimetre % 10 == 0 ? 3 : millimetre % 5 == 0 ? 2 : 1;
}

void PaintRulers(QPainter& painter) {
  const QPointF first = middle - QPointF(rulers.width(), rulers.height()) / 2;
  for (int i = 0; i <= static_cast<int>(rulers.width()); ++i) {
    painter.drawLine(QPointF(first.x() + i, middle.y()), QPointF(first.x() + i, middle.y() - TickLength(i)));
  }
  for (int i = 0; i <= static_cast<int>(rulers.height()); ++i) {
    painter.drawLine(QPointF(middle.x(), first.y() + i), QPointF(middle.x() - TickLength(i), first.y() + i));
  }
}

void PaintText(QPainter& painter, double top, double height, bool isBold, const QString& text) {
  QFont font(u"Liberation Sans"_s);
  font.setBold(isBold);
  // A font has whole pixels at least; the painter is scaled for it.
  constexpr int pixels = 100;
  font.setPixelSize(pixels);
  painter.save();
  painter.translate(middle.x(), top);
  painter.scale(height / pixels, height / pixels);
  painter.setFont(font);
  const double width = 170 * pixels / height;
  painter.drawText(QRectF(-width / 2, 0, width, 2 * pixels), Qt::AlignHCenter | Qt::AlignTop, text);
  painter.restore();
}

}  // namespace

QString CalibrationPage::Title() const {
  return u"Página de calibración"_s;
}

QString CalibrationPage::NameOf(int /*part*/) const {
  return Title();
}

void CalibrationPage::Paint(int /*part*/, PaintedPages& pages) const {
  PaintOn(pages.Next());
}

void CalibrationPage::PaintOn(QPainter& painter) const {
  constexpr double halfPointsPerMillimetre = documents::halfPointsPerInch / 25.4;
  painter.save();
  painter.scale(halfPointsPerMillimetre, halfPointsPerMillimetre);
  painter.setPen(QPen(Qt::black, lineWidth));
  for (const double x : {0.0, documents::crossDistance.x()}) {
    for (const double y : {0.0, documents::crossDistance.y()}) {
      PaintCross(painter, documents::firstCross + QPointF(x, y));
    }
  }
  PaintText(painter, 57, 4, true,
            u"%1 · %2 · %3"_s.arg(Title(), m_printer, documents::ShortDate(QDate::currentDate())));
  PaintText(painter, 64, 3, false, u"Imprimir al 100 %, en papel corriente, sin «ajustar a la página»"_s);
  painter.setPen(QPen(Qt::gray, lineWidth));
  PaintRulers(painter);
  painter.restore();
}

}  // namespace host
