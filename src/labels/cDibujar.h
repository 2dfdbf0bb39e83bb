#pragma once

#include "labels/BarGeometry.h"

class QPainter;
class QRect;

namespace labels {

/// Draws the schematic picture of one label: a grid of lines and positions, and a bar for each placed field. Nothing is
/// erased; bars accumulate on the surface.
class cDibujar {
 public:
  /// Only the first call counts: later ones move nothing. The surface is borrowed and must live through the drawing;
  /// the area is the region's rectangle, in the surface's units.
  void Init_Class(QPainter& frmFuente, const QRect& objRegion);

  /// At least 1.
  qint32 TotalFilas() const { return m_grid.rows; }
  void TotalFilas(qint32 value);
  qint32 TotalColumnas() const { return m_grid.columns; }
  void TotalColumnas(qint32 value);
  /// The cell of the next bar, from 0. At most the total; there is no lower bound.
  qint32 Fila() const { return m_cell.row; }
  void Fila(qint32 value);
  qint32 Columna() const { return m_cell.column; }
  void Columna(qint32 value);
  /// Red, green and blue from the lowest byte on: 255 is red.
  qint32 Color() const { return m_color; }
  void Color(qint32 value) { m_color = value; }
  /// The share of its cell that a bar covers, at most 100.
  quint8 PorcentajeAnchoLinea() const { return m_cell.widthPercent; }
  void PorcentajeAnchoLinea(quint8 value);
  quint8 PorcentajeAltoLinea() const { return m_cell.heightPercent; }
  void PorcentajeAltoLinea(quint8 value);

  /// Fills the bar of the current cell. Says so in a message where Init_Class was not called.
  void DibujarLinea() const;

 private:
  QPainter* m_surface = nullptr;
  BarGrid m_grid;
  BarCell m_cell;
  qint32 m_color = 0;
};

}  // namespace labels
