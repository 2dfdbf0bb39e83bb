#include "labels/LabelPreview.h"

#include "labels/FieldEntries.h"
#include "labels/cDibujar.h"

#include <QPainter>

namespace labels {

namespace {

// The label in units of its own, so that its cells are alike at any size and scale.
constexpr QRect area(0, 0, 2500, 1000);
constexpr quint8 half = 50;
constexpr qint32 highlight = 255;
constexpr qint32 black = 0;

// It is a paper: its colours hold in dark themes, too.
constexpr QRgb paper = 0xFFFFFFFF;
constexpr QRgb cellLine = 0xFFDDDDDD;
constexpr QRgb frameLine = 0xFF808080;

QPen Line(QRgb colour, Qt::PenStyle style) {
  QPen pen(QColor(colour), 0, style);
  pen.setCosmetic(true);
  return pen;
}

void DrawPaper(QPainter& painter) {
  painter.fillRect(area, QColor(paper));
  painter.setPen(Line(cellLine, Qt::DotLine));
  for (int line = 1; line < mostLines; ++line) {
    const int y = area.height() * line / mostLines;
    painter.drawLine(0, y, area.width(), y);
  }
  for (int position = 1; position < mostPositions; ++position) {
    const int x = area.width() * position / mostPositions;
    painter.drawLine(x, 0, x, area.height());
  }
}

}  // namespace

LabelPreview::LabelPreview(QWidget* parent) : QWidget(parent) {
  setMinimumSize(sizeHint() / 2);
}

void LabelPreview::Show(const FieldCollection* entries) {
  m_entries = entries;
}

void LabelPreview::Redraw(qint32 selected) {
  m_selected = selected;
  update();
}

QSize LabelPreview::sizeHint() const {
  const int height = 10 * fontMetrics().height();
  return {height * area.width() / area.height(), height};
}

void LabelPreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QSize size = area.size().scaled(this->size() - QSize(2, 2), Qt::KeepAspectRatio);
  QRect label(QPoint(), size);
  label.moveCenter(rect().center());
  painter.setClipRect(label);
  painter.translate(label.topLeft());
  painter.scale(double(label.width()) / area.width(), double(label.height()) / area.height());
  DrawPaper(painter);
  DrawEntries(painter);
  painter.resetTransform();
  painter.setClipping(false);
  painter.setPen(Line(frameLine, Qt::SolidLine));
  painter.drawRect(label.adjusted(-1, -1, 0, 0));
}

void LabelPreview::DrawEntries(QPainter& painter) const {
  if (m_entries == nullptr) {
    return;
  }
  cDibujar drawing;
  drawing.Init_Class(painter, area);
  drawing.TotalFilas(mostLines);
  drawing.TotalColumnas(mostPositions);
  drawing.PorcentajeAnchoLinea(half);
  drawing.PorcentajeAltoLinea(half);
  for (const auto& [key, entry] : *m_entries) {
    if (!IsDeleted(*entry)) {
      drawing.Color(entry->IDElemento == m_selected ? highlight : black);
      drawing.Fila(entry->Linea - 1);
      drawing.Columna(entry->Orden - 1);
      drawing.DibujarLinea();
    }
  }
}

}  // namespace labels
