#pragma once

#include "host/mailing/output/PrintedWork.h"

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

namespace host {

/// Pages of a PDF on the usual paper. The file is whole when Finish has returned.
class PdfPages : public PaintedPages {
 public:
  PdfPages(QIODevice& file, const QString& title);

  QPainter& Next() override;
  int Count() const { return m_count; }
  void Finish();

 private:
  QPdfWriter m_writer;
  QPainter m_painter;
  int m_count = 0;
};

}  // namespace host
