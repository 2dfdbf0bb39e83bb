#pragma once

#include "host/mailing/output/PrintedWork.h"

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>
#include <QTransform>

namespace host {

/// Pages of a PDF. The file is whole when Finish has returned.
class PdfPages : public PaintedPages {
 public:
  /// `correction` takes back what a printer does to the half-points.
  PdfPages(QIODevice& file, const QString& title, const documents::Paper& paper = documents::UsualPaper(),
           const QTransform& correction = {});

  QPainter& Next() override;
  int Count() const { return m_count; }
  void Finish();

 private:
  QPdfWriter m_writer;
  QTransform m_correction;
  QPainter m_painter;
  int m_count = 0;
};

}  // namespace host
