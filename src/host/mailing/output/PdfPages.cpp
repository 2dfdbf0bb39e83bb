#include "host/mailing/output/PdfPages.h"

#include "documents/letter/HalfPoints.h"

#include <QPageLayout>

namespace host {

// Without margins: coordinates are the paper's.
PdfPages::PdfPages(QIODevice& file, const QString& title, const documents::Paper& paper, const QTransform& correction)
    : m_writer(&file), m_correction(correction) {
  m_writer.setPageLayout(QPageLayout(paper.PageSize(), QPageLayout::Portrait, QMarginsF()));
  m_writer.setTitle(title);
  m_writer.setCreator(QStringLiteral("kel-host"));
}

QPainter& PdfPages::Next() {
  if (m_count++ == 0) {
    m_painter.begin(&m_writer);
    documents::ScaleForPaper(m_painter, m_writer.resolution());
    m_painter.setTransform(m_correction, true);
  } else {
    m_writer.newPage();
  }
  return m_painter;
}

void PdfPages::Finish() {
  if (m_painter.isActive()) {
    m_painter.end();
  }
}

}  // namespace host
