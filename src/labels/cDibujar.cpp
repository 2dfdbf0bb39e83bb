#include "labels/cDibujar.h"

#include "framework/Desktop.h"
#include "framework/Messages.h"

#include <QColor>
#include <QPainter>
#include <QRect>

#include <algorithm>

using namespace framework;

namespace labels {
namespace {

constexpr quint8 wholeCell = 100;

QColor ToColor(qint32 rgb) {
  return {rgb & 0xFF, (rgb >> 8) & 0xFF, (rgb >> 16) & 0xFF};
}

}  // namespace

void cDibujar::Init_Class(QPainter& frmFuente, const QRect& objRegion) {
  if (m_surface != nullptr) {
    return;
  }
  m_surface = &frmFuente;
  m_grid = {.left = objRegion.x(),
            .top = objRegion.y(),
            .right = objRegion.x() + objRegion.width(),
            .bottom = objRegion.y() + objRegion.height()};
  m_cell = {.row = 1, .column = 1, .widthPercent = 80, .heightPercent = 10};
}

void cDibujar::TotalFilas(qint32 value) {
  m_grid.rows = std::max(value, 1);
}

void cDibujar::TotalColumnas(qint32 value) {
  m_grid.columns = std::max(value, 1);
}

void cDibujar::Fila(qint32 value) {
  m_cell.row = std::min(value, m_grid.rows);
}

void cDibujar::Columna(qint32 value) {
  m_cell.column = std::min(value, m_grid.columns);
}

void cDibujar::PorcentajeAnchoLinea(quint8 value) {
  m_cell.widthPercent = std::min(value, wholeCell);
}

void cDibujar::PorcentajeAltoLinea(quint8 value) {
  m_cell.heightPercent = std::min(value, wholeCell);
}

void cDibujar::DibujarLinea() const {
  if (m_surface == nullptr) {
    ShowMessageWithBeep(101, vbExclamation);
    return;
  }
  const Bar bar = BarIn(m_grid, m_cell);
  const QRectF box(QPointF(double(bar.x1), double(bar.y1)), QPointF(double(bar.x2), double(bar.y2)));
  m_surface->fillRect(box.normalized(), ToColor(m_color));
}

}  // namespace labels
